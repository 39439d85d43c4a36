#include "AssetBuilder.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/MediaResource.h"
#include "Oru/DataModel/MediaAssets/Stream.h"
#include "Oru/DataModel/MediaAssets/Track.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"
#include "Oru/TimePoints/Core/Parsers/ClockTimeCodeParser.h"
#include "Oru/TimePoints/Core/Rate.h"
#include "Oru/TimePoints/Core/TimeBounds.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include "FormatMapping.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>
#include <utility>

namespace Catalogue {
namespace {

namespace BaseTypes = Oru::BusinessEntityModel::BaseTypes;
namespace MediaAssets = Oru::DataModel::MediaAssets;
namespace TimePoints = Oru::TimePoints;

/// The columns of the data model are narrower than what a file can state.
int32_t Narrow(int64_t value) {
  constexpr int64_t highest = std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(std::clamp<int64_t>(value, 0, highest));
}

MediaAssets::Rate RateOf(const Fraction& fraction) {
  return {Narrow(fraction.numerator), Narrow(fraction.denominator)};
}

/// Collects entries of one profile; an empty text is left out.
class ProfileWriter {
 public:
  explicit ProfileWriter(const char* name)
      : mProfile(std::make_shared<BaseTypes::GenericMetadataProfile>(BaseTypes::FullyQualifiedName(name))) {}

  ProfileWriter& Text(const std::string& key, const std::string& value) {
    if (!value.empty()) mProfile->Set(key, value);
    return *this;
  }
  ProfileWriter& Number(const std::string& key, int64_t value) { return Text(key, std::to_string(value)); }
  void AddTo(BaseTypes::MetadataProfileDictionary& dictionary) const { dictionary.Set(mProfile); }

 private:
  std::shared_ptr<BaseTypes::GenericMetadataProfile> mProfile;
};

int64_t NanosecondsOf(int64_t count, const Fraction& rate) {
  return TimePoints::TimePoint::FromSampleNumber({rate.numerator, rate.denominator}, count).ToNanoseconds();
}

void SetBounds(MediaAssets::TimeBoundsArray& bounds, int64_t duration) {
  const TimePoints::TimeBoundary in(TimePoints::TimePoint::FromNanoseconds(0));
  const TimePoints::TimeBoundary out(TimePoints::TimePoint::FromNanoseconds(duration));
  bounds.Insert(TimePoints::TimeBounds(in, out));
  bounds.InBoundary(in);
  bounds.OutBoundary(out);
}

/// @return the essence's profile, to be completed and added
template <class Essence>
ProfileWriter SetCoding(Essence& essence, const CodingReport& coding) {
  essence.BitRate(Narrow(coding.bitRate));
  essence.BitRateMode(BitRateModeOf(coding.bitRateMode));
  essence.BitDepth(Narrow(coding.bitDepth));
  // MXF has no codes of four characters but long labels, kept with the other words of the file.
  if (coding.codecId.size() == 4) essence.FourCC(coding.codecId);
  ProfileWriter profile(Profiles::essence);
  profile.Text("format", coding.format)
      .Text("formatVersion", coding.formatVersion)
      .Text("formatProfile", coding.formatProfile)
      .Text("codecId", coding.codecId);
  return profile;
}

std::unique_ptr<MediaAssets::Essence> BuildEssence(const VideoReport& video) {
  auto essence = std::make_unique<MediaAssets::VideoEssence>();
  essence->ChannelCount(1);
  essence->VideoCodec(VideoCodecOf(video));
  if (video.frameRate) essence->FrameRate(RateOf(video.frameRate));
  essence->Width(Narrow(video.width));
  essence->Height(Narrow(video.height));
  essence->AspectRatio(AspectRatioOf(video.displayAspectRatio));
  essence->ChromaSubSampling(ChromaSubSamplingOf(video.chromaSubsampling));
  essence->ColorSpace(ColorSpaceOf(video));
  essence->ScanMode(ScanModeOf(video.scanType));
  SetCoding(*essence, video)
      .Text("commercialName", video.commercialName)
      .Text("colorSpace", video.colorSpace)
      .AddTo(*essence->Metadata());
  return essence;
}

std::unique_ptr<MediaAssets::Essence> BuildEssence(const AudioReport& audio) {
  auto essence = std::make_unique<MediaAssets::AudioEssence>();
  essence->ChannelCount(Narrow(audio.channels));
  essence->AudioCodec(AudioCodecOf(audio));
  if (audio.sampleRate > 0) essence->SampleRate({Narrow(audio.sampleRate), 1});
  SetCoding(*essence, audio).AddTo(*essence->Metadata());
  return essence;
}

std::unique_ptr<MediaAssets::Essence> BuildEssence(const DataReport& data) {
  auto essence = std::make_unique<MediaAssets::DataEssence>();
  essence->ChannelCount(1);
  ProfileWriter(Profiles::essence)
      .Text("kind", data.kind)
      .Text("format", data.format)
      .AddTo(*essence->Metadata());
  return essence;
}

/// The stream of the file, and beside it the tracks of the asset.
class StreamBuilder {
 public:
  StreamBuilder(const std::string& clipId, MediaAssets::MediaAsset& asset)
      : mClipId(clipId),
        mAsset(asset),
        mStream(std::make_shared<MediaAssets::Stream>(MediaAssets::StreamId(clipId + "/stream"))) {}

