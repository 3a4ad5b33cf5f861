#pragma once

#include <gdbm.h>
#include <glib.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace tarvo {

// The stores that a program could use instead, each as little code as its documentation asks for.
// An object is an open store; its Maker writes a new file. They throw what went wrong.

// A gdbm file, opened for reading.
class Gdbm {
 public:
  explicit Gdbm(const std::string& path) : Gdbm(path, GDBM_READER) {}

  // The value of a key, "" when there is none.
  std::string Fetch(std::string key) const;

  class Maker;

 private:
  struct Close {
    void operator()(GDBM_FILE file) const { ::gdbm_close(file); }
  };

  Gdbm(const std::string& path, int mode);

  std::unique_ptr<std::remove_pointer_t<GDBM_FILE>, Close> file_;
};

class Gdbm::Maker {
 public:
  explicit Maker(const std::string& path) : made_(path, GDBM_NEWDB) {}
  void Store(std::string key, std::string value);

 private:
  Gdbm made_;
};

// A key file of GLib: lines of KEY=VALUE, all read to find one.
class KeyFile {
 public:
  explicit KeyFile(const std::string& path);
  std::string Fetch(const std::string& key) const;

  class Maker;

 private:
  struct Free {
    void operator()(GKeyFile* file) const { ::g_key_file_free(file); }
  };

  KeyFile() : file_(::g_key_file_new()) {}

  std::unique_ptr<GKeyFile, Free> file_;
};

class KeyFile::Maker {
 public:
  explicit Maker(std::string path) : path_(std::move(path)) {}
  ~Maker();
  Maker(const Maker&) = delete;
  Maker& operator=(const Maker&) = delete;
  void Store(const std::string& key, const std::string& value);

 private:
  std::string path_;
  KeyFile made_;
};

// A table of keys and values of SQLite, not synced to the disk.
class Sqlite {
 public:
  explicit Sqlite(const std::string& path);
  std::string Fetch(const std::string& key) const;
  void Store(const std::string& key, const std::string& value);

  class Maker;

 private:
  struct Close {
    void operator()(sqlite3* database) const { ::sqlite3_close(database); }
  };
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { ::sqlite3_finalize(statement); }
  };
  using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

  void Run(const char* sql);
  Statement Prepare(const char* sql) const;
  [[noreturn]] void Fail() const;

  std::unique_ptr<sqlite3, Close> database_;
};

// One transaction, for the file of a hundred settings is made once.
class Sqlite::Maker {
 public:
  explicit Maker(const std::string& path);
  ~Maker();
  Maker(const Maker&) = delete;
  Maker& operator=(const Maker&) = delete;
  void Store(const std::string& key, const std::string& value) { made_.Store(key, value); }

 private:
  Sqlite made_;
};

}  // namespace tarvo
