#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>

namespace Oru::TestSupport {

/// The names of an enumeration by their numbers from 0 to the first one without a name, after a check that each number
/// is carried through its text and that other texts are refused.
template <class E>
std::string CheckedNames() {
  static_assert(std::is_same_v<std::underlying_type_t<E>, int32_t>);
  std::string names;
  int32_t count = 0;
  for (; ToString(static_cast<E>(count)) != std::to_string(count); ++count)
    names += ToString(static_cast<E>(count)) + ' ';
  const auto expectParsed = [](const std::string& text, int32_t number) {
    E value = static_cast<E>(number == 0 ? 1 : 0);
    EXPECT_TRUE(TryParse(text, value)) << text;
    EXPECT_EQ(static_cast<int32_t>(value), number) << text;
  };
  for (int32_t number = 0; number < count; ++number) {
    expectParsed(ToString(static_cast<E>(number)), number);
    expectParsed(std::to_string(number), number);
  }
  for (const int32_t number : {count, -1, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(ToString(static_cast<E>(number)), std::to_string(number));
    expectParsed(std::to_string(number), number);
  }
  for (const std::string text : {"", " 1", "1 ", "+1", "1.0", "01", "-0", "2147483648", "no such name"}) {
    E value = static_cast<E>(7);
    EXPECT_FALSE(TryParse(text, value)) << text;
    EXPECT_EQ(static_cast<int32_t>(value), 7) << text;
  }
  return names + '\n';
}

}  // namespace Oru::TestSupport
