#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <stdexcept>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// An object couldn't be stored because of what it holds or refers to. Nothing of it was stored, and the
/// object is as it was. `what()` is the reason, a text that a person can act on.
class ORU_DATAMODEL_DATABASE_EXPORT NotStoredException : public std::runtime_error {
 public:
  /// @param id      of the asset, the group or the edit
  /// @param reason  which object, which part of it, what is missing or wrong
  NotStoredException(const BusinessEntityModel::BaseTypes::Identifier& id, const std::string& reason);
  NotStoredException(const NotStoredException&) = default;
  NotStoredException& operator=(const NotStoredException&) = default;
  ~NotStoredException() override;

  /// Identifier of the asset, the group or the edit.
  const BusinessEntityModel::BaseTypes::Identifier& Id() const noexcept { return id; }

 private:
  BusinessEntityModel::BaseTypes::Identifier id;
};

}  // namespace Oru::DataModel::MediaAssets::Database
