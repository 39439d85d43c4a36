#pragma once

#include <mutex>

namespace Oru::Common::Databases {
class Cursor;
}

namespace Oru::Common::Databases::Sqlite {

/// The cursors that are open on one connection, so that closing it can close them first: a connection with a
/// live statement doesn't close (https://sqlite.org/c3ref/close.html).
///
/// Threads: may be used from several threads at once.
class OpenCursors {
 public:
  /// One of them, linked with its neighbours.
  struct Entry {
    Cursor* cursor = nullptr;
    Entry* previous = nullptr;
    Entry* next = nullptr;
  };

  OpenCursors() = default;
  OpenCursors(const OpenCursors&) = delete;
  OpenCursors& operator=(const OpenCursors&) = delete;

  /// @param entry  must stay in its place until it is removed
  void Add(Entry& entry, Cursor& cursor);
  void Remove(Entry& entry);
  /// Some cursor that is open, null when there is none.
  Cursor* Any();

 private:
  std::mutex mMutex;
  Entry* mFirst = nullptr;
};

}  // namespace Oru::Common::Databases::Sqlite
