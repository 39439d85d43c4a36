#include "InterchangeValues.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"
#include "Oru/TimePoints/Core/Duration.h"
#include "Oru/TimePoints/Core/Rate.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace Catalogue {

namespace {

namespace BaseTypes = Oru::BusinessEntityModel::BaseTypes;
namespace MediaAssets = Oru::DataModel::MediaAssets;
namespace TimePoints = Oru::TimePoints;

constexpr char hexDigits[] = "0123456789abcdef";

bool IsUtf8(const std::string& text) {
  if (std::all_of(text.begin(), text.end(),
                  [](char byte) { return static_cast<unsigned char>(byte) < 0x80; })) {
    return true;
  }
  try {
    // Written strictly: what passes here can be written, and is read again.
    Json(text).dump();
    return true;
  } catch (const Json::type_error&) {
    return false;
  }
}

/// The two or more values of an array, or of an object by its fields.
void RequireArray(const Json& json, size_t size) {
  if (!json.is_array() || json.size() != size) {
    throw std::invalid_argument("an array of " + std::to_string(size) + " is expected");
  }
}

void RequireArray(const Json& json) {
  if (!json.is_array()) throw std::invalid_argument("an array is expected");
}

/// An object with exactly these fields.
void RequireObject(const Json& json, std::initializer_list<const char*> fields) {
  const bool isMeant =
      json.is_object() && json.size() == fields.size() &&
      std::all_of(fields.begin(), fields.end(), [&](auto field) { return json.contains(field); });
  if (isMeant) return;
  std::string names;
  for (const char* field : fields)
    names += (names.empty() ? "'" : ", '") + std::string(field) + "'";
  throw std::invalid_argument("an object of " + names + " is expected");
}

template <class List>
Json ArrayOf(const List& list) {
  Json json = Json::array();
  for (const auto& value : list)
    json.push_back(ToJson(value));
  return json;
}

template <class Value>
Value As(const Json& json) {
  Value value{};
  FromJson(json, value);
  return value;
}

template <class Pair>
Pair PairFrom(const Json& json) {
  RequireArray(json, 2);
  return {As<int32_t>(json[0]), As<int32_t>(json[1])};
}

}  // namespace

Json ToJson(const std::string& text) {
  if (IsUtf8(text)) return text;
  std::string hex;
  for (const char byte : text) {
    hex += hexDigits[static_cast<unsigned char>(byte) >> 4];
    hex += hexDigits[static_cast<unsigned char>(byte) & 15];
  }
  return {{"hex", hex}};
}

void FromJson(const Json& json, std::string& text) {
  if (json.is_string()) {
    text = json.get<std::string>();
    return;
  }
  const Json* hex = json.is_object() && json.size() == 1 && json.contains("hex") ? &json["hex"] : nullptr;
  if (hex == nullptr || !hex->is_string()) {
    throw std::invalid_argument("a text is expected, or {\"hex\": ...} for one that is no UTF-8");
  }
  const std::string digits = hex->get<std::string>();
  std::string bytes;
  const auto valueOf = [](char digit) { return std::find(hexDigits, hexDigits + 16, digit) - hexDigits; };
  for (size_t n = 0; n + 1 < digits.size(); n += 2)
    bytes += static_cast<char>(valueOf(digits[n]) * 16 + valueOf(digits[n + 1]));
  const bool areDigits = digits.find_first_not_of(hexDigits) == std::string::npos;
  if (digits.size() % 2 != 0 || !areDigits) {
    throw std::invalid_argument("pairs of the digits 0 to 9 and a to f are expected in 'hex'");
  }
  text = std::move(bytes);
}

Json ToJson(const TimePoints::TimePoint& instant) {
  if (instant == TimePoints::TimePoint::Empty()) return nullptr;
  return instant.ToNanoseconds();
}

void FromJson(const Json& json, TimePoints::TimePoint& instant) {
  instant = json.is_null() ? TimePoints::TimePoint::Empty()
                           : TimePoints::TimePoint::FromNanoseconds(As<int64_t>(json));
}

Json ToJson(const TimePoints::TimeBoundary& boundary) {
  if (boundary.IsMoving()) return {{"moving", ToJson(boundary.TimePoint())}};
  return ToJson(boundary.TimePoint());
}

void FromJson(const Json& json, TimePoints::TimeBoundary& boundary) {
  const bool isMoving = json.is_object();
  if (isMoving) RequireObject(json, {"moving"});
  boundary = {As<TimePoints::TimePoint>(isMoving ? json["moving"] : json), isMoving};
}

Json ToJson(const TimePoints::TimeBounds& bounds) {
  return {{"in", ToJson(bounds.InBoundary())}, {"out", ToJson(bounds.OutBoundary())}};
}

