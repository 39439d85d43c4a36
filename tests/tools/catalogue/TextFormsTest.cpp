#include "TextForms.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace Catalogue {

TEST(TextFormsTest, WhatFilesAndPeopleGiveCommandsNoTerminal) {
  const std::pair<std::string, std::string> cases[] = {
      {"Fußball 1", "Fußball 1"},
      {"a\x1b[2Jb", "a [2Jb"},
      {"line\nline\ttab\x7f", "line line tab "},
      {std::string("\0x", 2), " x"},
      {"\u009b31m red", " 31m red"},
      {"\u00a0é\u0080", "\u00a0é "},
      {"cut off \xc2", "cut off \xc2"},
  };
  for (const auto& [text, printable] : cases) {
    EXPECT_EQ(Printable(text), printable);
    EXPECT_EQ(Highlighted(text, false), printable);
  }
}

TEST(TextFormsTest, HighlightsInBoldOnATerminalAndBetweenBracketsElsewhere) {
  const std::string text = "a <b>goal</b> and <b>go</b>\x1b";
  EXPECT_EQ(Highlighted(text, false), "a [goal] and [go] ");
  EXPECT_EQ(Highlighted(text, true), "a \033[1mgoal\033[0m and \033[1mgo\033[0m \033[0m");
  EXPECT_EQ(Highlighted("left <b>open", true), "left \033[1mopen\033[0m");
}

}  // namespace Catalogue
