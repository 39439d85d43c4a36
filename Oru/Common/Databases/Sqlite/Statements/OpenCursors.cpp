#include "Oru/Common/Databases/Sqlite/Statements/OpenCursors.h"

namespace Oru::Common::Databases::Sqlite {

void OpenCursors::Add(Entry& entry, Cursor& cursor) {
  const std::lock_guard<std::mutex> lock(mMutex);
  entry = {&cursor, nullptr, mFirst};
  if (mFirst) mFirst->previous = &entry;
  mFirst = &entry;
}

void OpenCursors::Remove(Entry& entry) {
  const std::lock_guard<std::mutex> lock(mMutex);
  if (entry.previous) {
    entry.previous->next = entry.next;
  } else {
    mFirst = entry.next;
  }
  if (entry.next) entry.next->previous = entry.previous;
}

Cursor* OpenCursors::Any() {
  const std::lock_guard<std::mutex> lock(mMutex);
  return mFirst ? mFirst->cursor : nullptr;
}

}  // namespace Oru::Common::Databases::Sqlite
