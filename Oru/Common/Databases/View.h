#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/ObjectCursor.h"
#include "Oru/Common/Databases/Query.h"
#include "Oru/Common/Databases/RawCursor.h"

#include <cstdint>
#include <memory>
#include <string>

namespace Oru::Common::Databases {

class Database;

/// The read side of an entity: opens cursors over its rows and turns rows into objects.
///
/// `lazy` is passed to `ReadFromCursor` of the view; overloads without it pass true.
///
/// Threads: a view may be read from several threads at once; each opening makes a cursor of its own.
template <class T>
class ORU_COMMON_DATABASE_EXPORT View {
 public:
  View() = default;
  View(const View&) = delete;
  View& operator=(const View&) = delete;
  virtual ~View() = default;

  /// @throws ArgumentException without a database
  virtual Database& GetDatabase() const = 0;
  /// Sets the database, which must outlive the view's use of it.
  virtual void AttatchToDatabase(Database& attachedDatabase) = 0;
  /// Creates what the view needs in the file.
  virtual void Create() = 0;
  /// The column that holds the key.
  virtual const std::string& GetObjectIdColumnName() const = 0;

  /// Fills `obj` from the current row of a cursor that this view opened.
  virtual void ReadFromCursor(const Cursor& cursor, T& obj, bool lazy) = 0;
  virtual void ReadFromCursor(const Cursor& cursor, T& obj) { ReadFromCursor(cursor, obj, true); }

  /// Open a cursor over all rows, or over those that a query selects, in its order. The view must outlive it:
  virtual std::unique_ptr<ObjectCursor<T, T>> OpenObjectCursor(bool lazy) = 0;
  virtual std::unique_ptr<ObjectCursor<T, T>> OpenObjectCursor() { return OpenObjectCursor(true); }
  virtual std::unique_ptr<RawCursor> OpenRawCursor() = 0;
  virtual std::unique_ptr<ObjectCursor<T, T>> OpenObjectCursor(Query& query, bool lazy) = 0;
  virtual std::unique_ptr<ObjectCursor<T, T>> OpenObjectCursor(Query& query) {
    return OpenObjectCursor(query, true);
  }
  virtual std::unique_ptr<RawCursor> OpenRawCursor(Query& query) = 0;

  /// The same on a cursor that the caller holds, which loses its former statement:
  virtual void OpenObjectCursor(ObjectCursor<T, T>& cursor, bool lazy) = 0;
  virtual void OpenObjectCursor(ObjectCursor<T, T>& cursor) { OpenObjectCursor(cursor, true); }
  virtual void OpenRawCursor(RawCursor& cursor) = 0;
  virtual void OpenObjectCursor(ObjectCursor<T, T>& cursor, Query& query, bool lazy) = 0;
  virtual void OpenObjectCursor(ObjectCursor<T, T>& cursor, Query& query) {
    OpenObjectCursor(cursor, query, true);
  }
  virtual void OpenRawCursor(RawCursor& cursor, Query& query) = 0;

  /// Reads the row with that key.
  /// @return false, with `destObj` as it was, when there is none
  virtual bool GetObject(int64_t objectID, T& destObj, bool lazy) = 0;
  virtual bool GetObject(int64_t objectID, T& destObj) { return GetObject(objectID, destObj, true); }
  /// Whether the table has a row with that key.
  virtual bool Exists(int64_t objectID) = 0;
};

}  // namespace Oru::Common::Databases
