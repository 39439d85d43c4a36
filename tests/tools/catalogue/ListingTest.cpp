#include "Listing.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace Catalogue {
namespace {

std::string Listed(Console::Form form) {
  std::ostringstream out;
  const Console console{out, out, false, false, form};
  Listing listing(console, {"name", "count", "parts"});
  listing.Row({std::string("a \"b\", c"), {"two", 2}, {"x, y", Json::array({"x", "y"})}});
  listing.Row({std::string("\xff\n"), {"none", nullptr}, Listing::Cell::IfAny("-")});
  listing.Finish();
  return out.str();
}

TEST(ListingTest, GivesPeopleColumnsAndProgramsValues) {
  EXPECT_EQ(Listed(Console::Form::People),
            "NAME      COUNT  PARTS\n"
            "a \"b\", c  two    x, y\n"
            "\xff         none   -\n");
  EXPECT_EQ(Listed(Console::Form::Csv),
            "name,count,parts\r\n\"a \"\"b\"\", c\",2,\"x, y\"\r\n\"\xff\n\",,\r\n");
  EXPECT_EQ(Listed(Console::Form::Json),
            "{\"name\":\"a \\\"b\\\", c\",\"count\":2,\"parts\":[\"x\",\"y\"]}\n"
            "{\"name\":{\"hex\":\"ff0a\"},\"count\":null,\"parts\":null}\n");
}

}  // namespace
}  // namespace Catalogue
