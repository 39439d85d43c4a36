#pragma once

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include "support/RandomValues.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

namespace Oru::TestSupport {

using namespace DataModel::MediaAssets;

/// Ways to give one field of an entity a random value that the file keeps.
template <class T>
using Fields = std::vector<std::function<void(T&, RandomValues&)>>;

/// The fields of a class that a file keeps, but for its identifier and its parts of other classes.
template <class T>
extern const Fields<T> fieldsOf;

/// Gives an entity random values. Now and then a field stays as it is.
template <class T>
void SetFields(T& entity, RandomValues& random) {
  for (const auto& set : fieldsOf<T>) {
    if (!random.Chance(8)) set(entity, random);
  }
}

/// The dates, each of them without the other.
template <class T>
void SetModificationDate(T& entity, RandomValues& random) {
  const auto created = entity.CreationDate();
  entity.CreationDate(created);
  entity.ModificationDate(std::max(created, random.Int64()));
}
template <class T>
void SetCreationDate(T& entity, RandomValues& random) {
  const auto modified = entity.ModificationDate();
  entity.CreationDate(std::min(modified, random.Int64()));
  entity.ModificationDate(modified);
}

template <>
inline const Fields<DapOperatorMetadataProfile> fieldsOf<DapOperatorMetadataProfile> = {
    [](auto& e, auto& r) { e.ServerId(ZuServerId(10 * (1 + r.Count() % 214748364))); },
    [](auto& e, auto& r) { e.Page(static_cast<int>(r.Below(10))); },
    [](auto& e, auto& r) { e.Bank(static_cast<int>(r.Below(10))); },
    [](auto& e, auto& r) { e.Row(static_cast<int>(r.Below(10))); },
    [](auto& e, auto& r) { e.Camera(static_cast<char>('A' + r.Below(12))); },
    [](auto& e, auto& r) { e.UmId(r.Text()); },
    [](auto& e, auto& r) { e.VarId(r.Text()); },
    [](auto& e, auto& r) { e.Rating(r.Int32()); },
    [](auto& e, auto& r) { e.ArchiveStatus(r.template Any<ArchiveStatus>()); },
    [](auto& e, auto& r) { e.UserTimecodeType(r.template Any<UserTimecodeType>()); },
    [](auto& e, auto& r) { e.PrimaryTimecode(r.template Any<TimecodePrimary>()); },
    [](auto& e, auto& r) { e.UserTimecode(r.TimeCode()); },
    [](auto& e, auto& r) { e.TodTimecode(r.TimeCode()); },
    [](auto& e, auto& r) { e.Icon(r.Text()); },
    [](auto& e, auto& r) { e.Color(static_cast<uint32_t>(r.Int32())); },
    [](auto& e, auto& r) { e.UserProtected(r.Chance(2)); },
    [](auto& e, auto& r) { e.DapUIProtected(r.Chance(3)); },
    [](auto& e, auto& r) { e.FillAndKeyType(r.template Any<FillAndKeyType>()); },
    [](auto& e, auto& r) { e.FillAndKeyMediaAssetId(r.Text()); },
    [](auto& e, auto& r) {
      for (auto count = r.Below(6), index = std::size_t{0}; index < count; ++index)
        e.Keyword(static_cast<unsigned int>(index), r.Text());
    },
};

template <>
inline const Fields<AnglesDapOperatorMetadataProfile> fieldsOf<AnglesDapOperatorMetadataProfile> = {
    [](auto& e, auto& r) { e.ServerId(ZuServerId(10 * (1 + r.Count() % 214748364))); },
    [](auto& e, auto& r) { e.Page(static_cast<int>(r.Below(10))); },
    [](auto& e, auto& r) { e.Bank(static_cast<int>(r.Below(10))); },
    [](auto& e, auto& r) { e.Clip(static_cast<int>(r.Below(10))); },
};

template <>
inline const Fields<Annotation> fieldsOf<Annotation> = {
    [](auto& e, auto& r) { e.Type(r.template Any<AnnotationType>()); },
    [](auto& e, auto& r) { e.Data(r.Text()); },
    [](auto& e, auto& r) {
      e.TimeBounds(TimePoints::TimeBounds(r.Boundary(), e.TimeBounds().OutBoundary()));
    },
    [](auto& e, auto& r) { e.TimeBounds(TimePoints::TimeBounds(e.TimeBounds().InBoundary(), r.Boundary())); },
    [](auto& e, auto& r) { r.Fill(e.Metadata()); },
};

template <>
inline const Fields<MediaAsset> fieldsOf<MediaAsset> = {
    [](auto& e, auto& r) { e.AssetType(r.template Any<AssetType>()); },
    [](auto& e, auto& r) {
      e.Ancestor(r.Chance(2) ? MediaAssetReference(MediaAssetId(r.Text())) : MediaAssetReference());
    },
    [](auto& e, auto& r) {
      e.Parent(r.Chance(2) ? MediaAssetReference(MediaAssetId(r.Text())) : MediaAssetReference());
    },
    [](auto& e, auto& r) { e.Name(r.Text()); },
    [](auto& e, auto& r) { e.Description(r.Text()); },
    [](auto& e, auto& r) { e.InBoundary(r.Boundary()); },
    [](auto& e, auto& r) { e.OutBoundary(r.Boundary()); },
    SetModificationDate<MediaAsset>,
    SetCreationDate<MediaAsset>,
    [](auto& e, auto& r) { r.Fill(e.PhysicalTimebounds()); },
    // The operator's profile stays once it is there.
    [](auto& e, auto& r) {
      const auto former = e.Metadata().template Get<DapOperatorMetadataProfile>();
      r.Fill(e.Metadata());
      if (!former && r.Chance(2)) return;
      const auto profile = std::make_shared<DapOperatorMetadataProfile>();
      profile->ObjectId(e.ObjectId());
      SetFields(*profile, r);
      e.Metadata().Set(profile);
    },
    [](auto& e, auto& r) {
      e.Annotations().clear();
      for (auto count = r.Below(4); count > 0; --count) {
        e.Annotations().push_back(std::make_shared<Annotation>());
        SetFields(*e.Annotations().back(), r);
      }
    },
};

template <>
inline const Fields<MediaResource> fieldsOf<MediaResource> = {
    [](auto& e, auto& r) { e.Name(r.Text()); },
    [](auto& e, auto& r) { e.GeneralFormat(r.template Any<ResourceFormat>()); },
    SetModificationDate<MediaResource>,
    SetCreationDate<MediaResource>,
    [](auto& e, auto& r) { r.Fill(e.Timebounds()); },
    [](auto& e, auto& r) { r.Fill(*e.Metadata()); },
};

template <>
inline const Fields<Stream> fieldsOf<Stream> = {
    [](auto& e, auto& r) { e.Format(r.template Any<WrapperFormat>()); },
    [](auto& e, auto& r) { r.Fill(e.Timebounds()); },
    [](auto& e, auto& r) { r.Fill(*e.Metadata()); },
};

template <>
inline const Fields<Essence> fieldsOf<Essence> = {
    [](auto& e, auto& r) { e.ChannelCount(r.Count()); },
    [](auto& e, auto& r) { r.Fill(*e.Metadata()); },
};

template <>
inline const Fields<VideoEssence> fieldsOf<VideoEssence> = {
    [](auto& e, auto& r) { e.VideoCodec(r.template Any<VideoCodingFormat>()); },
    [](auto& e, auto& r) { e.BitRate(r.Int32()); },
    [](auto& e, auto& r) { e.BitRateMode(r.template Any<BitRateMode>()); },
    [](auto& e, auto& r) { e.BitDepth(r.Int32()); },
    [](auto& e, auto& r) { e.FrameRate(Rate(r.Int32(), e.FrameRate().Denominator())); },
    [](auto& e, auto& r) { e.FrameRate(Rate(e.FrameRate().Numerator(), r.Int32())); },
    [](auto& e, auto& r) { e.Height(r.Int32()); },
    [](auto& e, auto& r) { e.Width(r.Int32()); },
    [](auto& e, auto& r) { e.ChromaSubSampling(r.template Any<ChromaSubSampling>()); },
    [](auto& e, auto& r) { e.ColorSpace(r.template Any<ColorSpace>()); },
    [](auto& e, auto& r) { e.ScanMode(r.template Any<ScanMode>()); },
    [](auto& e, auto& r) { e.FourCC(r.Text()); },
    [](auto& e, auto& r) { e.AspectRatio(AspectRatio(r.Int32(), e.AspectRatio().HeightFactor())); },
    [](auto& e, auto& r) { e.AspectRatio(AspectRatio(e.AspectRatio().WidthFactor(), r.Int32())); },
    [](auto& e, auto& r) { e.Boxing(r.template Any<Boxing>()); },
};

template <>
inline const Fields<AudioEssence> fieldsOf<AudioEssence> = {
    [](auto& e, auto& r) { e.AudioCodec(r.template Any<AudioCodingFormat>()); },
    [](auto& e, auto& r) { e.BitRate(r.Int32()); },
    [](auto& e, auto& r) { e.BitRateMode(r.template Any<BitRateMode>()); },
    [](auto& e, auto& r) { e.SampleRate(Rate(r.Int32(), e.SampleRate().Denominator())); },
    [](auto& e, auto& r) { e.SampleRate(Rate(e.SampleRate().Numerator(), r.Int32())); },
    [](auto& e, auto& r) { e.BitDepth(r.Int32()); },
    [](auto& e, auto& r) { e.FourCC(r.Text()); },
};

template <>
inline const Fields<MediaAssetGroup> fieldsOf<MediaAssetGroup> = {
    [](auto& e, auto& r) { e.Type(r.Text()); },
    [](auto& e, auto& r) { e.Name(r.Text()); },
};

}  // namespace Oru::TestSupport