  /// Adds an essence per report, and a track of all its channels: "V1", "V2" and so on for the letter V.
  template <class Report>
  void Add(const std::vector<Report>& reports, char letter) {
    for (size_t n = 0; n < reports.size(); ++n) {
      std::unique_ptr<MediaAssets::Essence> essence = BuildEssence(reports[n]);
      const int32_t channelCount = essence->ChannelCount();
      const int32_t essenceNr = mStream->Essences().Add(std::move(essence));
      AddTrack(letter + std::to_string(n + 1), essenceNr, channelCount);
    }
  }

  const std::shared_ptr<MediaAssets::Stream>& Stream() const { return mStream; }

 private:
  void AddTrack(const std::string& name, int32_t essenceNr, int32_t channelCount) {
    auto track = std::make_shared<MediaAssets::Track>(MediaAssets::TrackId(mClipId + "/" + name),
                                                      BaseTypes::Utf8String(name));
    for (int32_t channelNr = 0; channelNr < channelCount; ++channelNr) {
      auto channel = std::make_shared<MediaAssets::TrackChannelToRemove>();
      channel->Stream(MediaAssets::StreamReference(mStream));
      channel->EssenceNr(essenceNr);
      channel->ChannelNr(channelNr);
      track->Channels().push_back(std::move(channel));
    }
    mAsset.Tracks().Insert(track);
  }

  const std::string& mClipId;
  MediaAssets::MediaAsset& mAsset;
  std::shared_ptr<MediaAssets::Stream> mStream;
};

std::shared_ptr<MediaAssets::MediaResource> BuildResource(const MediaReport& report,
                                                          const std::string& clipId,
                                                          MediaAssets::MediaAsset& asset) {
  const int64_t duration = DurationOf(report);
  StreamBuilder builder(clipId, asset);
  builder.Add(report.video, 'V');
  builder.Add(report.audio, 'A');
  builder.Add(report.data, 'D');
  builder.Stream()->Format(WrapperFormatOf(report));
  SetBounds(builder.Stream()->Timebounds(), duration);

  auto resource =
      std::make_shared<MediaAssets::MediaResource>(MediaAssets::MediaResourceId(clipId + "/file"));
  resource->Name(report.path.filename().string());
  resource->CreationDate(report.modified);
  SetBounds(resource->Timebounds(), duration);
  resource->Streams().emplace_back(builder.Stream());
  return resource;
}

void WriteProfiles(const MediaReport& report, BaseTypes::MetadataProfileDictionary& metadata) {
  ProfileWriter general(Profiles::general);
  if (!report.video.empty() && report.video[0].frameCount > 0) {
    general.Number("frames", report.video[0].frameCount);
  }
  if (report.startTimeCode) {
    general.Text("startTimeCode", report.startTimeCode->text)
        .Text("startTimeCodeSource", report.startTimeCode->source);
  }
  if (report.timeReferenceMicroseconds) {
    general.Number("timeReferenceMicroseconds", *report.timeReferenceMicroseconds);
  }
  general.AddTo(metadata);

  ProfileWriter(Profiles::file)
      .Text("path", report.path.string())
      .Number("bytes", static_cast<int64_t>(report.fileSize))
      .Text("format", report.format)
      .Text("formatVersion", report.formatVersion)
      .Text("formatProfile", report.formatProfile)
      .Text("commercialName", report.commercialName)
      .Text("compatibleBrands", report.compatibleBrands)
      .Text("writtenBy", report.application)
      .AddTo(metadata);
}

void AddUserTimeCode(const StartTimeCode& startTimeCode, BaseTypes::MetadataProfileDictionary& metadata) {
  const auto timeCode = UserTimeCodeOf(startTimeCode);
  if (!timeCode) return;
  auto profile = std::make_shared<MediaAssets::DapOperatorMetadataProfile>();
  profile->UserTimecode(*timeCode);
  profile->PrimaryTimecode(MediaAssets::TimecodePrimary::User);
  metadata.Set(std::move(profile));
}

}  // namespace

std::string ClipIdOf(const std::filesystem::path& canonicalPath) {
  // FNV-1a over the bytes of the path, 50 bits of it, five to a character. The letters leave out those
  // that are read as digits.
  uint64_t hash = 14695981039346656037u;
  for (const char byte : canonicalPath.native()) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211u;
  }
  constexpr char digits[] = "0123456789abcdefghjkmnpqrstvwxyz";
  std::string id;
  for (int shift = 59; shift > 9; shift -= 5)
    id += digits[(hash >> shift) & 31];
  return id;
}

