#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

#include "support/Changes.h"
#include "support/EditFields.h"
#include "support/EnumerationNames.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace Oru::BusinessEntityModel::Edits {
namespace {

using TestSupport::ExpectEachChangeCounts;
using TestSupport::ExpectEveryFieldCounts;

// The numbers are in stored files.
TEST(EditEntitiesTest, StoredEnumerations) {
  using Regen = DapOperatorTimecodeRegen;
  using TestSupport::CheckedNames;
  EXPECT_EQ(
      CheckedNames<Regen::Continuity>() + CheckedNames<Regen::Reference>() + CheckedNames<Regen::Output>(),
      "Sequence Blocks \nReference Tod User \nAtcVitc AtcLtc Both \n");
}

TEST(EditEntitiesTest, EveryFieldCountsAndACopyOwnsWhatItHolds) {
  ExpectEveryFieldCounts(DapOperatorTimecodeRegen());
  ExpectEveryFieldCounts(DapOperatorMetadataProfile());
  ExpectEveryFieldCounts(Sequence("s"));
  Edit edit("e");
  edit.ObjectId(3);
  edit.Sequences().Add(std::make_unique<Sequence>("s"));
  ExpectEveryFieldCounts(edit);
  ExpectEachChangeCounts<Edit>(edit, {
                                         [](auto& other) { other.Id("other"); },
                                         [](auto& other) { other.Sequences()[0].Version(2); },
                                         [](auto& other) { other.Sequences().Clear(); },
                                     });
  ExpectEachChangeCounts<Sequence>(Sequence("s"), {[](auto& other) { other.Id("t"); }});
  const auto clone = edit.Clone();
  EXPECT_TRUE(*clone == edit && clone->ObjectId() == 3);
  EXPECT_LT(Edit("a"), Edit("b"));
  const Sequence a("a"), b("b");
  EXPECT_TRUE(a < b && a <= b && b > a && b >= a && a <= a && !(a > b || b <= a || a < a || a > a));
}

TEST(EditEntitiesTest, DurationsAreOrderedAndThenTheFixedOne) {
  std::vector<SequenceDuration> ascending;
  for (const int seconds : {-1, 0, 9}) {
    for (const bool isFixed : {false, true}) {
      ascending.emplace_back(TimePoints::Duration::FromSeconds(seconds));
      ascending.back().Fixed(isFixed);
    }
  }
  for (const auto& left : ascending) {
    for (const auto& right : ascending) {
      EXPECT_TRUE((left < right) == (&left < &right) && (left > right) == (&left > &right));
      EXPECT_TRUE((left <= right) == (&left <= &right) && (left >= right) == (&left >= &right));
      EXPECT_EQ(left == right, &left == &right);
    }
  }
  EXPECT_TRUE(SequenceDuration(TimePoints::Duration::FromSeconds(9)) == ascending.back()) << "made fixed";
}

TEST(EditEntitiesTest, MetadataIsTakenByCopyOrByMove) {
  BaseTypes::EditorialMetadata metadata;
  const auto profile = std::make_shared<DapOperatorMetadataProfile>();
  metadata.Set(profile);
  Sequence sequence;
  sequence.Metadata(metadata);
  EXPECT_NE(&std::as_const(sequence).DapOperatorMetadata(), profile.get());
  sequence.Metadata(std::move(metadata));
  EXPECT_EQ(&sequence.DapOperatorMetadata(), profile.get());
  const DataModel::MediaAssets::DapOperatorMetadataProfile ofAsset;
  EXPECT_EQ(profile->FullyQualifiedName(), ofAsset.FullyQualifiedName());
  EXPECT_FALSE(profile->Equals(ofAsset) || ofAsset.Equals(*profile));
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::Edits
