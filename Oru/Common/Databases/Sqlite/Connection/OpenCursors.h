#pragma once

#include <mutex>

namespace Oru::Common::Databases::Sqlite {

class CursorSqlite;

/// The cursors that are open on one connection, so that closing it can close them first: a connection with a
/// live statement doesn't close (https://sqlite.org/c3ref/close.html).
///
/// Threads: may be used from several threads at once.
class OpenCursors {
 public:
  OpenCursors() = default;
  OpenCursors(const OpenCursors&) = delete;
  OpenCursors& operator=(const OpenCursors&) = delete;

  void Add(CursorSqlite& cursor);
  void Remove(CursorSqlite& cursor);
  /// Some cursor that is open, null when there is none.
  CursorSqlite* Any();

 private:
  std::mutex mMutex;
  CursorSqlite* mFirst = nullptr;
};

}  // namespace Oru::Common::Databases::Sqlite