int64_t DurationOf(const MediaReport& report) {
  if (!report.video.empty()) {
    const VideoReport& video = report.video.front();
    if (video.frameCount > 0 && video.frameRate) return NanosecondsOf(video.frameCount, video.frameRate);
  } else if (!report.audio.empty()) {
    const AudioReport& audio = report.audio.front();
    if (audio.sampleCount > 0 && audio.sampleRate > 0) {
      return NanosecondsOf(audio.sampleCount, {audio.sampleRate, 1});
    }
  }
  return std::llround(report.durationSeconds * 1e9);
}

std::optional<TimePoints::TimeCode> UserTimeCodeOf(const StartTimeCode& startTimeCode) {
  if (!startTimeCode.frameRate) return std::nullopt;
  const int64_t nominal = std::llround(static_cast<double>(startTimeCode.frameRate.numerator) /
                                       static_cast<double>(startTimeCode.frameRate.denominator));
  const int64_t kept = nominal == 25 || nominal == 50 ? 50 : 60;
  if (nominal == 0 || kept % nominal != 0) return std::nullopt;
  try {
    TimePoints::ClockTimeCodeParser parser(TimePoints::Rate(nominal, 1));
    const auto read = TimePoints::TimeCode::Parse(startTimeCode.text, parser);
    const auto samplesPerFrame = static_cast<int32_t>(kept / nominal);
    return TimePoints::TimeCodeBuilder()
        .ClockTime(read.Hour(), read.Minute(), read.Second(), read.Sample() * samplesPerFrame)
        .Rate(TimePoints::Rate(kept, 1))
        .IsDrop(read.IsDrop())
        .Build();
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

MediaAssets::MediaAsset BuildAsset(const MediaReport& report, BaseTypes::DateTime now) {
  const std::string clipId = ClipIdOf(report.path);
  MediaAssets::MediaAsset asset{MediaAssets::MediaAssetId(clipId)};
  asset.AssetType(MediaAssets::AssetType::media);
  asset.Name(report.path.stem().string());
  asset.CreationDate(now);
  SetBounds(asset.PhysicalTimebounds(), DurationOf(report));
  WriteProfiles(report, asset.Metadata());
  if (report.startTimeCode) AddUserTimeCode(*report.startTimeCode, asset.Metadata());
  asset.MediaResources().Insert(BuildResource(report, clipId, asset));
  return asset;
}

void TakeFromFile(MediaAssets::MediaAsset& clip, const MediaAssets::MediaAsset& read) {
  clip.Name(read.Name());
  clip.ModificationDate(std::max(read.CreationDate(), clip.CreationDate()));
  clip.PhysicalTimebounds() = read.PhysicalTimebounds();
  clip.MediaResources() = read.MediaResources();
  clip.Tracks() = read.Tracks();
  read.Metadata().Iterate([&clip](const BaseTypes::MetadataProfile& profile) {
    const auto* fromFile = dynamic_cast<const MediaAssets::DapOperatorMetadataProfile*>(&profile);
    if (fromFile != nullptr && clip.HasDapOperatorMetadata()) {
      clip.DapOperatorMetadata().UserTimecode(fromFile->UserTimecode());
    } else {
      clip.Metadata().Set(profile.Clone());
    }
    return true;
  });
}

}  // namespace Catalogue
