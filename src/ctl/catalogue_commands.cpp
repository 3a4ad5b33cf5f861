#include "catalogue/driver_list.h"
#include "ctl/commands.h"
#include "ctl/json.h"
#include "ctl/listed_drivers.h"
#include "ctl/table.h"

namespace tarvo {
namespace {

constexpr std::string_view kFieldNames[] = {"name",     "csv",    "asc",       "txt",
                                            "download", "upload", "properties"};

std::string FieldOf(const ListItem& item, std::size_t column) {
  return column == 0 ? item.Text : item.SubItems[column - 1];
}

// The names of the columns, then a row for each driver.
std::vector<std::vector<std::string>> Rows(const std::vector<const ListItem*>& drivers) {
  std::vector<std::vector<std::string>> rows;
  rows.reserve(drivers.size() + 1);
  rows.emplace_back(std::begin(kFieldNames), std::end(kFieldNames));
  for (const ListItem* driver : drivers) {
    std::vector<std::string>& row = rows.emplace_back();
    row.reserve(std::size(kFieldNames));
    for (std::size_t column = 0; column < std::size(kFieldNames); ++column) {
      row.push_back(FieldOf(*driver, column));
    }
  }
  return rows;
}

}  // namespace

void WriteRows(CommandRun& run, std::vector<std::vector<std::string>> rows) {
  if (run.json) {
    run.out << JsonTable(rows);
    return;
  }
  for (auto& row : rows) {
    for (std::string& cell : row) cell = OneLine(cell);
  }
  run.out << AlignedTable(rows);
}

void ListDrivers(CommandRun& run) {
  ListedDrivers window(run.globals);
  std::vector<const ListItem*> drivers;
  for (int i = 0; i < window.lvListView.Count(); ++i) {
    const ListItem& item = window.lvListView.ItemAt(i);
    if (item.Key != kAddItemKey) drivers.push_back(&item);
  }
  WriteRows(run, Rows(drivers));
}

void TranslatePhrase(CommandRun& run) {
  run.globals.translator.LoadDictionary(kDictionary);
  const std::string parameters = run.arguments.size() > 1 ? run.arguments[1] : "";
  run.out << run.globals.Translate(run.arguments[0], parameters) << '\n';
}

}  // namespace tarvo
