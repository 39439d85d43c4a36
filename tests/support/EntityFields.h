#pragma once

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include "support/Prelude.h"
#include "support/RandomValues.h"

namespace Oru::TestSupport {

using namespace DataModel::MediaAssets;

/// A way to give one field of an entity a random value that the file keeps: a setter, or a function.
template <class T>
struct Field : std::function<void(T&, RandomValues&)> {
  template <class Function, class = std::enable_if_t<!std::is_member_pointer_v<Function>>>
  Field(Function set) : std::function<void(T&, RandomValues&)>(set) {}
  template <class Owner, class Value>
  Field(void (Owner::*setter)(Value))
      : Field([setter](T& e, RandomValues& r) { (e.*setter)(r.template Any<std::decay_t<Value>>()); }) {}
};
template <class T>
using Fields = std::vector<Field<T>>;

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

/// Sets a place on the operators' grid.
template <class T>
Field<T> OnGrid(void (T::*setter)(int)) {
  return [setter](T& e, RandomValues& r) { (e.*setter)(static_cast<int>(r.Below(10))); };
}

constexpr auto setServer = [](auto& e, auto& r) { e.ServerId(ZuServerId(10 * (1 + r.Count() % 214748364))); };

/// What the operators' profiles of assets and of sequences have in common, and more.
template <class T>
Fields<T> FieldsOfOperators(Fields<T> more) {
  using Common = OperatorProfile<T>;
  more.insert(more.end(), {setServer, &T::UmId, &T::VarId, &T::ArchiveStatus});
  for (const auto& set : Fields<Common>{OnGrid(&Common::Page), OnGrid(&Common::Bank), OnGrid(&Common::Row)})
    more.push_back(set);
  return more;
}

using Operator = DapOperatorMetadataProfile;
template <>
inline const Fields<Operator> fieldsOf<Operator> = FieldsOfOperators<Operator>(
    {&Operator::Rating, &Operator::UserTimecodeType, &Operator::PrimaryTimecode, &Operator::UserTimecode,
     &Operator::TodTimecode, &Operator::Icon, &Operator::Color, &Operator::UserProtected,
     &Operator::DapUIProtected, &Operator::FillAndKeyType, &Operator::FillAndKeyMediaAssetId,
     [](auto& e, auto& r) { e.Camera(static_cast<char>('A' + r.Below(12))); },
     [](auto& e, auto& r) {
       for (auto count = r.Below(6), index = std::size_t{0}; index < count; ++index)
         e.Keyword(static_cast<unsigned int>(index), r.Text());
     }});

using Angles = AnglesDapOperatorMetadataProfile;
template <>
inline const Fields<Angles> fieldsOf<Angles> = {setServer, OnGrid(&Angles::Page), OnGrid(&Angles::Bank),
                                                OnGrid(&Angles::Clip)};

template <>
inline const Fields<Annotation> fieldsOf<Annotation> = {&Annotation::Type, &Annotation::Data,
                                                        &Annotation::TimeBounds,
                                                        [](auto& e, auto& r) { r.Fill(e.Metadata()); }};

template <>
inline const Fields<MediaAsset> fieldsOf<MediaAsset> = {
    &MediaAsset::AssetType, &MediaAsset::Ancestor, &MediaAsset::Parent, &MediaAsset::Name,
    &MediaAsset::Description, &MediaAsset::InBoundary, &MediaAsset::OutBoundary,
    SetModificationDate<MediaAsset>, SetCreationDate<MediaAsset>,
    [](auto& e, auto& r) { r.Fill(e.PhysicalTimebounds()); },
    // The operator's profile stays once it is there.
    [](auto& e, auto& r) {
      const auto former = e.Metadata().template Get<Operator>();
      r.Fill(e.Metadata());
      if (!former && r.Chance(2)) return;
      const auto profile = std::make_shared<Operator>();
      profile->ObjectId(e.ObjectId());
      SetFields(*profile, r);
      e.Metadata().Set(profile);
    },
    [](auto& e, auto& r) {
      e.Annotations().clear();
      for (auto count = r.Below(4); count > 0; --count)
        SetFields(*e.Annotations().emplace_back(std::make_shared<Annotation>()), r);
    }};

constexpr auto fillTimebounds = [](auto& e, auto& r) { r.Fill(e.Timebounds()); };
constexpr auto fillMetadata = [](auto& e, auto& r) { r.Fill(*e.Metadata()); };

template <>
inline const Fields<MediaResource> fieldsOf<MediaResource> = {&MediaResource::Name,
                                                              &MediaResource::GeneralFormat,
                                                              SetModificationDate<MediaResource>,
                                                              SetCreationDate<MediaResource>,
                                                              fillTimebounds,
                                                              fillMetadata};

template <>
inline const Fields<Stream> fieldsOf<Stream> = {&Stream::Format, fillTimebounds, fillMetadata};

template <>
inline const Fields<Essence> fieldsOf<Essence> = {[](auto& e, auto& r) { e.ChannelCount(r.Count()); },
                                                  fillMetadata};

template <>
inline const Fields<VideoEssence> fieldsOf<VideoEssence> = {
    &VideoEssence::VideoCodec,  &VideoEssence::BitRate,
    &VideoEssence::BitRateMode, &VideoEssence::BitDepth,
    &VideoEssence::FrameRate,   &VideoEssence::Height,
    &VideoEssence::Width,       &VideoEssence::ChromaSubSampling,
    &VideoEssence::ColorSpace,  &VideoEssence::ScanMode,
    &VideoEssence::FourCC,      &VideoEssence::AspectRatio,
    &VideoEssence::Boxing};

template <>
inline const Fields<AudioEssence> fieldsOf<AudioEssence> = {
    &AudioEssence::AudioCodec, &AudioEssence::BitRate,  &AudioEssence::BitRateMode,
    &AudioEssence::SampleRate, &AudioEssence::BitDepth, &AudioEssence::FourCC};

template <>
inline const Fields<MediaAssetGroup> fieldsOf<MediaAssetGroup> = {&MediaAssetGroup::Type,
                                                                  &MediaAssetGroup::Name};

}  // namespace Oru::TestSupport
