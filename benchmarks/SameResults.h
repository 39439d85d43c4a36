#pragma once

namespace Oru::Benchmarks {

/// Whether the rival is honest: both sides save, save again, group and delete the same clips on files of
/// their own, all tables are compared row by row after each step, and so is what both sides read from them.
/// @throws std::runtime_error that names the first difference
void CheckSameResults();

}  // namespace Oru::Benchmarks
