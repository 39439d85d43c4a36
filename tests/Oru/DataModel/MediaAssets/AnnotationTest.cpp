#include "Oru/DataModel/MediaAssets/Annotation.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"

#include "support/Changes.h"

#include <gtest/gtest.h>

#include <memory>

namespace Oru::DataModel::MediaAssets {
namespace {

TEST(AnnotationTest, EveryFieldCountsAndACloneOwnsItsMetadata) {
  using BaseTypes::GenericMetadataProfile;
  Annotation annotation(AnnotationType::CuePoint, "cue");
  annotation.ObjectId(4);
  annotation.Metadata().Set(std::make_shared<GenericMetadataProfile>("notes"));
  TestSupport::ExpectEachChangeCounts<Annotation>(
      annotation,
      {
          [](Annotation& other) { other.Type(AnnotationType::unknown); },
          [](Annotation& other) { other.Data("other"); },
          [](Annotation& other) {
            other.TimeBounds({TimePoints::TimePoint::FromNanoseconds(1), TimePoints::TimeBoundary()});
          },
          [](Annotation& other) {
            dynamic_cast<GenericMetadataProfile&>(other.Metadata().At("notes")).Set("key", "value");
          },
      });
  const auto clone = annotation.Clone();
  EXPECT_EQ(clone->ObjectId(), 4);
  EXPECT_TRUE(*clone == annotation);
  EXPECT_EQ(Annotation().TimeBounds(), TimePoints::TimeBounds());
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
