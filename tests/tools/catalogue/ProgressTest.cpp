#include "Progress.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <string>

namespace Catalogue {
namespace {

std::string Shown(bool isWatched, std::chrono::milliseconds pause) {
  std::ostringstream out, errors;
  const Console console{out, errors, false, isWatched};
  {
    Progress progress(console, "Reading", "files", pause);
    EXPECT_TRUE(progress.Show(2, 8));
    EXPECT_TRUE(progress.Show(3, -1));
  }
  EXPECT_EQ(out.str(), "");
  return errors.str();
}

TEST(ProgressTest, IsABarOnATerminalAndNowAndThenALineElsewhere) {
  using std::chrono::milliseconds;
  EXPECT_EQ(Shown(true, milliseconds(0)),
            "Reading: [######...................] 25 %, 2 of 8 files\r\033[KReading: 3 files\r\033[K");
  EXPECT_EQ(Shown(false, milliseconds(0)), "Reading: 25 %, 2 of 8 files\nReading: 3 files\n");
  EXPECT_EQ(Shown(false, std::chrono::hours(1)), "");
}

}  // namespace
}  // namespace Catalogue
