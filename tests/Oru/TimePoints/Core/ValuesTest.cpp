#include "Oru/TimePoints/Core/Formatters/ClockDurationFormatter.h"
#include "Oru/TimePoints/Core/Formatters/ClockTimeCodeFormatter.h"
#include "Oru/TimePoints/Core/Formatters/FractionRateFormatter.h"
#include "Oru/TimePoints/Core/Formatters/UtcTimeBoundsFormatter.h"
#include "Oru/TimePoints/Core/Parsers/ClockDurationParser.h"
#include "Oru/TimePoints/Core/Parsers/ClockTimeCodeParser.h"
#include "Oru/TimePoints/Core/Parsers/FractionRateParser.h"
#include "Oru/TimePoints/Core/Parsers/UtcTimeBoundsParser.h"
#include "Oru/TimePoints/Core/RatedTimePoint.h"
#include "Oru/TimePoints/Core/VideoRates.h"

#include "support/Prelude.h"

#include <ctime>

// Instants, durations, rates, and the calendar; and the texts of them.
namespace Oru::TimePoints {
namespace {

constexpr int64_t lowest = std::numeric_limits<int64_t>::min();
constexpr int64_t highest = std::numeric_limits<int64_t>::max();

/// Extremes, values near zero, and random ones of all magnitudes.
std::vector<int64_t> Numbers(std::size_t count) {
  std::vector<int64_t> numbers = {lowest, lowest + 1, -86400000000001, -1,     0,
                                  1,      999999999,  highest - 1,     highest};
  std::mt19937_64 random(20240229);
  for (int shift = 0; numbers.size() < count; shift = (shift + 1) % 63)
    numbers.push_back(static_cast<int64_t>(random()) >> shift);
  return numbers;
}

// Against wider integers. What doesn't fit throws and changes nothing.
TEST(DurationTest, ArithmeticIsExactOrThrows) {
  const std::vector<int64_t> numbers = Numbers(72);
  const auto expect = [](auto compute, Int128 exact) {
    if (exact >= lowest && exact <= highest) {
      EXPECT_EQ(compute().ToNanoseconds(), static_cast<int64_t>(exact));
    } else {
      EXPECT_THROW(compute(), std::overflow_error);
    }
  };
  for (const int64_t a : numbers) {
    const Duration left = Duration::FromNanoseconds(a);
    const TimePoint instant = TimePoint::FromNanoseconds(a);
    expect([&] { return Duration::FromMilliseconds(a); }, Int128(a) * 1000000);
    const int seconds = static_cast<int>(a);
    expect([&] { return Duration::FromSeconds(seconds); }, Int128(seconds) * 1000000000);
    expect([&] { return Duration::FromMinutes(seconds); }, Int128(seconds) * 60000000000);
    EXPECT_THROW(left / 0, std::invalid_argument);
    for (const int64_t b : numbers) {
      const Duration right = Duration::FromNanoseconds(b);
      expect([&] { return left + right; }, Int128(a) + b);
      expect([&] { return left - right; }, Int128(a) - b);
      expect([&] { return left * b; }, Int128(a) * b);
      if (b != 0) expect([&] { return left / b; }, Int128(a) / b);
      expect([&] { return instant + right; }, Int128(a) + b);
      expect([&] { return instant - right; }, Int128(a) - b);
      expect([&] { return instant - TimePoint::FromNanoseconds(b); }, Int128(a) - b);
      EXPECT_EQ(left.CompareTo(right), a < b ? -1 : a > b ? 1 : 0);
    }
  }
  Duration longest = Duration::MaxValue();
  TimePoint last = TimePoint::MaxValue();
  EXPECT_THROW(longest *= 2, std::overflow_error);
  EXPECT_THROW(longest += longest, std::overflow_error);
  EXPECT_THROW(last += longest, std::overflow_error);
  EXPECT_TRUE(longest == Duration::MaxValue() && last == TimePoint::MaxValue());
}

TEST(TimePointTest, DefaultsAreUnsetAndEqualityTakesEveryField) {
  const TimePoint ten = TimePoint::FromNanoseconds(10), twelve = TimePoint::FromNanoseconds(12);
  EXPECT_EQ(TimePoint(), TimePoint::MinValue() + Duration::FromNanoseconds(1));
  EXPECT_EQ(TimeBounds(), TimeBounds(TimePoint(), TimeBoundary(TimePoint(), false)));
  EXPECT_NE(TimeBoundary(ten, true), TimeBoundary(ten));
  EXPECT_TRUE(TimeBounds(ten, ten) != TimeBounds(twelve, ten) &&
              TimeBounds(ten, ten) != TimeBounds(ten, twelve));
  EXPECT_EQ(TimeBounds(twelve, TimeBoundary(ten, true)).Duration(), Duration::FromNanoseconds(-2));
  EXPECT_EQ(TimeBounds(TimeBoundary(), ten).Duration(), Duration::Empty());
  EXPECT_EQ(TimeBounds(ten, TimeBoundary()).Duration(), Duration::Empty());
  EXPECT_THROW(TimeBounds(TimePoint::MinValue(), ten).Duration(), std::overflow_error);
}

// The first nanosecond of a sample belongs to it, and the one before to the sample before.
TEST(TimePointTest, SampleNumbersGoThereAndBack) {
  for (const Rate& rate : {VideoRates::Rate2398(), VideoRates::Rate50(), Rate(48000, 1), Rate(999999937, 1),
                           Rate(1000000000, 1), Rate(1, 3600), Rate(-25, -1)}) {
    const int64_t first = TimePoint::MinValue().GetSampleNumber(rate) + 1;
    const int64_t last = TimePoint::MaxValue().GetSampleNumber(rate);
    std::vector<int64_t> numbers = Numbers(4000);
    numbers.insert(numbers.end(), {first, last});
    for (const int64_t number : numbers) {
      if (number < first || number > last) continue;
      const TimePoint start = TimePoint::FromSampleNumber(rate, number);
      const TimePoint before = start - Duration::FromNanoseconds(1);
      ASSERT_EQ(start.GetSampleNumber(rate), number) << rate.ToString();
      ASSERT_EQ(before.GetSampleNumber(rate), number - 1) << rate.ToString();
      if (number <= first) continue;
      const RatedTimePoint aligned = before.AlignWith(rate);
      ASSERT_EQ(aligned.SampleNumber(), number - 1);
      ASSERT_EQ(aligned.TimePoint() + aligned.Delta(), before);
      ASSERT_TRUE((aligned + 1) - aligned == 1 && (aligned + 1) - 1 == aligned);
    }
  }
}

TEST(TimePointTest, RatesThatCountNothingOrTooMuchAreRefused) {
  const TimePoint epoch = TimePoint::FromNanoseconds(0);
  for (const Rate& rate : {Rate(), Rate(-25, 1), Rate(25, -1), Rate(25, 0)}) {
    EXPECT_THROW(epoch.GetSampleNumber(rate), std::invalid_argument) << rate.ToString();
    EXPECT_THROW(epoch.AlignWith(rate), std::invalid_argument) << rate.ToString();
    EXPECT_THROW(TimePoint::FromSampleNumber(rate, 0), std::invalid_argument) << rate.ToString();
  }
  EXPECT_THROW(TimePoint::MaxValue().GetSampleNumber(Rate(2000000000, 1)), std::overflow_error);
  EXPECT_THROW(TimePoint::FromSampleNumber(Rate(-1, lowest), lowest), std::overflow_error);
  EXPECT_EQ(TimePoint::MaxValue().GetSampleNumber(VideoRates::Rate50()), 461168601842);
  EXPECT_THROW(TimePoint::FromSampleNumber(VideoRates::Rate50(), 461168601843), std::overflow_error);
  EXPECT_EQ(TimePoint::MinValue().GetSampleNumber(Rate(lowest, lowest)), -9223372037);
  EXPECT_THROW(TimePoint::MinValue().AlignWith(VideoRates::Rate25()), std::overflow_error);
  EXPECT_THROW(RatedTimePoint(epoch + Duration::FromNanoseconds(1), VideoRates::Rate25(), epoch),
               std::invalid_argument);
  EXPECT_NE(epoch.AlignWith(VideoRates::Rate25()),
            (epoch + Duration::FromNanoseconds(1)).AlignWith(VideoRates::Rate25()));
  EXPECT_THROW(RatedTimePoint().SampleNumber(), std::invalid_argument);
  EXPECT_THROW(RatedTimePoint(1, Rate(50, 1)) - RatedTimePoint(1, Rate(100, 2)), std::invalid_argument);
}

TEST(RateTest, KeepsItsNumbersAndIsOrderedByTheRatio) {
  EXPECT_NE(Rate(100, 2), Rate(50, 1));
  EXPECT_NE(Rate(50, 1), Rate(50, 2));
  EXPECT_EQ(Rate(100, 2).CompareTo(Rate(50, 1)), 0);
  EXPECT_EQ(Rate(25, 0).ToString(), "25/0");
  EXPECT_THROW(Rate(25, 0).CompareTo(Rate(25, 1)), std::invalid_argument);
  EXPECT_THROW(Rate(25, 1).CompareTo(Rate(25, 0)), std::invalid_argument);
  const std::vector<int64_t> numbers = Numbers(24);
  for (const int64_t a : numbers) {
    for (const int64_t b : numbers) {
      const Rate left(a, b == 0 ? 1 : b), right(b, a == 0 ? -1 : a);
      // The sign of a/b - c/d is that of (ad - cb)bd.
      const Int128 difference = Int128(a) * right.Denominator() - Int128(b) * left.Denominator();
      const bool isTurned = (left.Denominator() < 0) != (right.Denominator() < 0);
      const int order = difference == 0 ? 0 : (difference < 0) != isTurned ? -1 : 1;
      EXPECT_EQ(left.CompareTo(right), order) << left.ToString() << " " << right.ToString();
    }
  }
}

TEST(RateTest, ReducedGivesLowestTermsOverAPositiveDenominator) {
  EXPECT_EQ(Rate(60000, 2002).Reduced(), VideoRates::Rate2997());
  EXPECT_EQ(Rate(3, -6).Reduced(), Rate(-1, 2));
  EXPECT_EQ(Rate(0, -9).Reduced(), Rate());
  EXPECT_EQ(Rate(lowest, lowest).Reduced(), Rate(1, 1));
  EXPECT_THROW(Rate(lowest, -1).Reduced(), std::overflow_error);
  EXPECT_THROW(Rate(1, lowest).Reduced(), std::overflow_error);
  EXPECT_THROW(Rate(25, 0).Reduced(), std::invalid_argument);
}

/// The text of a value, after a check that it is read as that value.
template <class T, class Formatter, class Parser>
std::string CheckedText(const T& value, const Formatter& formatter, Parser parser) {
  std::string text = value.ToString(formatter);
  EXPECT_EQ(T::Parse(text, parser), value) << text;
  EXPECT_TRUE(parser.IsStringFormatValid(text)) << text;
  return text;
}

template <class Parser>
void ExpectRefused(Parser parser, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    EXPECT_FALSE(parser.IsStringFormatValid(text)) << text;
    EXPECT_EQ(parser.TryParse(text), std::pair(false, decltype(parser.Parse(text))())) << text;
    EXPECT_THAT([&] { parser.Parse(text); },
                testing::ThrowsMessage<std::invalid_argument>(testing::HasSubstr(" is not a")));
  }
}

// The date and the time of day are those of the system's calendar, on days of all years that there are.
TEST(TextFormsTest, EveryNumberSurvivesItsText) {
  std::vector<int64_t> numbers = Numbers(4000);
  for (int64_t day = -106751; day < 106751; day += 5)
    numbers.push_back(day * 86400000000000 + numbers.back() % 86400000000000);
  int64_t previous = 1;
  for (const int64_t number : numbers) {
    const TimeBoundary boundary(TimePoint::FromNanoseconds(number), number % 2 == 0);
    const auto second = static_cast<std::time_t>(number / 1000000000 - (number % 1000000000 < 0 ? 1 : 0));
    char date[32];
    std::tm fields{};
    std::strftime(date, sizeof date, "%FT%T.", gmtime_r(&second, &fields));
    ASSERT_EQ(boundary.TimePoint().ToString(UtcTimePointFormatter()).substr(0, 20), date);
    const TimePoint other = TimePoint::FromNanoseconds(std::exchange(previous, number));
    CheckedText(TimeBounds(other, boundary), UtcTimeBoundsFormatter(), UtcTimeBoundsParser());
    CheckedText(Duration::FromNanoseconds(number), ClockDurationFormatter(), ClockDurationParser());
    CheckedText(Rate(previous, number | 1), FractionRateFormatter(), FractionRateParser());
  }
}

TEST(TextFormsTest, KnownTexts) {
  const ClockDurationFormatter duration;
  EXPECT_EQ(duration.Format(Duration::FromMilliseconds(5400020)), "01:30:00.020000000");
  EXPECT_EQ(duration.Format(Duration::FromNanoseconds(-1)), "-00:00:00.000000001");
  EXPECT_EQ(duration.Format(Duration::MinValue()), "-2562047:47:16.854775808");
  EXPECT_EQ(FractionRateFormatter().Format(Rate(30000, 1001)), "30000/1001");
  EXPECT_EQ(UtcTimeBoundsFormatter().Format(
                TimeBounds(TimePoint::FromNanoseconds(-1), TimeBoundary(TimePoint::Empty(), true))),
            "1969-12-31T23:59:59.999999999Z/unset moving");
  EXPECT_EQ(ClockDurationParser().Parse("00:00:01.5"), Duration::FromMilliseconds(1500));
  EXPECT_EQ(ClockDurationParser().Parse("-000000000000000100:00:00"), Duration::FromMinutes(-6000));
  EXPECT_EQ(UtcTimePointParser().Parse("2001-09-09T01:46:40.25Z").ToNanoseconds(), 1000000000250000000);
  FractionRateParser rates;
  EXPECT_TRUE(rates.Parse("50") == Rate(50, 1) && rates.Parse("-1/-3") == Rate(-1, -3));
  const auto timeCode = [](TimeCodeBuilder builder, int64_t rate) {
    return CheckedText(builder.Rate(Rate(rate, 1)).Build(), ClockTimeCodeFormatter(),
                       ClockTimeCodeParser(Rate(rate, 1)));
  };
  EXPECT_EQ(timeCode(TimeCodeBuilder().ClockTime(10, 0, 0, 12), 25), "10:00:00:12");
  EXPECT_EQ(timeCode(TimeCodeBuilder().IsDrop(true).ClockTime(10, 1, 0, 2), 30), "10:01:00;02");
  EXPECT_EQ(timeCode(TimeCodeBuilder().Date(2024, 2, 29).ClockTime(10, 0, 0, 7), 120),
            "2024-02-29 10:00:00:007");
  EXPECT_EQ(ClockTimeCodeParser(Rate(50, 1)).Parse("1900-01-01T00:00:00:00"), TimeCode());
}

TEST(TextFormsTest, OtherTextsAreRefused) {
  ExpectRefused(ClockDurationParser(),
                {"", "-", "1:00:00", "00:60:00", "00:00:60", "00:00:00.", "00:00:00.1234567890", "00:00",
                 "00:00:00 ", " 00:00:00", "+00:00:00", "--00:00:00", "00:0x:00", "2562047:47:16.854775808",
                 "-2562047:47:16.854775809", "999999999999999999:00:00"});
  EXPECT_FALSE(ClockDurationParser().IsStringFormatValid(std::string("00:00:00\0", 9)));
  ExpectRefused(UtcTimePointParser(), {"", "1970-01-01", "1970-01-01T00:00:00", "1970-01-01 00:00:00Z",
                                       "1970-01-01T24:00:00Z", "1970-01-01T00:00:60Z", "1970-00-01T00:00:00Z",
                                       "1970-13-01T00:00:00Z", "1970-01-00T00:00:00Z", "1900-02-29T00:00:00Z",
                                       "1970-1-01T00:00:00Z", "1970-01-01T00:00:00ZZ", "0000-01-01T00:00:00Z",
                                       "1677-09-21T00:12:43.145224191Z", "2262-04-11T23:47:16.854775808Z"});
  ExpectRefused(FractionRateParser(), {"", "/", "50/", "/1", "50/0", "50/1/1", "+50", "50 / 1", "25.0",
                                       "9223372036854775808", "1/-9223372036854775809"});
  ExpectRefused(UtcTimeBoundaryParser(),
                {"", " moving", "moving", "Unset", "unset  moving", "unset moving moving", "unset "});
  ExpectRefused(UtcTimeBoundsParser(),
                {"", "/", "unset", "unset/", "/unset", "unset/unset/unset", "unset / unset"});
  ExpectRefused(ClockTimeCodeParser(VideoRates::Rate50()), {"00:00:00;00"});
  ExpectRefused(
      ClockTimeCodeParser(VideoRates::Rate30()),
      {"", "10:00:00", "10:00:00:1", "1:00:00:00", "24:00:00:00", "00:60:00:00", "00:00:60:00", "00:00:00:30",
       "00:01:00;01", "00;00:00:00", "00:00:00.00", "00:00:00:00 ", "2262-01-01 00:00:00:00",
       "2023-02-29 00:00:00:00", "2024-02-29  00:00:00:00", "2024-02-29", "00:00:00:0000000000"});
}

}  // namespace
}  // namespace Oru::TimePoints
