#include "Oru/BusinessEntityModel/Edits/Database/EditRepository.h"

#include "Oru/BusinessEntityModel/Edits/Database/SequenceTable.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/NotStoredException.h"

#include "support/DatabasePrelude.h"
#include "support/EditFields.h"

namespace Oru::BusinessEntityModel::Edits::Database {

using namespace BaseTypes;
using DataModel::MediaAssets::ZuServerId;
using DataModel::MediaAssets::Database::NotStoredException;

class EditRepositoryTest : public TestSupport::OpenDatabase {
 protected:
  static std::shared_ptr<DapOperatorMetadataProfile> OnServer(int server) {
    auto profile = std::make_shared<DapOperatorMetadataProfile>();
    profile->ServerId(ZuServerId(server));
    return profile;
  }
  static Edit WithSequences(const std::string& id, const std::vector<std::string>& sequences) {
    Edit edit{EditId(id)};
    for (const std::string& sequence : sequences)
      edit.Sequences().Add(Sequence(SequenceId(sequence)));
    return edit;
  }
  Sequence Stored(const std::string& id, int server = 0) {
    Sequence sequence{SequenceId(id)};
    if (server != 0) sequence.Metadata().Set(OnServer(server));
    EXPECT_TRUE(sequences.Save(sequence)) << log.Text();
    return sequence;
  }

