#pragma once

#include "support/Prelude.h"

namespace Oru::TestSupport {

/// The names of enumerations, one on a line, by their numbers from 0 to the first one without a name, after a check that
/// each number is carried through its text and that other texts are refused.
template <class E, class... Others>
std::string CheckedNames() {
  static_assert(std::is_same_v<std::underlying_type_t<E>, int32_t>);
  std::string names;
  int32_t count = 0;
  const auto expectRead = [](const std::string& text, int32_t number) {
    E value = static_cast<E>(~number);
    EXPECT_TRUE(TryParse(text, value) && static_cast<int32_t>(value) == number) << text;
  };
  for (; ToString(static_cast<E>(count)) != std::to_string(count); ++count) {
    names += ToString(static_cast<E>(count)) + ' ';
    expectRead(ToString(static_cast<E>(count)), count);
    expectRead(std::to_string(count), count);
  }
  for (const int32_t number : {count, -1, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(ToString(static_cast<E>(number)), std::to_string(number));
    expectRead(std::to_string(number), number);
  }
  for (const std::string text : {"", " 1", "1 ", "+1", "1.0", "01", "-0", "2147483648", "no such name"}) {
    E value = static_cast<E>(7);
    EXPECT_TRUE(!TryParse(text, value) && value == static_cast<E>(7)) << text;
  }
  if constexpr (sizeof...(Others) > 0) return names + '\n' + CheckedNames<Others...>();
  return names + '\n';
}

}  // namespace Oru::TestSupport
