#include "SampleClips.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include <array>
#include <cstdio>
#include <memory>
#include <utility>

namespace Oru::Benchmarks {

using namespace DataModel::MediaAssets;
using BaseTypes::FullyQualifiedName;
using BaseTypes::GenericMetadataProfile;
using BaseTypes::Identifier;
using TimePoints::TimeBoundary;
using TimePoints::TimeBounds;
using TimePoints::TimePoint;

namespace {

constexpr int64_t Second = 1'000'000'000;
constexpr int64_t FirstInstant = 1'700'000'000 * Second;
constexpr int64_t FirstDate = 1'700'000'000;

// As long as the generated identifiers of a real file.
Identifier Id(const char* kind, int number, int part = 0) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%s-7d3a-4c60-%04d-%012d", kind, part, number);
  return Identifier(text.data());
}

TimeBounds Bounds(int64_t fromSecond, int64_t toSecond) {
  return TimeBounds(TimeBoundary(TimePoint::FromNanoseconds(FirstInstant + fromSecond * Second)),
                    TimeBoundary(TimePoint::FromNanoseconds(FirstInstant + toSecond * Second)));
}

TimePoints::TimeCode TimeCodeAt(int number) {
  return TimePoints::TimeCodeBuilder()
      .Date(2024, 3, 9)
      .ClockTime(number / 3600 % 24, number / 60 % 60, number % 60, number % 50)
      .Build();
}

std::shared_ptr<GenericMetadataProfile> Profile(const char* name, int entries, int number) {
  auto profile = std::make_shared<GenericMetadataProfile>(FullyQualifiedName(name));
  for (int i = 0; i < entries; ++i) {
    profile->Set("entry" + std::to_string(i), "value " + std::to_string(i) + " of " + std::to_string(number));
  }
  return profile;
}

std::shared_ptr<DapOperatorMetadataProfile> OperatorProfile(int number) {
  auto profile = std::make_shared<DapOperatorMetadataProfile>();
  profile->ServerId(ZuServerId(10 * (1 + number % 40)));
  profile->Page(number / 100 % 10);
  profile->Bank(1 + number / 10 % 9);
  profile->Row(number % 10);
  profile->Camera(static_cast<char>('A' + number % 12));
  profile->UmId("060A2B340101010501010D43130000-" + std::to_string(number));
  profile->VarId("VAR" + std::to_string(number));
  profile->Rating(number % 4);
  profile->PrimaryTimecode(TimecodePrimary::User);
  profile->UserTimecode(TimeCodeAt(number));
  profile->TodTimecode(TimeCodeAt(number + 7));
  profile->Icon("goal");
  profile->Color(0x00ff8000);
  profile->UserProtected(true);
  profile->Keywords({"goal", "half time", "camera " + std::to_string(number % 12)});
  return profile;
}

std::unique_ptr<Essence> Video() {
  auto video = std::make_unique<VideoEssence>();
  video->ChannelCount(1);
  video->VideoCodec(VideoCodingFormat::SonyXAVCIntraHD100);
  video->BitRate(100'000'000);
  video->BitRateMode(BitRateMode::cbr);
  video->BitDepth(10);
  video->FrameRate(Rate(50, 1));
  video->Height(1080);
  video->Width(1920);
  video->ChromaSubSampling(ChromaSubSampling::CS_422);
  video->ColorSpace(ColorSpace::BT709);
  video->ScanMode(ScanMode::progressive);
  video->AspectRatio(AspectRatio(16, 9));
  video->Boxing(Boxing::fullframe);
  video->FourCC("AVdh");
  return video;
}

std::unique_ptr<Essence> Audio() {
  auto audio = std::make_unique<AudioEssence>();
  audio->ChannelCount(2);
  audio->AudioCodec(AudioCodingFormat::PCM);
  audio->BitRate(2'304'000);
  audio->BitRateMode(BitRateMode::cbr);
  audio->SampleRate(Rate(48000, 1));
  audio->BitDepth(24);
  audio->FourCC("lpcm");
  return audio;
}

// Video, four audio, data.
std::shared_ptr<Stream> MakeStream(int number) {
  auto stream = std::make_shared<Stream>(Id("57e40000", number));
  stream->Format(WrapperFormat::MXFOP1a);
  stream->Essences().Add(Video());
  for (int i = 0; i < 4; ++i)
    stream->Essences().Add(Audio());
  auto data = std::make_unique<DataEssence>();
  data->ChannelCount(1);
  stream->Essences().Add(std::move(data));
  return stream;
}

std::shared_ptr<MediaResource> MakeResource(int number, const std::shared_ptr<Stream>& stream) {
  auto resource = std::make_shared<MediaResource>(Id("4e500000", number));
  resource->Name("recording " + std::to_string(number) + ".mxf");
  resource->CreationDate(FirstDate + number);
  resource->Streams().emplace_back(stream);
  return resource;
}

std::shared_ptr<Track> MakeTrack(int number, int part, const char* name,
                                 const std::shared_ptr<Stream>& stream, std::initializer_list<int> essences) {
  auto track = std::make_shared<Track>(Id("74ac0000", number, part), name);
  for (const int essence : essences) {
    auto channel = std::make_shared<TrackChannelToRemove>();
    channel->Stream(StreamReference(stream));
    channel->EssenceNr(essence);
    track->Channels().push_back(std::move(channel));
  }
  return track;
}

std::shared_ptr<Annotation> MakeAnnotation(int number, int part) {
  auto annotation = std::make_shared<Annotation>(
      AnnotationType::CuePoint, "cue " + std::to_string(part) + " of " + std::to_string(number));
  annotation->TimeBounds(Bounds(number + part, number + part));
  return annotation;
}

}  // namespace

