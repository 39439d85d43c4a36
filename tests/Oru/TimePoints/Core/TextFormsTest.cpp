#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"
#include "Oru/TimePoints/Core/Formatters/ClockDurationFormatter.h"
#include "Oru/TimePoints/Core/Formatters/ClockTimeCodeFormatter.h"
#include "Oru/TimePoints/Core/Formatters/FractionRateFormatter.h"
#include "Oru/TimePoints/Core/Formatters/UtcTimeBoundaryFormatter.h"
#include "Oru/TimePoints/Core/Formatters/UtcTimeBoundsFormatter.h"
#include "Oru/TimePoints/Core/Formatters/UtcTimePointFormatter.h"
#include "Oru/TimePoints/Core/Parsers/ClockDurationParser.h"
#include "Oru/TimePoints/Core/Parsers/ClockTimeCodeParser.h"
#include "Oru/TimePoints/Core/Parsers/FractionRateParser.h"
#include "Oru/TimePoints/Core/Parsers/UtcTimeBoundaryParser.h"
#include "Oru/TimePoints/Core/Parsers/UtcTimeBoundsParser.h"
#include "Oru/TimePoints/Core/Parsers/UtcTimePointParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

namespace Oru::TimePoints {
namespace {

constexpr int64_t lowest = std::numeric_limits<int64_t>::min();
constexpr int64_t highest = std::numeric_limits<int64_t>::max();

/// Extremes, values near zero, and random ones of all magnitudes.
std::vector<int64_t> Numbers() {
  std::vector<int64_t> numbers = {lowest, lowest + 1, -86400000000001, -1,     0,
                                  1,      999999999,  highest - 1,     highest};
  std::mt19937_64 random(20240229);
  for (int shift = 0; numbers.size() < 4000; shift = (shift + 1) % 63) {
    numbers.push_back(static_cast<int64_t>(random()) >> shift);
  }
  return numbers;
}

template <class T, class Formatter, class Parser>
void ExpectRoundTrip(const T& value, const Formatter& formatter, Parser& parser) {
  const std::string text = value.ToString(formatter);
  ASSERT_EQ(T::Parse(text, parser), value) << text;
  ASSERT_TRUE(parser.IsStringFormatValid(text)) << text;
}

template <class T>
void ExpectRefused(ValueParser<T>& parser, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    EXPECT_FALSE(parser.IsStringFormatValid(text)) << text;
    EXPECT_EQ(parser.TryParse(text), std::pair(false, T())) << text;
    EXPECT_THAT([&] { parser.Parse(text); },
                testing::ThrowsMessage<std::invalid_argument>(testing::HasSubstr(" is not a")));
  }
}

TEST(TextFormsTest, EveryNumberSurvivesItsText) {
  ClockDurationParser durations;
  UtcTimePointParser timePoints;
  FractionRateParser rates;
  UtcTimeBoundaryParser boundaries;
  UtcTimeBoundsParser bounds;
  int64_t previous = 1;
  for (const int64_t number : Numbers()) {
    const TimePoint instant = TimePoint::FromNanoseconds(number);
    const TimeBoundary boundary(instant, number % 2 == 0);
    ExpectRoundTrip(Duration::FromNanoseconds(number), ClockDurationFormatter(), durations);
    ExpectRoundTrip(instant, UtcTimePointFormatter(), timePoints);
    ExpectRoundTrip(Rate(previous, number == 0 ? 1 : number), FractionRateFormatter(), rates);
    ExpectRoundTrip(boundary, UtcTimeBoundaryFormatter(), boundaries);
    ExpectRoundTrip(TimeBounds(TimePoint::FromNanoseconds(previous), boundary), UtcTimeBoundsFormatter(),
                    bounds);
    previous = number;
  }
}

TEST(TextFormsTest, Durations) {
  const ClockDurationFormatter formatter;
  EXPECT_EQ(formatter.Format(Duration::FromMilliseconds(5400020)), "01:30:00.020000000");
  EXPECT_EQ(formatter.Format(Duration::FromNanoseconds(-1)), "-00:00:00.000000001");
  EXPECT_EQ(formatter.Format(Duration::MinValue()), "-2562047:47:16.854775808");
  ClockDurationParser parser;
  EXPECT_EQ(parser.Parse("00:00:01.5"), Duration::FromMilliseconds(1500));
  EXPECT_EQ(parser.Parse("-100:00:00"), Duration::FromMinutes(-6000));
  EXPECT_EQ(parser.TryParse("000000000000000001:00:00").second, Duration::FromMinutes(60));
  ExpectRefused(parser,
                {"", "-", "1:00:00", "00:60:00", "00:00:60", "00:00:00.", "00:00:00.1234567890", "00:00",
                 "00:00:00 ", " 00:00:00", "+00:00:00", "--00:00:00", "00:0x:00", "2562047:47:16.854775808",
                 "-2562047:47:16.854775809", "999999999999999999:00:00", "1000000000000000000:00:00"});
  EXPECT_FALSE(parser.IsStringFormatValid(std::string("00:00:00\0", 9)));
}

TEST(TextFormsTest, TimePoints) {
  const UtcTimePointFormatter formatter;
  EXPECT_EQ(formatter.Format(TimePoint::FromNanoseconds(0)), "1970-01-01T00:00:00.000000000Z");
  EXPECT_EQ(formatter.Format(TimePoint::FromNanoseconds(-1)), "1969-12-31T23:59:59.999999999Z");
  EXPECT_EQ(formatter.Format(TimePoint::MinValue()), "1677-09-21T00:12:43.145224192Z");
  EXPECT_EQ(formatter.Format(TimePoint::MaxValue()), "2262-04-11T23:47:16.854775807Z");
  EXPECT_EQ(formatter.Format(TimePoint::FromNanoseconds(951782400000000000)),
            "2000-02-29T00:00:00.000000000Z");
  UtcTimePointParser parser;
  EXPECT_EQ(parser.Parse("2001-09-09T01:46:40.25Z").ToNanoseconds(), 1000000000250000000);
  ExpectRefused(
      parser,
      {"", "1970-01-01", "1970-01-01T00:00:00", "1970-01-01 00:00:00Z", "1970-01-01T24:00:00Z",
       "1970-01-01T00:00:60Z", "1970-00-01T00:00:00Z", "1970-13-01T00:00:00Z", "1970-01-00T00:00:00Z",
       "1900-02-29T00:00:00Z", "1970-1-01T00:00:00Z", "1970-01-01T00:00:00+00:00", "1970-01-01T00:00:00ZZ",
       "0000-01-01T00:00:00Z", "1677-09-21T00:12:43.145224191Z", "2262-04-11T23:47:16.854775808Z"});
}

TEST(TextFormsTest, Rates) {
  const FractionRateFormatter formatter;
  EXPECT_EQ(formatter.Format(Rate(30000, 1001)), "30000/1001");
  FractionRateParser parser;
  EXPECT_EQ(parser.Parse("50"), Rate(50, 1));
  EXPECT_EQ(parser.Parse("100/2"), Rate(100, 2));
  EXPECT_EQ(parser.Parse("-1/-3"), Rate(-1, -3));
  ExpectRefused(parser, {"", "/", "50/", "/1", "50/0", "50/1/1", "+50", "50 / 1", "25.0",
                         "9223372036854775808", "1/-9223372036854775809", "99999999999999999999"});
}

TEST(TextFormsTest, BoundariesAndBounds) {
  const TimeBoundary still(TimePoint::FromNanoseconds(0));
  const TimeBoundary unsetMoving(TimePoint::Empty(), true);
  const UtcTimeBoundsFormatter formatter;
  EXPECT_EQ(formatter.Format(TimeBounds()), "unset/unset");
  EXPECT_EQ(formatter.Format(TimeBounds(still, unsetMoving)), "1970-01-01T00:00:00.000000000Z/unset moving");
  UtcTimeBoundaryParser boundary;
  ExpectRefused(boundary,
                {"", " moving", "moving", "Unset", "unset  moving", "unset moving moving", "unset "});
  UtcTimeBoundsParser bounds;
  ExpectRefused(bounds, {"", "/", "unset", "unset/", "/unset", "unset/unset/unset", "unset / unset"});
}

TEST(TextFormsTest, TimeCodes) {
  const struct {
    TimeCode timeCode;
    const char* text;
  } cases[] = {
      {TimeCodeBuilder().Rate(Rate(25, 1)).ClockTime(10, 0, 0, 12).Build(), "10:00:00:12"},
      {TimeCodeBuilder().Rate(Rate(30, 1)).IsDrop(true).ClockTime(10, 1, 0, 2).Build(), "10:01:00;02"},
      {TimeCodeBuilder().Date(2024, 2, 29).ClockTime(10, 0, 0, 49).Build(), "2024-02-29 10:00:00:49"},
      {TimeCodeBuilder().Rate(Rate(120, 1)).ClockTime(23, 59, 59, 7).Build(), "23:59:59:007"},
      {TimeCodeBuilder().Rate(Rate(1, 1)).Build(), "00:00:00:00"},
      {TimeCode(), "1900-01-01 00:00:00:00"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.timeCode.ToString(ClockTimeCodeFormatter()), c.text);
    ClockTimeCodeParser parser(c.timeCode.Rate());
    EXPECT_EQ(TimeCode::Parse(c.text, parser), c.timeCode) << c.text;
  }
  ClockTimeCodeParser thirty(VideoRates::Rate30());
  EXPECT_EQ(thirty.Parse("2024-02-29T10:00:00;12"), thirty.Parse("2024-02-29 10:00:00;12"));
  ExpectRefused(thirty,
                {"", "10:00:00", "10:00:00:1", "1:00:00:00", "24:00:00:00", "00:60:00:00", "00:00:60:00",
                 "00:00:00:30", "00:01:00;01", "00;00:00:00", "00:00:00.00", "00:00:00:00 ",
                 "2262-01-01 00:00:00:00", "2023-02-29 00:00:00:00", "2024-02-29  00:00:00:00", "2024-02-29",
                 "2024-2-29 00:00:00:00", "00:00:00:0000000000"});
  ClockTimeCodeParser fifty(VideoRates::Rate50());
  ExpectRefused(fifty, {"00:00:00;00"});
  ClockTimeCodeParser fractional(VideoRates::Rate2997());
  ExpectRefused(fractional, {"00:00:00:00"});
}

TEST(TextFormsTest, EveryTimeCodeSurvivesItsText) {
  std::mt19937_64 random(1900);
  for (const auto& [rate, drop] : {std::pair(1, false), std::pair(25, false), std::pair(30, true),
                                   std::pair(50, false), std::pair(60, true), std::pair(300, false)}) {
    ClockTimeCodeParser parser(Rate(rate, 1));
    TimeCodeBuilder builder = TimeCodeBuilder().Rate(Rate(rate, 1)).IsDrop(drop);
    const TimeCode midnight = builder.Build();
    const int64_t lastOfDay = builder.ClockTime(23, 59, 59, rate - 1).Build() - midnight;
    const TimeCode last = builder.Date(2261, 12, 31).Build();
    ExpectRoundTrip(last, ClockTimeCodeFormatter(), parser);
    for (int i = 0; i < 1000; ++i) {
      const auto any = static_cast<int64_t>(random() >> 1);
      ExpectRoundTrip(last - any % last.TotalSample(), ClockTimeCodeFormatter(), parser);
      ExpectRoundTrip(midnight + any % (lastOfDay + 1), ClockTimeCodeFormatter(), parser);
    }
  }
}

}  // namespace
}  // namespace Oru::TimePoints
