#pragma once

#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <cstdint>

namespace Oru::BusinessEntityModel::Edits::Database {

/// What `SequenceTable` writes: a sequence beside the key of the edit that it belongs to. The sequence stays
/// the caller's.
struct ORU_DATAMODEL_DATABASE_EXPORT SequenceEncapsulated {
  /// Of no edit, until `editFk` is set.
  explicit SequenceEncapsulated(Sequence& ownedSequence) : sequence(ownedSequence) {}

  /// Key of the edit's row, -1 for none.
  int64_t editFk = -1;
  /// What is stored. The table that stores it sets its object id.
  const Sequence& sequence;
};

}  // namespace Oru::BusinessEntityModel::Edits::Database
