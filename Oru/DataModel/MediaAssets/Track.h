#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"

#include <memory>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets {

/// A named group of channels of essences. Several assets may have the same track.
///
/// A copy shares the channels with its original; `Clone` has channels and streams of its own. Both keep the
/// object ids.
class ORU_DATAMODEL_EXPORT Track : public BaseTypes::PersistentObject {
 public:
  /// The channels in the caller's order.
  using ChannelVector = std::vector<std::shared_ptr<TrackChannelToRemove>>;

  Track();
  /// A new object of that identifier, not stored yet.
  explicit Track(TrackId trackId);
  Track(TrackId trackId, BaseTypes::Utf8String trackName);
  Track(const Track&);
  Track(Track&&) noexcept;
  Track& operator=(const Track&);
  Track& operator=(Track&&) noexcept;
  ~Track();

  /// What callers know it by; unique among its kind in a file.
  const TrackId& Id() const noexcept { return id; }
  void Id(TrackId value) noexcept { id = std::move(value); }
  /// The name that people see; needn't be unique.
  const BaseTypes::Utf8String& Name() const noexcept { return name; }
  void Name(BaseTypes::Utf8String value) noexcept { name = std::move(value); }

  /// In the order in which they were read or added.
  const ChannelVector& Channels() const noexcept { return channels; }
  ChannelVector& Channels() noexcept { return channels; }

  /// A copy; the class says what it shares with its original.
  std::unique_ptr<Track> Clone() const;

  /// The same identifier and name. The channels don't count.
  bool operator==(const Track& other) const noexcept { return id == other.id && name == other.name; }
  bool operator!=(const Track& other) const noexcept { return !(*this == other); }
  /// By identifier.
  bool operator<(const Track& other) const noexcept { return id < other.id; }

 private:
  TrackId id;
  BaseTypes::Utf8String name;
  ChannelVector channels;
};

}  // namespace Oru::DataModel::MediaAssets
