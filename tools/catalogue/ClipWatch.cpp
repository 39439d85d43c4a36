#include "ClipWatch.h"

#include "Oru/Common/Databases/Sqlite/ReadGuard.h"

#include <utility>

namespace Catalogue {

ClipWatch::ClipWatch(ClipStore& store) : mStore(store) {
  // Asked first: a commit between the two is read now, and reported once more as nothing new.
  mStore.Database().HasChanged();
  mSeen = Read();
}

std::vector<ClipWatch::Change> ClipWatch::Changes() {
  std::vector<Change> changes;
  if (!mStore.Database().HasChanged()) return changes;
  std::map<int64_t, Seen> before = std::exchange(mSeen, Read());
  for (const auto& [key, clip] : mSeen) {
    const auto known = before.find(key);
    if (known == before.end()) {
      changes.push_back({Change::Kind::New, clip.id, clip.name});
      continue;
    }
    if (!(known->second == clip)) changes.push_back({Change::Kind::Changed, clip.id, clip.name});
    before.erase(known);
  }
  for (const auto& [key, clip] : before)
    changes.push_back({Change::Kind::Gone, clip.id, clip.name});
  return changes;
}

std::map<int64_t, ClipWatch::Seen> ClipWatch::Read() {
  const Oru::Common::Databases::Sqlite::ReadGuard guard(mStore.Database());
  std::map<int64_t, Seen> clips;
  for (const ClipStore::MediaAsset& clip : mStore.Clips().Each({}))
    clips[clip.ObjectId()] = {clip.Id().Value(), clip.Name(), clip.ModificationDate()};
  return clips;
}

}  // namespace Catalogue
