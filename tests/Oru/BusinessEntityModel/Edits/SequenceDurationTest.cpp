#include "Oru/BusinessEntityModel/Edits/SequenceDuration.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace Oru::BusinessEntityModel::Edits {
namespace {

SequenceDuration Made(int seconds, bool isFixed) {
  SequenceDuration duration(TimePoints::Duration::FromSeconds(seconds));
  duration.Fixed(isFixed);
  return duration;
}

TEST(SequenceDurationTest, OrderIsTotal) {
  const std::vector<SequenceDuration> ascending{Made(-1, false), Made(-1, true), Made(0, false),
                                                Made(0, true),   Made(9, false), Made(9, true)};
  for (std::size_t left = 0; left < ascending.size(); ++left) {
    for (std::size_t right = 0; right < ascending.size(); ++right) {
      EXPECT_EQ(ascending[left] < ascending[right], left < right) << left << ", " << right;
      EXPECT_EQ(ascending[left] > ascending[right], left > right) << left << ", " << right;
      EXPECT_EQ(ascending[left] <= ascending[right], left <= right) << left << ", " << right;
      EXPECT_EQ(ascending[left] >= ascending[right], left >= right) << left << ", " << right;
      EXPECT_EQ(ascending[left] == ascending[right], left == right) << left << ", " << right;
    }
  }
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::Edits
