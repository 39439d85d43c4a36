#include "Oru/BusinessEntityModel/Edits/Database/EditRepository.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/Writing/AllOrNothing.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/WholeObjects.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/ObjectWrite.h"

#include <memory>
#include <set>
#include <string>
#include <utility>

namespace Oru::BusinessEntityModel::Edits::Database {

using namespace Common::Databases::Sqlite;
using namespace BaseTypes;
using DataModel::MediaAssets::Database::AllByName;
using DataModel::MediaAssets::Database::FindWhole;
using DataModel::MediaAssets::Database::FormerObjectIds;
using DataModel::MediaAssets::Database::RefuseObject;
using DataModel::MediaAssets::Database::RequireWritten;

namespace {

void RequireReadable(const Edit& edit, const std::string& owner, const DapOperatorMetadataProfile& profile) {
  if (profile.ServerId() == DataModel::MediaAssets::ZuServerId::Empty())
    RefuseObject(edit.Id(), "the operator's profile of " + owner + " has no server");
  if (!profile.TimecodeRegen().HasValue()) return;
  if (const int64_t count = profile.TimecodeRegen().Value().TimecodeRef().TotalSample(); count < 0)
    RefuseObject(edit.Id(), "the time code of " + owner + " has the negative count " + std::to_string(count));
}

// The operator's profile has a table for sequences only, and no other profile may have its name.
void RequireStorable(const Edit& edit, const MetadataProfileDictionary& metadata, const std::string& owner,
                     bool isOfSequence) {
  static const FullyQualifiedName operatorName = DapOperatorMetadataProfile::StaticFullyQualifiedName();
  metadata.Iterate([&](const MetadataProfile& profile) {
    const auto* ofOperator = dynamic_cast<const DapOperatorMetadataProfile*>(&profile);
    const auto* generic = dynamic_cast<const GenericMetadataProfile*>(&profile);
    if (ofOperator && isOfSequence) {
      RequireReadable(edit, owner, *ofOperator);
    } else if (!generic || profile.FullyQualifiedName() == operatorName) {
      RefuseObject(edit.Id(), "there is no table for the metadata profile " +
                                  profile.FullyQualifiedName().Value() + " of " + owner);
    }
    return true;
  });
}

void RequireStorable(const Edit& edit) {
  if (edit.Id().IsEmpty()) RefuseObject(edit.Id(), "the edit has no identifier");
  RequireStorable(edit, edit.Metadata(), "the edit", false);
  std::set<SequenceId> ids;
  for (const auto& sequence : edit.Sequences()) {
    if (sequence->Id().IsEmpty()) RefuseObject(edit.Id(), "a sequence has no identifier");
    const std::string name = "sequence " + sequence->Id().Value();
    if (!ids.insert(sequence->Id()).second) RefuseObject(edit.Id(), name + " is there twice");
    RequireStorable(edit, sequence->Metadata(), name, true);
  }
}

void Remember(FormerObjectIds& ids, Edit& edit) {
  ids.Remember(edit);
  for (const auto& sequence : edit.Sequences()) {
    ids.Remember(*sequence);
    if (const auto profile = sequence->Metadata().Get<DapOperatorMetadataProfile>()) ids.Remember(*profile);
  }
}

}  // namespace

EditRepository::EditRepository(DatabaseSqlite& database)
    : mDatabase(database),
      mEdits(database),
      mSequencesOfEdit("SELECT key FROM Sequence WHERE editRef = :edit"),
      mEditOfSequence(
          "SELECT Edit.id FROM Sequence JOIN Edit ON Edit.key = Sequence.editRef "
          "WHERE Sequence.id = :id AND Edit.key <> :edit") {}

EditRepository::~EditRepository() = default;

std::optional<Edit> EditRepository::Find(const EditId& id) {
  return FindWhole<Edit>(mDatabase, mEdits, id, [this](Edit& edit) { ReadParts(edit); });
}

std::vector<Edit> EditRepository::All() {
  return AllByName<Edit>(mDatabase, mEdits, [this](Edit& edit) { ReadParts(edit); });
}

void EditRepository::ReadParts(Edit& edit) {
  mEdits.ReadMetadata(edit);
  SequenceTable& sequences = mEdits.GetSequenceTable();
  QuerySqlite inOrder;
  inOrder.Equals(SequenceTable::columnNames[SequenceTable::Column::EditRef], edit.ObjectId())
      .OrderByAsc(SequenceTable::columnNames[SequenceTable::Column::Key]);
  const auto cursor = sequences.OpenObjectCursor(inOrder);
  for (auto sequence = std::make_unique<Sequence>(); cursor->Next(*sequence);
       sequence = std::make_unique<Sequence>()) {
    sequences.ReadMetadata(*sequence);
    sequences.ReadDapOperatorProfileTable(*sequence);
    edit.Sequences().Add(std::move(sequence));
  }
}

void EditRepository::Put(Edit& edit) {
  RequireStorable(edit);
  FormerObjectIds before;
  Remember(before, edit);
  AllOrNothing(mDatabase, [&] { Write(edit); });
  before.KeepNew();
}

void EditRepository::Write(Edit& edit) {
  edit.ObjectId(-1);
  RequireWritten(mDatabase, edit.Id(), mEdits.Save(edit));
  const int64_t key = edit.ObjectId();
  PlaceSequences(edit, key);
  for (const auto& sequence : edit.Sequences())
    SaveSequence(edit, key, *sequence);
}

// Sequences are read in the order of their keys. So those that the object holds after one of a greater key
// are deleted with those that it no longer holds, and get new keys, which are the greatest of all.
void EditRepository::PlaceSequences(Edit& edit, int64_t editKey) {
  SequenceTable& table = mEdits.GetSequenceTable();
  std::set<int64_t> leaving;
  {
    PreparedStatement::Run run(mSequencesOfEdit, mDatabase, editKey);
    while (run.Step())
      leaving.insert(run.Row().GetInt64(0));
  }
  int64_t last = 0;
  bool isNew = false;
  for (const auto& sequence : edit.Sequences()) {
    RequireFree(edit, editKey, sequence->Id());
    const int64_t key = table.GetObjectIdFromIdentifier(sequence->Id());
    isNew = isNew || key <= last;
    sequence->ObjectId(isNew ? -1 : key);
    if (isNew) {
      leaving.insert(key);
    } else {
      leaving.erase(key);
      last = key;
    }
  }
  for (const int64_t key : leaving)
    RequireWritten(mDatabase, edit.Id(), table.Delete(key));
}

void EditRepository::RequireFree(const Edit& edit, int64_t editKey, const SequenceId& id) {
  PreparedStatement::Run run(mEditOfSequence, mDatabase, id.Value(), editKey);
  if (run.Step()) {
    RefuseObject(edit.Id(), "sequence " + id.Value() + " belongs to edit " + run.Row().GetString(0));
  }
}

void EditRepository::SaveSequence(const Edit& edit, int64_t editKey, Sequence& sequence) {
  SequenceTable& table = mEdits.GetSequenceTable();
  SequenceEncapsulated row(sequence);
  row.editFk = editKey;
  RequireWritten(mDatabase, edit.Id(), table.Save(row));
  // The table leaves a profile alone that the object no longer has.
  if (!sequence.HasDapOperatorMetadata())
    RequireWritten(mDatabase, edit.Id(), table.GetDapOperatorProfileTable().DeleteOwned(sequence.ObjectId()));
}

bool EditRepository::Remove(const EditId& id) {
  return AllOrNothing(mDatabase, [&] {
    const int64_t key = id.IsEmpty() ? -1 : mEdits.GetObjectIdFromIdentifier(id);
    if (key == -1) return false;
    RequireWritten(mDatabase, id, mEdits.Delete(key));
    return true;
  });
}

}  // namespace Oru::BusinessEntityModel::Edits::Database
