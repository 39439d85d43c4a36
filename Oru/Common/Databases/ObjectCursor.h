#pragma once

#include "Oru/Common/Databases/Cursor.h"
#include "Oru/Common/Databases/Export.h"

namespace Oru::Common::Databases {

template <class T>
class View;

/// A cursor that steps into model objects: each row goes through the view's `ReadFromCursor`.
/// @tparam T  what is read
/// @tparam U  what is written
template <class T, class U>
class ORU_COMMON_DATABASE_EXPORT ObjectCursor : public Cursor {
 public:
  ObjectCursor() = default;
  /// A closed cursor. It passes `lazy` to `ReadFromCursor` of the view, or true without it.
  explicit ObjectCursor(bool lazy) : mLazy(lazy) {}
  explicit ObjectCursor(Database& attachedDatabase) : Cursor(attachedDatabase) {}
  ObjectCursor(Database& attachedDatabase, bool lazy) : Cursor(attachedDatabase), mLazy(lazy) {}
  explicit ObjectCursor(View<T>& attachedView) { AttachToTable(attachedView); }
  ObjectCursor(View<T>& attachedView, bool lazy) : mLazy(lazy) { AttachToTable(attachedView); }

  /// Sets the view that reads the rows, and its database. The view must outlive the cursor's use of it.
  void AttachToTable(View<T>& attachedView) {
    view = &attachedView;
    AttachToDatabase(attachedView.GetDatabase());
  }

  /// Steps to the next row and reads it into `obj`.
  /// @return false after the last row, with `obj` as it was, and at every further call
  /// @throws ObjectClosedException on a closed cursor or one without a view, InvalidOperationException when
  ///         the step fails, and what the view's `ReadFromCursor` throws
  virtual bool Next(T& obj) = 0;
  /// The same without reading anything.
  virtual bool Next() = 0;
  /// Runs a bound insert or update statement. It writes what has been bound; `obj` isn't read.
  /// @throws ObjectClosedException, InvalidOperationException as above
  virtual void Save(U& obj) = 0;

 protected:
  /// Passed to `ReadFromCursor` of the view.
  bool mLazy = true;
  /// Null for a cursor that reads no objects.
  View<T>* view = nullptr;
};

}  // namespace Oru::Common::Databases
