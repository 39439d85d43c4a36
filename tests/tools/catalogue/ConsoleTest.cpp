#include "Listing.h"
#include "Progress.h"
#include "TextForms.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <string>
#include <utility>

// What is printed: lists, progress, and texts from files and people.
namespace Catalogue {
namespace {

TEST(ConsoleTest, AListGivesPeopleColumnsAndProgramsValues) {
  const std::pair<Console::Form, std::string> cases[] = {
      {Console::Form::People,
       "NAME      COUNT  PARTS\n"
       "a \"b\", c  two    x, y\n"
       "\xff         none   -\n"},
      {Console::Form::Csv, "name,count,parts\r\n\"a \"\"b\"\", c\",2,\"x, y\"\r\n\"\xff\n\",,\r\n"},
      {Console::Form::Json,
       "{\"name\":\"a \\\"b\\\", c\",\"count\":2,\"parts\":[\"x\",\"y\"]}\n"
       "{\"name\":{\"hex\":\"ff0a\"},\"count\":null,\"parts\":null}\n"},
  };
  for (const auto& [form, listed] : cases) {
    std::ostringstream out;
    const Console console{out, out, false, false, form};
    Listing listing(console, {"name", "count", "parts"});
    listing.Row({std::string("a \"b\", c"), {"two", 2}, {"x, y", Json::array({"x", "y"})}});
    listing.Row({std::string("\xff\n"), {"none", nullptr}, Listing::Cell::IfAny("-")});
    listing.Finish();
    EXPECT_EQ(out.str(), listed);
  }
}

TEST(ConsoleTest, ProgressIsABarOnATerminalAndNowAndThenALineElsewhere) {
  const struct {
    bool isWatched;
    std::chrono::hours pause;
    std::string shown;
  } cases[] = {
      {true, std::chrono::hours(0),
       "Reading: [######...................] 25 %, 2 of 8 files\r\033[KReading: 3 files\r\033[K"},
      {false, std::chrono::hours(0), "Reading: 25 %, 2 of 8 files\nReading: 3 files\n"},
      {false, std::chrono::hours(1), ""},
  };
  for (const auto& [isWatched, pause, shown] : cases) {
    std::ostringstream out, errors;
    const Console console{out, errors, false, isWatched};
    {
      Progress progress(console, "Reading", "files", pause);
      EXPECT_TRUE(progress.Show(2, 8) && progress.Show(3, -1));
    }
    EXPECT_EQ(out.str() + errors.str(), shown);
  }
}

TEST(ConsoleTest, WhatFilesAndPeopleGiveCommandsNoTerminal) {
  const std::pair<std::string, std::string> cases[] = {
      {"Fußball 1", "Fußball 1"},
      {"a\x1b[2Jb", "a [2Jb"},
      {"line\nline\ttab\x7f", "line line tab "},
      {std::string("\0x", 2), " x"},
      {"\u009b31m red", " 31m red"},
      {"\u00a0é\u0080", "\u00a0é "},
      {"cut off \xc2", "cut off \xc2"},
  };
  for (const auto& [text, printable] : cases)
    EXPECT_EQ(Printable(text) + Highlighted(text, false), printable + printable);
  const std::string text = "a <b>goal</b> and <b>go</b>\x1b";
  EXPECT_EQ(Highlighted(text, false), "a [goal] and [go] ");
  EXPECT_EQ(Highlighted(text, true), "a \033[1mgoal\033[0m and \033[1mgo\033[0m \033[0m");
  EXPECT_EQ(Highlighted("left <b>open", true), "left \033[1mopen\033[0m");
}

}  // namespace
}  // namespace Catalogue
