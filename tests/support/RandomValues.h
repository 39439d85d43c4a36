#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/DataModel/MediaAssets/TimeBoundsArray.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include "support/Prelude.h"

namespace Oru::TestSupport {

/// Makes values that like to break things: the extremes of every integer, unknown enumeration values, texts with
/// quotes, NUL bytes, unicode, malformed UTF-8, and now and then one of a mebibyte. All of them are values that the
/// file keeps as they are. The same seed gives the same values.
class RandomValues {
 public:
  explicit RandomValues(uint64_t seed) : engine(seed) {}

  /// A number from 0 up to but not including `end`.
  std::size_t Below(std::size_t end) { return static_cast<std::size_t>(engine() % end); }
  /// True in one of `times` cases.
  bool Chance(std::size_t times) { return Below(times) == 0; }

  int64_t Int64() {
    constexpr int64_t max = std::numeric_limits<int64_t>::max();
    constexpr int64_t edges[] = {0, -1, max, -max - 1, 2147483648, 4102444800};
    if (Chance(3)) return edges[Below(std::size(edges))];
    return static_cast<int64_t>(engine()) >> Below(64);
  }
  int32_t Int32() {
    constexpr int32_t max = std::numeric_limits<int32_t>::max();
    constexpr int32_t edges[] = {0, -1, max, -max - 1};
    if (Chance(3)) return edges[Below(std::size(edges))];
    return static_cast<int32_t>(engine()) >> Below(32);
  }
  /// From 0 to the highest.
  int32_t Count() { return static_cast<int32_t>(Int32() & std::numeric_limits<int32_t>::max()); }

  std::string Text() {
    static const std::string odd[] = {"",
                                      "NULL",
                                      "O'Brien's \"clip\"",
                                      "'); DROP TABLE MediaAsset; --",
                                      "%_\\*?:name@p$1",
                                      " leading and trailing \r\n\t",
                                      "Zo\u00eb \u65e5\u672c\u8a9e \U0001f3ac",
                                      std::string("\0head", 5),
                                      std::string("mid\0dle\0", 8),
                                      "\xff\xfe\xc0\x80 \xed\xa0\x80",
                                      "12345678901234567890"};
    if (Chance(15000)) return std::string(1 << 20, Chance(2) ? 'm' : '\'') + "end";
    if (!Chance(3)) return odd[Below(std::size(odd))];
    std::string text(Below(40), ' ');
    for (char& byte : text)
      byte = static_cast<char>(engine());
    return text;
  }

  /// A text that this maker gives once.
  std::string Id() { return Text() + "#" + std::to_string(++lastId); }

  TimePoints::TimeBoundary Boundary() {
    if (Chance(5)) return TimePoints::TimeBoundary(TimePoints::TimePoint::Empty(), Chance(2));
    return TimePoints::TimeBoundary(TimePoints::TimePoint::FromNanoseconds(Int64()), Chance(2));
  }

  TimePoints::TimeCode TimeCode() {
    TimePoints::TimeCodeBuilder builder;
    const bool isSixty = Chance(2);
    builder.Year(1900).Rate(TimePoints::Rate(isSixty ? 60 : 50, 1)).IsDrop(isSixty && Chance(2));
    return builder.Build().AddSample(Int64() & std::numeric_limits<int64_t>::max());
  }

  /// A value of one of the types that fields have.
  template <class T>
  T Any() {
    using namespace TimePoints;
    using BusinessEntityModel::BaseTypes::Identifier;
    if constexpr (std::is_enum_v<T>) {
      return static_cast<T>(Chance(4) ? Int32() : static_cast<int32_t>(Below(9)));
    } else if constexpr (std::is_arithmetic_v<T>) {
      return static_cast<T>(sizeof(T) == 1 ? Chance(2) : sizeof(T) == 8 ? Int64() : Int32());
    } else if constexpr (std::is_same_v<T, TimePoints::TimeCode>) {
      return TimeCode();
    } else if constexpr (std::is_same_v<T, TimeBoundary>) {
      return Boundary();
    } else if constexpr (std::is_same_v<T, TimeBounds>) {
      return T(Boundary(), Boundary());
    } else if constexpr (std::is_same_v<T, TimePoint>) {
      return TimePoint::FromNanoseconds(Int64());
    } else if constexpr (std::is_constructible_v<T, Duration>) {
      return T(Duration::FromNanoseconds(Int64()));
    } else if constexpr (std::is_constructible_v<T, std::string>) {
      return T(Text());
    } else if constexpr (std::is_constructible_v<T, Identifier>) {
      return Chance(2) ? T(Identifier(Text())) : T();
    } else {
      return T(Int32(), Int32());
    }
  }

  /// None occurs twice.
  void Fill(DataModel::MediaAssets::TimeBoundsArray& bounds) {
    bounds.Clear();
    std::set<std::pair<int64_t, int64_t>> present;
    for (auto count = Below(5); count > 0; --count) {
      const TimePoints::TimeBoundary in = Boundary(), out = Boundary();
      if (present.emplace(in.TimePoint().ToNanoseconds(), out.TimePoint().ToNanoseconds()).second)
        bounds.Insert(TimePoints::TimeBounds(in, out));
    }
  }

  void Fill(BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadata) {
    metadata.Clear();
    for (auto profiles = Below(4); profiles > 0; --profiles) {
      const auto profile = std::make_shared<BusinessEntityModel::BaseTypes::GenericMetadataProfile>(Text());
      for (auto entries = 1 + Below(4); entries > 0; --entries)
        profile->Set(Text(), Text());
      metadata.Set(profile);
    }
  }

 private:
  std::mt19937_64 engine;
  int64_t lastId = 0;
};

}  // namespace Oru::TestSupport
