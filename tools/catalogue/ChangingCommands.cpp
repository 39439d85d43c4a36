#include "ChangingCommands.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/Annotation.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include "AssetBuilder.h"
#include "Listing.h"
#include "TextForms.h"

#include <cmath>
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
using MediaAssets::Database::MediaAssetSearch;
using MediaAssets::Database::RemoveOutcome;
using Oru::Common::Databases::Sqlite::TransactionGuard;

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

int ChangingCommands::Describe(const std::string& clip, const std::string& description) {
  const MediaAssets::MediaAsset stored =
      mStore.Change(clip, [&](MediaAssets::MediaAsset& asset) { asset.Description(description); });
  mConsole.out << NameOf(stored) << " is described\n";
  return 0;
}

int ChangingCommands::Place(const std::string& clip, const MediaAssets::DapId& place) {
  const MediaAssets::MediaAsset stored = mStore.Change(clip, [&](MediaAssets::MediaAsset& asset) {
    MediaAssets::DapOperatorMetadataProfile& profile = OperatorOf(asset);
    profile.ServerId(place.ServerId());
    profile.Page(place.Page());
    profile.Bank(place.Bank());
    profile.Row(place.Row());
    profile.Camera(place.Camera());
  });
  mConsole.out << NameOf(stored) << " is at " << place.ToString() << '\n';
  return 0;
}

int ChangingCommands::Tag(const std::string& clip, const std::vector<std::string>& keywords) {
  const MediaAssets::MediaAsset stored = mStore.Change(clip, [&](MediaAssets::MediaAsset& asset) {
    MediaAssets::DapOperatorMetadataProfile& profile = OperatorOf(asset);
    for (const std::string& keyword : keywords) {
      profile.Keyword(static_cast<unsigned int>(profile.Keywords().size()), keyword);
    }
  });
  mConsole.out << NameOf(stored) << " has "
               << Count(stored.DapOperatorMetadata().Keywords().size(), "keyword") << '\n';
  return 0;
}

int ChangingCommands::Protect(const std::string& clip, bool isProtected) {
  const MediaAssets::MediaAsset stored = mStore.Change(
      clip, [&](MediaAssets::MediaAsset& asset) { OperatorOf(asset).UserProtected(isProtected); });
  mConsole.out << NameOf(stored) << (stored.DapOperatorMetadata().IsUserProtected() ? " is" : " is not")
               << " protected\n";
  return 0;
}

int ChangingCommands::Cue(const std::string& clip, double seconds, const std::string& text) {
  const MediaAssets::MediaAsset stored = mStore.Change(clip, [&](MediaAssets::MediaAsset& asset) {
    const double lastSecond = static_cast<double>(asset.GetInOutDuration().ToNanoseconds()) / 1e9;
    if (!(seconds >= 0 && seconds <= lastSecond)) {
      throw std::invalid_argument(NameOf(asset) + " lasts " + DurationText(asset.GetInOutDuration()));
    }
    const TimePoints::TimeBoundary place(TimePoints::TimePoint::FromNanoseconds(std::llround(seconds * 1e9)));
    auto cue = std::make_shared<MediaAssets::Annotation>(MediaAssets::AnnotationType::CuePoint, text);
    cue->TimeBounds(TimePoints::TimeBounds(place, place));
    asset.Annotations().push_back(std::move(cue));
  });
  mConsole.out << NameOf(stored) << " has " << Count(stored.Annotations().size(), "cue") << '\n';
  return 0;
}

int ChangingCommands::Group(const std::string& name, const std::vector<std::string>& clips, bool hasAngles) {
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
    MediaAssets::MediaAssetGroup plain = static_cast<const MediaAssets::MediaAssetGroup&>(group);
    mStore.PutGroup(plain);
  }
  transaction.Commit();
  mConsole.out << "group " << name << " has " << Count(group.Items().size(), hasAngles ? "angle" : "clip")
               << '\n';
  return 0;
}

int ChangingCommands::Remove(const std::vector<std::string>& clips) {
  for (const std::string& idOrName : clips) {
    const MediaAssets::MediaAsset clip = mStore.Find(idOrName);
    if (mStore.Clips().Remove(clip.Id()) == RemoveOutcome::Protected) {
      throw std::runtime_error(NameOf(clip) + " is protected");
    }
    WriteEvent(mConsole, "removed", clip.Id().Value(), clip.Name());
  }
  return 0;
}

int ChangingCommands::RemoveByServer(int server) {
  MediaAssetSearch onServer;
  onServer.OnServer(MediaAssets::ZuServerId(server));
  TransactionGuard transaction(mStore.Database());
  for (const MediaAssets::MediaAsset& clip : mStore.Clips().Each(MediaAssetSearch(onServer).Protected())) {
    throw std::runtime_error(NameOf(clip) + " is protected");
  }
  const int64_t count = mStore.Clips().RemoveAll(onServer);
  transaction.Commit();
  mConsole.out << "removed  " << Count(count, "clip") << " of server " << server << '\n';
  return 0;
}

int ChangingCommands::MakeEdit(const std::string& name, const std::vector<std::string>& clips) {
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
    auto origin = std::make_shared<BaseTypes::GenericMetadataProfile>(
        BaseTypes::FullyQualifiedName(Profiles::sequence));
    origin->Set("clip", clip.Id().Value());
    sequence->Metadata().Set(std::move(origin));
    edit.Sequences().Add(std::move(sequence));
    start += duration;
  }
  mStore.Edits().Put(edit);
  mConsole.out << "edit " << name << " has " << Count(edit.Sequences().Size(), "sequence") << '\n';
  return 0;
}

}  // namespace Catalogue
