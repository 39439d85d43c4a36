#pragma once

#include "support/EntityFields.h"
#include "support/Prelude.h"

namespace Oru::TestSupport {

/// Ways to change a value, each of which makes it another one.
template <class T>
using Changes = std::vector<std::function<void(T&)>>;

/// A copy whose parts are its own.
template <class T>
T Copied(const T& original) {
  if constexpr (std::is_same_v<T, MediaAsset>) return *original.Clone();
  return original;
}

/// Checks that a copy is equal until it is changed, and that each of the changes makes it different from the original,
/// where it mustn't show.
template <class T>
void ExpectEachChangeCounts(const T& original, const Changes<T>& changes) {
  for (std::size_t number = 0; number < changes.size(); ++number) {
    T changed = Copied(original);
    EXPECT_TRUE(changed == original && !(changed != original)) << "before change " << number;
    changes[number](changed);
    EXPECT_TRUE(changed != original && !(changed == original)) << "change " << number;
  }
}

/// The same with random values for each field of a list, which may be that of a base class, and with more changes.
template <class T, class Base = T>
void ExpectEveryFieldCounts(const T& original, Changes<T> changes = {}) {
  RandomValues random(4711);
  for (const auto& set : fieldsOf<Base>) {
    changes.push_back([&](T& value) {
      for (int tries = 0; tries < 100 && value == original; ++tries)
        set(value, random);
    });
  }
  ExpectEachChangeCounts(original, changes);
}

}  // namespace Oru::TestSupport
