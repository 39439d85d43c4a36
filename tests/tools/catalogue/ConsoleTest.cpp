#include "Progress.h"
#include "TextForms.h"
#include "support/Prelude.h"

// What is printed: progress, and texts from files and people.
namespace Catalogue {
namespace {

TEST(ConsoleTest, ProgressIsABarOnATerminalAndNowAndThenALineElsewhere) {
  const auto shown = [](bool isWatched, int pause) {
    std::ostringstream out, errors;
    const Console console{out, errors, false, isWatched};
    {
      Progress progress(console, "Reading", "files", std::chrono::hours(pause));
      EXPECT_TRUE(progress.Show(2, 8) && progress.Show(3, -1));
    }
    return out.str() + errors.str();
  };
  EXPECT_EQ(shown(true, 0),
            "Reading: [######...................] 25 %, 2 of 8 files\r\033[KReading: 3 files\r\033[K");
  EXPECT_EQ(shown(false, 0), "Reading: 25 %, 2 of 8 files\nReading: 3 files\n");
  EXPECT_EQ(shown(false, 1), "");
}

TEST(ConsoleTest, WhatFilesAndPeopleGiveCommandsNoTerminal) {
  const std::string files =
      "Fußball 1, a\x1b[2Jb, line\nline\ttab\x7f, \u009b31m red, \u00a0é\u0080, cut off \xc2";
  const std::string printable = "Fußball 1, a [2Jb, line line tab ,  31m red, \u00a0é , cut off \xc2";
  EXPECT_EQ(Printable(files) + Highlighted(files, false), printable + printable);
  EXPECT_EQ(Printable(std::string("\0x", 2)), " x");
  const std::string text = "a <b>goal</b> and <b>go</b>\x1b";
  EXPECT_EQ(Highlighted(text, false), "a [goal] and [go] ");
  EXPECT_EQ(Highlighted(text, true), "a \033[1mgoal\033[0m and \033[1mgo\033[0m \033[0m");
}

}  // namespace
}  // namespace Catalogue
