#include "Oru/DataModel/MediaAssets/TimeCodeTable.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

namespace Oru::DataModel::MediaAssets {
namespace {

using TimePoints::TimeCode;
using TimePoints::TimePoint;

std::shared_ptr<TimeCodeJump> Jump(int64_t nanoseconds, int64_t sample) {
  return std::make_shared<TimeCodeJump>(TimePoint::FromNanoseconds(nanoseconds),
                                        TimeCode().AddSample(sample));
}

TEST(TimeCodeTableTest, TheJumpInForceIsTheLastOneThatHasBegun) {
  TimeCodeTable table("ltc");
  EXPECT_EQ(table.JumpAt(TimePoint::FromNanoseconds(0)), nullptr);
  table.TimeCodeJumps().Insert(Jump(100, 7));
  table.TimeCodeJumps().Insert(Jump(0, 5));
  EXPECT_EQ(table.JumpAt(TimePoint::FromNanoseconds(-1)), nullptr);
  EXPECT_EQ(table.JumpAt(TimePoint::FromNanoseconds(0))->TimeCode().TotalSample(), 5);
  EXPECT_EQ(table.JumpAt(TimePoint::FromNanoseconds(99))->TimeCode().TotalSample(), 5);
  EXPECT_EQ(table.JumpAt(TimePoint::FromNanoseconds(100))->TimeCode().TotalSample(), 7);
  EXPECT_EQ(table.JumpAt(TimePoint::MaxValue())->TimeCode().TotalSample(), 7);

  const auto clone = table.Clone();
  EXPECT_TRUE(*clone == table);
  clone->TimeCodeJumps().Front()->TimeCode(TimeCode());
  EXPECT_FALSE(*clone == table);
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
