#include "AssetBuilder.h"

#include "Oru/TimePoints/Core/Formatters/ClockTimeCodeFormatter.h"

#include "support/Prelude.h"

// What clips are made of.
namespace Catalogue {
namespace {

TEST(AssetBuilderTest, CountsTheUserTimeCodeInFiftyOrSixtySamples) {
  const struct {
    const char* text;
    Fraction rate;
    const char* expected;
  } cases[] = {
      {"10:00:00:12", {25, 1}, "10:00:00:24 at 50"},
      {"10:00:00:49", {50, 1}, "10:00:00:49 at 50"},
      {"01:00:00:29", {30, 1}, "01:00:00:58 at 60"},
      {"00:01:00;02", {30000, 1001}, "00:01:00;04 at 60"},
      {"23:59:59;59", {60000, 1001}, "23:59:59;59 at 60"},
      {"00:01:00;01", {30000, 1001}, ""},
      {"10:00:00:12", {24, 1}, ""},
      {"10:00:00:12", {}, ""},
      {"noon", {25, 1}, ""},
  };
  for (const auto& [text, rate, expected] : cases) {
    const auto timeCode = UserTimeCodeOf({text, rate, false, ""});
    const std::string found = timeCode ? timeCode->ToString(Oru::TimePoints::ClockTimeCodeFormatter()) +
                                             " at " + std::to_string(timeCode->Rate().Numerator())
                                       : "";
    EXPECT_EQ(found, expected) << text << " at " << rate.numerator << '/' << rate.denominator;
  }
}

TEST(AssetBuilderTest, CountsTheDurationInFramesThenInSamplesThenByTheWrapper) {
  MediaReport report;
  report.durationSeconds = 1.5;
  EXPECT_EQ(DurationOf(report), 1500000000);
  report.audio.resize(1);
  report.audio[0].sampleRate = 48000;
  report.audio[0].sampleCount = 48001;
  EXPECT_EQ(DurationOf(report), 1000020834);
  report.video.resize(1);
  report.video[0].frameRate = {30000, 1001};
  report.video[0].frameCount = 30;
  EXPECT_EQ(DurationOf(report), 1001000000);
}

}  // namespace
}  // namespace Catalogue
