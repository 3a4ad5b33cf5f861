#include "peer_stores.h"

#include <cstdlib>
#include <stdexcept>

namespace tarvo {
namespace {

constexpr const char* kGroup = "Settings";

datum Datum(std::string& text) { return {text.data(), static_cast<int>(text.size())}; }

// A GKeyFile's key takes no blank.
std::string KeyFileKey(std::string key) {
  for (char& c : key) {
    if (c == ' ') c = '-';
  }
  return key;
}

void BindText(sqlite3_stmt* statement, int place, const std::string& text) {
  ::sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

}  // namespace

Gdbm::Gdbm(const std::string& path, int mode)
    : file_(::gdbm_open(path.c_str(), 0, mode, 0600, nullptr)) {
  if (!file_) throw std::runtime_error("gdbm cannot open its file");
}

std::string Gdbm::Fetch(std::string key) const {
  const datum found = ::gdbm_fetch(file_.get(), Datum(key));
  if (!found.dptr) return {};
  const std::string value(found.dptr, static_cast<std::size_t>(found.dsize));
  std::free(found.dptr);
  return value;
}

void Gdbm::Maker::Store(std::string key, std::string value) {
  if (::gdbm_store(made_.file_.get(), Datum(key), Datum(value), GDBM_REPLACE) != 0) {
    throw std::runtime_error("gdbm cannot store a value");
  }
}

KeyFile::KeyFile(const std::string& path) : KeyFile() {
  if (!::g_key_file_load_from_file(file_.get(), path.c_str(), G_KEY_FILE_NONE, nullptr)) {
    throw std::runtime_error("GLib cannot load its key file");
  }
}

std::string KeyFile::Fetch(const std::string& key) const {
  const std::unique_ptr<char, decltype(&::g_free)> value(
      ::g_key_file_get_value(file_.get(), kGroup, KeyFileKey(key).c_str(), nullptr), &::g_free);
  return value ? value.get() : "";
}

KeyFile::Maker::~Maker() { ::g_key_file_save_to_file(made_.file_.get(), path_.c_str(), nullptr); }

void KeyFile::Maker::Store(const std::string& key, const std::string& value) {
  ::g_key_file_set_value(made_.file_.get(), kGroup, KeyFileKey(key).c_str(), value.c_str());
}

Sqlite::Sqlite(const std::string& path) {
  sqlite3* opened = nullptr;
  const int result = ::sqlite3_open(path.c_str(), &opened);
  database_.reset(opened);
  if (result != SQLITE_OK) Fail();
  Run("PRAGMA synchronous = OFF");
}

void Sqlite::Run(const char* sql) {
  if (::sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) Fail();
}

Sqlite::Statement Sqlite::Prepare(const char* sql) const {
  sqlite3_stmt* statement = nullptr;
  if (::sqlite3_prepare_v2(database_.get(), sql, -1, &statement, nullptr) != SQLITE_OK) Fail();
  return Statement(statement);
}

std::string Sqlite::Fetch(const std::string& key) const {
  const Statement statement = Prepare("SELECT value FROM settings WHERE key = ?");
  BindText(statement.get(), 1, key);
  if (::sqlite3_step(statement.get()) != SQLITE_ROW) return {};
  return reinterpret_cast<const char*>(::sqlite3_column_text(statement.get(), 0));
}

void Sqlite::Store(const std::string& key, const std::string& value) {
  const Statement statement = Prepare("INSERT OR REPLACE INTO settings VALUES (?, ?)");
  BindText(statement.get(), 1, key);
  BindText(statement.get(), 2, value);
  if (::sqlite3_step(statement.get()) != SQLITE_DONE) Fail();
}

void Sqlite::Fail() const { throw std::runtime_error(::sqlite3_errmsg(database_.get())); }

Sqlite::Maker::Maker(const std::string& path) : made_(path) {
  made_.Run("CREATE TABLE settings (key TEXT PRIMARY KEY, value TEXT) WITHOUT ROWID");
  made_.Run("BEGIN");
}

Sqlite::Maker::~Maker() {
  ::sqlite3_exec(made_.database_.get(), "COMMIT", nullptr, nullptr, nullptr);
}

}  // namespace tarvo
