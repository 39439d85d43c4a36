#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace Oru::TestSupport {

/// Everything that a file keeps of a media asset, field by field, object ids included: for exact comparisons
/// between an asset that was saved and the same asset read again.
class AssetFields {
 public:
  /// Lists an asset as it stands in memory.
  static AssetFields Of(const DataModel::MediaAssets::MediaAsset& asset) { return AssetFields(asset, false); }
  /// Lists what a reading must give after a save of the asset. The file keeps less than the asset holds:
  ///   - profiles without entries leave nothing behind, and an operator's profile is read in any case;
  ///   - time codes always have a date, and rates other than 50/1 and 60/1 come back as 1/1;
  ///   - pages, banks and rows above 9 and cameras off the grid count as not set.
  static AssetFields AsStored(const DataModel::MediaAssets::MediaAsset& asset) {
    return AssetFields(asset, true);
  }

  std::size_t Size() const { return fields.size(); }

  /// The first field in which a reading differs, with both values; empty when there is none.
  std::string FirstDifference(const AssetFields& reading) const {
    const auto differing =
        std::mismatch(fields.begin(), fields.end(), reading.fields.begin(), reading.fields.end());
    const std::string expected =
        differing.first == fields.end() ? "nothing more" : Printable(*differing.first);
    const std::string found =
        differing.second == reading.fields.end() ? "nothing more" : Printable(*differing.second);
    const bool isSame = differing.first == fields.end() && differing.second == reading.fields.end();
    return isSame ? std::string() : "expected " + expected + ", read " + found;
  }

 private:
  using Field = std::pair<std::string, std::string>;
  using Dictionary = BusinessEntityModel::BaseTypes::MetadataProfileDictionary;

  AssetFields(const DataModel::MediaAssets::MediaAsset& asset, bool asStored) : isAsStored(asStored) {
    Add("objectId", asset.ObjectId());
    Add("id", asset.Id());
    Add("assetType", Number(asset.AssetType()));
    Add("ancestor", asset.Ancestor().Id());
    Add("parent", asset.Parent().Id());
    Add("name", asset.Name());
    Add("description", asset.Description());
    Add("in", asset.InBoundary());
    Add("out", asset.OutBoundary());
    Add("creationDate", asset.CreationDate());
    Add("modificationDate", asset.ModificationDate());
    Add("bounds", asset.PhysicalTimebounds());
    Add("metadata", asset.Metadata());
    AddOperatorProfile(asset);
    for (std::size_t i = 0; i < asset.Annotations().size(); ++i)
      Add("annotation " + std::to_string(i), *asset.Annotations()[i]);
    int number = 0;
    for (const auto& reference : asset.MediaResources()) {
      const std::string path = "resource " + std::to_string(number++);
      Add(path, reference.Id());
      if (reference) Add(path, *reference);
    }
    number = 0;
    for (const auto& track : asset.Tracks())
      Add("track " + std::to_string(number++), *track);
  }

  template <class Enumeration>
  static int64_t Number(Enumeration value) {
    return static_cast<int64_t>(value);
  }
  static std::string TextOf(const TimePoints::TimeBoundary& boundary) {
    return std::to_string(boundary.TimePoint().ToNanoseconds()) + (boundary.IsMoving() ? " moving" : "");
  }

  void Add(const std::string& path, const std::string& value) { fields.emplace_back(path, value); }
  void Add(const std::string& path, const BusinessEntityModel::BaseTypes::Identifier& value) {
    Add(path, value.Value());
  }
  void Add(const std::string& path, int64_t value) { Add(path, std::to_string(value)); }
  void Add(const std::string& path, const TimePoints::TimeBoundary& value) { Add(path, TextOf(value)); }

  // The order of bounds that differ in their moving flags alone isn't kept.
  void Add(const std::string& path, const DataModel::MediaAssets::TimeBoundsArray& bounds) {
    std::vector<std::string> texts;
    for (const TimePoints::TimeBounds& element : bounds)
      texts.push_back(TextOf(element.InBoundary()) + " to " + TextOf(element.OutBoundary()));
    AddSorted(path, std::move(texts));
  }

  void AddSorted(const std::string& path, std::vector<std::string> texts) {
    std::sort(texts.begin(), texts.end());
    for (std::string& text : texts)
      fields.emplace_back(path, std::move(text));
  }

