// Finds clips by the words of their names and descriptions.
#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <iostream>

namespace Assets = Oru::DataModel::MediaAssets;
using Assets::Database::DataModelDatabase;
using Assets::Database::MediaAssetTable;
using Oru::Common::Databases::Sqlite::FullTextExpression;

namespace {

bool Save(MediaAssetTable& clips, const char* id, const char* name, const char* description) {
  Assets::MediaAsset clip(id);
  clip.Name(name);
  clip.Description(description);
  return clips.Save(clip);
}

void Search(DataModelDatabase& database, const std::string& typed) {
  const auto query = database.NewQuery();
  query->Match("MediaAssetFts", FullTextExpression::AllWords(typed)).OrderByAsc("MediaAssetFts.rank");
  const auto cursor = database.GetMediaAssetTable().OpenObjectCursor(*query);
  for (Assets::MediaAsset clip; cursor->Next(clip);) {
    std::cout << clip.Id() << ": " << clip.Name() << '\n';
  }
}

void ShowWhatMatched(DataModelDatabase& database, const std::string& typed) {
  const auto query = database.NewQuery();
  query->Match("MediaAssetFts", FullTextExpression::AllWordsAsTyped(typed));
  const auto cursor = database.GetMediaAssetTable().OpenRawCursor(*query);
  while (cursor->Next()) {
    std::cout << cursor->GetString("nameFts") << ", " << cursor->GetString("descriptionFts") << '\n';
  }
}

void SearchWithout(DataModelDatabase& database, const std::string& wanted, const std::string& unwanted) {
  const auto matching = database.NewQuery();
  matching->Match("MediaAssetFts", FullTextExpression::AnyWord(unwanted));
  const auto excluded = database.NewQuery();
  excluded->In("key", "MediaAssetFts", "rowid", *matching);
  const auto query = database.NewQuery();
  query->Match("MediaAssetFts", FullTextExpression::AllWords(wanted)).Not(*excluded);
  const auto cursor = database.GetMediaAssetTable().OpenObjectCursor(*query);
  std::cout << cursor->GetTotalItemsCount() << " with \"" << wanted << "\", but not \"" << unwanted << "\"\n";
}

}  // namespace

int main() {
  DataModelDatabase database(":memory:", nullptr);
  database.Open();
  MediaAssetTable& clips = database.GetMediaAssetTable();
  const bool isSaved = Save(clips, "clip-1", "FINAL_CAM-1", "Kick-off, and a goal in the last minute") &&
                       Save(clips, "clip-2", "FINAL_CAM-2", "The goal") &&
                       Save(clips, "clip-3", "INTERVIEW", "The scorer on his goal");
  if (!isSaved) return 1;
  Search(database, "goal");
  Search(database, "FINAL_CAM-1");
  ShowWhatMatched(database, "final kick");
  SearchWithout(database, "goal", "interview minute");
}
