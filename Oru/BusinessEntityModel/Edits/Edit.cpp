#include "Oru/BusinessEntityModel/Edits/Edit.h"

namespace Oru::BusinessEntityModel::Edits {

Edit::Edit() = default;
Edit::Edit(EditId editId) : id(std::move(editId)) {}
Edit::Edit(const Edit&) = default;
Edit::Edit(Edit&&) noexcept = default;
Edit& Edit::operator=(const Edit&) = default;
Edit& Edit::operator=(Edit&&) noexcept = default;
Edit::~Edit() = default;

std::unique_ptr<Edit> Edit::Clone() const {
  return std::make_unique<Edit>(*this);
}

bool Edit::operator==(const Edit& other) const {
  return id == other.id && name == other.name && *metadata == *other.metadata &&
         creationDate == other.creationDate && creationOwner == other.creationOwner &&
         modificationDate == other.modificationDate && modificationOwner == other.modificationOwner &&
         sequences == other.sequences;
}

}  // namespace Oru::BusinessEntityModel::Edits
