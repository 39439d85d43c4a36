#include "ClipStore.h"

#include "Oru/Common/Databases/Query.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "AssetBuilder.h"
#include "TextForms.h"

#include <algorithm>
#include <ctime>
#include <optional>
#include <stdexcept>
#include <utility>

namespace Catalogue {

namespace MediaAssets = Oru::DataModel::MediaAssets;
using MediaAssets::Database::MediaAssetSearch;

ClipStore::ClipStore(const std::string& file, const std::shared_ptr<std::ostream>& log)
    : mDatabase(file, log), mClips(mDatabase), mGroups(mDatabase), mEdits(mDatabase) {
  mDatabase.Open();
}

ClipStore::Added ClipStore::Add(std::vector<MediaAsset>& clips) {
  Added added;
  Oru::Common::Databases::Sqlite::TransactionGuard transaction(mDatabase);
  for (MediaAsset& clip : clips) {
    std::optional<MediaAsset> stored = mClips.Find(clip.Id());
    added.outcomes.push_back(stored ? Outcome::Updated : Outcome::Added);
    if (!stored) continue;
    TakeFromFile(*stored, clip);
    clip = std::move(*stored);
  }
  added.refused = mClips.PutAll(clips);
  transaction.Commit();
  for (size_t n = 0; n < clips.size(); ++n) {
    const bool isRefused = std::any_of(added.refused.begin(), added.refused.end(),
                                       [&](const auto& refused) { return refused.id == clips[n].Id(); });
    if (isRefused) added.outcomes[n] = Outcome::Refused;
  }
  return added;
}

MediaAssets::MediaAsset ClipStore::Find(const std::string& idOrName, MediaAssetParts parts) {
  const auto isNamed = mDatabase.NewQuery();
  isNamed->Equals("MediaAsset.name", idOrName);
  const auto isMeant = mDatabase.NewQuery();
  isMeant->BeginWith("id", idOrName).Or(*isNamed);
  std::vector<MediaAsset> found = mClips.Find(MediaAssetSearch().Where(*isMeant), parts).assets;
  if (found.empty()) throw std::runtime_error("no clip has the identifier or the name '" + idOrName + "'");
  if (found.size() > 1) {
    std::string message = "'" + idOrName + "' fits " + std::to_string(found.size()) + " clips:";
    for (const MediaAsset& clip : found)
      message += "\n  " + clip.Id().Value() + "  " + Printable(clip.Name());
    throw std::runtime_error(message);
  }
  return std::move(found.front());
}

MediaAssets::MediaAsset ClipStore::Change(const std::string& idOrName,
                                          const std::function<void(MediaAsset&)>& change) {
  return mClips.Change(Find(idOrName).Id(), [&change](MediaAsset& clip) {
    change(clip);
    clip.ModificationDate(std::max(std::time(nullptr), clip.CreationDate()));
  });
}

void ClipStore::PutGroup(MediaAssets::MediaAssetGroup& group) {
  const bool isPlain = dynamic_cast<MediaAssets::AnglesMediaAssetGroup*>(&group) == nullptr;
  // A plain group would be refused in place of one of angles.
  if (isPlain && mGroups.FindAngles(group.Id())) mGroups.Remove(group.Id());
  mGroups.Put(group);
}

}  // namespace Catalogue
