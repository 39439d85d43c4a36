#include "reliability/FaultLoop.h"

namespace Oru::Reliability {

namespace {

FaultCounter faults;
sqlite3_mem_methods below;

// SQLite takes an allocator only before its first use, and so before main.
const bool isConfigured = [] {
  if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &below) != SQLITE_OK) return false;
  sqlite3_mem_methods methods = below;
  methods.xMalloc = [](int size) { return faults.IsDue() ? nullptr : below.xMalloc(size); };
  methods.xRealloc = [](void* memory, int size) {
    return faults.IsDue() ? nullptr : below.xRealloc(memory, size);
  };
  return sqlite3_config(SQLITE_CONFIG_MALLOC, &methods) == SQLITE_OK;
}();

}  // namespace

class MemoryFaultTest : public testing::TestWithParam<FaultJob> {};

TEST_P(MemoryFaultTest, LosesNothingWhateverAllocationFails) {
  ASSERT_TRUE(isConfigured);
  // Steps that take in the two allocations of an opening and of a `Put` whose failure SQLite 3.40 takes worst.
  const int step = IsLong() ? 1 : GetParam().isWhole ? 92 : 115;
  for (const bool isLasting : {false, true}) {
    faults.isLasting = isLasting;
    EXPECT_GT(RunFaultLoop(GetParam(), faults, "_busy_timeout=0&_synchronous=off", step), 0);
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(Each, MemoryFaultTest, testing::ValuesIn(FaultJobs()),
                         [](const auto& job) { return job.param.name; });

}  // namespace Oru::Reliability
