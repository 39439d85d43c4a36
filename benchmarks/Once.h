#pragma once

#include <string>

namespace Oru::Benchmarks {

/// Runs one job a number of times by one side, on a catalogue of 500 clips, for a profiler: what the counts
/// of two runs differ by is what the additional clips cost.
/// @param job   "save", "resave" or "deep"
/// @param side  "library" or "rival"
/// @throws std::invalid_argument for another word
void RunOnce(const std::string& job, const std::string& side, int clips);

}  // namespace Oru::Benchmarks
