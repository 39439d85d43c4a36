#include "Progress.h"

#include "Interruption.h"

#include <algorithm>
#include <utility>

namespace Catalogue {

Progress::Progress(const Console& console, std::string what, std::string unit,
                   std::chrono::milliseconds pause)
    : mConsole(console),
      mWhat(std::move(what)),
      mUnit(std::move(unit)),
      // On a terminal it moves as the eye sees it.
      mPause(console.isWatched ? std::min(pause, std::chrono::milliseconds(100)) : pause),
      mNext(std::chrono::steady_clock::now() + (console.isWatched ? std::chrono::milliseconds(0) : mPause)) {}

Progress::~Progress() {
  Clear();
}

bool Progress::Show(int64_t done, int64_t total) {
  const auto now = std::chrono::steady_clock::now();
  if (now >= mNext) {
    mNext = now + mPause;
    Clear();
    mConsole.errors << Text(done, total);
    if (!mConsole.isWatched) mConsole.errors << '\n';
    mConsole.errors << std::flush;
    mIsShown = mConsole.isWatched;
  }
  return !Interruption::IsAsked();
}

void Progress::Clear() {
  if (mIsShown) mConsole.errors << "\r\033[K" << std::flush;
  mIsShown = false;
}

std::string Progress::Text(int64_t done, int64_t total) const {
  const std::string count =
      std::to_string(done) + (total < 0 ? "" : " of " + std::to_string(total)) + ' ' + mUnit;
  if (total <= 0) return mWhat + ": " + count;
  const int64_t share = std::clamp<int64_t>(done, 0, total) * 100 / total;
  std::string text = mWhat + ": ";
  if (mConsole.isWatched) {
    constexpr int64_t width = 25;
    const int64_t full = share * width / 100;
    text += '[' + std::string(static_cast<size_t>(full), '#') +
            std::string(static_cast<size_t>(width - full), '.') + "] ";
  }
  return text + std::to_string(share) + " %, " + count;
}

}  // namespace Catalogue
