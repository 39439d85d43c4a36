#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace Oru::TestSupport {

/// Checks that the values of an enumeration are the places, from 0, of their names in the list, and that
/// numbers without a name are carried through their text. The list has a blank between two names.
template <class E>
void ExpectEnumeration(const std::string& list) {
  static_assert(std::is_same_v<std::underlying_type_t<E>, int32_t>);
  std::istringstream stream(list);
  const std::vector<std::string> names{std::istream_iterator<std::string>(stream), {}};
  const auto count = static_cast<int32_t>(names.size());
  for (int32_t number = 0; number < count; ++number) {
    const std::string& name = names[static_cast<std::size_t>(number)];
    EXPECT_EQ(ToString(static_cast<E>(number)), name);
    for (const std::string& text : {name, std::to_string(number)}) {
      E value = static_cast<E>(-1);
      EXPECT_TRUE(TryParse(text, value)) << text;
      EXPECT_EQ(static_cast<int32_t>(value), number) << text;
    }
  }
  for (const int32_t number : {count, -1, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(ToString(static_cast<E>(number)), std::to_string(number));
    E value = static_cast<E>(0);
    EXPECT_TRUE(TryParse(std::to_string(number), value)) << number;
    EXPECT_EQ(static_cast<int32_t>(value), number);
  }
  for (const std::string text : {"", " 1", "1 ", "+1", "1.0", "01", "-0", "2147483648", "no such name"}) {
    E value = static_cast<E>(7);
    EXPECT_FALSE(TryParse(text, value)) << text;
    EXPECT_EQ(static_cast<int32_t>(value), 7) << text;
  }
}

}  // namespace Oru::TestSupport
