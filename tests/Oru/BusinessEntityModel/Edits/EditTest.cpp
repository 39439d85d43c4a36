#include "Oru/BusinessEntityModel/Edits/Edit.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"

#include "support/Changes.h"

#include <gtest/gtest.h>

#include <memory>

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

}  // namespace
}  // namespace Oru::BusinessEntityModel::Edits
