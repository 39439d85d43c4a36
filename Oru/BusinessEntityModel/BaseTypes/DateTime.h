#pragma once

#include <ctime>

namespace Oru::BusinessEntityModel::BaseTypes {

/// A calendar time in seconds since 1970-01-01 00:00 UTC.
using DateTime = std::time_t;

}  // namespace Oru::BusinessEntityModel::BaseTypes
