#include "Oru/BusinessEntityModel/Edits/Sequence.h"

#include "support/Changes.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace Oru::BusinessEntityModel::Edits {
namespace {

TEST(SequenceTest, MetadataIsTakenByCopyOrByMove) {
  BaseTypes::EditorialMetadata metadata;
  const auto profile = std::make_shared<DapOperatorMetadataProfile>();
  metadata.Set(profile);
  Sequence sequence;
  sequence.Metadata(metadata);
  EXPECT_NE(&std::as_const(sequence).DapOperatorMetadata(), profile.get());
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
