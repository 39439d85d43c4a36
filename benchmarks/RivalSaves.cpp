#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/Database/Columns/PackedTimeCode.h"

#include "Rival.h"

#include <stdexcept>

namespace Oru::Benchmarks {

using namespace DataModel::MediaAssets;
using BusinessEntityModel::BaseTypes::GenericMetadataProfile;
using BusinessEntityModel::BaseTypes::MetadataProfile;
using DataModel::MediaAssets::Database::TimecodeFormat;
using TimePoints::TimeBoundary;
using TimePoints::TimeBounds;

namespace {

int64_t Nanoseconds(const TimeBoundary& boundary) {
  return boundary.TimePoint().ToNanoseconds();
}
int32_t Moving(const TimeBoundary& boundary) {
  return boundary.IsMoving() ? 1 : 0;
}

template <class Enumeration>
int32_t Number(Enumeration value) {
  return static_cast<int32_t>(value);
}

}  // namespace

void Rival::BoundsTable::Write(int64_t owner, bool isNew, const TimeBoundsArray& bounds) {
  if (!isNew) remove.With(owner).Run();
  for (const TimeBounds& each : bounds) {
    insert
        .With(owner, Nanoseconds(each.InBoundary()), Moving(each.InBoundary()),
              Nanoseconds(each.OutBoundary()), Moving(each.OutBoundary()))
        .Run();
  }
}

void Rival::EntriesTable::Write(int64_t owner, bool isNew, const MetadataProfileDictionary& metadata) {
  if (!isNew) remove.With(owner).Run();
  metadata.Iterate([&](const MetadataProfile& profile) {
    const auto* generic = dynamic_cast<const GenericMetadataProfile*>(&profile);
    if (!generic) return true;
    const std::string name = generic->FullyQualifiedName().Value();
    for (const auto& [key, value] : generic->Entries())
      insert.With(owner, name, key, value).Run();
    return true;
  });
}

void Rival::Save(MediaAsset& asset) {
  if (asset.ObjectId() == -1) asset.ObjectId(FindKey(asset.Id()));
  const bool isNew = asset.ObjectId() == -1;
  SaveAssetRow(asset);
  WriteAnnotations(asset, isNew);
  assetBounds.Write(asset.ObjectId(), isNew, asset.PhysicalTimebounds());
  WriteOperator(asset, isNew);
  assetEntries.Write(asset.ObjectId(), isNew, asset.Metadata());
  for (auto& resource : asset.MediaResources()) {
    if (resource) SaveResource(*resource);
  }
  if (isNew) {
    for (auto& resource : asset.MediaResources()) {
      if (resource) linkResource.With(asset.ObjectId(), resource->ObjectId()).Run();
    }
  }
  for (const auto& track : asset.Tracks())
    SaveTrack(*track);
  if (isNew) {
    for (const auto& track : asset.Tracks())
      linkTrack.With(asset.ObjectId(), track->ObjectId()).Run();
  }
}

void Rival::SaveAssetRow(MediaAsset& asset) {
  const bool isNew = asset.ObjectId() == -1;
  Statement& statement = isNew ? insertAsset : updateAsset;
  const TimeBoundary& in = asset.InBoundary();
  const TimeBoundary& out = asset.OutBoundary();
  const std::string& ancestor = asset.Ancestor().Id().Value();
  const std::string& parent = asset.Parent().Id().Value();
  statement.With(nullptr, nullptr, asset.Id().Value(), Number(asset.AssetType()), asset.Name(),
                 asset.Description(), Nanoseconds(in), Moving(in), Nanoseconds(out), Moving(out),
                 int64_t{asset.ModificationDate()}, int64_t{asset.CreationDate()});
  if (!ancestor.empty()) statement.Bind(1, ancestor);
  if (!parent.empty()) statement.Bind(2, parent);
  if (isNew) {
    asset.ObjectId(Insert(statement));
  } else {
    statement.Bind(13, asset.ObjectId());
    statement.Run();
  }
}

void Rival::WriteAnnotations(MediaAsset& asset, bool isNew) {
  if (!isNew) deleteAnnotations.With(asset.ObjectId()).Run();
  for (const auto& annotation : asset.Annotations()) {
    const TimeBoundary& in = annotation->TimeBounds().InBoundary();
    const TimeBoundary& out = annotation->TimeBounds().OutBoundary();
    annotation->ObjectId(
        Insert(insertAnnotation.With(asset.ObjectId(), Number(annotation->Type()), annotation->Data(),
                                     Nanoseconds(in), Moving(in), Nanoseconds(out), Moving(out))));
    annotationEntries.Write(annotation->ObjectId(), true, annotation->Metadata());
  }
}

void Rival::WriteOperator(MediaAsset& asset, bool isNew) {
  const auto profile = asset.Metadata().Get<DapOperatorMetadataProfile>();
  if (!profile) return;
  const int64_t key = asset.ObjectId();
  if (!isNew) deleteKeywords.With(key).Run();
  const bool isStored = !isNew && Find(findOperator.With(key)) != -1;
  Statement& statement = isStored ? updateOperator : insertOperator;
  const DapId place = profile->DapId();
  const TimePoints::TimeCode& user = profile->UserTimecode();
  const TimePoints::TimeCode& tod = profile->TodTimecode();
  statement
      .With(profile->ServerId().SerialNumber(), place.Page(), place.Bank(), place.Row(),
            int32_t{place.Camera()}, profile->UmId(), profile->VarId(), profile->Rating(),
            Number(profile->ArchiveStatus()), Number(profile->UserTimecodeType()),
            Number(profile->PrimaryTimecode()), user.TotalSample(), TimecodeFormat(user), tod.TotalSample(),
            TimecodeFormat(tod), profile->Icon(), int64_t{profile->Color()},
            Number(profile->IsUserProtected()), Number(profile->IsDapUiProtected()),
            Number(profile->FillAndKeyType()), profile->FillAndKeyMediaAssetId().Value(), key)
      .Run();
  profile->ObjectId(key);
  int32_t number = 0;
  for (const auto& keyword : profile->Keywords())
    insertKeyword.With(key, number++, keyword).Run();
}

void Rival::SaveResource(MediaResource& resource) {
  if (resource.ObjectId() == -1) resource.ObjectId(Find(findResource.With(resource.Id().Value())));
  const bool isNew = resource.ObjectId() == -1;
  Statement& statement = isNew ? insertResource : updateResource;
  const std::string name = resource.Name();
  statement.With(resource.Id().Value(), name, Number(resource.GeneralFormat()),
                 int64_t{resource.ModificationDate()}, int64_t{resource.CreationDate()});
  if (isNew) {
    resource.ObjectId(Insert(statement));
  } else {
    statement.Bind(6, resource.ObjectId());
    statement.Run();
  }
  resourceBounds.Write(resource.ObjectId(), isNew, resource.Timebounds());
  resourceEntries.Write(resource.ObjectId(), isNew, *resource.Metadata());
  for (StreamReference& stream : resource.Streams()) {
    if (stream) SaveStream(*stream, resource.ObjectId());
  }
}

void Rival::SaveStream(Stream& stream, int64_t resourceKey) {
  if (stream.ObjectId() == -1) stream.ObjectId(Find(findStream.With(stream.Id().Value())));
  const bool isNew = stream.ObjectId() == -1;
  Statement& statement = isNew ? insertStream : updateStream;
  statement.With(stream.Id().Value(), resourceKey, Number(stream.Format()));
  if (isNew) {
    stream.ObjectId(Insert(statement));
  } else {
    statement.Bind(4, stream.ObjectId());
    statement.Run();
  }
  streamBounds.Write(stream.ObjectId(), isNew, stream.Timebounds());
  streamEntries.Write(stream.ObjectId(), isNew, *stream.Metadata());
  for (const auto& essence : stream.Essences())
    SaveEssence(*essence, stream.ObjectId(), isNew);
}

void Rival::SaveEssence(Essence& essence, int64_t streamKey, bool isStreamNew) {
  if (essence.ObjectId() == -1 && !isStreamNew) {
    essence.ObjectId(Find(findEssence.With(streamKey, essence.Nr())));
  }
  const bool isNew = essence.ObjectId() == -1;
  Statement& statement = isNew ? insertEssence : updateEssence;
  statement.With(streamKey, essence.Nr(), essence.ChannelCount());
  if (isNew) {
    essence.ObjectId(Insert(statement));
  } else {
    statement.Bind(4, essence.ObjectId());
    statement.Run();
  }
  essenceEntries.Write(essence.ObjectId(), isNew, *essence.Metadata());
  switch (essence.GetType()) {
    case Essence::Type::Video:
      SaveKind(static_cast<const VideoEssence&>(essence), isNew);
      break;
    case Essence::Type::Audio:
      SaveKind(static_cast<const AudioEssence&>(essence), isNew);
      break;
    case Essence::Type::Data:
      if (isNew) {
        insertData.With(essence.ObjectId()).Run();
      } else {
        updateData.With(essence.ObjectId(), essence.ObjectId()).Run();
      }
      break;
  }
}

void Rival::SaveKind(const VideoEssence& video, bool isNew) {
  Statement& statement = isNew ? insertVideo : updateVideo;
  statement
      .With(Number(video.VideoCodec()), video.BitRate(), Number(video.BitRateMode()), video.BitDepth(),
            video.FrameRate().Numerator(), video.FrameRate().Denominator(), video.Height(), video.Width(),
            Number(video.ChromaSubSampling()), Number(video.ColorSpace()), Number(video.ScanMode()),
            video.FourCC(), video.AspectRatio().WidthFactor(), video.AspectRatio().HeightFactor(),
            Number(video.Boxing()), video.ObjectId())
      .Run();
}

void Rival::SaveKind(const AudioEssence& audio, bool isNew) {
  Statement& statement = isNew ? insertAudio : updateAudio;
  statement
      .With(Number(audio.AudioCodec()), audio.BitRate(), Number(audio.BitRateMode()),
            audio.SampleRate().Numerator(), audio.SampleRate().Denominator(), audio.BitDepth(),
            audio.FourCC(), audio.ObjectId())
      .Run();
}

void Rival::SaveTrack(Track& track) {
  if (track.ObjectId() == -1) track.ObjectId(Find(findTrack.With(track.Id().Value())));
  const bool isNew = track.ObjectId() == -1;
  if (isNew) {
    track.ObjectId(Insert(insertTrack.With(track.Id().Value(), track.Name())));
  } else {
    updateTrack.With(track.Id().Value(), track.Name(), track.ObjectId()).Run();
  }
  if (!isNew) deleteChannels.With(track.ObjectId()).Run();
  for (const auto& channel : track.Channels()) {
    const int64_t essence =
        Find(findChannelEssence.With(channel->EssenceNr(), channel->Stream().Id().Value()));
    if (essence == -1) throw std::runtime_error("the essence of a channel isn't stored");
    insertChannel.With(track.ObjectId(), essence, channel->ChannelNr()).Run();
  }
}

void Rival::SaveGroup(AnglesMediaAssetGroup& group) {
  if (group.ObjectId() == -1) group.ObjectId(Find(findGroup.With(group.Id().Value())));
  if (group.ObjectId() == -1) {
    group.ObjectId(Insert(insertGroup.With(group.Id().Value(), group.Type(), group.Name())));
  } else {
    updateGroup.With(group.Id().Value(), group.Type(), group.Name(), group.ObjectId()).Run();
  }
  const int64_t key = group.ObjectId();
  deleteItems.With(key).Run();
  int32_t place = 0;
  for (const auto& item : group.Items()) {
    const int64_t asset = FindKey(item->MediaAsset().Id());
    if (asset == -1) throw std::runtime_error("the asset of a group item isn't stored");
    item->ObjectId(Insert(insertItem.With(key, asset)));
    const auto& angle = dynamic_cast<const AnglesMediaAssetGroupItem&>(*item);
    insertAngleItem.With(item->ObjectId(), place++, angle.Name()).Run();
  }
  if (Find(findAngles.With(key)) == -1) {
    insertAngles.With(key).Run();
  } else {
    updateAngles.With(key, key).Run();
  }
  const auto profile = group.Metadata().Get<AnglesDapOperatorMetadataProfile>();
  if (!profile) return;
  const DapId place4 = profile->DapId();
  Statement& statement =
      Find(findAnglesOperator.With(key)) == -1 ? insertAnglesOperator : updateAnglesOperator;
  statement.With(profile->ServerId().SerialNumber(), place4.Page(), place4.Bank(), place4.Clip(), key).Run();
  profile->ObjectId(key);
}

void Rival::SaveSequence(Sequence& sequence) {
  if (sequence.ObjectId() == -1) sequence.ObjectId(Find(findSequence.With(sequence.Id().Value())));
  const bool isNew = sequence.ObjectId() == -1;
  Statement& statement = isNew ? insertSequence : updateSequence;
  statement.With(sequence.Id().Value(), sequence.Name(), sequence.Version(),
                 sequence.Duration().Duration().ToNanoseconds(), Number(sequence.Duration().Fixed()),
                 sequence.GetTimePoint().ToNanoseconds(), int64_t{sequence.CreationDate()},
                 sequence.CreationOwner().Value(), int64_t{sequence.ModificationDate()},
                 sequence.ModificationOwner().Value(), nullptr);
  if (isNew) {
    sequence.ObjectId(Insert(statement));
  } else {
    statement.Bind(12, sequence.ObjectId());
    statement.Run();
  }
  const int64_t key = sequence.ObjectId();
  sequenceEntries.Write(key, isNew, sequence.Metadata());
  using Profile = BusinessEntityModel::Edits::DapOperatorMetadataProfile;
  const auto profile = sequence.Metadata().Get<Profile>();
  if (!profile) return;
  const bool hasRegen = profile->TimecodeRegen().HasValue();
  using Regen = BusinessEntityModel::Edits::DapOperatorTimecodeRegen;
  const Regen regen = hasRegen ? profile->TimecodeRegen().Value() : Regen();
  Statement& profileStatement =
      Find(findSequenceOperator.With(key)) == -1 ? insertSequenceOperator : updateSequenceOperator;
  profileStatement
      .With(profile->ServerId().SerialNumber(), profile->Page(), profile->Bank(), profile->Row(),
            profile->UmId(), profile->VarId(), profile->VideoElementsCount(),
            Number(profile->ArchiveStatus()), Number(hasRegen), Number(regen.ContinueIn()),
            Number(regen.From()), regen.TimecodeRef().TotalSample(), TimecodeFormat(regen.TimecodeRef()),
            Number(regen.In()), key)
      .Run();
  profile->ObjectId(key);
}

}  // namespace Oru::Benchmarks
