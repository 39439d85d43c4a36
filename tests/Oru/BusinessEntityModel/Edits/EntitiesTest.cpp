#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

#include "support/Changes.h"
#include "support/EditFields.h"
#include "support/EnumerationNames.h"
#include "support/Prelude.h"

namespace Oru::BusinessEntityModel::Edits {
namespace {

using TestSupport::ExpectEveryFieldCounts;

// The numbers are in stored files.
TEST(EditEntitiesTest, StoredEnumerations) {
  using Regen = DapOperatorTimecodeRegen;
  EXPECT_EQ((TestSupport::CheckedNames<Regen::Continuity, Regen::Reference, Regen::Output>()),
            "Sequence Blocks \nReference Tod User \nAtcVitc AtcLtc Both \n");
}

TEST(EditEntitiesTest, EveryFieldCountsAndACopyOwnsWhatItHolds) {
  ExpectEveryFieldCounts(DapOperatorTimecodeRegen());
  ExpectEveryFieldCounts(DapOperatorMetadataProfile());
  ExpectEveryFieldCounts<Sequence>(Sequence("s"), {[](auto& other) { other.Id("t"); }});
  Edit edit("e");
  edit.ObjectId(3);
  edit.Sequences().Add(std::make_unique<Sequence>("s"));
  ExpectEveryFieldCounts<Edit>(edit, {
                                         [](auto& other) { other.Id("other"); },
                                         [](auto& other) { other.Sequences()[0].Version(2); },
                                         [](auto& other) { other.Sequences().Clear(); },
                                     });
  const auto clone = edit.Clone();
  EXPECT_TRUE(*clone == edit && clone->ObjectId() == 3);
}

template <class T>
void ExpectAscending(const std::vector<T>& values) {
  const auto compared = [](const auto& left, const auto& right) {
    return std::tuple(left<right, left> right, left <= right, left >= right);
  };
  for (const T& left : values)
    for (const T& right : values)
      EXPECT_EQ(compared(left, right), compared(&left, &right));
}

TEST(EditEntitiesTest, AreOrderedByIdentifierAndDurationsByLengthAndThenTheFixedOne) {
  EXPECT_LT(Edit("a"), Edit("b"));
  ExpectAscending<Sequence>({Sequence("a"), Sequence("b")});
  std::vector<SequenceDuration> durations;
  for (const int seconds : {-1, 0, 9}) {
    durations.emplace_back(TimePoints::Duration::FromSeconds(seconds)).Fixed(false);
    durations.emplace_back(TimePoints::Duration::FromSeconds(seconds));
    EXPECT_NE(durations.rbegin()[0], durations.rbegin()[1]);
  }
  ExpectAscending(durations);
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
