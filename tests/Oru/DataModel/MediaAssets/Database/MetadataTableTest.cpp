#include "Oru/DataModel/MediaAssets/Database/MetadataTable.h"

#include "Oru/DataModel/MediaAssets/Database/TimeBoundsTable.h"

#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <typeinfo>

namespace Oru::DataModel::MediaAssets::Database {

using namespace BusinessEntityModel::BaseTypes;

namespace {

class ForeignProfile : public MetadataProfile {
 public:
  BusinessEntityModel::BaseTypes::FullyQualifiedName FullyQualifiedName() const override {
    return "m.foreign";
  }
  bool Equals(const MetadataProfile& other) const override { return &other == this; }
  std::shared_ptr<MetadataProfile> Clone() const override { return std::make_shared<ForeignProfile>(); }
};

}  // namespace

// The tables of owned rows: metadata, time bounds and annotations.
class MetadataTableTest : public TestSupport::OpenDatabase {
 protected:
  MetadataTableTest() { EXPECT_TRUE(assets.Save(clip)); }

  void SetEntry(const std::string& profile, const std::string& key, const std::string& value) {
    MetadataTable::Fold(metadata, {profile, {key, value}});
  }
  std::string Stored() {
    return Value(
        "SELECT group_concat(fullyQualifiedName || '/' || name || '=' || value, ' ') FROM "
        "MetadataMediaAsset");
  }

  MediaAsset clip = TestSupport::MakeClip("clip");
  MetadataTable& table = assets.GetMetadataTable();
  MetadataProfileDictionary metadata;
};

TEST_F(MetadataTableTest, ProfilesKeepApartAndEmptyOnesAndTheOperatorsLeaveNoRow) {
  SetEntry("b", "x", "1");
  SetEntry("a", "x", "2");
  SetEntry("a", "w", "");
  metadata.Set(std::make_shared<GenericMetadataProfile>("empty"));
  metadata.Set(std::make_shared<DapOperatorMetadataProfile>());
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(table.Write(metadata, clip.ObjectId()));
    EXPECT_EQ(Stored(), "a/w= a/x=2 b/x=1");
  }
  GenericMetadataProfile single("oru.dapoperator");
  single.Set("k", "v");
  EXPECT_TRUE(table.Write(single, clip.ObjectId()));
  EXPECT_EQ(Stored(), "oru.dapoperator/k=v");
}

TEST_F(MetadataTableTest, AForeignProfileIsABadCastBehindTheRowsAheadOfIt) {
  SetEntry("a", "x", "1");
  SetEntry("z", "x", "2");
  metadata.Set(std::make_shared<ForeignProfile>());
  EXPECT_THROW(table.Write(metadata, clip.ObjectId()), std::bad_cast);
  EXPECT_EQ(Stored(), "a/x=1");
  clip.Metadata().Set(std::make_shared<ForeignProfile>());
  EXPECT_THROW(assets.Save(clip), std::bad_cast);
  clip.Metadata().Erase("m.foreign");
  clip.Annotations().front()->Metadata().Set(std::make_shared<ForeignProfile>());
  EXPECT_THROW(assets.Save(clip), std::bad_cast);
}

TEST_F(MetadataTableTest, BoundsHaveNoKeyToBeDeletedBy) {
  EXPECT_FALSE(assets.GetTimeBoundsTable().Delete(clip.ObjectId()));
  EXPECT_TRUE(log.Contains("TimeBoundsMediaAsset")) << log.Text();
  EXPECT_EQ(Count("TimeBoundsMediaAsset"), 1);
}

}  // namespace Oru::DataModel::MediaAssets::Database
