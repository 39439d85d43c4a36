// An extension of SQLite that brings a VFS, as a file system's maker would. It works as the default one, whose place it
// takes, but has no temporary files, and doesn't ask to stay loaded.
#include <sqlite3ext.h>

SQLITE_EXTENSION_INIT1

namespace {

sqlite3_vfs loadable;
sqlite3_vfs* other = nullptr;

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  file->pMethods = nullptr;
  return name == nullptr ? SQLITE_CANTOPEN : other->xOpen(other, name, file, flags, outFlags);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int sqlite3_extension_init(
    sqlite3*, char**, const sqlite3_api_routines* api) {
  SQLITE_EXTENSION_INIT2(api);
  constexpr const char* name = "loadable-test-vfs";
  if (sqlite3_vfs_find(name) != nullptr) return SQLITE_OK;
  other = sqlite3_vfs_find(nullptr);
  loadable = *other;
  loadable.zName = name;
  loadable.xOpen = Open;
  return sqlite3_vfs_register(&loadable, 1);
}
