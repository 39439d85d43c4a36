#pragma once

#include "Oru/Common/Databases/View.h"

namespace Oru::Common::Databases {

/// A view that can also write.
///
/// An object id of -1 means that the object isn't stored: it decides between insert and update.
/// @tparam T  what the view reads
/// @tparam U  what the table writes
template <class T, class U>
class ORU_COMMON_DATABASE_EXPORT Table : public virtual View<T> {
 public:
  /// Binds the columns of the row for `obj`, except a key that the database assigns.
  /// @return false at the first value that can't be bound
  virtual bool BindToCursor(Cursor& cursor, U& obj) = 0;

  /// Deletes the row of `obj`, whose object id becomes -1 on success. A missing row is no failure.
  /// @return false, with a log entry, when the database refuses
  virtual bool Delete(U& obj) = 0;
  virtual bool Delete(int64_t objectId) = 0;
  /// Deletes the rows that the query's filter selects: all rows for an empty query.
  virtual bool Delete(Query& query) = 0;

  /// The highest key of the table; 0 when the table has no rows.
  virtual int64_t GetLastObjectId() = 0;

  /// Stores `obj`: inserts it when its object id is -1, and updates its row otherwise.
  /// @return false, with a log entry, when the database refuses; what was written before stays written
  virtual bool Save(U& obj, bool lazy) = 0;
  virtual bool Save(U& obj) { return Save(obj, true); }

  /// Sets the key that an object carries.
  virtual void SetObjectId(U& obj, int64_t objectId) = 0;
  /// The key that an object carries; -1 while it has none.
  virtual int64_t GetObjectId(U& obj) const = 0;
};

}  // namespace Oru::Common::Databases
