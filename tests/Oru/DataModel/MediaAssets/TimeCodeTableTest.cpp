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
}

TEST(TimeCodeTableTest, ACloneHasJumpsOfItsOwn) {
  TimeCodeTable table("ltc");
  table.TimeCodeJumps().Insert(Jump(0, 5));
  const auto clone = table.Clone();
  EXPECT_EQ(*clone, table);
  table.TimeCodeJumps().Front()->TimeCode(TimeCode().AddSample(6));
  EXPECT_EQ(clone->TimeCodeJumps().Front()->TimeCode().TotalSample(), 5);
  EXPECT_NE(*clone, table);
  EXPECT_NE(TimeCodeTable("ltc"), TimeCodeTable("vitc"));
  EXPECT_LT(TimeCodeTable("ltc"), TimeCodeTable("vitc"));
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
