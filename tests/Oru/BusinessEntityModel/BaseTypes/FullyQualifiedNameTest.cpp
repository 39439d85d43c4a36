#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"

#include <gtest/gtest.h>

namespace Oru::BusinessEntityModel::BaseTypes {
namespace {

TEST(FullyQualifiedNameTest, JoinsWithOneSeparator) {
  const struct {
    const char* first;
    const char* second;
    const char* concat;
    const char* combine;
    const char* path;
  } cases[] = {
      {"oru", "dap", "orudap", "oru.dap", "oru/dap"},
      {"oru.", ".dap", "oru..dap", "oru.dap", "oru./.dap"},
      {"a/", "/b", "a//b", "a/./b", "a/b"},
      {"", "dap", "dap", "dap", "dap"},
      {"oru", "", "oru", "oru", "oru"},
      {"", "", "", "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FullyQualifiedName::Concat(c.first, c.second), c.concat);
    EXPECT_EQ(FullyQualifiedName::Combine(c.first, c.second), c.combine);
    EXPECT_EQ(FullyQualifiedName::CombinePath(c.first, c.second), c.path);
  }
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
