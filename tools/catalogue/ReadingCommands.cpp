#include "ReadingCommands.h"

#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/Common/Databases/Query.h"
#include "Oru/Common/Databases/RawCursor.h"
#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"

#include "AssetBuilder.h"
#include "ClipPrinter.h"
#include "InterchangeFields.h"
#include "Listing.h"
#include "TextForms.h"

#include <utility>

namespace Catalogue {

namespace {

namespace Edits = Oru::BusinessEntityModel::Edits;
using namespace Oru::DataModel::MediaAssets;
using Database::MediaAssetOrder;
using Database::MediaAssetSearch;

Listing::Cell DurationCell(const Oru::TimePoints::Duration& duration) {
  return {DurationText(duration), duration.ToNanoseconds()};
}

}  // namespace

int ReadingCommands::List(const std::string& nameContains, const SearchOptions& options) {
  MediaAssetSearch search = options.Search(mStore, MediaAssetOrder::Name);
  search.NameContains(nameContains);
  Listing listing(mConsole, {"id", "name", "duration", "wrapper", "video", "audio", "start"});
  int64_t count = 0;
  for (const MediaAsset& clip :
       mStore.Clips().Each(search, MediaAssetParts::Metadata | MediaAssetParts::Resources)) {
    listing.Row({clip.Id().Value(), clip.Name(), DurationCell(clip.GetInOutDuration()),
                 Listing::Cell::IfAny(WrapperSummary(clip)), Listing::Cell::IfAny(VideoSummary(clip)),
                 Listing::Cell::IfAny(AudioSummary(clip)),
                 Listing::Cell::IfAny(EntryText(clip.Metadata(), Profiles::general, "startTimeCode"))});
    ++count;
  }
  listing.Finish();
  if (options.HasPage()) SayHowMany(count, search);
  return 0;
}

int ReadingCommands::Search(const std::vector<std::string>& words, const SearchOptions& options) {
  std::string text;
  for (const std::string& word : words)
    text += word + ' ';
  MediaAssetSearch search = options.Search(mStore, MediaAssetOrder::Relevance);
  search.Typed(text);
  const std::vector<MediaAsset> hits = mStore.Clips().Find(search).assets;
  if (mConsole.form == Console::Form::People) {
    const std::map<int64_t, Texts> texts = HighlightedTexts(hits, text);
    for (const MediaAsset& hit : hits) {
      const Texts& found = texts.at(hit.ObjectId());
      mConsole.out << hit.Id().Value() << "  " << Highlighted(found.name, mConsole.hasColor) << '\n';
      if (found.description.empty()) continue;
      mConsole.out << std::string(hit.Id().Value().size() + 2, ' ')
                   << Highlighted(found.description, mConsole.hasColor) << '\n';
    }
    if (hits.empty()) mConsole.errors << "no clip has these words in its name or description\n";
  } else {
    Listing listing(mConsole, {"id", "name", "description"});
    for (const MediaAsset& hit : hits)
      listing.Row({hit.Id().Value(), hit.Name(), hit.Description()});
    listing.Finish();
  }
  if (options.HasPage()) SayHowMany(static_cast<int64_t>(hits.size()), search);
  return hits.empty() ? 1 : 0;
}

std::map<int64_t, ReadingCommands::Texts> ReadingCommands::HighlightedTexts(
    const std::vector<MediaAsset>& hits, const std::string& words) {
  std::vector<int64_t> keys;
  keys.reserve(hits.size());
  for (const MediaAsset& hit : hits)
    keys.push_back(hit.ObjectId());
  const auto query = mStore.Database().NewQuery();
  query->Match("MediaAssetFts", Oru::Common::Databases::Sqlite::FullTextExpression::AllWordsBegun(words));
  query->In("key", keys);
  std::map<int64_t, Texts> texts;
  for (const auto row = mStore.Database().GetMediaAssetTable().OpenRawCursor(*query); row->Next();) {
    texts[row->GetInt64("key")] = {row->GetString("nameFts"), row->GetString("descriptionFts")};
  }
  return texts;
}

void ReadingCommands::SayHowMany(int64_t shown, const MediaAssetSearch& search) {
  if (mConsole.form != Console::Form::People) return;
  mConsole.errors << shown << " of " << mStore.Clips().Count(search) << " clips\n";
}

int ReadingCommands::Show(const std::string& clip) {
  MediaAsset asset = mStore.Find(clip, MediaAssetParts::All);
  if (mConsole.form == Console::Form::JsonText) {
    mConsole.out << EntityToJson(asset).dump(2) << '\n';
  } else {
    PrintClip(mConsole.out, asset);
  }
  return 0;
}

int ReadingCommands::Groups() {
  Listing listing(mConsole, {"group", "kind", "clips"});
  for (const MediaAssetGroup& group : mStore.Groups().All()) {
    const bool hasAngles = mStore.Groups().FindAngles(group.Id()).has_value();
    std::string clips;
    Json items = Json::array();
    for (const auto& item : group.Items()) {
      const BaseTypes::Identifier& id = item->MediaAsset().Id();
      const std::string name = mStore.Clips().Find(id, MediaAssetParts::Row)->Name();
      const auto* angle = dynamic_cast<const AnglesMediaAssetGroupItem*>(item.get());
      const std::string angleName = angle == nullptr ? "" : angle->Name();
      if (!clips.empty()) clips += ", ";
      if (!angleName.empty()) clips.append(angleName).append("=");
      clips += name;
      items.push_back({{"id", ToJson(id)}, {"name", ToJson(name)}, {"angle", ToJson(angleName)}});
    }
    listing.Row({group.Name(), std::string(hasAngles ? "angles" : "clips"), {clips, std::move(items)}});
  }
  listing.Finish();
  return 0;
}

int ReadingCommands::Edits() {
  Listing listing(mConsole, {"edit", "at", "duration", "sequence", "clip"});
  for (const Edits::Edit& edit : mStore.Edits().All()) {
    for (const auto& sequence : edit.Sequences()) {
      const Oru::TimePoints::TimePoint at = sequence->GetTimePoint();
      listing.Row({edit.Name(),
                   {PlaceText(Oru::TimePoints::TimeBoundary(at)), ToJson(at)},
                   DurationCell(sequence->Duration().Duration()),
                   sequence->Name(),
                   Listing::Cell::IfAny(EntryText(sequence->Metadata(), Profiles::sequence, "clip"))});
    }
  }
  listing.Finish();
  return 0;
}

}  // namespace Catalogue
