#pragma once

#include "support/EntityFields.h"

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
    EXPECT_TRUE(changed == original && !(changed != original)) << "before change " << number;
    changes[number](changed);
    EXPECT_FALSE(changed == original) << "change " << number;
    EXPECT_TRUE(original != changed) << "change " << number;
    EXPECT_TRUE(original == before) << "change " << number;
  }
}

/// The same with random values for each field of a list, which may be that of a base class.
template <class T, class Base = T>
void ExpectEveryFieldCounts(const T& original, const Fields<Base>& fields = fieldsOf<Base>) {
  RandomValues random(4711);
  Changes<T> changes;
  for (const auto& set : fields) {
    changes.push_back([&](T& value) {
      for (int tries = 0; tries < 100 && value == original; ++tries)
        set(value, random);
    });
  }
  ExpectEachChangeCounts(original, changes);
}

}  // namespace Oru::TestSupport
