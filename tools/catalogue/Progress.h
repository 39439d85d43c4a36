#pragma once

#include "Console.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace Catalogue {

/// How far long work has come: a bar on a terminal, a line every few seconds elsewhere. Both go to `errors`.
class Progress {
 public:
  /// @param what   what is done, as "Reading"
  /// @param unit   of the numbers, as "files"
  /// @param pause  between two lines
  Progress(const Console& console, std::string what, std::string unit,
           std::chrono::milliseconds pause = std::chrono::seconds(5));
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  /// Takes the bar back.
  ~Progress();

  /// @param total  -1 when it isn't known
  /// @return false when the work is to end (`Interruption`)
  bool Show(int64_t done, int64_t total);
  /// Takes the bar back, so that something else can be written.
  void Clear();

 private:
  std::string Text(int64_t done, int64_t total) const;

  const Console& mConsole;
  const std::string mWhat;
  const std::string mUnit;
  const std::chrono::milliseconds mPause;
  std::chrono::steady_clock::time_point mNext;
  bool mIsShown = false;
};

}  // namespace Catalogue
