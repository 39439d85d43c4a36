#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

/// The names of a statement's columns or parameters, in their order. It learns in which order they are looked
/// up, which is the same for each row, and tries that order first.
class NameIndex {
 public:
  void Add(std::string name) {
    mNames.push_back(std::move(name));
    mFollowers.push_back(0);
  }
  void Clear() {
    mNames.clear();
    mFollowers.assign(1, 0);
  }

  std::size_t Size() const { return mNames.size(); }
  const std::string& operator[](std::size_t place) const { return mNames[place]; }

  /// The place of a name, from 0; of the first when several are the same, -1 when there is none.
  /// @param last  the place after the name that was found before, 0 at first; set to the place after this one
  int Find(const std::string& name, std::size_t& last) {
    const std::size_t place = mFollowers[last];
    if (place >= mNames.size() || mNames[place] != name) return Search(name, last);
    last = place + 1;
    return static_cast<int>(place);
  }

 private:
  // The same as `Find` by a walk through all names, whose result is learned.
  int Search(const std::string& name, std::size_t& last);

  std::vector<std::string> mNames;
  // What was looked up after each place, and at first.
  std::vector<std::size_t> mFollowers = {0};
};

}  // namespace Oru::Common::Databases::Sqlite
