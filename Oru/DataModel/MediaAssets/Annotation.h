#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/DataModel/MediaAssets/AnnotationType.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/OwnedMetadata.h"
#include "Oru/TimePoints/Core/TimeBounds.h"

#include <memory>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets {

/// A typed note on a stretch of an asset's time, with metadata of its own. Its object id changes with each
/// save of the asset.
///
/// A copy owns its metadata and keeps the object id; `Clone` gives such a copy.
class ORU_DATAMODEL_EXPORT Annotation : public BaseTypes::PersistentObject {
 public:
  Annotation();
  /// An annotation of that kind, with that text, without bounds.
  explicit Annotation(AnnotationType kind);
  Annotation(AnnotationType kind, BaseTypes::Utf8String text);
  Annotation(const Annotation&);
  Annotation(Annotation&&) noexcept;
  Annotation& operator=(const Annotation&);
  Annotation& operator=(Annotation&&) noexcept;
  ~Annotation();

  /// What kind of annotation it is.
  AnnotationType Type() const noexcept { return type; }
  void Type(AnnotationType value) noexcept { type = value; }
  /// The text.
  const BaseTypes::Utf8String& Data() const noexcept { return data; }
  void Data(BaseTypes::Utf8String value) noexcept { data = std::move(value); }
  /// The time that it is about.
  const TimePoints::TimeBounds& TimeBounds() const noexcept { return timeBounds; }
  void TimeBounds(const TimePoints::TimeBounds& value) noexcept { timeBounds = value; }

  /// The metadata of the annotation alone.
  const BaseTypes::MetadataProfileDictionary& Metadata() const noexcept { return *metadata; }
  BaseTypes::MetadataProfileDictionary& Metadata() noexcept { return *metadata; }

  /// A copy that shares nothing with this one.
  std::unique_ptr<Annotation> Clone() const;

  /// The same content. Object ids don't count.
  bool operator==(const Annotation& other) const;
  bool operator!=(const Annotation& other) const { return !(*this == other); }

 private:
  AnnotationType type = AnnotationType::unknown;
  BaseTypes::Utf8String data;
  TimePoints::TimeBounds timeBounds;
  OwnedMetadata metadata;
};

using AnnotationArray = std::vector<std::shared_ptr<Annotation>>;

}  // namespace Oru::DataModel::MediaAssets
