#include "reliability/FaultLoop.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace Oru::Reliability {

namespace {

sqlite3_mem_methods below;
int failing = 0;
bool isLasting = false;
int count = 0;
int failureCount = 0;

bool IsRefused() {
  if (failing == 0) return false;
  ++count;
  if (isLasting ? count < failing : count != failing) return false;
  ++failureCount;
  return true;
}

void* Allocate(int size) {
  return IsRefused() ? nullptr : below.xMalloc(size);
}

void* Reallocate(void* memory, int size) {
  return IsRefused() ? nullptr : below.xRealloc(memory, size);
}

// SQLite takes an allocator only before its first use, and so before main.
const bool isConfigured = [] {
  if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &below) != SQLITE_OK) return false;
  sqlite3_mem_methods methods = below;
  methods.xMalloc = Allocate;
  methods.xRealloc = Reallocate;
  return sqlite3_config(SQLITE_CONFIG_MALLOC, &methods) == SQLITE_OK;
}();

}  // namespace

class MemoryFaultTest : public testing::TestWithParam<FaultJob> {};

TEST_P(MemoryFaultTest, LosesNothingWhateverAllocationFails) {
  ASSERT_TRUE(isConfigured);
  for (const bool lasts : {false, true}) {
    FaultSource source;
    source.arm = [&](int n) {
      isLasting = lasts;
      failing = n;
      count = failureCount = 0;
    };
    source.failureCount = [] { return failureCount; };
    source.options = "_busy_timeout=0&_synchronous=off";
    source.step = IsLong() ? 1 : 97;
    EXPECT_GT(RunFaultLoop(GetParam(), source), 0);
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(Each, MemoryFaultTest, testing::ValuesIn(FaultJobs()),
                         [](const auto& job) { return job.param.name; });

}  // namespace Oru::Reliability
