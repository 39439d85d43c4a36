#include "FileJobs.h"
#include "Jobs.h"
#include "Once.h"
#include "RepositoryJobs.h"
#include "SameResults.h"
#include "WaitJobs.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Options = std::map<std::string, std::string>;

// Our own options; whatever else there is goes to Google Benchmark.
constexpr const char* Usage =
    "oru_benchmark [--benchmark_...]      the jobs, once the rival has proved honest\n"
    "oru_benchmark --check                only whether the rival is honest\n"
    "oru_benchmark --once save|resave|deep|match|match_raw|walk|walk_plain --side library|rival --clips N\n"
    "oru_benchmark --growth FOLDER --sizes N,N,... --bare-up-to N\n"
    "oru_benchmark --connections FOLDER\n"
    "oru_benchmark --repository FOLDER --clips N\n"
    "oru_benchmark --waits FOLDER --clips N\n"
    "oru_benchmark --threads FOLDER [--tuned]\n";

Options OptionsOf(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string name = argv[i];
    const bool hasValue = i + 1 < argc && std::string(argv[i + 1]).rfind("--", 0) != 0;
    options[name] = hasValue ? argv[++i] : "";
  }
  return options;
}

std::vector<int> Numbers(const std::string& list) {
  std::vector<int> numbers;
  std::istringstream stream(list);
  for (std::string number; std::getline(stream, number, ',');)
    numbers.push_back(std::stoi(number));
  return numbers;
}

int RunJobs(int argc, char** argv) {
  Oru::Benchmarks::RegisterJobs();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    std::cerr << Usage;
    return EXIT_FAILURE;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Options options = OptionsOf(argc, argv);
    if (options.count("--once") != 0) {
      Oru::Benchmarks::RunOnce(options["--once"], options["--side"], std::stoi(options["--clips"]));
      return EXIT_SUCCESS;
    }
    if (options.count("--growth") != 0) {
      Oru::Benchmarks::MeasureGrowth(options["--growth"], Numbers(options["--sizes"]),
                                     std::stoi(options["--bare-up-to"]), std::cout);
      return EXIT_SUCCESS;
    }
    if (options.count("--connections") != 0) {
      Oru::Benchmarks::MeasureConnections(options["--connections"], std::cout);
      return EXIT_SUCCESS;
    }
    if (options.count("--repository") != 0) {
      Oru::Benchmarks::MeasureRepository(options["--repository"], std::stoi(options["--clips"]), std::cout);
      return EXIT_SUCCESS;
    }
    if (options.count("--waits") != 0) {
      Oru::Benchmarks::MeasureWaits(options["--waits"], std::stoi(options["--clips"]), std::cout);
      return EXIT_SUCCESS;
    }
    if (options.count("--threads") != 0) {
      Oru::Benchmarks::MeasureThreads(options["--threads"], options.count("--tuned") != 0, std::cout);
      return EXIT_SUCCESS;
    }
    Oru::Benchmarks::CheckSameResults();
    if (options.count("--check") != 0) {
      std::cout << "the library and its rival write and read the same\n";
      return EXIT_SUCCESS;
    }
    return RunJobs(argc, argv);
  } catch (const std::exception& failure) {
    std::cerr << "oru_benchmark: " << failure.what() << '\n';
    return EXIT_FAILURE;
  }
}
