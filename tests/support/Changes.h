#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace Oru::TestSupport {

/// Ways to change a value, each of which makes it another one.
template <class T>
using Changes = std::vector<std::function<void(T&)>>;

/// Checks that a copy is equal until it is changed, that each of the changes makes it different, and that
/// none shows in the original.
template <class T>
void ExpectEachChangeCounts(const T& original, const Changes<T>& changes) {
  // A copy of its own: what shows in the original shows beside it.
  const T before = original;  // NOLINT(performance-unnecessary-copy-initialization)
  for (std::size_t number = 0; number < changes.size(); ++number) {
    T changed = original;
    EXPECT_TRUE(changed == original && !(changed != original)) << "ahead of change " << number;
    changes[number](changed);
    EXPECT_FALSE(changed == original) << "change " << number;
    EXPECT_TRUE(original != changed) << "change " << number;
    EXPECT_TRUE(original == before) << "change " << number;
  }
}

}  // namespace Oru::TestSupport
