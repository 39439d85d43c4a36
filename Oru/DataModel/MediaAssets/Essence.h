#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Array.h"
#include "Oru/BusinessEntityModel/BaseTypes/ArrayElementTraits.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorSharedPointer.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/OwnedSharedMetadata.h"
#include "Oru/DataModel/MediaAssets/TimeCodeTable.h"
#include "Oru/DataModel/MediaAssets/TrackChannel.h"

#include <cstdint>
#include <memory>

namespace Oru::DataModel::MediaAssets {

/// One video, audio or data content of a stream: what the three kinds have in common.
///
/// A copy has metadata of its own and shares the objects of `TrackChannels` and `TimeCodeTables`; `Clone`
/// shares nothing. Both keep the object id. An essence that was moved from may only be assigned to or
/// destroyed.
class ORU_DATAMODEL_EXPORT Essence : public BaseTypes::PersistentObject {
 public:
  /// The numbers are the places of the kinds in the tables' lists.
  enum class Type : int32_t {
    Audio = 0,
    Data = 1,
    Video = 2,
  };

  virtual ~Essence();

  /// A copy of the object's own class that shares nothing with this one.
  virtual std::unique_ptr<Essence> Clone() const = 0;

  /// The kind, fixed by the class.
  Type GetType() const noexcept { return type; }

  /// Never null.
  const std::shared_ptr<BaseTypes::MetadataProfileDictionary>& Metadata() const noexcept {
    return metadata.Pointer();
  }

  /// The number of channels, as given; 0 in a new essence.
  int32_t ChannelCount() const noexcept { return channelCount; }
  void ChannelCount(int32_t value) noexcept { channelCount = value; }

  /// The number within the stream: the position in its `EssenceArray`, which sets it. -1 outside an array.
  int32_t Nr() const noexcept { return nr; }
  void Nr(int32_t value) noexcept { nr = value; }

  /// Not stored.
  const BaseTypes::SortedVectorSharedPointer<TrackChannel>& TrackChannels() const noexcept {
    return trackChannels;
  }
  BaseTypes::SortedVectorSharedPointer<TrackChannel>& TrackChannels() noexcept { return trackChannels; }
  /// Not stored.
  const BaseTypes::SortedVectorSharedPointer<TimeCodeTable>& TimeCodeTables() const noexcept {
    return timeCodeTables;
  }
  BaseTypes::SortedVectorSharedPointer<TimeCodeTable>& TimeCodeTables() noexcept { return timeCodeTables; }

  /// The same kind, number and content. Object ids don't count.
  bool operator==(const Essence& other) const;
  bool operator!=(const Essence& other) const { return !(*this == other); }

 protected:
  /// @param kind  what the derived class is
  explicit Essence(Type kind);
  Essence(const Essence&);
  Essence(Essence&&) noexcept;
  Essence& operator=(const Essence&);
  Essence& operator=(Essence&&) noexcept;

  /// What `Clone` of a class gives.
  template <class Kind>
  static std::unique_ptr<Essence> CloneOf(const Kind& essence) {
    auto clone = std::make_unique<Kind>(essence);
    clone->CloneSharedParts();
    return clone;
  }

 private:
  /// Whether the fields of the derived class are equal; `other` is of the same kind.
  virtual bool HasEqualFields(const Essence& other) const = 0;

  void CloneSharedParts();

  Type type;
  int32_t channelCount = 0;
  int32_t nr = -1;
  OwnedSharedMetadata metadata;
  BaseTypes::SortedVectorSharedPointer<TrackChannel> trackChannels;
  BaseTypes::SortedVectorSharedPointer<TimeCodeTable> timeCodeTables;
};

}  // namespace Oru::DataModel::MediaAssets

/// Essences are numbered by their positions.
template <>
struct Oru::BusinessEntityModel::BaseTypes::ArrayElementTraits<Oru::DataModel::MediaAssets::Essence> {
  /// Gives the essence the number of its position.
  static void Adding(Oru::DataModel::MediaAssets::Essence& essence, int32_t position) noexcept {
    essence.Nr(position);
  }
};

namespace Oru::DataModel::MediaAssets {

/// The essences of a stream. Each has its position as number, whatever number it came with.
using EssenceArray = BaseTypes::Array<Essence>;

}  // namespace Oru::DataModel::MediaAssets
