#pragma once

namespace Oru::Benchmarks {

/// Registers the jobs with Google Benchmark.
void RegisterJobs();

}  // namespace Oru::Benchmarks
