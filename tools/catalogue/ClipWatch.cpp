#include "ClipWatch.h"

#include "Oru/Common/Databases/Sqlite/ReadGuard.h"

#include "InterchangeFields.h"

#include <ctime>
#include <functional>
#include <optional>
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
  const int64_t before = std::exchange(mReadAt, std::time(nullptr));
  std::map<int64_t, Seen> clips;
  for (const ClipStore::MediaAsset& clip : mStore.Clips().Each({})) {
    Seen& seen = clips[clip.ObjectId()];
    seen = {clip.Id().Value(), clip.Name(), clip.ModificationDate()};
    const auto known = mSeen.find(clip.ObjectId());
    const bool isOld = known != mSeen.end() && known->second.modified == seen.modified;
    // Up to a second after its date, which was read before it was stored, a clip may change and keep the date.
    if (isOld && seen.modified + 1 < before) {
      seen.hash = known->second.hash;
    } else if (seen.modified + 1 >= mReadAt || isOld) {
      if (auto whole = mStore.Clips().Find(clip.Id()))
        seen.hash = std::hash<std::string>()(EntityToJson(*whole).dump());
    }
  }
  return clips;
}

}  // namespace Catalogue
