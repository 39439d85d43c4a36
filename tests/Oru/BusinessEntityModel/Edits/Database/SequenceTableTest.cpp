#include "Oru/BusinessEntityModel/Edits/Database/SequenceTable.h"

#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include "support/OpenDatabase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

namespace Oru::BusinessEntityModel::Edits::Database {

using DataModel::MediaAssets::ZuServerId;
using TimePoints::Duration;

class SequenceTableTest : public TestSupport::OpenDatabase {
 protected:
  static std::shared_ptr<DapOperatorMetadataProfile> OnServer(int server) {
    auto profile = std::make_shared<DapOperatorMetadataProfile>();
    profile->ServerId(ZuServerId(server));
    return profile;
  }
  Sequence Stored(const std::string& id, int server = 0) {
    Sequence sequence{SequenceId(id)};
    if (server != 0) sequence.Metadata().Set(OnServer(server));
    EXPECT_TRUE(sequences.Save(sequence)) << log.Text();
    return sequence;
  }

  SequenceTable& sequences = database.GetSequenceTable();
};

TEST_F(SequenceTableTest, ADurationThatIsNotFixedIsStoredAndReadAsNone) {
  Sequence sequence(SequenceId("s")), read;
  SequenceDuration duration(Duration::FromNanoseconds(5000000000));
  duration.Fixed(false);
  sequence.Duration(duration);
  ASSERT_TRUE(sequences.Save(sequence));
  EXPECT_EQ(Value("SELECT duration || ' ' || fixedDuration || typeof(editRef) FROM Sequence"),
            "5000000000 0null");
  read.Duration(SequenceDuration(Duration::FromNanoseconds(7)));
  ASSERT_TRUE(sequences.GetObject(sequence.ObjectId(), read));
  EXPECT_EQ(read.Duration(), SequenceDuration());
}

TEST_F(SequenceTableTest, DeletionByObjectIdentifierAndServer) {
  Sequence object = Stored("object", 10);
  for (const auto& [id, server] : {std::pair("it's", 10), {"ten", 10}, {"twenty", 20}, {"bare", 0}})
    Stored(id, server);
  Run("INSERT INTO Edit(key, id) VALUES (1, 'e'); UPDATE Sequence SET editRef = 1");
  ASSERT_TRUE(sequences.Delete(object));
  EXPECT_EQ(object.ObjectId(), -1);
  ASSERT_TRUE(sequences.Delete(SequenceId("' OR ''='")) && sequences.Delete(SequenceId("it's")));
  EXPECT_EQ(Count("Sequence"), 3);
  ASSERT_TRUE(sequences.DeleteByServerId(ZuServerId(30)) && sequences.DeleteByServerId(ZuServerId::Empty()) &&
              sequences.DeleteByServerId(ZuServerId(10)));
  EXPECT_EQ(Value("SELECT group_concat(id) FROM (SELECT id FROM Sequence ORDER BY id)"), "bare,twenty");
  EXPECT_EQ(Count("DapOperatorMetadataSequence") + Count("Edit"), 2);
}

TEST_F(SequenceTableTest, TheProfileIsAddedOrFilledOrAbsentAndOfAServer) {
  Sequence bare = Stored("bare"), sequence = Stored("s", 10);
  sequences.ReadDapOperatorProfileTable(bare);
  EXPECT_FALSE(bare.HasDapOperatorMetadata());
  bare.Metadata().Set(OnServer(40));
  sequences.ReadDapOperatorProfileTable(bare);
  EXPECT_EQ(bare.DapOperatorMetadata(), *OnServer(40)) << "nothing is stored";

  const auto* held = &sequence.DapOperatorMetadata();
  Run("UPDATE DapOperatorMetadataSequence SET zuServerId = 20");
  sequences.ReadDapOperatorProfileTable(sequence);
  EXPECT_EQ(&sequence.DapOperatorMetadata(), held);
  EXPECT_EQ(*held, *OnServer(20));

  // Saved without one, the stored one stays.
  sequence.Metadata().Clear();
  ASSERT_TRUE(sequences.Save(sequence));
  sequence.Metadata().Set(std::make_shared<DataModel::MediaAssets::DapOperatorMetadataProfile>());
  ASSERT_TRUE(sequences.Save(sequence));
  EXPECT_THROW(sequences.ReadDapOperatorProfileTable(sequence), std::bad_cast);
  EXPECT_EQ(Value("SELECT zuServerId FROM DapOperatorMetadataSequence"), "20");

  // A profile without a server is saved as 0, and can't be read.
  sequence.Metadata().Clear();
  for (const std::string number : {"0", "25", "-10"}) {
    Run("UPDATE DapOperatorMetadataSequence SET zuServerId = " + number);
    EXPECT_THAT(
        [&] { sequences.ReadDapOperatorProfileTable(sequence); },
        testing::ThrowsMessage<std::invalid_argument>("Invalid server serial number " + number + "."));
    EXPECT_TRUE(sequence.Metadata().Empty());
  }
}

TEST_F(SequenceTableTest, TheProfilesRowFollowsFromTheSequence) {
  for (const char* id : {"s", "t"})
    Stored(id);
  DapOperatorProfileTable& profiles = sequences.GetDapOperatorProfileTable();
  DapOperatorMetadataProfile profile = *OnServer(10);
  for (const int64_t sequence : {1, 2}) {
    // The same object for another sequence, and the row of the first stays.
    profile.ServerId(ZuServerId(static_cast<int>(10 * sequence)));
    DapOperatorProfileEncapsulated row(sequence, profile);
    ASSERT_TRUE(profiles.Save(row));
  }
  profile.ServerId(ZuServerId(30));
  ASSERT_TRUE(profiles.Save(profile)) << "a profile with a key knows its sequence";
  EXPECT_EQ(Value("SELECT group_concat(refSequence || ' ' || zuServerId) FROM DapOperatorMetadataSequence"),
            "1 10,2 30");
  ASSERT_TRUE(profiles.Delete(profile));
  EXPECT_EQ(profile.ObjectId(), -1);
  EXPECT_FALSE(profiles.Save(profile)) << "one without a key has none";
  EXPECT_TRUE(log.Contains("FOREIGN KEY constraint failed"));

  DapOperatorTimecodeRegen regen;
  profile.ObjectId(1);
  profile.TimecodeRegen(regen);
  ASSERT_TRUE(profiles.Save(profile));
  Run("UPDATE DapOperatorMetadataSequence SET tcRegenOn = 0, tcRegenTimecodeRef = -1");
  ASSERT_TRUE(profiles.GetObject(1, profile));
  EXPECT_TRUE(profile.TimecodeRegen().HasValue()) << "one that is held is kept";
  profile.TimecodeRegen({});
  ASSERT_TRUE(profiles.Save(profile));
  regen.TimecodeRef(TimePoints::TimeCodeBuilder().Year(1900).Sample(-1).Build());
  profile.TimecodeRegen(regen);
  EXPECT_FALSE(profiles.Save(profile)) << "a read would refuse it";
  EXPECT_TRUE(log.Contains("tcRegenTimecodeRef has the negative count -1"));
  EXPECT_EQ(Value("SELECT tcRegenOn || ' ' || tcRegenTimecodeRefFormat FROM DapOperatorMetadataSequence"),
            "0 1");
}

}  // namespace Oru::BusinessEntityModel::Edits::Database
