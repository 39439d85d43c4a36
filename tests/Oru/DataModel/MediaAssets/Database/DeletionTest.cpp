#include "support/ClipActions.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <tuple>

namespace Oru::DataModel::MediaAssets::Database {

// A seed, and how many connections to the file act in turn.
class DeletionTest : public testing::TestWithParam<std::tuple<uint64_t, std::size_t>> {
 protected:
  TestSupport::TemporaryDirectory directory;
};

TEST_P(DeletionTest, LeavesWhatIsUsedAndNothingElse) {
  const auto [seed, connections] = GetParam();
  TestSupport::ClipActions actions(seed, directory.File("clips.db"), connections);
  for (int i = 0; i < 400; ++i) {
    SCOPED_TRACE("action " + std::to_string(i));
    actions.Step();
    if (HasFailure()) return;
  }
  actions.Finish();
}

INSTANTIATE_TEST_SUITE_P(Seeds, DeletionTest,
                         testing::Combine(testing::Range(uint64_t{1}, uint64_t{7}),
                                          testing::Values(std::size_t{1}, std::size_t{2})));

}  // namespace Oru::DataModel::MediaAssets::Database
