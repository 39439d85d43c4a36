#include "Oru/Common/Databases/RawCursor.h"

namespace Oru::Common::Databases {

RawCursor::~RawCursor() = default;

}  // namespace Oru::Common::Databases
