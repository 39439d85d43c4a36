#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Oru::TestSupport {

/// Makes media assets with everything that a file keeps of one, down to essences and channels, out of values
/// that like to break things: the extremes of every integer, unknown enumeration values, texts with quotes,
/// NUL bytes, unicode, malformed UTF-8, and now and then one of a mebibyte. All of them are values that the
/// file keeps as they are.
///
/// The same seed gives the same assets. All identifiers of one maker differ.
class RandomAssets {
 public:
  explicit RandomAssets(uint64_t seed) : engine(seed) {}

  /// A new asset. Every channel of its tracks names a stream and an essence that the asset holds.
  DataModel::MediaAssets::MediaAsset Next() {
    DataModel::MediaAssets::MediaAsset asset{DataModel::MediaAssets::MediaAssetId(Id())};
    for (auto count = Below(3); count > 0; --count)
      asset.MediaResources().Insert(std::make_shared<DataModel::MediaAssets::MediaResource>(Id()));
    for (auto count = Below(4); count > 0; --count)
      asset.Tracks().Insert(std::make_shared<DataModel::MediaAssets::Track>(Id()));
    Change(asset);
    return asset;
  }

  /// Gives an asset new content as far as a save of a stored asset can carry it: its identifiers stay, and so
  /// do its resources, streams, essences and tracks, to which streams and essences may be added. All else
  /// comes, goes and changes.
  void Change(DataModel::MediaAssets::MediaAsset& asset) {
    using namespace DataModel::MediaAssets;
    asset.AssetType(Any<AssetType>());
    asset.Ancestor(Chance(2) ? MediaAssetReference(MediaAssetId(Text())) : MediaAssetReference());
    asset.Parent(Chance(2) ? MediaAssetReference(MediaAssetId(Text())) : MediaAssetReference());
    asset.Name(Text());
    asset.Description(Text());
    asset.InBoundary(Boundary());
    asset.OutBoundary(Boundary());
    SetDates(asset);
    Fill(asset.PhysicalTimebounds());
    const auto profile = asset.Metadata().Get<DapOperatorMetadataProfile>();
    Fill(asset.Metadata());
    if (profile || Chance(2)) asset.Metadata().Set(OperatorProfile(asset.ObjectId()));
    asset.Annotations().clear();
    for (auto count = Below(4); count > 0; --count)
      asset.Annotations().push_back(AnAnnotation());
    for (auto& reference : asset.MediaResources())
      Change(*reference);
    for (const auto& track : asset.Tracks())
      Change(*track, asset);
  }

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
    builder.Year(1900).Rate(Chance(2) ? TimePoints::Rate(50, 1) : TimePoints::Rate(60, 1));
    return builder.Build().AddSample(Int64() & std::numeric_limits<int64_t>::max());
  }

 private:
  using Dictionary = BusinessEntityModel::BaseTypes::MetadataProfileDictionary;

  template <class Enumeration>
  Enumeration Any() {
    return static_cast<Enumeration>(Chance(4) ? Int32() : static_cast<int32_t>(Below(9)));
  }

  template <class Entity>
  void SetDates(Entity& entity) {
    const auto dates = std::minmax({Int64(), Int64()});
    entity.CreationDate(dates.first);
    entity.ModificationDate(dates.second);
  }

  // None occurs twice.
  void Fill(DataModel::MediaAssets::TimeBoundsArray& bounds) {
    bounds.Clear();
    std::set<std::pair<int64_t, int64_t>> present;
    for (auto count = Below(5); count > 0; --count) {
      const TimePoints::TimeBoundary in = Boundary(), out = Boundary();
      if (present.emplace(in.TimePoint().ToNanoseconds(), out.TimePoint().ToNanoseconds()).second)
        bounds.Insert(TimePoints::TimeBounds(in, out));
    }
  }

  void Fill(Dictionary& metadata) {
    metadata.Clear();
    for (auto profiles = Below(4); profiles > 0; --profiles) {
      const auto profile = std::make_shared<BusinessEntityModel::BaseTypes::GenericMetadataProfile>(Text());
      for (auto entries = 1 + Below(4); entries > 0; --entries)
        profile->Set(Text(), Text());
      metadata.Set(profile);
    }
  }

  std::shared_ptr<DataModel::MediaAssets::DapOperatorMetadataProfile> OperatorProfile(int64_t objectId) {
    using namespace DataModel::MediaAssets;
    auto profile = std::make_shared<DapOperatorMetadataProfile>();
    profile->ObjectId(objectId);
    if (Chance(2)) profile->ServerId(ZuServerId(10 * (1 + Count() % 214748364)));
    if (Chance(2)) profile->Page(static_cast<int>(Below(10)));
    if (Chance(2)) profile->Bank(static_cast<int>(Below(10)));
    if (Chance(2)) profile->Row(static_cast<int>(Below(10)));
    if (Chance(2)) profile->Camera(static_cast<char>('A' + Below(12)));
    profile->UmId(Text());
    profile->VarId(Text());
    profile->Rating(Int32());
    profile->ArchiveStatus(Any<ArchiveStatus>());
    profile->UserTimecodeType(Any<UserTimecodeType>());
    profile->PrimaryTimecode(Any<TimecodePrimary>());
    profile->UserTimecode(TimeCode());
    profile->TodTimecode(TimeCode());
    profile->Icon(Text());
    profile->Color(static_cast<uint32_t>(Int32()));
    profile->UserProtected(Chance(2));
    profile->DapUIProtected(Chance(3));
    profile->FillAndKeyType(Any<FillAndKeyType>());
    profile->FillAndKeyMediaAssetId(Text());
    for (auto count = Below(6), index = std::size_t{0}; index < count; ++index)
      profile->Keyword(static_cast<unsigned int>(index), Text());
    return profile;
  }

  std::shared_ptr<DataModel::MediaAssets::Annotation> AnAnnotation() {
    auto annotation = std::make_shared<DataModel::MediaAssets::Annotation>(
        Any<DataModel::MediaAssets::AnnotationType>(), Text());
    if (!Chance(4)) annotation->TimeBounds(TimePoints::TimeBounds(Boundary(), Boundary()));
    Fill(annotation->Metadata());
    return annotation;
  }

  void Change(DataModel::MediaAssets::MediaResource& resource) {
    using namespace DataModel::MediaAssets;
    resource.Name(Text());
    resource.GeneralFormat(Any<ResourceFormat>());
    SetDates(resource);
    Fill(resource.Timebounds());
    Fill(*resource.Metadata());
    for (auto count = Below(3); count > 0; --count)
      resource.Adopt(std::make_unique<Stream>(StreamId(Id())));
    for (auto& stream : resource.Streams()) {
      stream->Format(Any<WrapperFormat>());
      Fill(stream->Timebounds());
      Fill(*stream->Metadata());
      for (auto count = Below(4); count > 0; --count)
        stream->Essences().Add(AnEssence());
      for (const auto& essence : stream->Essences())
        Change(*essence);
    }
  }

  std::unique_ptr<DataModel::MediaAssets::Essence> AnEssence() {
    using namespace DataModel::MediaAssets;
    if (Chance(3)) return std::make_unique<VideoEssence>();
    if (Chance(2)) return std::make_unique<AudioEssence>();
    return std::make_unique<DataEssence>();
  }

  void Change(DataModel::MediaAssets::Essence& essence) {
    using namespace DataModel::MediaAssets;
    essence.ChannelCount(Count());
    Fill(*essence.Metadata());
    if (auto* video = dynamic_cast<VideoEssence*>(&essence)) {
      video->VideoCodec(Any<VideoCodingFormat>());
      video->BitRate(Int32());
      video->BitRateMode(Any<BitRateMode>());
      video->BitDepth(Int32());
      video->FrameRate(Rate(Int32(), Int32()));
      video->Height(Int32());
      video->Width(Int32());
      video->ChromaSubSampling(Any<ChromaSubSampling>());
      video->ColorSpace(Any<ColorSpace>());
      video->ScanMode(Any<ScanMode>());
      video->FourCC(Text());
      video->AspectRatio(AspectRatio(Int32(), Int32()));
      video->Boxing(Any<Boxing>());
    } else if (auto* audio = dynamic_cast<AudioEssence*>(&essence)) {
      audio->AudioCodec(Any<AudioCodingFormat>());
      audio->BitRate(Int32());
      audio->BitRateMode(Any<BitRateMode>());
      audio->SampleRate(Rate(Int32(), Int32()));
      audio->BitDepth(Int32());
      audio->FourCC(Text());
    }
  }

  void Change(DataModel::MediaAssets::Track& track, DataModel::MediaAssets::MediaAsset& asset) {
    track.Name(Text());
    track.Channels().clear();
    for (auto& resource : asset.MediaResources()) {
      for (auto& stream : resource->Streams()) {
        for (const auto& essence : stream->Essences()) {
          for (auto count = Below(3); count > 0; --count) {
            track.Channels().push_back(std::make_shared<DataModel::MediaAssets::TrackChannelToRemove>());
            track.Channels().back()->Stream(stream);
            track.Channels().back()->EssenceNr(essence->Nr());
            track.Channels().back()->ChannelNr(2 * (Count() / 2) + static_cast<int32_t>(count) % 2);
          }
        }
      }
    }
  }

  std::mt19937_64 engine;
  int64_t lastId = 0;
};

}  // namespace Oru::TestSupport
