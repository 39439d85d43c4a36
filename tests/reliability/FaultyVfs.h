#pragma once

namespace Oru::Reliability {

/// A layer over SQLite's own file access that fails on command, in place of the default one. Files are
/// written for real, but never waited for.
///
/// Threads: arm and count from one thread at a time.
class FaultyVfs {
 public:
  enum Operation { Read, Write, Sync, Truncate, Open, Delete };

  struct Plan {
    /// Which operation fails, counted from 1 over all those that the code concerns; 0 for none.
    int number = 0;
    /// Whether all that follow fail too.
    bool isLasting = false;
    /// SQLITE_FULL, which only writes report, instead of the I/O error of each operation.
    bool isFull = false;
  };

  /// Makes the layer known to SQLite; a second call does nothing.
  static void Register();
  /// Begins to count again.
  static void Arm(const Plan& plan);
  static void Disarm() { Arm({}); }
  /// How many operations have failed since the layer was armed.
  static int FailureCount();
};

}  // namespace Oru::Reliability
