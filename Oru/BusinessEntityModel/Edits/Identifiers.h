#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"

namespace Oru::BusinessEntityModel::Edits {

using EditId = BaseTypes::Identifier;
using SequenceId = BaseTypes::Identifier;
using UserId = BaseTypes::Identifier;

}  // namespace Oru::BusinessEntityModel::Edits
