#include "Oru/BusinessEntityModel/Edits/Database/EditTable.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"

#include "support/OpenDatabase.h"
#include "support/RandomAsset.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

namespace Oru::BusinessEntityModel::Edits::Database {

using BaseTypes::GenericMetadataProfile;

class EditTableTest : public TestSupport::OpenDatabase {
 protected:
  static std::shared_ptr<GenericMetadataProfile> Profile(
      const std::string& name, const std::vector<std::pair<std::string, std::string>>& entries) {
    auto profile = std::make_shared<GenericMetadataProfile>(name);
    for (const auto& [key, value] : entries)
      profile->Set(key, value);
    return profile;
  }

  EditTable& edits = database.GetEditTable();
};

TEST_F(EditTableTest, RandomEditsComeBackAsTheyWere) {
  TestSupport::RandomAssets random(5);
  std::vector<Edit> saved;
  for (int i = 0; i < 200; ++i) {
    // New ones, and stored ones once more by object id or by identifier.
    Edit edit =
        saved.empty() || random.Chance(2) ? Edit(EditId(random.Id())) : saved[random.Below(saved.size())];
    const bool isNew = edit.ObjectId() == -1;
    edit.Name(random.Text());
    edit.CreationDate(random.Int64());
    edit.ModificationDate(random.Int64());
    edit.CreationOwner(UserId(random.Text()));
    edit.ModificationOwner(UserId(random.Text()));
    edit.Metadata().Clear();
    for (auto count = random.Below(3); count > 0; --count)
      edit.Metadata().Set(Profile(random.Text() + "x", {{random.Text(), random.Text()}, {"second", "2"}}));
    const int64_t key = edit.ObjectId();
    if (random.Chance(2)) edit.ObjectId(-1);
    ASSERT_TRUE(edits.Save(edit)) << log.Text();
    ASSERT_TRUE(isNew || edit.ObjectId() == key);
    if (isNew) saved.push_back(edit);
    for (Edit& other : saved)
      if (other.ObjectId() == edit.ObjectId()) other = *edit.Clone();
  }
  EXPECT_EQ(Count("Edit"), static_cast<int>(saved.size()));
  for (const Edit& edit : saved) {
    ASSERT_EQ(edits.GetObjectIdFromIdentifier(edit.Id()), edit.ObjectId());
    Edit read;
    ASSERT_TRUE(edits.GetObject(edit.ObjectId(), read));
    EXPECT_TRUE(read.Metadata().Empty());
    edits.ReadMetadata(read);
    EXPECT_EQ(read, edit);
    EXPECT_EQ(read.ObjectId(), edit.ObjectId());
  }
}

TEST_F(EditTableTest, MetadataAreReplacedWithoutTheOperators) {
  Edit edit(EditId("e"));
  edit.Metadata().Set(Profile("p", {{"a", "1"}, {"b", "2"}}));
  edit.Metadata().Set(Profile("q", {{"a", "3"}}));
  // Of the operator's profile, which only sequences have a table for, nothing is written.
  edit.Metadata().Set(std::make_shared<DapOperatorMetadataProfile>());
  ASSERT_TRUE(edits.Save(edit));
  EXPECT_EQ(Count("MetadataEdit"), 3);
  edit.Metadata().Erase(BaseTypes::FullyQualifiedName("p"));
  ASSERT_TRUE(edits.Save(edit));
  EXPECT_EQ(Value("SELECT group_concat(fullyQualifiedName || name || value) FROM MetadataEdit"), "qa3");
  Run("UPDATE MetadataEdit SET fullyQualifiedName = 'oru.dapoperator'");
  EXPECT_THROW(edits.ReadMetadata(edit), std::bad_cast);
}

TEST_F(EditTableTest, DeletionTakesTheSequencesAndAllUnderThem) {
  Edit kept(EditId("kept")), gone(EditId("gone"));
  kept.Metadata().Set(Profile("p", {{"a", "1"}}));
  gone.Metadata().Set(Profile("p", {{"a", "1"}}));
  ASSERT_TRUE(edits.Save(kept) && edits.Save(gone));
  for (Edit* edit : {&kept, &gone, &gone}) {
    Sequence sequence(SequenceId("s" + std::to_string(Count("Sequence"))));
    sequence.Metadata().Set(Profile("p", {{"a", "1"}}));
    sequence.Metadata().Set(std::make_shared<DapOperatorMetadataProfile>());
    SequenceEncapsulated row(sequence);
    row.editFk = edit->ObjectId();
    ASSERT_TRUE(edits.GetSequenceTable().Save(row));
  }
  ASSERT_TRUE(edits.Delete(gone));
  EXPECT_EQ(gone.ObjectId(), -1);
  for (const char* table :
       {"Edit", "MetadataEdit", "Sequence", "MetadataSequence", "DapOperatorMetadataSequence"})
    EXPECT_EQ(Count(table), 1) << table;
  EXPECT_EQ(Value("SELECT id FROM Sequence"), "s0");
}

}  // namespace Oru::BusinessEntityModel::Edits::Database
