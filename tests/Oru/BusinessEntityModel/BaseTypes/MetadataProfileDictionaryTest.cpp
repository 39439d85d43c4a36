#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {
namespace {

using testing::ElementsAre;

class Marker : public MetadataProfile {
 public:
  static BaseTypes::FullyQualifiedName StaticFullyQualifiedName() { return "marker"; }
  BaseTypes::FullyQualifiedName FullyQualifiedName() const override { return StaticFullyQualifiedName(); }
  bool Equals(const MetadataProfile& other) const override {
    return dynamic_cast<const Marker*>(&other) != nullptr;
  }
  std::shared_ptr<MetadataProfile> Clone() const override { return std::make_shared<Marker>(*this); }
};

std::shared_ptr<GenericMetadataProfile> Shared(const char* name) {
  auto profile = std::make_shared<GenericMetadataProfile>(name);
  profile->Set("key", name);
  return profile;
}

TEST(MetadataProfileDictionaryTest, HoldsOneProfileForEachName) {
  MetadataProfileDictionary dictionary;
  const auto newer = Shared("b");
  for (const auto& profile : {Shared("b"), Shared("a"), newer})
    dictionary.Set(profile);
  EXPECT_THAT(dictionary.Keys(), ElementsAre("a", "b"));
  EXPECT_TRUE(dictionary.Values()[1] == newer && &dictionary.At("b") == newer.get());
  EXPECT_EQ(dictionary["missing"], nullptr);
  EXPECT_EQ(dictionary.Size(), 2U) << "looking up adds nothing";
  EXPECT_THROW(dictionary.Set(nullptr), std::invalid_argument);
  EXPECT_FALSE(dictionary.Erase(Shared("b"))) << "another profile of the name";
  EXPECT_TRUE(dictionary.Erase(newer) && !dictionary.Contains("b"));
  EXPECT_TRUE(dictionary.Erase("a") && dictionary.Empty());
  EXPECT_THROW(dictionary.At("a"), std::out_of_range);
  EXPECT_THAT([&] { std::as_const(dictionary).At("a"); },
              testing::ThrowsMessage<std::out_of_range>("map::at"));
}

TEST(MetadataProfileDictionaryTest, GetsAProfileByItsClass) {
  MetadataProfileDictionary dictionary;
  EXPECT_EQ(dictionary.Get<Marker>(), nullptr);
  dictionary.Set(Shared("marker"));
  EXPECT_EQ(dictionary.Get<Marker>(), nullptr) << "a profile of another class";
  dictionary.Set(std::make_shared<Marker>());
  EXPECT_EQ(dictionary.Get<Marker>().get(), &dictionary.At("marker"));
}

TEST(MetadataProfileDictionaryTest, IteratesInNameOrderUntilTheFirstFalse) {
  MetadataProfileDictionary dictionary;
  std::string seen;
  const auto untilB = [&seen](const MetadataProfile& profile) {
    seen += profile.ToString();
    return seen.back() != 'b';
  };
  for (const char* name : {"c", "a", "b"})
    dictionary.Set(Shared(name));
  EXPECT_FALSE(dictionary.Iterate(untilB) || std::as_const(dictionary).Iterate(untilB));
  EXPECT_EQ(seen, "abab");
}

TEST(MetadataProfileDictionaryTest, SharesProfilesUnlessCopiedDeeply) {
  MetadataProfileDictionary dictionary;
  const auto profile = Shared("a");
  dictionary.Set(profile);
  const MetadataProfileDictionary plain = dictionary;
  const MetadataProfileDictionary deep = dictionary.DeepCopy();
  const auto clone = dictionary.Clone();
  EXPECT_TRUE(plain == dictionary && deep == dictionary && *clone == dictionary);
  profile->Set("key", "changed");
  EXPECT_TRUE(plain == dictionary && deep != dictionary && *clone == deep);
  dictionary.Set(Shared("b"));
  EXPECT_FALSE(plain.Equals(dictionary) || dictionary.Equals(plain));
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
