#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/BusinessEntityModel/BaseTypes/SharedReference.h"
#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/BusinessEntityModel/Edits/SequenceDuration.h"
#include "Oru/DataModel/MediaAssets/AspectRatio.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Rate.h"
#include "Oru/DataModel/MediaAssets/TimeBoundsArray.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"
#include "Oru/TimePoints/Core/TimeBoundary.h"
#include "Oru/TimePoints/Core/TimeBounds.h"
#include "Oru/TimePoints/Core/TimeCode.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace Catalogue {

/// JSON whose fields stay in the order in which they were set.
using Json = nlohmann::ordered_json;

// How single values travel, in pairs of `ToJson` and `FromJson`: what the one writes, the other reads as the same
// value. `FromJson` throws std::invalid_argument, with what it expects, for anything else.

/// A text is a string. One that is no UTF-8 is {"hex":"fffe"}.
Json ToJson(const std::string& text);
void FromJson(const Json& json, std::string& text);

Json ToJson(const Oru::TimePoints::TimePoint& instant);
void FromJson(const Json& json, Oru::TimePoints::TimePoint& instant);
Json ToJson(const Oru::TimePoints::TimeBoundary& boundary);
void FromJson(const Json& json, Oru::TimePoints::TimeBoundary& boundary);
Json ToJson(const Oru::TimePoints::TimeBounds& bounds);
void FromJson(const Json& json, Oru::TimePoints::TimeBounds& bounds);
Json ToJson(const Oru::TimePoints::TimeCode& timeCode);
void FromJson(const Json& json, Oru::TimePoints::TimeCode& timeCode);
Json ToJson(const Oru::DataModel::MediaAssets::Rate& rate);
void FromJson(const Json& json, Oru::DataModel::MediaAssets::Rate& rate);
Json ToJson(const Oru::DataModel::MediaAssets::AspectRatio& ratio);
void FromJson(const Json& json, Oru::DataModel::MediaAssets::AspectRatio& ratio);
Json ToJson(const Oru::DataModel::MediaAssets::ZuServerId& server);
void FromJson(const Json& json, Oru::DataModel::MediaAssets::ZuServerId& server);
Json ToJson(const Oru::DataModel::MediaAssets::StringVector& texts);
void FromJson(const Json& json, Oru::DataModel::MediaAssets::StringVector& texts);
Json ToJson(const Oru::BusinessEntityModel::Edits::SequenceDuration& duration);
void FromJson(const Json& json, Oru::BusinessEntityModel::Edits::SequenceDuration& duration);
/// The bounds alone; the marks are fields of the clip.
Json ToJson(const Oru::DataModel::MediaAssets::TimeBoundsArray& bounds);
void FromJson(const Json& json, Oru::DataModel::MediaAssets::TimeBoundsArray& bounds);
/// The generic profiles alone.
Json ToJson(const Oru::BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadata);
void FromJson(const Json& json, Oru::BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadata);

/// Identifiers and names.
template <class Derived>
Json ToJson(const Oru::BusinessEntityModel::BaseTypes::StringValue<Derived>& value) {
  return ToJson(value.Value());
}
template <class Text>
std::enable_if_t<std::is_base_of_v<Oru::BusinessEntityModel::BaseTypes::StringValue<Text>, Text> ||
                 std::is_same_v<Text, Oru::BusinessEntityModel::BaseTypes::Utf8String>>
FromJson(const Json& json, Text& value) {
  std::string text;
  FromJson(json, text);
  value = Text(std::move(text));
}

/// A reference is the identifier.
template <class T>
Json ToJson(const Oru::BusinessEntityModel::BaseTypes::SharedReference<T>& reference) {
  return ToJson(reference.Id());
}
template <class T>
void FromJson(const Json& json, Oru::BusinessEntityModel::BaseTypes::SharedReference<T>& reference) {
  Oru::BusinessEntityModel::BaseTypes::Identifier id;
  FromJson(json, id);
  reference = std::move(id);
}

/// Truth values and numbers, but a `char`, which is a camera: a text of one letter, or an empty one.
template <class Number>
std::enable_if_t<std::is_integral_v<Number>, Json> ToJson(Number value) {
  if constexpr (std::is_same_v<Number, char>) {
    return ToJson(value == 0 ? std::string() : std::string(1, value));
  } else {
    return value;
  }
}
template <class Number>
std::enable_if_t<std::is_integral_v<Number>> FromJson(const Json& json, Number& value) {
  if constexpr (std::is_same_v<Number, char>) {
    std::string text;
    FromJson(json, text);
    if (text.size() > 1) throw std::invalid_argument("a text of one letter at most is expected");
    value = text.empty() ? '\0' : text[0];
  } else if constexpr (std::is_same_v<Number, bool>) {
    if (!json.is_boolean()) throw std::invalid_argument("true or false is expected");
    value = json.get<bool>();
  } else {
    using Limits = std::numeric_limits<Number>;
    // What is beyond 64 bits is no integer for the parser.
    const bool fits =
        json.is_number_unsigned()
            ? json.get<uint64_t>() <= static_cast<uint64_t>(Limits::max())
            : json.is_number_integer() && json.get<int64_t>() >= static_cast<int64_t>(Limits::min());
    if (!fits) {
      throw std::invalid_argument("a whole number from " + std::to_string(Limits::min()) + " to " +
                                  std::to_string(Limits::max()) + " is expected");
    }
    value = json.get<Number>();
  }
}

/// An enumeration is the name of its value, or the number in decimal, as a text too, where it has no name.
template <class Enumeration>
std::enable_if_t<std::is_enum_v<Enumeration>, Json> ToJson(Enumeration value) {
  return ToString(value);
}
template <class Enumeration>
std::enable_if_t<std::is_enum_v<Enumeration>> FromJson(const Json& json, Enumeration& value) {
  std::string text;
  FromJson(json, text);
  if (!TryParse(text, value)) throw std::invalid_argument("'" + text + "' is no value of this field");
}

}  // namespace Catalogue
