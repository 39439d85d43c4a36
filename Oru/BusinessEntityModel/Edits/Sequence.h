#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Array.h"
#include "Oru/BusinessEntityModel/BaseTypes/DateTime.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"
#include "Oru/BusinessEntityModel/Edits/Export.h"
#include "Oru/BusinessEntityModel/Edits/Identifiers.h"
#include "Oru/BusinessEntityModel/Edits/SequenceDuration.h"
#include "Oru/DataModel/MediaAssets/OwnedMetadata.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace Oru::BusinessEntityModel::Edits {

/// One sequence of an edit. A new one has version 0, no time point and dates of 0.
///
/// A copy owns its metadata and keeps the object ids; `Clone` gives such a copy.
class ORU_EDITS_EXPORT Sequence : public BaseTypes::PersistentObject {
 public:
  Sequence();
  /// A new object of that identifier, not stored yet.
  explicit Sequence(SequenceId sequenceId);
  Sequence(const Sequence&);
  Sequence(Sequence&&) noexcept;
  Sequence& operator=(const Sequence&);
  Sequence& operator=(Sequence&&) noexcept;
  ~Sequence();

  /// What callers know it by; unique among its kind in a file.
  const SequenceId& Id() const noexcept { return id; }
  void Id(SequenceId value) noexcept { id = std::move(value); }
  /// The version, counted by the caller.
  int32_t Version() const noexcept { return static_cast<int32_t>(version); }
  void Version(int32_t value) noexcept { version = static_cast<uint64_t>(int64_t{value}); }
  /// The place of the sequence in time; the empty time point for none:
  const TimePoints::TimePoint& GetTimePoint() const noexcept { return timePoint; }
  void SetTimePoint(const TimePoints::TimePoint& value) noexcept { timePoint = value; }
  /// How long the sequence lasts.
  const SequenceDuration& Duration() const noexcept { return sequenceDuration; }
  void Duration(const SequenceDuration& value) noexcept { sequenceDuration = value; }
  /// The name that people see; needn't be unique.
  const BaseTypes::Utf8String& Name() const noexcept { return name; }
  void Name(BaseTypes::Utf8String value) noexcept { name = std::move(value); }

  /// Seconds since 1970, as all dates. The two dates are set each for itself, in any order.
  BaseTypes::DateTime CreationDate() const noexcept { return creationDate; }
  void CreationDate(BaseTypes::DateTime value) noexcept { creationDate = value; }
  /// Who made it.
  const UserId& CreationOwner() const noexcept { return creationOwner; }
  void CreationOwner(UserId value) noexcept { creationOwner = std::move(value); }
  /// Seconds since 1970; set by the caller alone.
  BaseTypes::DateTime ModificationDate() const noexcept { return modificationDate; }
  void ModificationDate(BaseTypes::DateTime value) noexcept { modificationDate = value; }
  /// Who changed it last.
  const UserId& ModificationOwner() const noexcept { return modificationOwner; }
  void ModificationOwner(UserId value) noexcept { modificationOwner = std::move(value); }

  /// The profiles of metadata.
  const BaseTypes::EditorialMetadata& Metadata() const noexcept { return *metadata; }
  BaseTypes::EditorialMetadata& Metadata() noexcept { return *metadata; }
  /// Takes copies of the profiles.
  void Metadata(const BaseTypes::EditorialMetadata& value) { metadata = value; }
  /// Takes the profiles themselves.
  void Metadata(BaseTypes::EditorialMetadata&& value) noexcept { metadata = std::move(value); }

  /// Whether `Metadata` holds the operator's profile of a sequence. False if a profile of another class, such
  /// as that of the assets, has its name.
  bool HasDapOperatorMetadata() const;
  /// The operator's profile in `Metadata`.
  /// @throws std::out_of_range "map::at" without one, std::bad_cast if a profile of another class has its
  ///         name
  const DapOperatorMetadataProfile& DapOperatorMetadata() const;
  DapOperatorMetadataProfile& DapOperatorMetadata();

  /// A copy, as the copy constructor makes it.
  std::unique_ptr<Sequence> Clone() const;

  /// The same identifier and content. Object ids don't count.
  bool operator==(const Sequence& other) const;
  bool operator!=(const Sequence& other) const { return !(*this == other); }
  /// The order is that of the identifiers alone: two versions of one sequence are neither less nor greater.
  bool operator<(const Sequence& other) const noexcept { return id < other.id; }
  bool operator>(const Sequence& other) const noexcept { return other < *this; }
  bool operator<=(const Sequence& other) const noexcept { return !(other < *this); }
  bool operator>=(const Sequence& other) const noexcept { return !(*this < other); }

 private:
  SequenceId id;
  uint64_t version = 0;
  TimePoints::TimePoint timePoint;
  SequenceDuration sequenceDuration;
  BaseTypes::Utf8String name;
  DataModel::MediaAssets::OwnedMetadata metadata;
  BaseTypes::DateTime creationDate = 0;
  UserId creationOwner;
  BaseTypes::DateTime modificationDate = 0;
  UserId modificationOwner;
};

using SequenceArray = BaseTypes::Array<Sequence>;

}  // namespace Oru::BusinessEntityModel::Edits