MediaAssetId ClipId(int number) {
  return Id("c11b0000", number);
}

MediaAsset MakeClip(int number) {
  MediaAsset clip(ClipId(number));
  clip.AssetType(AssetType::media);
  clip.Name("Match 7, take " + std::to_string(number));
  clip.Description("Take " + std::to_string(number) + " of the evening, seen from the main stand");
  clip.CreationDate(FirstDate + number);
  clip.ModificationDate(FirstDate + number + 60);
  clip.InBoundary(Bounds(number + 2, 0).InBoundary());
  clip.OutBoundary(Bounds(0, number + 28).OutBoundary());
  clip.PhysicalTimebounds().Insert(Bounds(number, number + 10));
  clip.PhysicalTimebounds().Insert(Bounds(number + 20, number + 30));
  clip.Metadata().Set(OperatorProfile(number));
  clip.Metadata().Set(Profile("broadcast.rights", 3, number));
  clip.Metadata().Set(Profile("production.logging", 5, number));
  clip.Annotations().push_back(MakeAnnotation(number, 1));
  clip.Annotations().push_back(MakeAnnotation(number, 2));
  const auto stream = MakeStream(number);
  clip.MediaResources().Insert(BaseTypes::SharedReference<MediaResource>(MakeResource(number, stream)));
  clip.Tracks().Insert(MakeTrack(number, 1, "V1", stream, {0}));
  clip.Tracks().Insert(MakeTrack(number, 2, "A1", stream, {1, 2}));
  clip.Tracks().Insert(MakeTrack(number, 3, "A2", stream, {3, 4}));
  return clip;
}

std::string LastWord(const std::string& name) {
  return name.substr(name.rfind(' ') + 1);
}

std::vector<MediaAsset> MakeClips(int firstNumber, int count) {
  std::vector<MediaAsset> clips;
  clips.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i)
    clips.push_back(MakeClip(firstNumber + i));
  return clips;
}

AnglesMediaAssetGroup MakeGroup(int number, int firstClip) {
  AnglesMediaAssetGroup group(Id("64090000", number), "Goal " + std::to_string(number));
  group.Type("angles");
  for (int angle = 0; angle < 4; ++angle) {
    group.Items().push_back(std::make_shared<AnglesMediaAssetGroupItem>(
        "Camera " + std::to_string(angle + 1), MediaAssetReference(ClipId(firstClip + angle))));
  }
  auto identity = std::make_shared<AnglesDapOperatorMetadataProfile>(
      DapId(ZuServerId(110), number / 100 % 10, 1 + number / 10 % 9, number % 10));
  group.Metadata().Set(std::move(identity));
  return group;
}

Sequence MakeSequence(int number) {
  namespace Edits = BusinessEntityModel::Edits;
  Sequence sequence(Id("5e400000", number));
  sequence.Name("Highlights " + std::to_string(number));
  sequence.Version(3);
  sequence.Duration(Edits::SequenceDuration(TimePoints::Duration::FromNanoseconds(90 * Second)));
  sequence.SetTimePoint(TimePoint::FromNanoseconds(FirstInstant));
  sequence.CreationDate(FirstDate);
  sequence.CreationOwner(Edits::UserId("producer"));
  sequence.ModificationDate(FirstDate + 3600);
  sequence.ModificationOwner(Edits::UserId("editor"));
  sequence.Metadata().Set(Profile("production.logging", 4, number));
  auto profile = std::make_shared<Edits::DapOperatorMetadataProfile>();
  profile->ServerId(ZuServerId(110));
  profile->Page(1);
  profile->Bank(2);
  profile->Row(3);
  profile->UmId("060A2B340101010501010D43130000");
  profile->VarId("SEQ" + std::to_string(number));
  profile->VideoElementsCount(12);
  Edits::DapOperatorTimecodeRegen regen;
  regen.TimecodeRef(TimeCodeAt(number));
  profile->TimecodeRegen(regen);
  sequence.Metadata().Set(std::move(profile));
  return sequence;
}

void Edit(MediaAsset& clip) {
  clip.Name(clip.Name() + " (edited)");
  clip.ModificationDate(clip.ModificationDate() + 1);
  clip.DapOperatorMetadata().Rating(clip.DapOperatorMetadata().Rating() + 1);
  clip.DapOperatorMetadata().Keyword(1, "extra time");
  clip.Annotations().front()->Data("moved");
  clip.PhysicalTimebounds().Insert(Bounds(1'000'000, 1'000'010));
  clip.Metadata().Set(Profile("production.logging", 6, 0));
  clip.MediaResources()[0]->Name("renamed.mxf");
  auto& essences = clip.MediaResources()[0]->Streams().front()->Essences();
  essences[1].ChannelCount(8);
  clip.Tracks()[0]->Name("V2");
  clip.Tracks()[0]->Channels().front()->ChannelNr(1);
}

}  // namespace Oru::Benchmarks
