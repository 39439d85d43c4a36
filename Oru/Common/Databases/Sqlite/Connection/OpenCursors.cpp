#include "Oru/Common/Databases/Sqlite/Connection/OpenCursors.h"

#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"

namespace Oru::Common::Databases::Sqlite {

void OpenCursors::Add(CursorSqlite& cursor) {
  const std::lock_guard<std::mutex> lock(mMutex);
  cursor.mOpenCursors = this;
  cursor.mPrevious = nullptr;
  cursor.mNext = mFirst;
  if (mFirst) mFirst->mPrevious = &cursor;
  mFirst = &cursor;
}

void OpenCursors::Remove(CursorSqlite& cursor) {
  const std::lock_guard<std::mutex> lock(mMutex);
  if (cursor.mPrevious) {
    cursor.mPrevious->mNext = cursor.mNext;
  } else {
    mFirst = cursor.mNext;
  }
  if (cursor.mNext) cursor.mNext->mPrevious = cursor.mPrevious;
  cursor.mOpenCursors = nullptr;
}

CursorSqlite* OpenCursors::Any() {
  const std::lock_guard<std::mutex> lock(mMutex);
  return mFirst;
}

}  // namespace Oru::Common::Databases::Sqlite
