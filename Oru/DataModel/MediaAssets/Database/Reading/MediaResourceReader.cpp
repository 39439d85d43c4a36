#include "Oru/DataModel/MediaAssets/Database/Reading/MediaResourceReader.h"

#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/Database/AudioEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/DataEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/VideoEssenceTable.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include <algorithm>

namespace Oru::DataModel::MediaAssets::Database {

using TimePoints::TimeBounds;

MediaResourceReader::MediaResourceReader(MediaResourceTable& table)
    : bounds(table.GetTimeBoundsTable(), TimeBoundsTable::columnNames[TimeBoundsTable::Column::ForeignKey]),
      metadata(table.GetMetadataTable(), MetadataTable::columnNames[MetadataTable::Column::ForeignKey]),
      streamRows(table.GetStreamTable(), StreamTable::columnNames[StreamTable::Column::RefMediaResource]),
      streamBounds(table.GetStreamTable().GetTimeBoundsTable(),
                   TimeBoundsTable::columnNames[TimeBoundsTable::Column::ForeignKey]),
      streamMetadata(table.GetStreamTable().GetMetadataTable(),
                     MetadataTable::columnNames[MetadataTable::Column::ForeignKey]),
      videoRows(table.GetStreamTable().GetVideoEssenceTable(),
                EssenceTable::columnNames[EssenceTable::Column::RefStream]),
      audioRows(table.GetStreamTable().GetAudioEssenceTable(),
                EssenceTable::columnNames[EssenceTable::Column::RefStream]),
      dataRows(table.GetStreamTable().GetDataEssenceTable(),
               EssenceTable::columnNames[EssenceTable::Column::RefStream]),
      essenceMetadata(table.GetStreamTable().GetEssenceTable().GetMetadataTable(),
                      MetadataTable::columnNames[MetadataTable::Column::ForeignKey]) {}

void MediaResourceReader::Read(ObjectsByKey<MediaResource>& resources) {
  if (resources.IsEmpty()) return;
  const std::string keys = resources.Keys();
  bounds.ForEach(
      keys, [&](int64_t owner, const TimeBounds& span) { resources.At(owner).Timebounds().Insert(span); });
  metadata.ForEach(keys, [&](int64_t owner, const MetadataRow& row) {
    MetadataTable::Fold(*resources.At(owner).Metadata(), row);
  });
  ReadStreams(resources, keys);
}

void MediaResourceReader::ReadStreams(ObjectsByKey<MediaResource>& resources, const std::string& keys) {
  ObjectsByKey<Stream> streams;
  streamRows.ForEachInOrder(
      keys, [] { return std::make_unique<Stream>(); },
      [&](int64_t owner, std::unique_ptr<Stream> stream) {
        streams.Add(stream->ObjectId(), *stream);
        resources.At(owner).Streams().emplace_back(std::move(stream));
      });
  if (streams.IsEmpty()) return;
  streams.Sort();
  const std::string streamKeys = streams.Keys();
  streamBounds.ForEach(streamKeys, [&](int64_t owner, const TimeBounds& span) {
    streams.At(owner).Timebounds().Insert(span);
  });
  streamMetadata.ForEach(streamKeys, [&](int64_t owner, const MetadataRow& row) {
    MetadataTable::Fold(*streams.At(owner).Metadata(), row);
  });
  ReadEssences(streams, streamKeys);
}

template <class Kind>
void MediaResourceReader::ReadKind(RowsOfOwners<PersistentObject>& rows, ObjectsByKey<Stream>& streams,
                                   const std::string& keys, Essences& essences) {
  rows.ForEach(
      keys, [] { return std::make_unique<Kind>(); },
      [&](int64_t owner, std::unique_ptr<Kind> essence) {
        essences.emplace_back(&streams.At(owner), std::move(essence));
      });
}

void MediaResourceReader::ReadEssences(ObjectsByKey<Stream>& streams, const std::string& keys) {
  Essences essences;
  ReadKind<VideoEssence>(videoRows, streams, keys, essences);
  ReadKind<AudioEssence>(audioRows, streams, keys, essences);
  ReadKind<DataEssence>(dataRows, streams, keys, essences);
  if (essences.empty()) return;
  std::sort(essences.begin(), essences.end(),
            [](const auto& left, const auto& right) { return left.second->Nr() < right.second->Nr(); });
  ObjectsByKey<Essence> byKey;
  for (auto& [stream, essence] : essences) {
    byKey.Add(essence->ObjectId(), *essence);
    stream->Essences().Add(std::move(essence));
  }
  byKey.Sort();
  essenceMetadata.ForEach(byKey.Keys(), [&](int64_t owner, const MetadataRow& row) {
    MetadataTable::Fold(*byKey.At(owner).Metadata(), row);
  });
}

}  // namespace Oru::DataModel::MediaAssets::Database
