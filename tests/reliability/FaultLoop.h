#pragma once

#include "reliability/Clips.h"

namespace Oru::Reliability {

/// Says which of the operations that may fail do so.
struct FaultCounter {
  /// Whether all that follow the first to fail fail too.
  bool isLasting = false;
  /// The first to fail, from 1; 0 for none.
  int due = 0;
  /// How many have been asked for since the counter was armed, and how many of them have failed.
  int count = 0, failures = 0;

  void Arm(int number) {
    due = number;
    count = failures = 0;
  }
  bool IsDue() {
    if (due == 0) return false;
    ++count;
    const bool fails = isLasting ? count >= due : count == due;
    failures += fails;
    return fails;
  }
};

/// One use of a database that a fault may hit anywhere.
struct FaultJob {
  const char* name;
  /// May be repeated when it gave false or threw. It may use the clips, which are those of the first attempt then.
  std::function<bool(DataModelDatabase&, std::vector<MediaAsset>& clips)> attempt;
  /// Whether the old or the new state of the file must be whole after a failure.
  bool isWhole = false;
  /// Whether what the attempt is to bring about is there. Without it, the file must be the same as without a fault.
  std::function<bool(DataModelDatabase&)> isDone = nullptr;
};

const std::vector<FaultJob>& FaultJobs();

/// Runs a job once for each n-th operation that fails, up to the first n that is too high, and checks after each:
///   - the attempt gave false or one of the library's exceptions, and a log entry has SQLite's text;
///   - the file passes SQLite's checks, and holds the old or the new state where that was promised;
///   - the same attempt succeeds once the fault is gone, on the same connection or on a new one.
/// @param options  of the connection text
/// @param step     how far the loop goes from one n to the next
/// @return the number of failures that it has seen
int RunFaultLoop(const FaultJob& job, FaultCounter& faults, const std::string& options, int step);

}  // namespace Oru::Reliability
