#include "Oru/DataModel/MediaAssets/TimeBoundsArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets {
namespace {

using TimePoints::TimeBoundary;
using TimePoints::TimeBounds;
using TimePoints::TimePoint;

using Instant = std::optional<int64_t>;
const Instant unset;

TimeBoundary Boundary(Instant instant, bool isMoving = false) {
  return instant ? TimeBoundary(TimePoint::FromNanoseconds(*instant), isMoving) : TimeBoundary();
}

TimeBounds Bounds(Instant in, Instant out) {
  return TimeBounds(Boundary(in), Boundary(out));
}

using BoundsList = std::vector<std::pair<Instant, Instant>>;

TimeBoundsArray Array(const BoundsList& list, Instant in = unset, Instant out = unset) {
  TimeBoundsArray array;
  for (const auto& [from, to] : list)
    array.Insert(Bounds(from, to));
  array.InBoundary(Boundary(in));
  array.OutBoundary(Boundary(out));
  return array;
}

TEST(TimeBoundsArrayTest, BoundsStandInOrderHoweverTheyCame) {
  std::vector<TimeBounds> sorted{Bounds(unset, 5), Bounds(-10, 0),   Bounds(0, 3),
                                 Bounds(0, 10),    Bounds(7, unset), Bounds(7, 8)};
  std::vector<std::size_t> order{0, 1, 2, 3, 4, 5};
  do {
    TimeBoundsArray array;
    for (const std::size_t place : order)
      array.Insert(sorted[place]);
    ASSERT_TRUE(std::equal(array.begin(), array.end(), sorted.begin(), sorted.end()));
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST(TimeBoundsArrayTest, EqualBoundsAreRefusedOnceAndMovingOnesAreOthers) {
  TimeBoundsArray array = Array({{0, 10}});
  array.Insert(TimeBounds(Boundary(0), Boundary(10, true)));
  EXPECT_EQ(array.Size(), 2U);
  EXPECT_THROW(array.Insert(TimeBounds(Boundary(0), Boundary(10, true))), std::runtime_error);
  EXPECT_EQ(array.Size(), 2U);
}

// Against the nanoseconds one by one. All bounds begin before they end.
TEST(TimeBoundsArrayTest, DurationsAndValidityAgreeWithAModel) {
  std::mt19937 random(7);
  const auto any = [&](int64_t lowest) {
    return random() % 5 == 0 ? unset : Instant(lowest + static_cast<int64_t>(random() % 8));
  };
  for (int round = 0; round < 20000; ++round) {
    std::set<std::pair<Instant, Instant>> list;
    for (auto count = random() % 4; count > 0; --count) {
      const Instant from = any(0);
      list.emplace(from, any(from.value_or(0) + 1));
    }
    const Instant in = any(0), out = any(0);
    int64_t material = 0;
    bool overlaps = false;
    for (int64_t at = -1; at < 20; ++at) {
      int holding = 0, counted = 0;
      for (const auto& [from, to] : list) {
        const bool holds = (!from || *from <= at) && (!to || at < *to);
        holding += holds ? 1 : 0;
        counted += holds && from && to ? 1 : 0;
      }
      material += counted > 0 ? 1 : 0;
      overlaps = overlaps || holding > 1;
    }
    const auto isOutside = [&list](const Instant& mark) {
      return mark && std::none_of(list.begin(), list.end(), [&](const auto& bounds) {
               return (!bounds.first || *bounds.first <= *mark) &&
                      (!bounds.second || *mark <= *bounds.second);
             });
    };
    const bool inOrder = !in || !out || *in <= *out;
    const bool isInValid = !isOutside(in) && inOrder, isOutValid = !isOutside(out) && inOrder;
    const bool isOpen =
        std::any_of(list.begin(), list.end(), [](const auto& bounds) { return !bounds.second; });
    Instant first = in, last = out;
    if (!in && !list.empty()) first = list.begin()->first;
    for (const auto& bounds : list)
      if (!out && !isOpen) last = std::max(last, bounds.second);
    const TimeBoundsArray array = Array({list.begin(), list.end()}, in, out);
    SCOPED_TRACE(round);
    ASSERT_EQ(array.GetDuration().ToNanoseconds(), material);
    ASSERT_EQ(array.HasOverlappingTimeBounds(), overlaps);
    ASSERT_EQ(array.IsInOutOfTimeBounds(), isOutside(in));
    ASSERT_EQ(array.IsOutOutOfTimeBounds(), isOutside(out));
    ASSERT_EQ(array.IsInValid(), isInValid);
    ASSERT_EQ(array.IsOutValid(), isOutValid);
    ASSERT_EQ(array.IsValid(), !overlaps && isInValid && isOutValid);
    ASSERT_EQ(array.GetInOutDuration().ToNanoseconds(), first && last ? *last - *first : 0);
  }
}

TEST(TimeBoundsArrayTest, BoundsThatEndWhereOrBeforeTheyBegin) {
  EXPECT_TRUE(Array({{0, 10}, {10, 10}}).IsValid());
  EXPECT_TRUE(Array({{unset, unset}}, INT64_MIN + 2, INT64_MAX).IsValid());
  const TimeBoundsArray reversed = Array({{10, 0}});
  EXPECT_TRUE(!reversed.IsValid() && !reversed.HasOverlappingTimeBounds());
  EXPECT_EQ(reversed.GetDuration().ToNanoseconds(), 0);
  EXPECT_EQ(reversed.GetInOutDuration().ToNanoseconds(), -10);
  EXPECT_THROW(Array({{INT64_MIN, INT64_MAX}}).GetDuration(), std::overflow_error);
}

TEST(TimeBoundsArrayTest, MarksAndMovementCountInComparisons) {
  const TimeBoundsArray array = Array({{0, 10}}, 2, 8);
  EXPECT_EQ(array, Array({{0, 10}}, 2, 8));
  TimeBoundsArray moving = array;
  moving.OutBoundary(Boundary(8, true));
  for (const TimeBoundsArray& other : {Array({{0, 11}}, 2, 8), Array({}, 2, 8), Array({{0, 10}}, 3, 8),
                                       Array({{0, 10}}, 2, unset), moving}) {
    EXPECT_TRUE(array != other && other != array);
  }
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
