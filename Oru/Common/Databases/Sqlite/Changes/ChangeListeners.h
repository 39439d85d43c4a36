#pragma once

#include "Oru/Common/Databases/Sqlite/Changes/ChangeNotifier.h"

#include <memory>
#include <mutex>
#include <utility>

struct sqlite3;

namespace Oru::Common::Databases::Sqlite {

/// The listeners of one connection, which are notified when the last lock of a thread ends.
///
/// Threads: to be used with the connection locked, if it is open.
class ChangeListeners {
 public:
  explicit ChangeListeners(ChangeNotifier::LogFailure logFailure) : mLogFailure(std::move(logFailure)) {}
  ChangeListeners(const ChangeListeners&) = delete;
  ChangeListeners& operator=(const ChangeListeners&) = delete;

  /// Adds a listener.
  /// @param handle  the open connection, null while it is closed
  std::shared_ptr<ChangeNotifier> Add(const std::shared_ptr<ListenerEntry>& entry, sqlite3* handle);
  /// The notifier that collects the changes; null if there is no listener.
  ChangeNotifier* Notifier() const { return mNotifier.get(); }

  void LockBegins() { ++mLockDepth; }
  /// To be called before the lock is released.
  /// @return the notifier that must call its listeners after the release; null if there is nothing to report
  std::shared_ptr<ChangeNotifier> LockEnds() noexcept {
    --mLockDepth;
    return mNotifier ? NotifierWithNews() : nullptr;
  }

 private:
  std::shared_ptr<ChangeNotifier> NotifierWithNews() noexcept;

  const ChangeNotifier::LogFailure mLogFailure;
  // On a closed database there is no lock of the connection.
  std::mutex mMutex;
  std::shared_ptr<ChangeNotifier> mNotifier;
  // How many ConnectionLocks there are, all of one thread.
  int mLockDepth = 0;
};

}  // namespace Oru::Common::Databases::Sqlite
