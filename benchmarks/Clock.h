#pragma once

#include <ctime>

namespace Oru::Benchmarks {

inline double SecondsOf(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// The time that the thread itself has computed: other programs on the machine don't enter, nor does waiting
/// for a disk.
inline double ThreadSeconds() {
  return SecondsOf(CLOCK_THREAD_CPUTIME_ID);
}

inline double ElapsedSeconds() {
  return SecondsOf(CLOCK_MONOTONIC);
}

}  // namespace Oru::Benchmarks