  // Generic profiles only.
  void Add(const std::string& path, const Dictionary& metadata) {
    metadata.Iterate([&](const BusinessEntityModel::BaseTypes::MetadataProfile& profile) {
      const auto* generic =
          dynamic_cast<const BusinessEntityModel::BaseTypes::GenericMetadataProfile*>(&profile);
      if (!generic || (isAsStored && generic->Size() == 0)) return true;
      Add(path + " profile", profile.FullyQualifiedName().Value());
      Add(path + " profile size", int64_t{generic->Size()});
      for (const auto& [key, value] : generic->Entries()) {
        Add(path + " key", key);
        Add(path + " value", value);
      }
      return true;
    });
  }

  void AddOperatorProfile(const DataModel::MediaAssets::MediaAsset& asset) {
    using DataModel::MediaAssets::DapOperatorMetadataProfile;
    if (asset.HasDapOperatorMetadata()) {
      Add("operator", asset.DapOperatorMetadata());
    } else if (isAsStored) {
      Add("operator", DapOperatorMetadataProfile());
    }
  }

  void Add(const std::string& path, const DataModel::MediaAssets::DapOperatorMetadataProfile& profile) {
    Add(path + " objectId", profile.ObjectId());
    Add(path + " server", profile.ServerId().SerialNumber());
    Add(path + " page", GridPlace(profile.Page()));
    Add(path + " bank", GridPlace(profile.Bank()));
    Add(path + " row", GridPlace(profile.Row()));
    const bool hasCamera = profile.Camera() >= 'A' && profile.Camera() <= 'L';
    Add(path + " camera", isAsStored && !hasCamera ? 0 : int64_t{profile.Camera()});
    Add(path + " umId", profile.UmId());
    Add(path + " varId", profile.VarId());
    Add(path + " rating", profile.Rating());
    Add(path + " archiveStatus", Number(profile.ArchiveStatus()));
    Add(path + " userTimecodeType", Number(profile.UserTimecodeType()));
    Add(path + " primaryTimecode", Number(profile.PrimaryTimecode()));
    Add(path + " userTimecode", profile.UserTimecode());
    Add(path + " todTimecode", profile.TodTimecode());
    Add(path + " icon", profile.Icon());
    Add(path + " color", int64_t{profile.Color()});
    Add(path + " userProtected", int64_t{profile.IsUserProtected()});
    Add(path + " dapUiProtected", int64_t{profile.IsDapUiProtected()});
    Add(path + " fillAndKeyType", Number(profile.FillAndKeyType()));
    Add(path + " fillAndKeyMediaAssetId", profile.FillAndKeyMediaAssetId());
    for (const auto& keyword : profile.Keywords())
      Add(path + " keyword", keyword);
  }

  int64_t GridPlace(int place) const { return isAsStored && (place < 0 || place > 9) ? 255 : place; }

  void Add(const std::string& path, const TimePoints::TimeCode& timeCode) {
    const auto& rate = timeCode.Rate();
    const bool isKept = rate.Denominator() == 1 && (rate.Numerator() == 50 || rate.Numerator() == 60);
    const bool isChanged = isAsStored && !isKept;
    Add(path, timeCode.TotalSample());
    Add(path + " rate numerator", isChanged ? 1 : rate.Numerator());
    Add(path + " rate denominator", isChanged ? 1 : rate.Denominator());
    Add(path + " drop", int64_t{!isChanged && timeCode.IsDrop()});
    Add(path + " date", int64_t{isAsStored || timeCode.HasDate()});
  }

  void Add(const std::string& path, const DataModel::MediaAssets::Annotation& annotation) {
    Add(path + " objectId", annotation.ObjectId());
    Add(path + " type", Number(annotation.Type()));
    Add(path + " data", annotation.Data());
    Add(path + " in", annotation.TimeBounds().InBoundary());
    Add(path + " out", annotation.TimeBounds().OutBoundary());
    Add(path + " metadata", annotation.Metadata());
  }

  void Add(const std::string& path, const DataModel::MediaAssets::MediaResource& resource) {
    Add(path + " objectId", resource.ObjectId());
    Add(path + " id", resource.Id());
    Add(path + " name", resource.Name());
    Add(path + " generalFormat", Number(resource.GeneralFormat()));
    Add(path + " creationDate", resource.CreationDate());
    Add(path + " modificationDate", resource.ModificationDate());
    Add(path + " bounds", resource.Timebounds());
    Add(path + " metadata", *resource.Metadata());
    int number = 0;
    for (const auto& reference : resource.Streams()) {
      const std::string streamPath = path + " stream " + std::to_string(number++);
      Add(streamPath, reference.Id());
      if (!reference) continue;
      Add(streamPath + " bounds", reference->Timebounds());
      Add(streamPath + " metadata", *reference->Metadata());
      AddWithEssences(streamPath, *reference);
      for (const auto& essence : reference->Essences())
        Add(streamPath + " essence " + std::to_string(essence->Nr()) + " metadata", *essence->Metadata());
    }
  }

