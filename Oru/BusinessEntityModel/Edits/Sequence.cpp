#include "Oru/BusinessEntityModel/Edits/Sequence.h"

namespace Oru::BusinessEntityModel::Edits {

Sequence::Sequence() = default;
Sequence::Sequence(SequenceId sequenceId) : id(std::move(sequenceId)) {}
Sequence::Sequence(const Sequence&) = default;
Sequence::Sequence(Sequence&&) noexcept = default;
Sequence& Sequence::operator=(const Sequence&) = default;
Sequence& Sequence::operator=(Sequence&&) noexcept = default;
Sequence::~Sequence() = default;

bool Sequence::HasDapOperatorMetadata() const {
  return metadata.Has<DapOperatorMetadataProfile>();
}

const DapOperatorMetadataProfile& Sequence::DapOperatorMetadata() const {
  return metadata.Require<DapOperatorMetadataProfile>();
}

DapOperatorMetadataProfile& Sequence::DapOperatorMetadata() {
  return metadata.Require<DapOperatorMetadataProfile>();
}

std::unique_ptr<Sequence> Sequence::Clone() const {
  return std::make_unique<Sequence>(*this);
}

bool Sequence::operator==(const Sequence& other) const {
  return id == other.id && version == other.version && timePoint == other.timePoint &&
         sequenceDuration == other.sequenceDuration && name == other.name && *metadata == *other.metadata &&
         creationDate == other.creationDate && creationOwner == other.creationOwner &&
         modificationDate == other.modificationDate && modificationOwner == other.modificationOwner;
}

}  // namespace Oru::BusinessEntityModel::Edits
