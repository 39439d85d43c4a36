#include "Oru/Common/Databases/Query.h"

#include "Oru/Common/Databases/NotSupportedException.h"

namespace Oru::Common::Databases {

Query::~Query() = default;

Query& Query::Match(const std::string&, const std::string&) {
  throw NotSupportedException("this class of queries has no full-text match", __FILE__, __LINE__);
}

}  // namespace Oru::Common::Databases
