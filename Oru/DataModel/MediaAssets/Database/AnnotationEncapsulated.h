#pragma once

#include "Oru/DataModel/MediaAssets/Annotation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// What `AnnotationTable` writes: an annotation beside the key of its asset. The annotation stays the
/// caller's.
struct ORU_DATAMODEL_DATABASE_EXPORT AnnotationEncapsulated {
  /// Refers to the object, which stays the caller's and must outlive this.
  AnnotationEncapsulated(int64_t mediaAssetKey, Annotation& ownedAnnotation)
      : fk(mediaAssetKey), annotation(ownedAnnotation) {}

  /// The key of the owner.
  int64_t fk;
  /// What is stored. The table that stores it sets its object id.
  const Annotation& annotation;
};

}  // namespace Oru::DataModel::MediaAssets::Database
