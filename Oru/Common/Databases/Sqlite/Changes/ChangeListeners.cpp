#include "Oru/Common/Databases/Sqlite/Changes/ChangeListeners.h"

namespace Oru::Common::Databases::Sqlite {

std::shared_ptr<ChangeNotifier> ChangeListeners::Add(const std::shared_ptr<ListenerEntry>& entry,
                                                     sqlite3* handle) {
  const std::lock_guard<std::mutex> lock(mMutex);
  const bool isFirst = !mNotifier;
  if (isFirst) mNotifier = std::make_shared<ChangeNotifier>(mLogFailure);
  mNotifier->Add(entry);
  if (isFirst && handle) mNotifier->Attach(handle);
  return mNotifier;
}

std::shared_ptr<ChangeNotifier> ChangeListeners::NotifierWithNews() noexcept {
  if (!mNotifier->HasListeners()) {
    if (mNotifier->Retire()) mNotifier.reset();
    return nullptr;
  }
  mNotifier->CollectCommitted();
  return mLockDepth == 0 && mNotifier->BeginNotifying() ? mNotifier : nullptr;
}

}  // namespace Oru::Common::Databases::Sqlite
