#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {
namespace {

using testing::ElementsAre;

GenericMetadataProfile Profile(const char* name, const std::map<std::string, std::string>& entries = {}) {
  GenericMetadataProfile profile{name};
  for (const auto& [key, value] : entries)
    profile.Set(key, value);
  return profile;
}

TEST(GenericMetadataProfileTest, IsEqualByNameClassAndEntries) {
  const GenericMetadataProfile profile = Profile("n", {{"a", "1"}, {"b", "2"}});
  EXPECT_TRUE(profile == *profile.Clone());
  const GenericMetadataProfile others[] = {Profile("m", {{"a", "1"}, {"b", "2"}}), Profile("n", {{"a", "1"}}),
                                           Profile("n", {{"a", "1"}, {"b", "3"}}),
                                           Profile("n", {{"a", "1"}, {"c", "2"}})};
  for (const auto& other : others)
    EXPECT_TRUE(profile != other && other != profile);
  EXPECT_EQ(profile.ToString(), "n");
}

TEST(GenericMetadataProfileTest, KeepsEntriesInKeyOrder) {
  GenericMetadataProfile profile = Profile("n", {{"b", "2"}, {"a", "1"}});
  profile.Set("b", "3");
  profile["c"] += "4";
  EXPECT_THAT(profile.Keys(), ElementsAre("a", "b", "c"));
  EXPECT_THAT(profile.Values(), ElementsAre("1", "3", "4"));
  EXPECT_TRUE(profile.Erase("b") && !profile.Erase("b") && !profile.Contains("b"));
  EXPECT_THROW(profile.Get("b"), std::out_of_range);
  const auto clone = profile.Clone();
  profile.Clear();
  EXPECT_TRUE(profile.Size() == 0 && *clone == Profile("n", {{"a", "1"}, {"c", "4"}}));
}

TEST(GenericMetadataProfileTest, IteratesUntilTheFirstFalse) {
  GenericMetadataProfile profile = Profile("n", {{"a", "1"}, {"b", "2"}, {"c", "3"}});
  std::string seen;
  const auto untilB = [&seen](const std::string& key, const std::string& value) {
    seen += key + value;
    return key != "b";
  };
  EXPECT_FALSE(std::as_const(profile).Iterate(untilB) || profile.Iterate(untilB));
  EXPECT_EQ(seen, "a1b2a1b2");
  EXPECT_TRUE(profile.Iterate([](const std::string&, std::string& value) {
    value += "!";
    return true;
  }));
  EXPECT_THAT(profile.Values(), ElementsAre("1!", "2!", "3!"));
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
