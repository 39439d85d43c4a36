#pragma once

#include "Oru/DataModel/MediaAssets/Essence.h"
#include "Oru/DataModel/MediaAssets/Export.h"

#include <memory>

namespace Oru::DataModel::MediaAssets {

/// A data content of a stream.
class ORU_DATAMODEL_EXPORT DataEssence : public Essence {
 public:
  DataEssence();
  DataEssence(const DataEssence&);
  DataEssence(DataEssence&&) noexcept;
  DataEssence& operator=(const DataEssence&);
  DataEssence& operator=(DataEssence&&) noexcept;
  ~DataEssence() override;

  std::unique_ptr<Essence> Clone() const override;

 private:
  bool HasEqualFields(const Essence& other) const override;
};

}  // namespace Oru::DataModel::MediaAssets
