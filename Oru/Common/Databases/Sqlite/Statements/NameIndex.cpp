#include "Oru/Common/Databases/Sqlite/Statements/NameIndex.h"

#include <algorithm>
#include <iterator>

namespace Oru::Common::Databases::Sqlite {

int NameIndex::Search(const std::string& name, std::size_t& last) {
  const auto found = std::find(mNames.begin(), mNames.end(), name);
  if (found == mNames.end()) return -1;
  const auto place = std::distance(mNames.begin(), found);
  mFollowers[last] = static_cast<std::size_t>(place);
  last = static_cast<std::size_t>(place) + 1;
  return static_cast<int>(place);
}

}  // namespace Oru::Common::Databases::Sqlite
