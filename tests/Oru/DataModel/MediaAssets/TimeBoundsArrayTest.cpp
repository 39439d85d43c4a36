#include "Oru/DataModel/MediaAssets/TimeBoundsArray.h"

#include "support/Prelude.h"
#include "support/RandomValues.h"

namespace Oru::DataModel::MediaAssets {
namespace {

using TimePoints::TimeBoundary;
using TimePoints::TimeBounds;
using TimePoints::TimePoint;

constexpr int64_t unset = INT64_MIN + 1;

TimeBoundary At(int64_t instant, bool isMoving = false) {
  return TimeBoundary(TimePoint::FromNanoseconds(instant), isMoving);
}

int64_t EndOf(const std::pair<int64_t, int64_t>& bounds) {
  return bounds.second == unset ? INT64_MAX : bounds.second;
}

// Against pairs of few instants, which are counted one by one.
TEST(TimeBoundsArrayTest, OrderDurationsAndValidityAreThoseOfTheInstants) {
  TestSupport::RandomValues random(7);
  const auto any = [&] { return random.Chance(5) ? unset : static_cast<int64_t>(random.Below(12)); };
  const auto areInOrder = [](int64_t in, int64_t out) { return in == unset || out == unset || in <= out; };
  for (int round = 0; round < 10000; ++round) {
    TimeBoundsArray array;
    std::set<std::pair<int64_t, int64_t>> sorted;
    for (auto count = random.Below(4); count > 0; --count) {
      const int64_t in = any(), out = any();
      if (sorted.emplace(in, out).second) {
        array.Insert(TimeBounds(At(in), At(out)));
      } else {
        EXPECT_THROW(array.Insert(TimeBounds(At(in), At(out))), std::runtime_error);
      }
    }
    ASSERT_TRUE(std::equal(array.begin(), array.end(), sorted.begin(), sorted.end(),
                           [](const TimeBounds& bounds, const auto& pair) {
                             return bounds == TimeBounds(At(pair.first), At(pair.second));
                           }));
    const int64_t in = any(), out = any();
    array.InBoundary(At(in));
    array.OutBoundary(At(out));

    int64_t material = 0, latest = sorted.empty() ? unset : EndOf(*sorted.begin());
    bool overlaps = false, isInOutside = in != unset, isOutOutside = out != unset, isOrdered = true;
    for (int64_t instant = 0; instant < 12; ++instant)
      material += std::any_of(sorted.begin(), sorted.end(), [&](const auto& pair) {
        return pair.first != unset && pair.first <= instant && instant < pair.second;
      });
    for (auto one = sorted.begin(); one != sorted.end(); ++one) {
      for (auto later = std::next(one); later != sorted.end(); ++later)
        overlaps = overlaps || later->first < EndOf(*one);
      isInOutside = isInOutside && (in < one->first || in > EndOf(*one));
      isOutOutside = isOutOutside && (out < one->first || out > EndOf(*one));
      isOrdered = isOrdered && areInOrder(one->first, one->second);
      latest = std::max(latest, EndOf(*one));
    }
    if (latest == INT64_MAX) latest = unset;
    const int64_t from = in != unset || sorted.empty() ? in : sorted.begin()->first;
    const int64_t to = out != unset ? out : latest;
    const bool isInValid = !isInOutside && areInOrder(in, out);
    const bool isOutValid = !isOutOutside && areInOrder(in, out);
    const int64_t inToOut = from == unset || to == unset ? 0 : to - from;
    ASSERT_EQ(std::tuple(array.HasOverlappingTimeBounds(), array.IsInOutOfTimeBounds(),
                         array.IsOutOutOfTimeBounds(), array.IsInValid(), array.IsOutValid(), array.IsValid(),
                         array.GetDuration().ToNanoseconds(), array.GetInOutDuration().ToNanoseconds()),
              std::tuple(overlaps, isInOutside, isOutOutside, isInValid, isOutValid,
                         isOrdered && !overlaps && isInValid && isOutValid, material, inToOut))
        << round;
  }
  TimeBoundsArray whole;
  for (const bool isMoving : {false, true})
    whole.Insert(TimeBounds(At(INT64_MIN), At(INT64_MAX, isMoving)));
  EXPECT_EQ(whole.Size(), 2U);
  EXPECT_THROW(whole.GetDuration(), std::overflow_error);
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