  EditRepository repository{database};
  SequenceTable& sequences = database.GetSequenceTable();
};

TEST_F(EditRepositoryTest, ASequenceKeepsItsKeyUnlessItIsPlacedAfterAGreaterOne) {
  const std::pair<std::vector<std::string>, const char*> edits[] = {
      {{"1", "2", "3"}, "1:1 2:2 3:3"},
      {{"2", "3", "new", "1"}, "2:2 3:3 new:4 1:5"},
      {{"3", "1"}, "3:3 1:5"}};
  for (const auto& [sequenceIds, keys] : edits) {
    Edit edit = WithSequences("e", sequenceIds);
    repository.Put(edit);
    EXPECT_EQ(Value("SELECT group_concat(id || ':' || key, ' ') FROM (SELECT * FROM Sequence ORDER BY key)"),
              keys);
  }
}

TEST_F(EditRepositoryTest, WhatCantBeStoredIsRefusedByName) {
  Edit other = WithSequences("other", {"taken"});
  repository.Put(other);
  // One of no edit is free to be taken up.
  const Sequence loose = Stored("loose");
  using Profile = std::shared_ptr<MetadataProfile>;
  const Profile ofAssets = std::make_shared<DataModel::MediaAssets::DapOperatorMetadataProfile>();
  const Profile named = std::make_shared<GenericMetadataProfile>("oru.dapoperator");
  const Profile without = std::make_shared<DapOperatorMetadataProfile>();
  DapOperatorTimecodeRegen settings;
  settings.TimecodeRef(TimePoints::TimeCodeBuilder().Year(1900).Sample(-1).Build());
  const auto negative = OnServer(10);
  negative->TimecodeRegen(Optional(settings));
  const std::string noTable = "e: there is no table for the metadata profile oru.dapoperator of ";
  const struct {
    std::string id, reason;
    std::vector<std::string> sequenceIds;
    Profile ofSequence, ofEdit;
  } cases[] = {
      {"", "the edit has no identifier", {}, {}, {}},
      {"e", "e: a sequence has no identifier", {"1", ""}, {}, {}},
      {"e", "e: sequence 1 is there twice", {"1", "2", "1"}, {}, {}},
      {"e", "e: sequence taken belongs to edit other", {"loose", "taken"}, {}, {}},
      {"e", "e: the operator's profile of sequence 1 has no server", {"1"}, without, {}},
      {"e", "e: the time code of sequence 1 has the negative count -1", {"1"}, negative, {}},
      {"e", noTable + "sequence 1", {"1"}, ofAssets, {}},
      {"e", noTable + "sequence 1", {"1"}, named, {}},
      {"e", noTable + "the edit", {}, {}, OnServer(10)},
  };
  for (const auto& [id, reason, ids, ofSequence, ofEdit] : cases) {
    Edit edit = WithSequences(id, ids);
    if (ofSequence) edit.Sequences()[0].Metadata().Set(ofSequence);
    if (ofEdit) edit.Metadata().Set(ofEdit);
    EXPECT_THAT([&] { repository.Put(edit); }, testing::ThrowsMessage<NotStoredException>(reason));
  }
  EXPECT_EQ(Value("SELECT group_concat(id || ifnull(editRef, '')) FROM Sequence"), "taken1,loose");
  EXPECT_FALSE(repository.Find(EditId("")) || repository.Remove(EditId("")) || repository.Find(EditId("e")));

  Edit taking = WithSequences("e", {"loose"});
  repository.Put(taking);
  EXPECT_EQ(taking.Sequences()[0].ObjectId(), loose.ObjectId());
}

// The table of sequences, and that of their operator's profiles.

TEST_F(EditRepositoryTest, ADurationThatIsNotFixedIsStoredAndReadAsNone) {
  Sequence sequence(SequenceId("s"));
  SequenceDuration duration(TimePoints::Duration::FromNanoseconds(5000000000));
  duration.Fixed(false);
  sequence.Duration(duration);
  ASSERT_TRUE(sequences.Save(sequence));
  EXPECT_EQ(Value("SELECT duration || ' ' || fixedDuration FROM Sequence"), "5000000000 0");
  ASSERT_TRUE(sequences.GetObject(sequence.ObjectId(), sequence));
  EXPECT_EQ(sequence.Duration(), SequenceDuration());
}

TEST_F(EditRepositoryTest, DeletionByObjectIdentifierAndServer) {
  Sequence object = Stored("object", 10);
  for (const auto& [id, server] : {std::pair("it's", 10), {"ten", 10}, {"twenty", 20}, {"bare", 0}})
    Stored(id, server);
  ASSERT_TRUE(sequences.Delete(object) && sequences.Delete(SequenceId("' OR ''='")) &&
              sequences.Delete(SequenceId("it's")) && sequences.DeleteByServerId(ZuServerId(30)) &&
              sequences.DeleteByServerId(ZuServerId::Empty()));
  EXPECT_EQ(object.ObjectId(), -1);
  EXPECT_EQ(Count("Sequence"), 3);
  ASSERT_TRUE(sequences.DeleteByServerId(ZuServerId(10)));
  EXPECT_EQ(Value("SELECT group_concat(id) FROM (SELECT id FROM Sequence ORDER BY id)"), "bare,twenty");
  EXPECT_EQ(Count("DapOperatorMetadataSequence"), 1);
}

TEST_F(EditRepositoryTest, TheProfileIsAddedOrFilledOrAbsentAndOfAServer) {
  Sequence sequence = Stored("s");
  sequences.ReadDapOperatorProfileTable(sequence);
  EXPECT_FALSE(sequence.HasDapOperatorMetadata());
  sequence.Metadata().Set(OnServer(40));
  sequences.ReadDapOperatorProfileTable(sequence);
  EXPECT_EQ(sequence.DapOperatorMetadata(), *OnServer(40)) << "nothing is stored";

  ASSERT_TRUE(sequences.Save(sequence));
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

TEST_F(EditRepositoryTest, TheProfilesRowFollowsFromTheSequence) {
  DapOperatorProfileTable& profiles = sequences.GetDapOperatorProfileTable();
  DapOperatorMetadataProfile profile;
  for (const char* id : {"s", "t"}) {
    // The same object for another sequence, and the row of the first stays.
    const int64_t sequence = Stored(id).ObjectId();
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
  regen.TimecodeRef(TimePoints::TimeCodeBuilder().Year(1900).Sample(-1).Build());
  profile.ObjectId(1);
  profile.TimecodeRegen(regen);
  EXPECT_FALSE(profiles.Save(profile)) << "a read would refuse it";
  EXPECT_TRUE(log.Contains("tcRegenTimecodeRef has the negative count -1"));
  ASSERT_TRUE(profiles.GetObject(1, profile));
  EXPECT_EQ(profile.TimecodeRegen(), Optional(regen)) << "one that is held is kept where none is stored";
}

}  // namespace Oru::BusinessEntityModel::Edits::Database
