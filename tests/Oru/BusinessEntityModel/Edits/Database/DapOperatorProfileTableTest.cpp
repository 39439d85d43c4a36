#include "Oru/BusinessEntityModel/Edits/Database/DapOperatorProfileTable.h"

#include "Oru/BusinessEntityModel/Edits/Database/SequenceTable.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include "support/OpenDatabase.h"
#include "support/RandomAsset.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace Oru::BusinessEntityModel::Edits::Database {

using DataModel::MediaAssets::ZuServerId;
using Regen = DapOperatorTimecodeRegen;
using TimePoints::Rate;
using TimePoints::TimeCode;

class DapOperatorProfileTableTest : public TestSupport::OpenDatabase {
 protected:
  DapOperatorProfileTableTest() {
    EXPECT_TRUE(database.ExecuteStatement("INSERT INTO Sequence(key, id) VALUES (1, 's'), (2, 't')"));
  }

  static DapOperatorMetadataProfile OnServer(int server) {
    DapOperatorMetadataProfile profile;
    profile.ServerId(ZuServerId(server));
    return profile;
  }
  bool SaveFor(int64_t sequence, DapOperatorMetadataProfile& profile) {
    DapOperatorProfileEncapsulated row(sequence, profile);
    return profiles.Save(row);
  }
  DapOperatorMetadataProfile Read(int64_t sequence) {
    DapOperatorMetadataProfile profile;
    EXPECT_TRUE(profiles.GetObject(sequence, profile));
    return profile;
  }
  static TimeCode Samples(int64_t count, Rate rate, bool isDrop) {
    return TimePoints::TimeCodeBuilder().Year(1900).Rate(rate).IsDrop(isDrop).Build().AddSample(count);
  }
  static Regen From(const TimeCode& timeCode) {
    Regen regen;
    regen.TimecodeRef(timeCode);
    return regen;
  }

  DapOperatorProfileTable& profiles = database.GetSequenceTable().GetDapOperatorProfileTable();
};

TEST_F(DapOperatorProfileTableTest, RandomProfilesComeBackAsTheyWere) {
  TestSupport::RandomAssets random(7);
  for (int i = 0; i < 300; ++i) {
    DapOperatorMetadataProfile profile = OnServer(10 * (1 + random.Count() % 214748364));
    profile.Page(random.Int32());
    profile.Bank(random.Int32());
    profile.Row(random.Int32());
    profile.UmId(random.Text());
    profile.VarId(random.Text());
    profile.VideoElementsCount(random.Int32());
    profile.ArchiveStatus(static_cast<DataModel::MediaAssets::ArchiveStatus>(random.Int32()));
    if (random.Chance(2)) {
      Regen regen = From(Samples(random.Count(), Rate(random.Chance(2) ? 50 : 60, 1), false));
      regen.ContinueIn(static_cast<Regen::Continuity>(random.Int32()));
      regen.From(static_cast<Regen::Reference>(random.Int32()));
      regen.In(static_cast<Regen::Output>(random.Int32()));
      profile.TimecodeRegen(regen);
    }
    ASSERT_TRUE(SaveFor(1, profile)) << log.Text();
    EXPECT_EQ(profile.ObjectId(), 1);
    EXPECT_EQ(Read(1), profile);
  }
  EXPECT_EQ(Count("DapOperatorMetadataSequence"), 1);
}

TEST_F(DapOperatorProfileTableTest, ReferenceTimeCodesArePackedByRateAndCounting) {
  const struct {
    TimeCode saved, read;
    const char* stored;
  } cases[] = {{Samples(345, Rate(25, 1), false), Samples(345, Rate(1, 1), false), "1 0 345"},
               {Samples(345, Rate(50, 1), false), Samples(345, Rate(50, 1), false), "1 1 345"},
               {Samples(345, Rate(60, 1), false), Samples(345, Rate(60, 1), false), "1 2 345"},
               {Samples(345, Rate(60, 1), true), Samples(345, Rate(60, 1), true), "1 3 345"}};
  const std::string select =
      "SELECT tcRegenOn || ' ' || tcRegenTimecodeRefFormat || ' ' || tcRegenTimecodeRef FROM "
      "DapOperatorMetadataSequence";
  DapOperatorMetadataProfile profile = OnServer(10);
  for (const auto& [saved, read, stored] : cases) {
    profile.TimecodeRegen(From(saved));
    ASSERT_TRUE(SaveFor(1, profile));
    EXPECT_EQ(Value(select), stored);
    EXPECT_EQ(Read(1).TimecodeRegen().Value().TimecodeRef(), read) << stored;
  }
  Run("UPDATE DapOperatorMetadataSequence SET tcRegenTimecodeRef = -1");
  EXPECT_THROW(Read(1), std::out_of_range);
  Run("UPDATE DapOperatorMetadataSequence SET tcRegenOn = 0");
  EXPECT_FALSE(Read(1).TimecodeRegen().HasValue()) << "nobody looks at the others then";
  ASSERT_TRUE(profiles.GetObject(1, profile));
  EXPECT_TRUE(profile.TimecodeRegen().HasValue()) << "one that is held is kept";
  profile.TimecodeRegen({});
  ASSERT_TRUE(SaveFor(1, profile));
  EXPECT_EQ(Value(select), "0 1 0");
}

TEST_F(DapOperatorProfileTableTest, TheRowFollowsFromTheSequence) {
  DapOperatorMetadataProfile profile = OnServer(10);
  ASSERT_TRUE(SaveFor(1, profile));
  // The same object for another sequence, and the row of the first stays.
  profile.ServerId(ZuServerId(20));
  ASSERT_TRUE(SaveFor(2, profile));
  EXPECT_TRUE(Read(1) == OnServer(10) && Read(2) == OnServer(20));
  profile.ServerId(ZuServerId(30));
  ASSERT_TRUE(profiles.Save(profile)) << "a profile with a key knows its sequence";
  EXPECT_EQ(Read(2), OnServer(30));
  ASSERT_TRUE(profiles.Delete(profile));
  EXPECT_EQ(log.Text(), "");
  EXPECT_FALSE(profiles.Save(profile)) << "one without a key has none";
  EXPECT_TRUE(log.Contains("FOREIGN KEY constraint failed"));
  EXPECT_EQ(profile.ObjectId(), -1);
  EXPECT_EQ(Count("DapOperatorMetadataSequence"), 1);
}

}  // namespace Oru::BusinessEntityModel::Edits::Database
