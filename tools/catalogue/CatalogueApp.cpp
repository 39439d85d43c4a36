#include "CatalogueApp.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/Common/Databases/Query.h"
#include "Oru/Common/Databases/RawCursor.h"
#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/Annotation.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroupItem.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include "AssetBuilder.h"
#include "ClipPrinter.h"
#include "MediaProbe.h"
#include "TextForms.h"
#include "TextTable.h"

#include <cmath>
#include <cstdint>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <utility>

namespace Catalogue {
namespace {

namespace BaseTypes = Oru::BusinessEntityModel::BaseTypes;
namespace Edits = Oru::BusinessEntityModel::Edits;
namespace MediaAssets = Oru::DataModel::MediaAssets;
namespace TimePoints = Oru::TimePoints;
using MediaAssets::MediaAssetParts;
using MediaAssets::Database::MediaAssetOrder;
using MediaAssets::Database::MediaAssetSearch;
using MediaAssets::Database::RemoveOutcome;
using Oru::Common::Databases::Sqlite::TransactionGuard;

constexpr char sequenceProfile[] = "oru.catalogue.sequence";

/// "1 clip", "2 clips".
template <class Number>
std::string Count(Number count, const std::string& noun) {
  return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

std::string NameOf(const MediaAssets::MediaAsset& clip) {
  return Printable(clip.Name());
}

/// The operator's profile of a clip, which gets one if it has none.
MediaAssets::DapOperatorMetadataProfile& OperatorOf(MediaAssets::MediaAsset& clip) {
  if (!clip.HasDapOperatorMetadata()) {
    clip.Metadata().Set(std::make_shared<MediaAssets::DapOperatorMetadataProfile>());
  }
  return clip.DapOperatorMetadata();
}

/// The angle of a clip is its camera, where it has one on the grid.
std::string AngleName(const MediaAssets::MediaAsset& clip, size_t index) {
  const bool hasCamera = clip.HasDapOperatorMetadata() && clip.DapOperatorMetadata().DapId().HasCamera();
  if (hasCamera) return std::string(1, clip.DapOperatorMetadata().Camera());
  return std::to_string(index + 1);
}

}  // namespace

CatalogueApp::CatalogueApp(ClipStore& store, std::ostream& out, std::ostream& errors, Terminals terminals)
    : mStore(store), mOut(out), mErrors(errors), mTerminals(terminals) {}

const char* CatalogueApp::ClearLine() const {
  return mTerminals.errors ? "\r\033[K" : "";
}

int CatalogueApp::Add(const std::vector<std::string>& files) {
  int status = 0;
  for (size_t n = 0; n < files.size(); ++n) {
    if (mTerminals.errors) {
      mErrors << "Reading " << n + 1 << " of " << files.size() << ": " << Printable(files[n]) << std::flush;
    }
    const bool isAdded = AddFile(files[n]);
    if (!isAdded) status = 1;
  }
  return status;
}

bool CatalogueApp::AddFile(const std::string& file) {
  try {
    MediaAssets::MediaAsset clip = BuildAsset(ProbeMedia(file), std::time(nullptr));
    const bool isNew = mStore.Put(clip) == ClipStore::Outcome::Added;
    mErrors << ClearLine() << std::flush;
    mOut << (isNew ? "added    " : "updated  ") << clip.Id().Value() << "  " << NameOf(clip) << '\n';
    return true;
  } catch (const NotMedia& reason) {
    mErrors << ClearLine() << Printable(file) << ": skipped, " << reason.what() << '\n';
    return false;
  }
}

int CatalogueApp::List(const std::string& nameContains) {
  TextTable table({"ID", "NAME", "DURATION", "WRAPPER", "VIDEO", "AUDIO", "START"});
  MediaAssetSearch search;
  search.NameContains(nameContains).OrderBy(MediaAssetOrder::Name);
  for (const MediaAssets::MediaAsset& clip :
       mStore.Clips().Each(search, MediaAssetParts::Metadata | MediaAssetParts::Resources)) {
    const std::string start = EntryText(clip.Metadata(), Profiles::general, "startTimeCode");
    table.Row({clip.Id().Value(), clip.Name(), DurationText(clip.GetInOutDuration()), WrapperSummary(clip),
               VideoSummary(clip), AudioSummary(clip), start.empty() ? "-" : start});
  }
  table.Print(mOut);
  return 0;
}

int CatalogueApp::Search(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words)
    text += word + ' ';
  const std::vector<MediaAssets::MediaAsset> hits =
      mStore.Clips().Find(MediaAssetSearch().Typed(text)).assets;
  const std::map<int64_t, Texts> texts = HighlightedTexts(hits, text);
  for (const MediaAssets::MediaAsset& hit : hits) {
    const Texts& found = texts.at(hit.ObjectId());
    mOut << hit.Id().Value() << "  " << Highlighted(found.name, mTerminals.out) << '\n';
    if (found.description.empty()) continue;
    mOut << std::string(hit.Id().Value().size() + 2, ' ') << Highlighted(found.description, mTerminals.out)
         << '\n';
  }
  if (hits.empty()) mErrors << "no clip has these words in its name or description\n";
  return hits.empty() ? 1 : 0;
}

std::map<int64_t, CatalogueApp::Texts> CatalogueApp::HighlightedTexts(
    const std::vector<MediaAssets::MediaAsset>& hits, const std::string& words) {
  std::vector<int64_t> keys;
  for (const MediaAssets::MediaAsset& hit : hits)
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

int CatalogueApp::Show(const std::string& clip) {
  PrintClip(mOut, mStore.Find(clip, MediaAssetParts::All));
  return 0;
}

int CatalogueApp::Describe(const std::string& clip, const std::string& description) {
  mStore.Change(clip, [&](MediaAssets::MediaAsset& asset) {
    asset.Description(description);
    mOut << NameOf(asset) << " is described\n";
  });
  return 0;
}

int CatalogueApp::Place(const std::string& clip, const MediaAssets::DapId& place) {
  mStore.Change(clip, [&](MediaAssets::MediaAsset& asset) {
    MediaAssets::DapOperatorMetadataProfile& profile = OperatorOf(asset);
    profile.ServerId(place.ServerId());
    profile.Page(place.Page());
    profile.Bank(place.Bank());
    profile.Row(place.Row());
    profile.Camera(place.Camera());
    mOut << NameOf(asset) << " is at " << place.ToString() << '\n';
  });
  return 0;
}

int CatalogueApp::Tag(const std::string& clip, const std::vector<std::string>& keywords) {
  mStore.Change(clip, [&](MediaAssets::MediaAsset& asset) {
    MediaAssets::DapOperatorMetadataProfile& profile = OperatorOf(asset);
    for (const std::string& keyword : keywords) {
      profile.Keyword(static_cast<unsigned int>(profile.Keywords().size()), keyword);
    }
    mOut << NameOf(asset) << " has " << Count(profile.Keywords().size(), "keyword") << '\n';
  });
  return 0;
}

int CatalogueApp::Protect(const std::string& clip, bool isProtected) {
  mStore.Change(clip, [&](MediaAssets::MediaAsset& asset) {
    OperatorOf(asset).UserProtected(isProtected);
    mOut << NameOf(asset) << (asset.DapOperatorMetadata().IsUserProtected() ? " is" : " is not")
         << " protected\n";
  });
  return 0;
}

int CatalogueApp::Cue(const std::string& clip, double seconds, const std::string& text) {
  mStore.Change(clip, [&](MediaAssets::MediaAsset& asset) {
    const double lastSecond = static_cast<double>(asset.GetInOutDuration().ToNanoseconds()) / 1e9;
    if (!(seconds >= 0 && seconds <= lastSecond)) {
      throw std::invalid_argument(NameOf(asset) + " lasts " + DurationText(asset.GetInOutDuration()));
    }
    const TimePoints::TimeBoundary place(TimePoints::TimePoint::FromNanoseconds(std::llround(seconds * 1e9)));
    auto cue = std::make_shared<MediaAssets::Annotation>(MediaAssets::AnnotationType::CuePoint, text);
    cue->TimeBounds(TimePoints::TimeBounds(place, place));
    asset.Annotations().push_back(std::move(cue));
    mOut << NameOf(asset) << " has " << Count(asset.Annotations().size(), "cue") << '\n';
  });
  return 0;
}

int CatalogueApp::Group(const std::string& name, const std::vector<std::string>& clips, bool hasAngles) {
  MediaAssets::AnglesMediaAssetGroup group{MediaAssets::MediaAssetGroupId(name), name};
  group.Type(hasAngles ? "angles" : "clips");
  for (const std::string& idOrName : clips) {
    const MediaAssets::MediaAsset clip = mStore.Find(idOrName, MediaAssetParts::Operator);
    const std::string angle = hasAngles ? AngleName(clip, group.Items().size()) : "";
    group.Items().push_back(std::make_shared<MediaAssets::AnglesMediaAssetGroupItem>(
        angle, MediaAssets::MediaAssetReference(clip.Id())));
  }
  TransactionGuard transaction(mStore.Database());
  if (hasAngles) {
    mStore.PutGroup(group);
  } else {
    MediaAssets::MediaAssetGroup plain = group;
    mStore.PutGroup(plain);
  }
  transaction.Commit();
  mOut << "group " << name << " has " << Count(group.Items().size(), hasAngles ? "angle" : "clip") << '\n';
  return 0;
}

int CatalogueApp::ListGroups() {
  TextTable table({"GROUP", "KIND", "CLIPS"});
  for (const MediaAssets::MediaAssetGroup& group : mStore.Groups().All()) {
    const bool hasAngles = mStore.Groups().FindAngles(group.Id()).has_value();
    std::string clips;
    for (const auto& item : group.Items()) {
      if (!clips.empty()) clips += ", ";
      const auto* angle = dynamic_cast<const MediaAssets::AnglesMediaAssetGroupItem*>(item.get());
      if (angle != nullptr && !angle->Name().empty()) clips += angle->Name() + "=";
      clips += mStore.Clips().Find(item->MediaAsset().Id(), MediaAssetParts::Row)->Name();
    }
    table.Row({group.Name(), hasAngles ? "angles" : "clips", clips});
  }
  table.Print(mOut);
  return 0;
}

int CatalogueApp::Remove(const std::vector<std::string>& clips) {
  for (const std::string& idOrName : clips) {
    const MediaAssets::MediaAsset clip = mStore.Find(idOrName);
    if (mStore.Clips().Remove(clip.Id()) == RemoveOutcome::Protected) {
      throw std::runtime_error(NameOf(clip) + " is protected");
    }
    mOut << "removed  " << clip.Id().Value() << "  " << NameOf(clip) << '\n';
  }
  return 0;
}

int CatalogueApp::RemoveByServer(int server) {
  MediaAssetSearch onServer;
  onServer.OnServer(MediaAssets::ZuServerId(server));
  TransactionGuard transaction(mStore.Database());
  for (const MediaAssets::MediaAsset& clip : mStore.Clips().Each(MediaAssetSearch(onServer).Protected())) {
    throw std::runtime_error(NameOf(clip) + " is protected");
  }
  const int64_t count = mStore.Clips().RemoveAll(onServer);
  transaction.Commit();
  mOut << "removed  " << Count(count, "clip") << " of server " << server << '\n';
  return 0;
}

int CatalogueApp::MakeEdit(const std::string& name, const std::vector<std::string>& clips) {
  const std::time_t now = std::time(nullptr);
  Edits::Edit edit;
  edit.Id(Edits::EditId(name));
  edit.Name(name);
  edit.CreationDate(now);
  edit.ModificationDate(now);

  TimePoints::TimePoint start = TimePoints::TimePoint::FromNanoseconds(0);
  for (const std::string& idOrName : clips) {
    const MediaAssets::MediaAsset clip = mStore.Find(idOrName);
    const TimePoints::Duration duration = clip.OutBoundary() - clip.InBoundary();
    auto sequence = std::make_unique<Edits::Sequence>(
        Edits::SequenceId(name + "/" + std::to_string(edit.Sequences().Size() + 1)));
    sequence->Name(clip.Name());
    sequence->CreationDate(now);
    sequence->ModificationDate(now);
    sequence->SetTimePoint(start);
    sequence->Duration(Edits::SequenceDuration(duration));
    auto origin =
        std::make_shared<BaseTypes::GenericMetadataProfile>(BaseTypes::FullyQualifiedName(sequenceProfile));
    origin->Set("clip", clip.Id().Value());
    sequence->Metadata().Set(std::move(origin));
    edit.Sequences().Add(std::move(sequence));
    start += duration;
  }
  mStore.Edits().Put(edit);
  mOut << "edit " << name << " has " << Count(edit.Sequences().Size(), "sequence") << '\n';
  return 0;
}

int CatalogueApp::ListEdits() {
  TextTable table({"EDIT", "AT", "DURATION", "SEQUENCE", "CLIP"});
  for (const Edits::Edit& edit : mStore.Edits().All()) {
    for (const auto& sequence : edit.Sequences()) {
      table.Row({edit.Name(), PlaceText(TimePoints::TimeBoundary(sequence->GetTimePoint())),
                 DurationText(sequence->Duration().Duration()), sequence->Name(),
                 EntryText(sequence->Metadata(), sequenceProfile, "clip")});
    }
  }
  table.Print(mOut);
  return 0;
}

int CatalogueApp::Backup(const std::string& file) {
  mStore.Database().Backup(file, [this](int32_t remaining, int32_t total) {
    if (!mTerminals.errors || total == 0) return true;
    mErrors << ClearLine() << "Copying: " << int64_t{total - remaining} * 100 / total << " %" << std::flush;
    return true;
  });
  mErrors << ClearLine() << std::flush;
  mOut << "copied to " << file << '\n';
  return 0;
}

int CatalogueApp::Check() {
  const std::vector<std::string> findings = mStore.Database().CheckIntegrity();
  for (const std::string& finding : findings)
    mOut << finding << '\n';
  if (findings.empty()) mOut << "no damage found\n";
  return findings.empty() ? 0 : 1;
}

}  // namespace Catalogue
