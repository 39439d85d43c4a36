#pragma once

#include "Oru/Common/Databases/Sqlite/ChangeNotice.h"

#include <atomic>
#include <mutex>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

/// The function of one `ChangeListener`, which is called until it is no longer active.
struct ListenerEntry {
  explicit ListenerEntry(ChangeNotice::Callback toCall) : function(std::move(toCall)) {}

  const ChangeNotice::Callback function;
  // Held during a call; recursive, as a function may destroy its own listener.
  std::recursive_mutex mutex;
  std::atomic<bool> isActive{true};
};

}  // namespace Oru::Common::Databases::Sqlite
