#pragma once

#include "reliability/Clips.h"

#include <functional>
#include <string>
#include <vector>

namespace Oru::Reliability {

/// One use of a database that a fault may hit anywhere.
struct FaultJob {
  using Attempt = std::function<bool(DataModelDatabase&)>;

  const char* name;
  /// Makes one attempt, which may be repeated when it gave false or threw. Its objects live in it.
  std::function<Attempt()> make;
  /// Whether what the attempt is to bring about is there.
  Attempt isDone;
  /// Whether the old or the new state of the file must be whole after a failure.
  bool isWhole = false;
  bool isOpening = false;
  /// Whether the file isn't there yet.
  bool isOfNewFile = false;
};

const std::vector<FaultJob>& FaultJobs();

/// How a loop makes things fail.
struct FaultSource {
  /// Arms the failure of the n-th operation; 0 for none.
  std::function<void(int)> arm;
  /// How many failures there were since.
  std::function<int()> failureCount;
  /// Options of the connection text.
  std::string options;
  /// How far the loop goes from one n to the next.
  int step = 1;
};

/// Runs a job once for each n, up to the first that is too high to fail, and checks after each failure:
///   - the attempt gave false or one of the library's exceptions, and a log entry has SQLite's text;
///   - the file passes SQLite's checks, and holds the old or the new state where that was promised;
///   - the same attempt succeeds once the fault is gone, on the same connection or on a new one.
/// @return the number of failures that it has seen
int RunFaultLoop(const FaultJob& job, const FaultSource& source);

}  // namespace Oru::Reliability
