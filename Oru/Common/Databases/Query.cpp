#include "Oru/Common/Databases/Query.h"

namespace Oru::Common::Databases {

Query::~Query() = default;

}  // namespace Oru::Common::Databases
