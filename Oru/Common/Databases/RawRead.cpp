#include "Oru/Common/Databases/RawRead.h"

namespace Oru::Common::Databases {

RawRead::~RawRead() = default;

}  // namespace Oru::Common::Databases
