#include "Oru/DataModel/MediaAssets/TimeCodeString.h"

#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets {
namespace {

using TimePoints::TimeCode;
using TimePoints::TimeCodeBuilder;

TEST(TimeCodeStringTest, TextsOfTimeCodesReadBack) {
  struct Case {
    int hour, minute, second, frame;
    int64_t rate;
    bool isDrop;
    std::string text;
  };
  for (const Case& c : std::vector<Case>{{0, 0, 0, 0, 25, false, "00:00:00:00"},
                                         {23, 59, 58, 24, 25, false, "23:59:58:24"},
                                         {1, 0, 59, 29, 30, true, "01:00:59;29"},
                                         {1, 1, 0, 4, 60, true, "01:01:00;04"},
                                         {9, 8, 7, 119, 120, false, "09:08:07:119"}}) {
    const TimePoints::Rate rate(c.rate, 1);
    const TimeCode timeCode =
        TimeCodeBuilder().ClockTime(c.hour, c.minute, c.second, c.frame).Rate(rate).IsDrop(c.isDrop).Build();
    EXPECT_EQ(TimeCodeString(timeCode).Value(), c.text);
    EXPECT_EQ(TimeCodeString(c.text).ToTimeCode(rate), timeCode) << c.text;
  }
}

TEST(TimeCodeStringTest, OtherTextsAreHeldButStandForNoTimeCode) {
  const TimePoints::Rate rate(30, 1);
  for (const std::string text :
       {"", "10", "10:00:00", "10:00:00:", "10:00:00:0", "1:00:00:00", "10;00:00:00", "10:00:00:00 ",
        "10:00:00:00:00", "10:00:00.00", "-1:00:00:00", "10:00:00:-1", "10:00:00:99999999999"}) {
    EXPECT_EQ(TimeCodeString(text).Value(), text);
    EXPECT_THROW(TimeCodeString(text).ToTimeCode(rate), std::invalid_argument) << text;
  }
  for (const std::string text : {"24:00:00:00", "00:60:00:00", "00:00:60:00", "00:00:00:30", "00:01:00;01"}) {
    EXPECT_THROW(TimeCodeString(text).ToTimeCode(rate), std::out_of_range) << text;
  }
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
