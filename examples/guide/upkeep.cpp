// Copies a database while it is open, checks a file, and listens to changes.
#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Sqlite/ChangeListener.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <iostream>

namespace Assets = Oru::DataModel::MediaAssets;
namespace Databases = Oru::Common::Databases;
using Assets::Database::DataModelDatabase;
using Databases::Sqlite::ChangeListener;
using Databases::Sqlite::ChangeNotice;
using Databases::Sqlite::TransactionGuard;

namespace {

// A list of clips on a screen, say.
void Refresh(const ChangeNotice& notice) {
  if (notice.areAllTables) std::cout << "all must be read again\n";
  for (const ChangeNotice::Table& table : notice.tables) {
    if (table.name != "MediaAsset") continue;
    if (table.areAllRows) std::cout << "all clips must be read again\n";
    for (const ChangeNotice::Row& row : table.rows) {
      const bool isGone = row.kind == ChangeNotice::Kind::Deleted;
      std::cout << "clip " << row.key << (isGone ? " is gone\n" : " must be read again\n");
    }
  }
}

bool SaveTwoClips(DataModelDatabase& database) {
  TransactionGuard transaction(database);
  for (const char* id : {"clip-1", "clip-2"}) {
    Assets::MediaAsset clip(id);
    if (!database.GetMediaAssetTable().Save(clip)) return false;
  }
  transaction.Commit();
  return true;
}

bool ShowProgress(int32_t remaining, int32_t total) {
  if (remaining == 0) std::cout << "all pages are copied: " << (total > 0) << '\n';
  return true;  // false would stop the backup
}

void Copy(DataModelDatabase& database) {
  const bool isCopied = database.Backup("copy.db", ShowProgress);
  std::cout << "copied: " << isCopied << '\n';

  try {
    database.Backup("copy.db");
  } catch (const Databases::ArgumentException&) {
    std::cout << "a file that is there already\n";
  }
}

bool Check(DataModelDatabase& database) {
  for (const std::string& finding : database.CheckIntegrity())
    std::cout << finding << '\n';

  return database.RebuildFullTextIndex();
}

}  // namespace

int main() {
  DataModelDatabase database("upkeep.db", nullptr);
  database.Open();
  {
    const ChangeListener listener(database, Refresh);
    if (!SaveTwoClips(database)) return 1;
    if (!database.GetMediaAssetTable().Delete(1)) return 1;
  }
  Copy(database);

  // As if another program had deleted a clip with foreign keys switched off.
  Assets::MediaAsset clip("clip-3");
  clip.PhysicalTimebounds().Insert(Oru::TimePoints::TimeBounds());
  if (!database.GetMediaAssetTable().Save(clip)) return 1;
  if (!database.ExecuteStatement("PRAGMA foreign_keys = off; DELETE FROM MediaAsset WHERE id = 'clip-3'"))
    return 1;
  if (!Check(database)) return 1;
}
