#include "Oru/DataModel/MediaAssets/TimeBoundsArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
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

TEST(TimeBoundsArrayTest, Durations) {
  const struct {
    TimeBoundsArray array;
    int64_t material, inToOut;
  } cases[] = {
      {Array({}), 0, 0},
      {Array({}, 3, 7), 0, 4},
      {Array({}, 3), 0, 0},
      {Array({{0, 10}}, 2), 10, 8},
      {Array({{0, 10}}, unset, 4), 10, 4},
      {Array({{0, 10}}, 8, 5), 10, -3},
      {Array({{0, 10}, {20, 30}}), 20, 30},
      {Array({{0, 10}, {10, 30}}), 30, 30},
      {Array({{0, 10}, {5, 12}, {6, 8}}), 12, 12},
      {Array({{0, 10}, {20, unset}}), 10, 0},
      {Array({{0, 10}, {20, unset}}, 1, 25), 10, 24},
      {Array({{unset, 10}, {20, 30}}), 10, 0},
      {Array({{10, 0}}), 0, -10},
  };
  for (const auto& [array, material, inToOut] : cases) {
    SCOPED_TRACE(&array - &cases[0].array);
    EXPECT_EQ(array.GetDuration().ToNanoseconds(), material);
    EXPECT_EQ(array.GetInOutDuration().ToNanoseconds(), inToOut);
  }
  EXPECT_THROW(Array({{INT64_MIN, INT64_MAX}}).GetDuration(), std::overflow_error);
}

TEST(TimeBoundsArrayTest, Validity) {
  // What is wrong: the bounds overlap, a mark is outside of them (i, o) or is not valid (I, O), and the
  // whole is not valid (-).
  const struct {
    TimeBoundsArray array;
    std::string faults;
  } cases[] = {
      {Array({}), ""},
      {Array({}, 1), "iI-"},
      {Array({}, unset, 1), "oO-"},
      {Array({{0, 10}}, 0, 10), ""},
      {Array({{0, 10}}, -1, 10), "iI-"},
      {Array({{0, 10}}, 0, 11), "oO-"},
      {Array({{0, 10}}, 5, 5), ""},
      {Array({{0, 10}}, 6, 5), "IO-"},
      {Array({{0, 10}, {20, 30}}, 5, 25), ""},
      {Array({{0, 10}, {20, 30}}, 15, 25), "iI-"},
      {Array({{0, 10}, {10, 20}}), ""},
      {Array({{0, 10}, {9, 20}}), "overlap -"},
      {Array({{0, 30}, {5, 6}, {31, 40}}), "overlap -"},
      {Array({{0, 30}, {5, 6}}, 20), "overlap -"},
      {Array({{0, 10}, {10, 10}}), ""},
      {Array({{10, 0}}), "-"},
      {Array({{0, unset}}, 1000, 2000), ""},
      {Array({{0, unset}, {50, 60}}), "overlap -"},
      {Array({{unset, 10}}, 0, 11), "oO-"},
      {Array({{unset, unset}}, INT64_MIN + 2, INT64_MAX), ""},
  };
  for (const auto& [array, faults] : cases) {
    std::string found = array.HasOverlappingTimeBounds() ? "overlap " : "";
    found += array.IsInOutOfTimeBounds() ? "i" : "";
    found += array.IsOutOutOfTimeBounds() ? "o" : "";
    found += array.IsInValid() ? "" : "I";
    found += array.IsOutValid() ? "" : "O";
    found += array.IsValid() ? "" : "-";
    EXPECT_EQ(found, faults) << "case " << &array - &cases[0].array;
  }
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
