#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/DateTime.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/BusinessEntityModel/Edits/Export.h"
#include "Oru/BusinessEntityModel/Edits/Identifiers.h"
#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/DataModel/MediaAssets/OwnedMetadata.h"

#include <memory>
#include <utility>

namespace Oru::BusinessEntityModel::Edits {

/// An edit: a named work that holds a number of sequences. A file keeps its sequences apart from it: saving
/// and reading an edit doesn't save or read them.
///
/// A copy owns its metadata and sequences and keeps the object ids; `Clone` gives such a copy.
class ORU_EDITS_EXPORT Edit : public BaseTypes::PersistentObject {
 public:
  Edit();
  /// A new object of that identifier, not stored yet.
  explicit Edit(EditId editId);
  Edit(const Edit&);
  Edit(Edit&&) noexcept;
  Edit& operator=(const Edit&);
  Edit& operator=(Edit&&) noexcept;
  ~Edit();

  /// What callers know it by; unique among its kind in a file.
  const EditId& Id() const noexcept { return id; }
  void Id(EditId value) noexcept { id = std::move(value); }
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

  /// The sequences in order.
  const SequenceArray& Sequences() const noexcept { return sequences; }
  SequenceArray& Sequences() noexcept { return sequences; }
  /// Takes copies of the sequences.
  void Sequences(const SequenceArray& value) { sequences = value; }
  /// Takes the sequences themselves.
  void Sequences(SequenceArray&& value) noexcept { sequences = std::move(value); }

  /// A copy that shares nothing with this edit.
  std::unique_ptr<Edit> Clone() const;

  /// The same identifier and content, sequences included. Object ids don't count.
  bool operator==(const Edit& other) const;
  bool operator!=(const Edit& other) const { return !(*this == other); }
  /// By identifier.
  bool operator<(const Edit& other) const noexcept { return id < other.id; }

 private:
  EditId id;
  DataModel::MediaAssets::OwnedMetadata metadata;
  BaseTypes::Utf8String name;
  BaseTypes::DateTime creationDate = 0;
  UserId creationOwner;
  BaseTypes::DateTime modificationDate = 0;
  UserId modificationOwner;
  SequenceArray sequences;
};

}  // namespace Oru::BusinessEntityModel::Edits
