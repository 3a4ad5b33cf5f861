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

std::string JsonObject(const ListItem& item) {
  std::string result = "{";
  for (std::size_t column = 0; column < std::size(kFieldNames); ++column) {
    if (column > 0) result += ", ";
    result += JsonString(kFieldNames[column]) + ": " + JsonString(FieldOf(item, column));
  }
  return result + "}";
}

void WriteJson(std::ostream& out, const std::vector<const ListItem*>& drivers) {
  out << '[';
  for (std::size_t i = 0; i < drivers.size(); ++i) {
    out << (i == 0 ? "\n  " : ",\n  ") << JsonObject(*drivers[i]);
  }
  out << (drivers.empty() ? "]\n" : "\n]\n");
}

void WriteTable(std::ostream& out, const std::vector<const ListItem*>& drivers) {
  std::vector<std::vector<std::string>> rows;
  rows.emplace_back(std::begin(kFieldNames), std::end(kFieldNames));
  for (const ListItem* driver : drivers) {
    std::vector<std::string>& row = rows.emplace_back();
    for (std::size_t column = 0; column < std::size(kFieldNames); ++column) {
      row.push_back(OneLine(FieldOf(*driver, column)));
    }
  }
  out << AlignedTable(rows);
}

}  // namespace

void ListDrivers(CommandRun& run) {
  ListedDrivers window(run.globals);
  std::vector<const ListItem*> drivers;
  for (int i = 0; i < window.lvListView.Count(); ++i) {
    const ListItem& item = window.lvListView.ItemAt(i);
    if (item.Key != kAddItemKey) drivers.push_back(&item);
  }
  run.json ? WriteJson(run.out, drivers) : WriteTable(run.out, drivers);
}

void TranslatePhrase(CommandRun& run) {
  run.globals.translator.LoadDictionary(kDictionary);
  const std::string parameters = run.arguments.size() > 1 ? run.arguments[1] : "";
  run.out << run.globals.Translate(run.arguments[0], parameters) << '\n';
}

}  // namespace tarvo
