#include "Oru/BusinessEntityModel/Edits/Edit.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"

#include "support/Changes.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace Oru::BusinessEntityModel::Edits {
namespace {

Edit FilledEdit() {
  Edit edit("e");
  edit.ObjectId(3);
  edit.Sequences().Add(std::make_unique<Sequence>("s"));
  return edit;
}

TEST(EditTest, EveryFieldCountsAndACopyOwnsItsSequences) {
  TestSupport::ExpectEachChangeCounts<Edit>(
      FilledEdit(),
      {
          [](Edit& edit) { edit.Id("other"); },
          [](Edit& edit) { edit.Name("name"); },
          [](Edit& edit) { edit.CreationDate(1); },
          [](Edit& edit) { edit.CreationOwner("owner"); },
          [](Edit& edit) { edit.ModificationDate(1); },
          [](Edit& edit) { edit.ModificationOwner("owner"); },
          [](Edit& edit) { edit.Metadata().Set(std::make_shared<BaseTypes::GenericMetadataProfile>("p")); },
          [](Edit& edit) { edit.Sequences()[0].Version(2); },
          [](Edit& edit) { edit.Sequences().Clear(); },
      });
  EXPECT_LT(Edit("a"), Edit("b"));
  const auto clone = FilledEdit().Clone();
  EXPECT_TRUE(*clone == FilledEdit());
  EXPECT_EQ(clone->ObjectId(), 3);
}

TEST(EditTest, SequencesAreTakenByCopyOrByMove) {
  SequenceArray sequences;
  sequences.Add(std::make_unique<Sequence>("s"));
  const Sequence* const added = &sequences[0];
  Edit edit;
  edit.Sequences(sequences);
  EXPECT_NE(&edit.Sequences()[0], added);
  EXPECT_TRUE(edit.Sequences()[0] == *added);
  edit.Sequences(std::move(sequences));
  EXPECT_EQ(&edit.Sequences()[0], added);
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::Edits
