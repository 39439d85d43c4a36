#include "Oru/BusinessEntityModel/Edits/Database/SequenceTable.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

#include "support/OpenDatabase.h"
#include "support/RandomAsset.h"

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
using TimePoints::TimePoint;

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

TEST_F(SequenceTableTest, RandomSequencesComeBackAsTheyWere) {
  TestSupport::RandomAssets random(6);
  std::vector<Sequence> saved;
  for (int i = 0; i < 200; ++i) {
    Sequence sequence{SequenceId(random.Id())};
    for (int times = 0; times < 2; ++times) {
      sequence.Name(random.Text());
      sequence.Version(random.Int32());
      sequence.Duration(SequenceDuration(Duration::FromNanoseconds(random.Int64())));
      sequence.SetTimePoint(TimePoint::FromNanoseconds(random.Int64()));
      sequence.CreationDate(random.Int64());
      sequence.ModificationDate(random.Int64());
      sequence.CreationOwner(UserId(random.Text()));
      sequence.ModificationOwner(UserId(random.Text()));
      if (random.Chance(2)) sequence.Metadata().Set(OnServer(10 * (1 + random.Count() % 1000)));
      const auto profile = std::make_shared<BaseTypes::GenericMetadataProfile>("p");
      profile->Set(random.Text(), random.Text());
      sequence.Metadata().Set(profile);
      if (random.Chance(2)) sequence.ObjectId(-1);
      ASSERT_TRUE(sequences.Save(sequence)) << log.Text();
    }
    saved.push_back(*sequence.Clone());
  }
  EXPECT_EQ(Count("Sequence"), 200);
  for (const Sequence& sequence : saved) {
    Sequence read;
    ASSERT_TRUE(sequences.GetObject(sequences.GetObjectIdFromIdentifier(sequence.Id()), read));
    EXPECT_TRUE(read.Metadata().Empty());
    sequences.ReadMetadata(read);
    sequences.ReadDapOperatorProfileTable(read);
    EXPECT_EQ(read, sequence);
    EXPECT_EQ(read.ObjectId(), sequence.ObjectId());
  }
}

TEST_F(SequenceTableTest, ADurationThatIsNotFixedIsStoredAndReadAsNone) {
  Sequence sequence(SequenceId("s"));
  SequenceDuration duration(Duration::FromNanoseconds(5000000000));
  duration.Fixed(false);
  sequence.Duration(duration);
  ASSERT_TRUE(sequences.Save(sequence));
  EXPECT_EQ(Value("SELECT duration || ' ' || fixedDuration FROM Sequence"), "5000000000 0");
  Sequence read;
  read.Duration(SequenceDuration(Duration::FromNanoseconds(7)));
  ASSERT_TRUE(sequences.GetObject(sequence.ObjectId(), read));
  EXPECT_EQ(read.Duration(), SequenceDuration());
  EXPECT_EQ(Value("SELECT typeof(editRef) FROM Sequence"), "null");
}

TEST_F(SequenceTableTest, TheWrapperTellsTheEdit) {
  Run("INSERT INTO Edit(key, id) VALUES (7, 'e'), (8, 'f')");
  Sequence sequence(SequenceId("s"));
  SequenceEncapsulated row(sequence);
  for (const int64_t edit : {7, 8}) {
    row.editFk = edit;
    ASSERT_TRUE(sequences.Save(row));
    EXPECT_EQ(Value("SELECT editRef FROM Sequence"), std::to_string(edit));
  }
  ASSERT_TRUE(sequences.Save(sequence));
  EXPECT_EQ(Value("SELECT count(*) || typeof(editRef) FROM Sequence"), "1null");
  row.editFk = 9;
  EXPECT_FALSE(sequences.Save(row));
  EXPECT_TRUE(log.Contains("FOREIGN KEY constraint failed"));
}

TEST_F(SequenceTableTest, DeletionByObjectIdentifierAndServer) {
  const std::string odd = "it's \"odd\"";
  Sequence object = Stored("object", 10);
  for (const auto& [id, server] : {std::pair(odd, 10), {"ten", 10}, {"twenty", 20}, {"bare", 0}})
    Stored(id, server);
  Run("INSERT INTO Edit(key, id) VALUES (1, 'e'); UPDATE Sequence SET editRef = 1");
  const std::string left = "SELECT group_concat(id) FROM (SELECT id FROM Sequence ORDER BY id)";
  ASSERT_TRUE(sequences.Delete(object));
  EXPECT_EQ(object.ObjectId(), -1);
  ASSERT_TRUE(sequences.Delete(SequenceId("' OR ''='")) && sequences.Delete(SequenceId(odd)));
  EXPECT_EQ(Value(left), "bare,ten,twenty");
  ASSERT_TRUE(sequences.DeleteByServerId(ZuServerId(30)) && sequences.DeleteByServerId(ZuServerId::Empty()) &&
              sequences.DeleteByServerId(ZuServerId(10)));
  EXPECT_EQ(Value(left), "bare,twenty");
  EXPECT_EQ(Count("DapOperatorMetadataSequence"), 1);
  EXPECT_EQ(Count("Edit"), 1);
}

TEST_F(SequenceTableTest, ANumberThatIsNoServersThrowsAndLeavesTheDictionary) {
  Sequence sequence = Stored("s", 10);
  sequence.Metadata().Clear();
  // A profile without a server is saved as 0, and can not be read.
  for (const std::string number : {"0", "25", "-10"}) {
    Run("UPDATE DapOperatorMetadataSequence SET zuServerId = " + number);
    EXPECT_THAT(
        [&] { sequences.ReadDapOperatorProfileTable(sequence); },
        testing::ThrowsMessage<std::invalid_argument>("Invalid server serial number " + number + "."));
    EXPECT_TRUE(sequence.Metadata().Empty());
  }
}

TEST_F(SequenceTableTest, TheProfileIsAddedOrFilledOrAbsent) {
  Sequence bare = Stored("bare"), sequence = Stored("s", 10);
  EXPECT_EQ(Count("DapOperatorMetadataSequence"), 1);
  sequences.ReadDapOperatorProfileTable(bare);
  EXPECT_FALSE(bare.HasDapOperatorMetadata());
  bare.Metadata().Set(OnServer(40));
  sequences.ReadDapOperatorProfileTable(bare);
  EXPECT_EQ(bare.DapOperatorMetadata().ServerId(), ZuServerId(40)) << "nothing is stored";

  const auto* held = &sequence.DapOperatorMetadata();
  Run("UPDATE DapOperatorMetadataSequence SET zuServerId = 20, dapIdPage = 4711");
  for (int times = 0; times < 2; ++times)
    sequences.ReadDapOperatorProfileTable(sequence);
  EXPECT_EQ(&sequence.DapOperatorMetadata(), held);
  EXPECT_EQ(held->ServerId(), ZuServerId(20));
  EXPECT_EQ(held->Page(), 4711);

  // Saved without one, the stored one stays.
  sequence.Metadata().Clear();
  ASSERT_TRUE(sequences.Save(sequence));
  EXPECT_EQ(Count("DapOperatorMetadataSequence"), 1);
  sequence.Metadata().Set(std::make_shared<DataModel::MediaAssets::DapOperatorMetadataProfile>());
  ASSERT_TRUE(sequences.Save(sequence));
  EXPECT_THROW(sequences.ReadDapOperatorProfileTable(sequence), std::bad_cast);
  EXPECT_EQ(Value("SELECT zuServerId FROM DapOperatorMetadataSequence"), "20");
}

}  // namespace Oru::BusinessEntityModel::Edits::Database
