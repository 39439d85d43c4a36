#include "ClipPrinter.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/MediaResource.h"
#include "Oru/DataModel/MediaAssets/Stream.h"
#include "Oru/DataModel/MediaAssets/Track.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include "TextForms.h"

#include <algorithm>
#include <string>

namespace Catalogue {
namespace {

namespace BaseTypes = Oru::BusinessEntityModel::BaseTypes;
namespace MediaAssets = Oru::DataModel::MediaAssets;
namespace TimePoints = Oru::TimePoints;

/// Lines of a label and a value, in a column, at a depth.
class Sheet {
 public:
  explicit Sheet(std::ostream& out) : mOut(out) {}

  /// A heading. The lines below it are indented by one more step until `End`.
  void Begin(const std::string& heading) {
    mOut << std::string(mDepth * 2, ' ') << Printable(heading) << '\n';
    ++mDepth;
  }
  void End() { --mDepth; }

  void Line(const std::string& label, const std::string& value) {
    constexpr size_t labelWidth = 22;
    std::string text = std::string(mDepth * 2, ' ') + Printable(label);
    text.resize(std::max(text.size() + 1, labelWidth + mDepth * 2), ' ');
    mOut << text << (value.empty() ? "-" : Printable(value)) << '\n';
  }

 private:
  std::ostream& mOut;
  size_t mDepth = 0;
};

std::string BitRateText(int32_t bitRate, MediaAssets::BitRateMode mode) {
  if (bitRate == 0) return ToString(mode);
  return std::to_string(bitRate / 1000) + " kb/s, " + ToString(mode);
}

std::string BitDepthText(int32_t bitDepth) {
  return bitDepth == 0 ? "-" : std::to_string(bitDepth) + " bits";
}

std::string BoundsText(const TimePoints::TimeBounds& bounds) {
  return PlaceText(bounds.InBoundary()) + " to " + PlaceText(bounds.OutBoundary());
}

void PrintBounds(Sheet& sheet, const MediaAssets::TimeBoundsArray& bounds) {
  for (const TimePoints::TimeBounds& stretch : bounds)
    sheet.Line("time bounds", BoundsText(stretch));
}

/// The generic profiles; the operator's has a layout of its own.
void PrintMetadata(Sheet& sheet, const BaseTypes::MetadataProfileDictionary& metadata) {
  metadata.Iterate([&sheet](const BaseTypes::MetadataProfile& profile) {
    const auto* generic = dynamic_cast<const BaseTypes::GenericMetadataProfile*>(&profile);
    if (generic == nullptr) return true;
    sheet.Begin("Metadata " + generic->FullyQualifiedName().Value());
    generic->Iterate([&sheet](const std::string& key, const std::string& value) {
      sheet.Line(key, value);
      return true;
    });
    sheet.End();
    return true;
  });
}

void PrintFields(Sheet& sheet, const MediaAssets::VideoEssence& video) {
  sheet.Line("codec",
             ToString(video.VideoCodec()) + (video.FourCC().empty() ? "" : ", '" + video.FourCC() + "'"));
  sheet.Line("picture", std::to_string(video.Width()) + " x " + std::to_string(video.Height()) + ", " +
                            ToString(video.ScanMode()));
  sheet.Line("aspect ratio", std::to_string(video.AspectRatio().WidthFactor()) + ':' +
                                 std::to_string(video.AspectRatio().HeightFactor()));
  sheet.Line("frame rate", RateText(video.FrameRate()));
  sheet.Line("bit rate", BitRateText(video.BitRate(), video.BitRateMode()));
  sheet.Line("bit depth", BitDepthText(video.BitDepth()));
  sheet.Line("chroma subsampling", ToString(video.ChromaSubSampling()));
  sheet.Line("color space", ToString(video.ColorSpace()));
}

void PrintFields(Sheet& sheet, const MediaAssets::AudioEssence& audio) {
  sheet.Line("codec",
             ToString(audio.AudioCodec()) + (audio.FourCC().empty() ? "" : ", '" + audio.FourCC() + "'"));
  sheet.Line("channels", std::to_string(audio.ChannelCount()));
  sheet.Line("sample rate", RateText(audio.SampleRate()));
  sheet.Line("bit rate", BitRateText(audio.BitRate(), audio.BitRateMode()));
  sheet.Line("bit depth", BitDepthText(audio.BitDepth()));
}

void PrintEssence(Sheet& sheet, const MediaAssets::Essence& essence) {
  const std::string heading = "Essence " + std::to_string(essence.Nr()) + ": ";
  if (const auto* video = dynamic_cast<const MediaAssets::VideoEssence*>(&essence)) {
    sheet.Begin(heading + "video");
    PrintFields(sheet, *video);
  } else if (const auto* audio = dynamic_cast<const MediaAssets::AudioEssence*>(&essence)) {
    sheet.Begin(heading + "audio");
    PrintFields(sheet, *audio);
  } else {
    sheet.Begin(heading + "data");
  }
  PrintMetadata(sheet, *essence.Metadata());
  sheet.End();
}

void PrintResource(Sheet& sheet, const MediaAssets::MediaResource& resource) {
  sheet.Begin("Resource " + resource.Id().Value());
  sheet.Line("name", resource.Name());
  sheet.Line("created", DateText(resource.CreationDate()));
  PrintBounds(sheet, resource.Timebounds());
  for (const auto& stream : resource.Streams()) {
    sheet.Begin("Stream " + stream.Id().Value());
    sheet.Line("wrapper", ToString(stream->Format()));
    PrintBounds(sheet, stream->Timebounds());
    for (const auto& essence : stream->Essences())
      PrintEssence(sheet, *essence);
    sheet.End();
  }
  sheet.End();
}

void PrintTrack(Sheet& sheet, const MediaAssets::Track& track) {
  std::string channels;
  for (const auto& channel : track.Channels()) {
    if (!channels.empty()) channels += ", ";
    channels += "essence " + std::to_string(channel->EssenceNr()) + " channel " +
                std::to_string(channel->ChannelNr());
  }
  sheet.Line(track.Name(), channels);
}

void PrintOperator(Sheet& sheet, const MediaAssets::DapOperatorMetadataProfile& profile) {
  sheet.Begin("Operator");
  sheet.Line("place on the grid", profile.DapId().IsEmpty() ? "-" : profile.DapId().ToString());
  sheet.Line("primary time code", ToString(profile.PrimaryTimecode()));
  if (profile.UserTimecode() != MediaAssets::DapOperatorMetadataProfile().UserTimecode()) {
    sheet.Line("user time code", TimeCodeText(profile.UserTimecode()));
  }
  std::string keywords;
  for (const auto& keyword : profile.Keywords())
    keywords += (keywords.empty() ? "" : ", ") + keyword;
  sheet.Line("keywords", keywords);
  sheet.Line("protected", profile.IsUserProtected() ? "yes" : "no");
  sheet.End();
}

}  // namespace

void PrintClip(std::ostream& out, const MediaAssets::MediaAsset& clip) {
  Sheet sheet(out);
  sheet.Begin("Clip " + clip.Id().Value());
  sheet.Line("name", clip.Name());
  if (!clip.Description().empty()) sheet.Line("description", clip.Description());
  sheet.Line("kind", ToString(clip.AssetType()));
  sheet.Line("created", DateText(clip.CreationDate()));
  sheet.Line("modified", DateText(clip.ModificationDate()));
  PrintBounds(sheet, clip.PhysicalTimebounds());
  sheet.Line("in, out", PlaceText(clip.InBoundary()) + ", " + PlaceText(clip.OutBoundary()));
  if (clip.HasDapOperatorMetadata()) PrintOperator(sheet, clip.DapOperatorMetadata());
  if (!clip.Tracks().Empty()) {
    sheet.Begin("Tracks");
    for (const auto& track : clip.Tracks())
      PrintTrack(sheet, *track);
    sheet.End();
  }
  if (!clip.Annotations().empty()) {
    sheet.Begin("Annotations");
    for (const auto& annotation : clip.Annotations()) {
      sheet.Line(ToString(annotation->Type()),
                 PlaceText(annotation->TimeBounds().InBoundary()) + "  " + annotation->Data());
    }
    sheet.End();
  }
  for (const auto& resource : clip.MediaResources())
    PrintResource(sheet, *resource);
  PrintMetadata(sheet, clip.Metadata());
}

}  // namespace Catalogue
