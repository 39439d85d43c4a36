#include "TextForms.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/MediaResource.h"
#include "Oru/DataModel/MediaAssets/Stream.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"
#include "Oru/TimePoints/Core/Formatters/ClockDurationFormatter.h"
#include "Oru/TimePoints/Core/Formatters/ClockTimeCodeFormatter.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include <cstdio>
#include <ctime>
#include <vector>

namespace Catalogue {
namespace {

namespace BaseTypes = Oru::BusinessEntityModel::BaseTypes;
namespace MediaAssets = Oru::DataModel::MediaAssets;
namespace TimePoints = Oru::TimePoints;

std::vector<const MediaAssets::Stream*> StreamsOf(const MediaAssets::MediaAsset& clip) {
  std::vector<const MediaAssets::Stream*> streams;
  for (const auto& resource : clip.MediaResources()) {
    for (const auto& stream : resource->Streams())
      streams.push_back(&*stream);
  }
  return streams;
}

template <class Kind>
std::vector<const Kind*> EssencesOf(const MediaAssets::MediaAsset& clip) {
  std::vector<const Kind*> essences;
  for (const MediaAssets::Stream* stream : StreamsOf(clip)) {
    for (const auto& essence : stream->Essences()) {
      if (const auto* kind = dynamic_cast<const Kind*>(essence.get())) essences.push_back(kind);
    }
  }
  return essences;
}

const char* ScanLetter(MediaAssets::ScanMode mode) {
  if (mode == MediaAssets::ScanMode::interlaced) return "i";
  return mode == MediaAssets::ScanMode::progressive ? "p" : "";
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
}

}  // namespace

std::string Printable(const std::string& text) {
  std::string printable = text;
  for (size_t i = 0; i < printable.size(); ++i) {
    const auto byte = static_cast<unsigned char>(printable[i]);
    if (byte < ' ' || byte == 0x7F) printable[i] = ' ';
    // The control characters from U+0080 to U+009F are two bytes.
    const auto next = static_cast<unsigned char>(i + 1 < printable.size() ? printable[i + 1] : 0);
    if (byte == 0xC2 && next >= 0x80 && next < 0xA0) printable.replace(i, 2, 1, ' ');
  }
  return printable;
}

std::string Highlighted(const std::string& text, bool isTerminal) {
  std::string highlighted = Printable(text);
  ReplaceAll(highlighted, "<b>", isTerminal ? "\033[1m" : "[");
  ReplaceAll(highlighted, "</b>", isTerminal ? "\033[0m" : "]");
  // The text may hold a "<b>" of its own.
  if (isTerminal) highlighted += "\033[0m";
  return highlighted;
}

std::string DurationText(const TimePoints::Duration& duration) {
  const std::string nanoseconds = duration.ToString(TimePoints::ClockDurationFormatter());
  return nanoseconds.substr(0, nanoseconds.size() - 6);
}

std::string PlaceText(const TimePoints::TimeBoundary& place) {
  if (place == TimePoints::TimeBoundary::Empty()) return "-";
  return DurationText(TimePoints::Duration::FromNanoseconds(place.TimePoint().ToNanoseconds())) +
         (place.IsMoving() ? " (moving)" : "");
}

std::string DateText(BaseTypes::DateTime date) {
  std::tm utc{};
  if (date == 0 || gmtime_r(&date, &utc) == nullptr) return "-";
  char text[64];
  return std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S UTC", &utc) > 0 ? text : "-";
}

std::string TimeCodeText(const TimePoints::TimeCode& timeCode) {
  // A time code comes out of a file with a date, which says nothing where only the clock was stored.
  const auto clock = TimePoints::TimeCodeBuilder()
                         .ClockTime(timeCode.Hour(), timeCode.Minute(), timeCode.Second(), timeCode.Sample())
                         .Rate(timeCode.Rate())
                         .IsDrop(timeCode.IsDrop())
                         .Build();
  return clock.ToString(TimePoints::ClockTimeCodeFormatter()) + ", " +
         std::to_string(timeCode.Rate().Numerator()) + " samples a second";
}

std::string RateText(const MediaAssets::Rate& rate) {
  if (rate.Denominator() == 0) return "-";
  if (rate.Numerator() % rate.Denominator() == 0)
    return std::to_string(rate.Numerator() / rate.Denominator());
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", static_cast<double>(rate.Numerator()) / rate.Denominator());
  return text;
}

std::string EntryText(const BaseTypes::MetadataProfileDictionary& metadata, const std::string& profile,
                      const std::string& key) {
  const auto generic = std::dynamic_pointer_cast<const BaseTypes::GenericMetadataProfile>(
      metadata[BaseTypes::FullyQualifiedName(profile)]);
  return generic && generic->Contains(key) ? generic->Get(key) : std::string();
}

std::string WrapperSummary(const MediaAssets::MediaAsset& clip) {
  const auto streams = StreamsOf(clip);
  return streams.empty() ? "-" : ToString(streams.front()->Format());
}

std::string VideoSummary(const MediaAssets::MediaAsset& clip) {
  const auto essences = EssencesOf<MediaAssets::VideoEssence>(clip);
  if (essences.empty()) return "-";
  const MediaAssets::VideoEssence& video = *essences.front();
  return ToString(video.VideoCodec()) + ' ' + std::to_string(video.Width()) + 'x' +
         std::to_string(video.Height()) + ScanLetter(video.ScanMode()) + ' ' + RateText(video.FrameRate());
}

std::string AudioSummary(const MediaAssets::MediaAsset& clip) {
  const auto essences = EssencesOf<MediaAssets::AudioEssence>(clip);
  if (essences.empty()) return "-";
  int channels = 0;
  for (const MediaAssets::AudioEssence* audio : essences)
    channels += audio->ChannelCount();
  return ToString(essences.front()->AudioCodec()) + ' ' + std::to_string(channels) + " ch";
}

}  // namespace Catalogue
