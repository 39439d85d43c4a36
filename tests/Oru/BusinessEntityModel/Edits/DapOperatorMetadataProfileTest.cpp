#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"

#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

#include "support/Changes.h"

#include <gtest/gtest.h>

namespace Oru::BusinessEntityModel::Edits {
namespace {

using DataModel::MediaAssets::ArchiveStatus;
using DataModel::MediaAssets::ZuServerId;
using Profile = DapOperatorMetadataProfile;

TEST(DapOperatorMetadataProfileOfSequenceTest, ANewOneHasABankButNoPageAndRow) {
  const Profile profile;
  EXPECT_EQ(profile.ObjectId(), -1);
  EXPECT_EQ(profile.ServerId(), ZuServerId::Empty());
  EXPECT_EQ(profile.Page(), 255);
  EXPECT_EQ(profile.Bank(), 0);
  EXPECT_EQ(profile.Row(), 255);
  EXPECT_EQ(profile.VideoElementsCount(), 0);
  EXPECT_FALSE(profile.TimecodeRegen().HasValue());
}

TEST(DapOperatorMetadataProfileOfSequenceTest, EveryPropertyCounts) {
  Profile original;
  original.TimecodeRegen(DapOperatorTimecodeRegen());
  TestSupport::ExpectEachChangeCounts<Profile>(
      original, {
                    [](Profile& profile) { profile.ServerId(ZuServerId(10)); },
                    [](Profile& profile) { profile.Page(1); },
                    [](Profile& profile) { profile.Bank(1); },
                    [](Profile& profile) { profile.Row(1); },
                    [](Profile& profile) { profile.UmId("u"); },
                    [](Profile& profile) { profile.VarId("v"); },
                    [](Profile& profile) { profile.VideoElementsCount(1); },
                    [](Profile& profile) { profile.ArchiveStatus(ArchiveStatus::ToArchive); },
                    [](Profile& profile) { profile.TimecodeRegen({}); },
                    [](Profile& profile) {
                      DapOperatorTimecodeRegen regen;
                      regen.From(DapOperatorTimecodeRegen::Reference::Tod);
                      profile.TimecodeRegen(regen);
                    },
                });
}

TEST(DapOperatorMetadataProfileOfSequenceTest, TheAssetsProfileHasTheSameNameAndIsAnother) {
  const DataModel::MediaAssets::DapOperatorMetadataProfile ofAsset;
  const Profile profile;
  EXPECT_EQ(profile.FullyQualifiedName().Value(), "oru.dapoperator");
  EXPECT_EQ(profile.FullyQualifiedName(), ofAsset.FullyQualifiedName());
  EXPECT_FALSE(profile.Equals(ofAsset) || ofAsset.Equals(profile));
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::Edits
