#include "Oru/BusinessEntityModel/Edits/Sequence.h"

#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

#include "support/Changes.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <typeinfo>
#include <utility>

namespace Oru::BusinessEntityModel::Edits {
namespace {

TEST(SequenceTest, ANewOneStandsAtTheDefaults) {
  const Sequence sequence("s");
  EXPECT_EQ(sequence.Id(), "s");
  EXPECT_EQ(sequence.ObjectId(), -1);
  EXPECT_EQ(sequence.Version(), 0);
  EXPECT_EQ(sequence.GetTimePoint(), TimePoints::TimePoint::Empty());
  EXPECT_EQ(sequence.Duration(), SequenceDuration());
  EXPECT_EQ(sequence.CreationDate(), 0);
  EXPECT_EQ(sequence.ModificationDate(), 0);
}

TEST(SequenceTest, EveryVersionOf32BitsComesBack) {
  Sequence sequence;
  for (const int32_t version : {0, 1, -1, INT32_MAX, INT32_MIN}) {
    sequence.Version(version);
    EXPECT_EQ(sequence.Version(), version);
  }
}

TEST(SequenceTest, OperatorMetadataIsTheProfileOfItsClass) {
  Sequence sequence;
  EXPECT_FALSE(sequence.HasDapOperatorMetadata());
  EXPECT_THAT([&] { sequence.DapOperatorMetadata(); }, testing::ThrowsMessage<std::out_of_range>("map::at"));

  const auto profile = std::make_shared<DapOperatorMetadataProfile>();
  sequence.Metadata().Set(profile);
  EXPECT_TRUE(sequence.HasDapOperatorMetadata());
  EXPECT_EQ(&sequence.DapOperatorMetadata(), profile.get());
  EXPECT_EQ(&std::as_const(sequence).DapOperatorMetadata(), profile.get());

  sequence.Metadata().Set(std::make_shared<DataModel::MediaAssets::DapOperatorMetadataProfile>());
  EXPECT_FALSE(sequence.HasDapOperatorMetadata());
  EXPECT_THROW(sequence.DapOperatorMetadata(), std::bad_cast);
}

TEST(SequenceTest, MetadataIsTakenByCopyOrByMove) {
  BaseTypes::EditorialMetadata metadata;
  const auto profile = std::make_shared<DapOperatorMetadataProfile>();
  metadata.Set(profile);
  Sequence sequence;
  sequence.Metadata(metadata);
  EXPECT_NE(&sequence.DapOperatorMetadata(), profile.get());
  sequence.Metadata(sequence.Metadata());
  EXPECT_TRUE(sequence.HasDapOperatorMetadata());
  sequence.Metadata(std::move(metadata));
  EXPECT_EQ(&sequence.DapOperatorMetadata(), profile.get());
}

TEST(SequenceTest, EveryFieldCountsAndTheIdentifierOrders) {
  Sequence original("s");
  original.Metadata().Set(std::make_shared<DapOperatorMetadataProfile>());
  TestSupport::ExpectEachChangeCounts<Sequence>(
      original,
      {
          [](Sequence& sequence) { sequence.Id("t"); },
          [](Sequence& sequence) { sequence.Version(1); },
          [](Sequence& sequence) { sequence.SetTimePoint(TimePoints::TimePoint::FromNanoseconds(0)); },
          [](Sequence& sequence) { sequence.Duration(SequenceDuration(TimePoints::Duration())); },
          [](Sequence& sequence) { sequence.Name("name"); },
          [](Sequence& sequence) { sequence.DapOperatorMetadata().Page(1); },
          [](Sequence& sequence) { sequence.CreationDate(1); },
          [](Sequence& sequence) { sequence.CreationOwner("owner"); },
          [](Sequence& sequence) { sequence.ModificationDate(1); },
          [](Sequence& sequence) { sequence.ModificationOwner("owner"); },
      });
  const Sequence a("a"), b("b");
  EXPECT_TRUE(a < b && a <= b && b > a && b >= a && a <= a && a >= a);
  EXPECT_FALSE(a > b || a >= b || b < a || b <= a || a < a || a > a);
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::Edits
