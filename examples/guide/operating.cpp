// The operator's view of a clip, a multi-angle group, an edit, and what a deletion takes along.
#include "Oru/BusinessEntityModel/Edits/Database/EditRepository.h"
#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupRepository.h"
#include "Oru/DataModel/MediaAssets/Database/NotStoredException.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include <iostream>
#include <memory>
#include <utility>

namespace Assets = Oru::DataModel::MediaAssets;
namespace Edits = Oru::BusinessEntityModel::Edits;
using namespace Oru::TimePoints;
using Assets::Database::DataModelDatabase;
using Assets::Database::MediaAssetGroupRepository;
using Assets::Database::NotStoredException;
using Oru::Common::Databases::Sqlite::TransactionGuard;

namespace {

bool SaveOperatorsClip(DataModelDatabase& database) {
  auto profile = std::make_shared<Assets::DapOperatorMetadataProfile>();
  profile->ServerId(Assets::ZuServerId(110));
  profile->Page(1);
  profile->Bank(1);
  profile->Row(1);
  profile->Camera('A');
  profile->Keyword(0, "goal");
  profile->UserTimecode(TimeCodeBuilder().ClockTime(10, 0, 0, 0).Rate(VideoRates::Rate50()).Build());
  Assets::MediaAsset clip("clip-1");
  clip.Metadata().Set(profile);
  if (!database.GetMediaAssetTable().Save(clip)) return false;

  Assets::MediaAsset found;
  if (!database.GetMediaAssetTable().GetObject(clip.ObjectId(), found)) return false;
  database.GetMediaAssetTable().ReadDapOperatorMetadata(found);
  std::cout << found.DapOperatorMetadata().DapId().ToString() << '\n';
  return true;
}

void PutGroup(DataModelDatabase& database) {
  Assets::AnglesMediaAssetGroup group("group-1", "Penalty");
  group.Items().push_back(
      std::make_shared<Assets::AnglesMediaAssetGroupItem>("wide", Assets::MediaAssetReference("clip-1")));
  MediaAssetGroupRepository groups(database);
  groups.Put(group);

  group.Items().push_back(
      std::make_shared<Assets::AnglesMediaAssetGroupItem>("close", Assets::MediaAssetReference("clip-9")));
  try {
    groups.Put(group);
  } catch (const NotStoredException& refusal) {
    std::cout << refusal.what() << '\n';
  }
}

void PutEdit(DataModelDatabase& database) {
  Edits::Edit edit("edit-1");
  edit.Name("Highlights");
  Edits::Sequence sequence("sequence-1");
  sequence.Duration(Edits::SequenceDuration(Duration::FromSeconds(30)));
  edit.Sequences().Add(std::move(sequence));
  edit.Sequences().Add(Edits::Sequence("sequence-2"));
  Edits::Database::EditRepository edits(database);
  edits.Put(edit);
  std::cout << "sequences: " << edits.Find("edit-1")->Sequences().Size() << '\n';
}

}  // namespace

int main() {
  DataModelDatabase database(":memory:", nullptr);
  database.Open();
  TransactionGuard transaction(database);
  if (!SaveOperatorsClip(database)) return 1;
  PutGroup(database);
  PutEdit(database);
  transaction.Commit();

  if (!database.GetMediaAssetTable().DeleteByServerId(Assets::ZuServerId(110))) return 1;
  std::cout << "group: " << MediaAssetGroupRepository(database).Find("group-1").has_value() << '\n';
}
