#include "reliability/FaultLoop.h"
#include "reliability/FaultyVfs.h"

#include <gtest/gtest.h>

namespace Oru::Reliability {

class IoFaultTest : public testing::TestWithParam<FaultJob> {};

TEST_P(IoFaultTest, LosesNothingWhateverFails) {
  FaultyVfs::Register();
  int failures = 0;
  for (const char* journal : {"delete", "wal"}) {
    for (const bool isFull : {false, true}) {
      for (const bool isLasting : {false, true}) {
        FaultSource source;
        source.arm = [&](int n) { FaultyVfs::Arm({n, isLasting, isFull}); };
        source.failureCount = FaultyVfs::FailureCount;
        source.options = std::string("_busy_timeout=0&_journal_mode=") + journal;
        // A job without a transaction commits fifty times over, and each time alike.
        source.step = IsLong() ? 1 : GetParam().isWhole ? 13 : 149;
        failures += RunFaultLoop(GetParam(), source);
        if (HasFailure()) return;
      }
    }
  }
  EXPECT_GT(failures, 9);
}

INSTANTIATE_TEST_SUITE_P(Each, IoFaultTest, testing::ValuesIn(FaultJobs()),
                         [](const auto& job) { return job.param.name; });

}  // namespace Oru::Reliability