  void AddWithEssences(const std::string& path, const DataModel::MediaAssets::Stream& stream) {
    Add(path + " objectId", stream.ObjectId());
    Add(path + " id", stream.Id());
    Add(path + " format", Number(stream.Format()));
    for (const auto& essence : stream.Essences())
      Add(path + " essence " + std::to_string(essence->Nr()), *essence);
  }

  void Add(const std::string& path, const DataModel::MediaAssets::Essence& essence) {
    using namespace DataModel::MediaAssets;
    Add(path + " objectId", essence.ObjectId());
    Add(path + " kind", Number(essence.GetType()));
    Add(path + " channelCount", essence.ChannelCount());
    if (const auto* video = dynamic_cast<const VideoEssence*>(&essence)) {
      Add(path + " videoCodec", Number(video->VideoCodec()));
      Add(path + " bitRate", video->BitRate());
      Add(path + " bitRateMode", Number(video->BitRateMode()));
      Add(path + " bitDepth", video->BitDepth());
      Add(path + " frameRate", video->FrameRate());
      Add(path + " height", video->Height());
      Add(path + " width", video->Width());
      Add(path + " chromaSubSampling", Number(video->ChromaSubSampling()));
      Add(path + " colorSpace", Number(video->ColorSpace()));
      Add(path + " scanMode", Number(video->ScanMode()));
      Add(path + " fourCC", video->FourCC());
      Add(path + " aspectRatio width", video->AspectRatio().WidthFactor());
      Add(path + " aspectRatio height", video->AspectRatio().HeightFactor());
      Add(path + " boxing", Number(video->Boxing()));
    } else if (const auto* audio = dynamic_cast<const AudioEssence*>(&essence)) {
      Add(path + " audioCodec", Number(audio->AudioCodec()));
      Add(path + " bitRate", audio->BitRate());
      Add(path + " bitRateMode", Number(audio->BitRateMode()));
      Add(path + " sampleRate", audio->SampleRate());
      Add(path + " bitDepth", audio->BitDepth());
      Add(path + " fourCC", audio->FourCC());
    }
  }

  void Add(const std::string& path, const DataModel::MediaAssets::Rate& rate) {
    Add(path + " numerator", rate.Numerator());
    Add(path + " denominator", rate.Denominator());
  }

  // Each loaded channel holds a stream of its own, with essences and without bounds and metadata. The order
  // of channels isn't kept.
  void Add(const std::string& path, const DataModel::MediaAssets::Track& track) {
    Add(path + " objectId", track.ObjectId());
    Add(path + " id", track.Id());
    Add(path + " name", track.Name());
    std::vector<std::vector<Field>> channels;
    for (const auto& channel : track.Channels()) {
      std::vector<Field> others = std::exchange(fields, {});
      Add(path + " channel of stream", channel->Stream().Id());
      Add(path + " channel of essence", channel->EssenceNr());
      Add(path + " channel number", channel->ChannelNr());
      if (channel->Stream()) AddWithEssences(path + " channel stream", *channel->Stream());
      channels.push_back(std::exchange(fields, std::move(others)));
    }
    std::sort(channels.begin(), channels.end());
    for (std::vector<Field>& channel : channels)
      std::move(channel.begin(), channel.end(), std::back_inserter(fields));
  }

  static std::string Printable(const Field& field) {
    return Printable(field.first) + " = \"" + Printable(field.second) + "\"";
  }
  static std::string Printable(const std::string& text) {
    static const char digits[] = "0123456789abcdef";
    std::string printable;
    for (const char byte : text.substr(0, 200)) {
      const auto code = static_cast<unsigned char>(byte);
      if (code >= 0x20 && code < 0x7f) {
        printable += byte;
      } else {
        printable.append("\\x") += digits[code >> 4];
        printable += digits[code & 15];
      }
    }
    return text.size() <= 200 ? printable : printable + "... of " + std::to_string(text.size()) + " bytes";
  }

  bool isAsStored;
  std::vector<Field> fields;
};

}  // namespace Oru::TestSupport
