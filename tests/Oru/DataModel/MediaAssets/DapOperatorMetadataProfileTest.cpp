#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

namespace Oru::DataModel::MediaAssets {
namespace {

using testing::ElementsAre;

TEST(DapOperatorMetadataProfileTest, TheClipIdIsMadeOfItsParts) {
  DapOperatorMetadataProfile profile;
  EXPECT_TRUE(profile.DapId().IsEmpty());
  EXPECT_TRUE(profile.UserTimecode().HasDate());
  profile.ServerId(ZuServerId(110));
  profile.Page(1);
  profile.Bank(2);
  profile.Row(3);
  profile.Camera('D');
  EXPECT_EQ(profile.DapId(), DapId(ZuServerId(110), 1, 2, 3, 'D'));
  profile.Page(300);
  EXPECT_THROW(profile.DapId(), std::invalid_argument);
}

// Every sequence of five calls of the setters, against the rule in words: protection from the interface
// always brings protection for the user along, and only a user's own call takes that back, while the
// interface's is off.
TEST(DapOperatorMetadataProfileTest, ProtectionFlags) {
  constexpr int calls = 5;
  for (int sequence = 0; sequence < 1 << (2 * calls); ++sequence) {
    DapOperatorMetadataProfile profile;
    bool user = false, interface = false;
    for (int call = 0; call < calls; ++call) {
      const bool value = ((sequence >> (2 * call)) & 1) != 0;
      if (((sequence >> (2 * call)) & 2) != 0) {
        profile.DapUIProtected(value);
        interface = value;
        if (value) user = true;
      } else {
        profile.UserProtected(value);
        if (value || !interface) user = value;
      }
      ASSERT_EQ(profile.IsUserProtected(), user) << sequence << ", call " << call;
      ASSERT_EQ(profile.IsDapUiProtected(), interface) << sequence << ", call " << call;
    }
  }
}

TEST(DapOperatorMetadataProfileTest, KeywordsGrowByEmptyOnes) {
  DapOperatorMetadataProfile profile;
  profile.Keyword(2, "third");
  EXPECT_THAT(profile.Keywords(), ElementsAre("", "", "third"));
  profile.Keyword(2, "");
  EXPECT_THAT(profile.Keywords(), ElementsAre("", "", ""));
  profile.Keyword(65535, "last");
  EXPECT_THROW(profile.Keyword(65536, ""), std::out_of_range);
  EXPECT_THROW(profile.Keywords(StringVector(65537)), std::out_of_range);
  EXPECT_EQ(profile.Keywords().size(), 65536U);
}

TEST(DapOperatorMetadataProfileTest, TheProfileOfAnglesHoldsAPlaceWithoutCamera) {
  using Profile = AnglesDapOperatorMetadataProfile;
  EXPECT_TRUE(Profile() == Profile::Empty() && Profile().DapId().IsEmpty());
  Profile profile(DapId(ZuServerId(10), 3, 4, 5, 'A'));
  EXPECT_EQ(profile.DapId(), DapId(ZuServerId(10), 3, 4, 5));
  const auto clone = std::dynamic_pointer_cast<Profile>(profile.Clone());
  EXPECT_TRUE(clone && *clone == profile);
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