void FromJson(const Json& json, TimePoints::TimeBounds& bounds) {
  RequireObject(json, {"in", "out"});
  bounds = {As<TimePoints::TimeBoundary>(json["in"]), As<TimePoints::TimeBoundary>(json["out"])};
}

Json ToJson(const TimePoints::TimeCode& timeCode) {
  return {{"samples", timeCode.TotalSample()},
          {"rate", {timeCode.Rate().Numerator(), timeCode.Rate().Denominator()}},
          {"drop", timeCode.IsDrop()},
          {"dated", timeCode.HasDate()}};
}

void FromJson(const Json& json, TimePoints::TimeCode& timeCode) {
  RequireObject(json, {"samples", "rate", "drop", "dated"});
  RequireArray(json["rate"], 2);
  const TimePoints::Rate rate(As<int64_t>(json["rate"][0]), As<int64_t>(json["rate"][1]));
  TimePoints::TimeCodeBuilder builder;
  builder.Rate(rate).IsDrop(As<bool>(json["drop"]));
  if (As<bool>(json["dated"])) builder.Year(1900);
  const TimePoints::TimeCode zero = builder.Build();
  const auto samples = As<int64_t>(json["samples"]);
  if (samples < 0) throw std::invalid_argument("'samples' can't be negative");
  timeCode = zero.AddSample(samples - zero.TotalSample());
}

Json ToJson(const MediaAssets::Rate& rate) {
  return {rate.Numerator(), rate.Denominator()};
}

void FromJson(const Json& json, MediaAssets::Rate& rate) {
  rate = PairFrom<MediaAssets::Rate>(json);
}

Json ToJson(const MediaAssets::AspectRatio& ratio) {
  return {ratio.WidthFactor(), ratio.HeightFactor()};
}

void FromJson(const Json& json, MediaAssets::AspectRatio& ratio) {
  ratio = PairFrom<MediaAssets::AspectRatio>(json);
}

Json ToJson(const MediaAssets::ZuServerId& server) {
  if (server == MediaAssets::ZuServerId::Empty()) return nullptr;
  return server.SerialNumber();
}

void FromJson(const Json& json, MediaAssets::ZuServerId& server) {
  server = json.is_null() ? MediaAssets::ZuServerId() : MediaAssets::ZuServerId(As<int32_t>(json));
}

Json ToJson(const MediaAssets::StringVector& texts) {
  return ArrayOf(texts);
}

void FromJson(const Json& json, MediaAssets::StringVector& texts) {
  RequireArray(json);
  texts.clear();
  for (const Json& text : json)
    texts.emplace_back(As<std::string>(text));
}

Json ToJson(const Oru::BusinessEntityModel::Edits::SequenceDuration& duration) {
  if (!duration.Fixed()) return nullptr;
  return duration.Duration().ToNanoseconds();
}

void FromJson(const Json& json, Oru::BusinessEntityModel::Edits::SequenceDuration& duration) {
  duration = {};
  if (!json.is_null()) duration = TimePoints::Duration::FromNanoseconds(As<int64_t>(json));
}

Json ToJson(const MediaAssets::TimeBoundsArray& bounds) {
  return ArrayOf(bounds);
}

void FromJson(const Json& json, MediaAssets::TimeBoundsArray& bounds) {
  RequireArray(json);
  bounds.Clear();
  for (const Json& stretch : json)
    bounds.Insert(As<TimePoints::TimeBounds>(stretch));
}

Json ToJson(const BaseTypes::MetadataProfileDictionary& metadata) {
  Json json = Json::array();
  metadata.Iterate([&json](const BaseTypes::MetadataProfile& profile) {
    const auto* generic = dynamic_cast<const BaseTypes::GenericMetadataProfile*>(&profile);
    if (generic == nullptr) return true;
    Json entries = Json::array();
    for (const auto& [key, value] : generic->Entries())
      entries.push_back(Json::array({ToJson(key), ToJson(value)}));
    json.push_back(
        {{"profile", ToJson(profile.FullyQualifiedName().Value())}, {"entries", std::move(entries)}});
    return true;
  });
  return json;
}

void FromJson(const Json& json, BaseTypes::MetadataProfileDictionary& metadata) {
  RequireArray(json);
  for (const Json& profileJson : json) {
    RequireObject(profileJson, {"profile", "entries"});
    RequireArray(profileJson["entries"]);
    const auto profile =
        std::make_shared<BaseTypes::GenericMetadataProfile>(As<std::string>(profileJson["profile"]));
    for (const Json& entry : profileJson["entries"]) {
      RequireArray(entry, 2);
      profile->Set(As<std::string>(entry[0]), As<std::string>(entry[1]));
    }
    metadata.Set(profile);
  }
}

}  // namespace Catalogue
