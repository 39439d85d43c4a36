#pragma once

#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"
#include "Oru/TimePoints/Core/Parsers/TextReader.h"
#include "Oru/TimePoints/Core/Parsers/TimeCodeParser.h"
#include "Oru/TimePoints/Core/TimeCode.h"

#include <stdexcept>
#include <string>

namespace Oru::TimePoints {

/// Reads a time code from `HH:MM:SS:FF`, or `HH:MM:SS;FF` for drop-frame counting, with `YYYY-MM-DD` and a
/// blank or a `T` before it if it has a date; what `ClockTimeCodeFormatter` writes. The frames have two
/// digits or more. The text doesn't contain the rate, so the parser is made for one:
///
///     ClockTimeCodeParser parser(VideoRates::Rate30());
///     TimeCode::Parse("10:01:00;02", parser);
///     TimeCode::Parse("2024-02-29T10:00:00:00", parser);
///
/// A text of the right form is refused where `TimeCodeBuilder` refuses the fields.
class ClockTimeCodeParser : public TimeCodeParser {
 public:
  /// @param sampleRate  the rate that the time codes are given
  explicit ClockTimeCodeParser(const Rate& sampleRate) : rate(sampleRate) {}

  TimeCode Parse(const std::string& text) override {
    TextReader reader(text, "a time code [YYYY-MM-DD ]HH:MM:SS:FF");
    TimeCodeBuilder builder;
    if (StartsWithDate(text)) TakeDate(reader, builder);
    TakeClock(reader, builder);
    reader.End();
    try {
      return builder.Rate(rate).Build();
    } catch (const std::out_of_range& fault) {
      reader.Fail(fault.what());
    }
  }

 private:
  static bool StartsWithDate(const std::string& text) { return text.size() > 4 && text[4] == '-'; }

  static void TakeDate(TextReader& reader, TimeCodeBuilder& builder) {
    builder.Year(static_cast<int>(reader.Digits(4, 4)));
    reader.Take('-');
    builder.Month(reader.TwoDigits());
    reader.Take('-');
    builder.Day(reader.TwoDigits());
    if (!reader.TakeIf('T')) reader.Take(' ');
  }

  static void TakeClock(TextReader& reader, TimeCodeBuilder& builder) {
    builder.Hour(reader.TwoDigits());
    reader.Take(':');
    builder.Minute(reader.TwoDigits());
    reader.Take(':');
    builder.Second(reader.TwoDigits());
    const bool drop = reader.TakeIf(';');
    if (!drop) reader.Take(':');
    builder.IsDrop(drop).Sample(static_cast<int>(reader.Digits(2, 9)));
  }

  Rate rate;
};

}  // namespace Oru::TimePoints
