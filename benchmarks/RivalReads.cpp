#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/Database/Columns/PackedTimeCode.h"

#include "Rival.h"

#include <algorithm>
#include <utility>

namespace Oru::Benchmarks {

using namespace DataModel::MediaAssets;
using BaseTypes::FullyQualifiedName;
using BaseTypes::GenericMetadataProfile;
using BaseTypes::SharedReference;
using TimePoints::TimeBoundary;
using TimePoints::TimeBounds;
using TimePoints::TimePoint;

namespace {

// A time point and a flag, in two columns.
TimeBoundary Boundary(const Rows& row, int column) {
  return TimeBoundary(TimePoint::FromNanoseconds(row->Int64(column)), row->Int32(column + 1) != 0);
}

TimeBounds Bounds(const Rows& row, int column) {
  return TimeBounds(Boundary(row, column), Boundary(row, column + 2));
}

TimePoints::TimeCode TimeCode(const Rows& row, int column) {
  const int32_t format = row->Int32(column + 1);
  return TimePoints::TimeCodeBuilder()
      .Year(TimePoints::SinceYear)
      .Rate(DataModel::MediaAssets::Database::TimecodeRate(format))
      .IsDrop(DataModel::MediaAssets::Database::TimecodeDrop(format))
      .Build()
      .AddSample(row->Int64(column));
}

template <class Enumeration>
Enumeration Value(const Rows& row, int column) {
  return static_cast<Enumeration>(row->Int32(column));
}

template <class Profile>
void ReadServer(const Rows& row, int column, Profile& profile) {
  const int32_t number = row->Int32(column);
  if (ZuServerId::IsValid(number)) profile.ServerId(ZuServerId(number));
}

bool IsGridPlace(int32_t place) {
  return DapId::IsInRange(place, 0, 9);
}

void ReadEssence(const Rows& row, Essence& essence) {
  essence.ObjectId(row->Int64(0));
  essence.Nr(row->Int32(2));
  essence.ChannelCount(row->Int32(3));
}

void ReadStream(const Rows& row, Stream& stream) {
  stream.ObjectId(row->Int64(0));
  stream.Id(row->Text(1));
  stream.Format(Value<WrapperFormat>(row, 3));
}

}  // namespace

void Rival::BoundsTable::Read(int64_t owner, TimeBoundsArray& bounds) {
  for (Rows row(select.With(owner)); row.Next();)
    bounds.Insert(Bounds(row, 1));
}

void Rival::EntriesTable::Read(int64_t owner, MetadataProfileDictionary& metadata) {
  // The entries of a profile come one after the other.
  std::shared_ptr<GenericMetadataProfile> profile;
  FullyQualifiedName profileName;
  for (Rows row(select.With(owner)); row.Next();) {
    FullyQualifiedName name(row->Text(1));
    if (!profile || name != profileName) {
      profile = std::dynamic_pointer_cast<GenericMetadataProfile>(metadata[name]);
      if (!profile) {
        profile = std::make_shared<GenericMetadataProfile>(name);
        metadata.Set(profile);
      }
      profileName = std::move(name);
    }
    profile->Set(row->Text(2), row->Text(3));
  }
}

void Rival::ReadAsset(const Rows& row, MediaAsset& asset) {
  asset.ObjectId(row->Int64(0));
  asset.Id(row->Text(1));
  asset.AssetType(Value<AssetType>(row, 2));
  if (!row->IsNull(3)) asset.Ancestor(MediaAssetReference(Identifier(row->Text(3))));
  if (!row->IsNull(4)) asset.Parent(MediaAssetReference(Identifier(row->Text(4))));
  asset.Name(row->Text(5));
  asset.Description(row->Text(6));
  asset.PhysicalTimebounds().InBoundary(Boundary(row, 7));
  asset.PhysicalTimebounds().OutBoundary(Boundary(row, 9));
  asset.CreationDate(row->Int64(12));
  asset.ModificationDate(row->Int64(11));
}

bool Rival::GetAsset(int64_t key, MediaAsset& asset) {
  Rows row(selectAsset.With(key));
  if (!row.Next()) return false;
  ReadAsset(row, asset);
  return true;
}

int Rival::Walk() {
  return Walk(selectAllAssets);
}

int Rival::WalkPlain() {
  return Walk(selectAllPlain);
}

int Rival::Walk(Statement& select) {
  int count = 0;
  MediaAsset asset;
  for (Rows row(select); row.Next(); ++count)
    ReadAsset(row, asset);
  return count;
}

std::vector<MediaAsset> Rival::Search(const std::string& text, int limit) {
  const std::string pattern = "%" + text + "%";
  return ReadAssets(searchAssets.With(pattern, limit));
}

std::vector<MediaAsset> Rival::Match(const std::string& word, int limit) {
  const std::string expression = '"' + word + '"';
  return ReadAssets(matchAssets.With(expression, limit));
}

std::vector<std::string> Rival::MatchNames(const std::string& word, int limit) {
  const std::string expression = '"' + word + '"';
  std::vector<std::string> found;
  for (Rows row(matchAssets.With(expression, limit)); row.Next();) {
    found.push_back(row->Text(1));
    found.push_back(row->Text(13));
  }
  return found;
}

std::vector<MediaAsset> Rival::ReadAssets(Statement& bound) {
  std::vector<MediaAsset> found;
  for (Rows row(bound); row.Next();) {
    MediaAsset asset;
    ReadAsset(row, asset);
    found.push_back(std::move(asset));
  }
  return found;
}

void Rival::ReadDeep(int64_t key, MediaAsset& asset) {
  if (!GetAsset(key, asset)) return;
  ReadOwnParts(asset);
  ReadResources(asset);
  ReadTracks(asset, true);
}

void Rival::ReadLazy(int64_t key, MediaAsset& asset) {
  if (!GetAsset(key, asset)) return;
  ReadOwnParts(asset);
  for (Rows row(selectResourceIds.With(key)); row.Next();)
    asset.MediaResources().Insert(SharedReference<MediaResource>(Identifier(row->Text(0))));
  ReadTracks(asset, false);
}

void Rival::ReadOwnParts(MediaAsset& asset) {
  assetBounds.Read(asset.ObjectId(), asset.PhysicalTimebounds());
  assetEntries.Read(asset.ObjectId(), asset.Metadata());
  ReadOperator(asset);
  ReadAnnotations(asset);
}

void Rival::ReadOperator(MediaAsset& asset) {
  const auto profile = std::make_shared<DapOperatorMetadataProfile>();
  if (Rows row(selectOperator.With(asset.ObjectId())); row.Next()) {
    profile->ObjectId(row->Int64(0));
    ReadServer(row, 1, *profile);
    if (const int32_t page = row->Int32(2); IsGridPlace(page)) profile->Page(page);
    if (const int32_t bank = row->Int32(3); IsGridPlace(bank)) profile->Bank(bank);
    if (const int32_t place = row->Int32(4); IsGridPlace(place)) profile->Row(place);
    const auto camera = static_cast<char>(row->Int32(5));
    if (DapId::IsValidCamera(camera)) profile->Camera(camera);
    profile->UmId(row->Text(6));
    profile->VarId(row->Text(7));
    profile->Rating(row->Int32(8));
    profile->ArchiveStatus(Value<ArchiveStatus>(row, 9));
    profile->UserTimecodeType(Value<UserTimecodeType>(row, 10));
    profile->PrimaryTimecode(Value<TimecodePrimary>(row, 11));
    profile->UserTimecode(TimeCode(row, 12));
    profile->TodTimecode(TimeCode(row, 14));
    profile->Icon(row->Text(16));
    profile->Color(static_cast<uint32_t>(row->Int32(17)));
    profile->UserProtected(row->Int32(18) != 0);
    profile->DapUIProtected(row->Int32(19) != 0);
    profile->FillAndKeyType(Value<FillAndKeyType>(row, 20));
    profile->FillAndKeyMediaAssetId(Identifier(row->Text(21)));
  }
  for (Rows row(selectKeywords.With(asset.ObjectId())); row.Next();)
    profile->Keyword(static_cast<unsigned int>(row->Int32(1)), row->Text(2));
  asset.Metadata().Set(profile);
}

void Rival::ReadAnnotations(MediaAsset& asset) {
  for (Rows row(selectAnnotations.With(asset.ObjectId())); row.Next();) {
    auto annotation = std::make_shared<Annotation>();
    annotation->ObjectId(row->Int64(0));
    annotation->Type(Value<AnnotationType>(row, 2));
    annotation->Data(row->Text(3));
    annotation->TimeBounds(Bounds(row, 4));
    annotationEntries.Read(annotation->ObjectId(), annotation->Metadata());
    asset.Annotations().push_back(std::move(annotation));
  }
}

void Rival::ReadResources(MediaAsset& asset) {
  for (Rows row(selectResources.With(asset.ObjectId())); row.Next();) {
    auto resource = std::make_shared<MediaResource>();
    resource->ObjectId(row->Int64(0));
    resource->Id(row->Text(1));
    resource->Name(row->Text(2));
    resource->GeneralFormat(Value<ResourceFormat>(row, 3));
    resource->CreationDate(row->Int64(5));
    resource->ModificationDate(row->Int64(4));
    resourceEntries.Read(resource->ObjectId(), *resource->Metadata());
    resourceBounds.Read(resource->ObjectId(), resource->Timebounds());
    ReadStreams(*resource);
    asset.MediaResources().Insert(SharedReference<MediaResource>(std::move(resource)));
  }
}

void Rival::ReadStreams(MediaResource& resource) {
  for (Rows row(selectStreams.With(resource.ObjectId())); row.Next();) {
    auto stream = std::make_unique<Stream>();
    ReadStream(row, *stream);
    streamBounds.Read(stream->ObjectId(), stream->Timebounds());
    streamEntries.Read(stream->ObjectId(), *stream->Metadata());
    ReadEssences(*stream);
    resource.Streams().emplace_back(std::move(stream));
  }
}

void Rival::ReadEssences(Stream& stream) {
  std::vector<std::unique_ptr<Essence>> essences;
  for (Rows row(selectVideos.With(stream.ObjectId())); row.Next();) {
    auto video = std::make_unique<VideoEssence>();
    ReadEssence(row, *video);
    video->VideoCodec(Value<VideoCodingFormat>(row, 5));
    video->BitRate(row->Int32(6));
    video->BitRateMode(Value<BitRateMode>(row, 7));
    video->BitDepth(row->Int32(8));
    video->FrameRate(Rate(row->Int32(9), row->Int32(10)));
    video->Height(row->Int32(11));
    video->Width(row->Int32(12));
    video->ChromaSubSampling(Value<ChromaSubSampling>(row, 13));
    video->ColorSpace(Value<ColorSpace>(row, 14));
    video->ScanMode(Value<ScanMode>(row, 15));
    video->FourCC(row->Text(16));
    video->AspectRatio(AspectRatio(row->Int32(17), row->Int32(18)));
    video->Boxing(Value<Boxing>(row, 19));
    essences.push_back(std::move(video));
  }
  for (Rows row(selectAudios.With(stream.ObjectId())); row.Next();) {
    auto audio = std::make_unique<AudioEssence>();
    ReadEssence(row, *audio);
    audio->AudioCodec(Value<AudioCodingFormat>(row, 5));
    audio->BitRate(row->Int32(6));
    audio->BitRateMode(Value<BitRateMode>(row, 7));
    audio->SampleRate(Rate(row->Int32(8), row->Int32(9)));
    audio->BitDepth(row->Int32(10));
    audio->FourCC(row->Text(11));
    essences.push_back(std::move(audio));
  }
  for (Rows row(selectDatas.With(stream.ObjectId())); row.Next();) {
    auto data = std::make_unique<DataEssence>();
    ReadEssence(row, *data);
    essences.push_back(std::move(data));
  }
  std::sort(essences.begin(), essences.end(),
            [](const auto& left, const auto& right) { return left->Nr() < right->Nr(); });
  for (std::unique_ptr<Essence>& essence : essences)
    stream.Essences().Add(std::move(essence));
}

void Rival::ReadTracks(MediaAsset& asset, bool deep) {
  for (Rows row(selectTracks.With(asset.ObjectId())); row.Next();) {
    auto track = std::make_shared<Track>();
    track->ObjectId(row->Int64(0));
    track->Id(row->Text(1));
    track->Name(row->Text(2));
    ReadChannels(*track);
    if (deep) LoadStreams(*track);
    asset.Tracks().Insert(track);
  }
}

void Rival::ReadChannels(Track& track) {
  for (Rows row(selectChannels.With(track.ObjectId())); row.Next();) {
    auto channel = std::make_shared<TrackChannelToRemove>();
    channel->Stream(StreamReference(Identifier(row->Text(0))));
    channel->EssenceNr(row->Int32(1));
    channel->ChannelNr(row->Int32(2));
    track.Channels().push_back(std::move(channel));
  }
}

void Rival::LoadStreams(Track& track) {
  for (const auto& channel : track.Channels()) {
    auto stream = std::make_shared<Stream>();
    {
      Rows row(selectStreamById.With(channel->Stream().Id().Value()));
      if (!row.Next()) continue;
      ReadStream(row, *stream);
    }
    ReadEssences(*stream);
    channel->Stream(StreamReference(std::move(stream)));
  }
}

void Rival::ReadGroup(const Identifier& id, AnglesMediaAssetGroup& group) {
  const int64_t key = Find(findAnglesById.With(id.Value()));
  {
    Rows row(selectAngles.With(key));
    if (!row.Next()) return;
    group.ObjectId(row->Int64(0));
    group.Id(row->Text(1));
    group.Type(row->Text(2));
    group.Name(row->Text(3));
  }
  for (Rows row(selectAngleItems.With(key)); row.Next();) {
    auto item = std::make_shared<AnglesMediaAssetGroupItem>();
    item->ObjectId(row->Int64(0));
    item->Name(row->Text(5));
    auto asset = std::make_shared<MediaAsset>();
    if (Rows assetRow(selectItemAsset.With(item->ObjectId())); assetRow.Next()) ReadAsset(assetRow, *asset);
    item->MediaAsset(MediaAssetReference(std::move(asset)));
    group.Items().push_back(std::move(item));
  }
  if (Rows row(selectAnglesOperator.With(key)); row.Next()) {
    auto profile = std::make_shared<AnglesDapOperatorMetadataProfile>();
    profile->ObjectId(row->Int64(0));
    ReadServer(row, 1, *profile);
    if (const int32_t page = row->Int32(2); IsGridPlace(page)) profile->Page(page);
    if (const int32_t bank = row->Int32(3); IsGridPlace(bank)) profile->Bank(bank);
    if (const int32_t place = row->Int32(4); IsGridPlace(place)) profile->Clip(place);
    group.Metadata().Set(std::move(profile));
  }
}

void Rival::ReadSequence(const Identifier& id, Sequence& sequence) {
  using namespace BusinessEntityModel::Edits;
  const int64_t key = Find(findSequence.With(id.Value()));
  {
    Rows row(selectSequence.With(key));
    if (!row.Next()) return;
    sequence.ObjectId(row->Int64(0));
    sequence.Id(row->Text(1));
    sequence.Name(row->Text(2));
    sequence.Version(row->Int32(3));
    SequenceDuration duration;
    if (row->Int32(5) != 0) {
      duration = SequenceDuration(TimePoints::Duration::FromNanoseconds(row->Int64(4)));
    }
    sequence.Duration(duration);
    sequence.SetTimePoint(TimePoint::FromNanoseconds(row->Int64(6)));
    sequence.CreationDate(row->Int64(7));
    sequence.CreationOwner(row->Text(8));
    sequence.ModificationDate(row->Int64(9));
    sequence.ModificationOwner(row->Text(10));
  }
  sequenceEntries.Read(key, sequence.Metadata());
  if (Rows row(selectSequenceOperator.With(key)); row.Next()) {
    auto profile = std::make_shared<BusinessEntityModel::Edits::DapOperatorMetadataProfile>();
    profile->ServerId(ZuServerId(row->Int32(1)));
    profile->Page(row->Int32(2));
    profile->Bank(row->Int32(3));
    profile->Row(row->Int32(4));
    profile->UmId(row->Text(5));
    profile->VarId(row->Text(6));
    profile->VideoElementsCount(row->Int32(7));
    profile->ArchiveStatus(Value<ArchiveStatus>(row, 8));
    if (row->Int32(9) != 0) {
      using Regen = DapOperatorTimecodeRegen;
      Regen regen;
      regen.ContinueIn(Value<Regen::Continuity>(row, 10));
      regen.From(Value<Regen::Reference>(row, 11));
      regen.TimecodeRef(TimeCode(row, 12));
      regen.In(Value<Regen::Output>(row, 14));
      profile->TimecodeRegen(regen);
    }
    sequence.Metadata().Set(std::move(profile));
  }
}

}  // namespace Oru::Benchmarks
