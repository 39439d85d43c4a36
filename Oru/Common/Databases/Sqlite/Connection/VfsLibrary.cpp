#include "Oru/Common/Databases/Sqlite/Connection/VfsLibrary.h"

#include <sqlite3.h>

#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <utility>

namespace Oru::Common::Databases::Sqlite::VfsLibrary {

namespace {

struct CloseConnection {
  void operator()(sqlite3* handle) const { sqlite3_close(handle); }
};
using Connection = std::unique_ptr<sqlite3, CloseConnection>;

std::set<sqlite3_vfs*> RegisteredVfs() {
  std::set<sqlite3_vfs*> registered;
  for (sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr); vfs; vfs = vfs->pNext)
    registered.insert(vfs);
  return registered;
}

// A connection of its own in memory, which alone may load extensions, and only through SQLite's C interface.
std::string LoadInto(Connection& connection, const std::string& library) {
  sqlite3* handle = nullptr;
  const int opened =
      sqlite3_open_v2(":memory:", &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY, nullptr);
  connection.reset(handle);
  if (opened != SQLITE_OK) return sqlite3_errstr(opened);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 1, nullptr);
  char* text = nullptr;
  const int code = sqlite3_load_extension(handle, library.c_str(), nullptr, &text);
  const std::unique_ptr<char, decltype(&sqlite3_free)> message(text, sqlite3_free);
  if (code == SQLITE_OK) return {};
  return message ? message.get() : sqlite3_errstr(code);
}

}  // namespace

std::string Load(const std::string& library) {
  // An extension that doesn't ask to stay is unloaded with the connection that loaded it, so these stay open.
  // They are never closed: other static objects may still use a VFS.
  static auto& loaded = *new std::map<std::string, Connection>();
  static std::mutex mutex;
  const std::lock_guard<std::mutex> lock(mutex);
  if (loaded.find(library) != loaded.end()) return {};

  sqlite3_vfs* const defaultVfs = sqlite3_vfs_find(nullptr);
  const std::set<sqlite3_vfs*> before = RegisteredVfs();
  Connection connection;
  if (std::string fault = LoadInto(connection, library); !fault.empty()) return fault;
  // Only a connection text decides which file goes through the new VFS.
  if (sqlite3_vfs_find(nullptr) != defaultVfs) sqlite3_vfs_register(defaultVfs, 1);
  if (RegisteredVfs() == before) return "the extension brings no VFS that wasn't there before";
  loaded.emplace(library, std::move(connection));
  return {};
}

}  // namespace Oru::Common::Databases::Sqlite::VfsLibrary
