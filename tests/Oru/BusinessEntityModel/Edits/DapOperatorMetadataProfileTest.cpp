#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"

#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

#include "support/Changes.h"

#include <gtest/gtest.h>

namespace Oru::BusinessEntityModel::Edits {
namespace {

using DataModel::MediaAssets::ArchiveStatus;
using DataModel::MediaAssets::ZuServerId;
using Profile = DapOperatorMetadataProfile;

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
  EXPECT_EQ(profile.FullyQualifiedName(), ofAsset.FullyQualifiedName());
  EXPECT_FALSE(profile.Equals(ofAsset) || ofAsset.Equals(profile));
  EXPECT_TRUE(profile.Bank() == 0 && profile.Page() == 255 && profile.Row() == 255)
      << "unset, but for the bank";
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::Edits
