#include "Oru/BusinessEntityModel/BaseTypes/Array.h"
#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVector.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorSharedPointer.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorWeakPointer.h"

#include "support/Prelude.h"

// Sorted vectors, arrays and dictionaries, each beside a container of the standard library.
namespace Oru::BusinessEntityModel::BaseTypes {
namespace {

// Ordered by key alone, so that items that are equivalent and not equal occur.
struct Item {
  int key;
  int tag;
  bool operator<(const Item& other) const { return key < other.key; }
  bool operator==(const Item& other) const { return key == other.key && tag == other.tag; }
};

const auto isRefused = testing::ThrowsMessage<std::runtime_error>(
    "Oru::DataModel::MediaAssets::SortedVector::Insert: item already present in the collection");

TEST(SortedVectorTest, AgreesWithALinearModel) {
  std::mt19937 random(20240607);
  const auto anyItem = [&] { return Item{static_cast<int>(random() % 8), static_cast<int>(random() % 3)}; };
  SortedVector<Item> vector;
  std::vector<Item> model;
  for (int step = 0; step < 20000; ++step) {
    const Item item = anyItem();
    const std::vector<Item> several{item, anyItem(), anyItem()};
    const auto found = std::find(model.begin(), model.end(), item) - model.begin();
    ASSERT_EQ(vector.Find(item) - vector.begin(), found);
    const std::size_t index = random() % (model.size() + 1);
    const bool isIndex = index < model.size(), isFound = found < std::distance(model.begin(), model.end());
    auto changed = model;
    bool accepted = true;
    const auto insert = [&](const Item& one) {
      const auto place =
          std::find_if(changed.begin(), changed.end(), [&](const Item& at) { return at.key >= one.key; });
      accepted = accepted && (place == changed.end() || !(*place == one));
      if (accepted) changed.insert(place, one);
    };
    std::function<void()> change;
    const auto kind = random() % 11;
    if (kind == 0) {
      if (isFound) changed.erase(changed.begin() + found);
      change = [&] { ASSERT_EQ(vector.Erase(item), isFound); };
    } else if (kind <= 2) {
      if (isIndex) changed.erase(changed.begin() + static_cast<std::ptrdiff_t>(index));
      if (kind == 2) insert(item);
      change = [&] { kind == 1 ? vector.Erase(index) : vector.Replace(index, item); };
    } else if (kind <= 4) {
      if (kind == 3) changed.clear();
      std::for_each(several.begin(), several.end(), insert);
      change = [&] { kind == 3 ? vector.Values(several) : vector.Insert(several); };
    } else if (kind == 5) {
      changed.resize(index);
      change = [&] { vector.Erase(vector.cbegin() + static_cast<std::ptrdiff_t>(index), vector.cend()); };
    } else if (kind == 6) {
      if (!model.empty()) changed.front() = changed.back() = item;
      std::stable_sort(changed.begin(), changed.end());
      change = [&] { vector.Front() = item, vector.Back() = item, vector.Sort(); };
    } else {
      insert(item);
      change = [&] { vector.Insert(item); };
    }
    if (((kind == 1 || kind == 2) && !isIndex) || (kind == 6 && model.empty())) {
      ASSERT_THROW(change(), std::out_of_range);
    } else if (!accepted) {
      ASSERT_THAT(change, isRefused);
    } else {
      change();
      model = changed;
    }
    ASSERT_EQ(vector.Values(), model) << "step " << step;
  }
  EXPECT_THROW(SortedVector<Item>().Back(), std::out_of_range);
}

TEST(SortedVectorTest, PointersCompareByTheirObjects) {
  const auto first = std::make_shared<Item>(Item{1, 0});
  auto second = std::make_shared<Item>(Item{2, 0});
  SortedVectorSharedPointer<Item> shared;
  SortedVectorWeakPointer<Item> weak;
  for (const auto& item : {second, first}) {
    shared.Insert(item);
    weak.Insert(item);
    EXPECT_THAT([&] { shared.Insert(std::make_shared<Item>(*item)); }, isRefused);
    EXPECT_THAT([&] { weak.Insert(std::make_shared<Item>(*item)); }, isRefused);
  }
  EXPECT_TRUE(shared.Front() == first && weak.Front().lock() == first);
  EXPECT_THROW(shared.Insert(std::shared_ptr<Item>()), std::invalid_argument);
  EXPECT_THROW(shared.Values({nullptr}), std::invalid_argument);
  EXPECT_THROW(shared.Replace(0, nullptr), std::invalid_argument);
  EXPECT_TRUE(shared.Find(nullptr) == shared.end() && !shared.Erase(nullptr) && shared.Size() == 2);
  shared.Clear();
  second.reset();
  EXPECT_THAT([&] { static_cast<void>(weak == SortedVectorWeakPointer<Item>(weak)); },
              testing::ThrowsMessage<std::runtime_error>(
                  "Oru::DataModel::MediaAssets::CompareEqualWeakPointer: weak pointer object is expired"));
  EXPECT_THROW(CompareEqualWeakPointer<Item>()(first, {}), std::runtime_error);
  EXPECT_THROW(CompareLessWeakPointer<Item>()({}, first), std::runtime_error);
}

// Copied by its copy constructor; essences are copied by their clones.
struct Shape {
  int name;
  int32_t number = -1;
  bool operator==(const Shape& other) const { return name == other.name; }
};

}  // namespace

template <>
struct ArrayElementTraits<Shape> {
  static void Adding(Shape& shape, int32_t position) noexcept { shape.number = position; }
};

namespace {

TEST(ArrayTest, NumbersFollowPositionsThroughRandomChanges) {
  std::mt19937 random(4711);
  Array<Shape> array;
  std::vector<int> names;
  for (int step = 0; step < 5000; ++step) {
    auto shape = std::make_unique<Shape>(Shape{step});
    const auto position = static_cast<int32_t>(random() % (names.size() + 1));
    const auto place = names.begin() + position;
    const auto change = random() % 4;
    if (change == 0) {
      ASSERT_EQ(array.Add(std::move(shape)), static_cast<int32_t>(names.size()));
      names.push_back(step);
    } else if (change == 1) {
      array.Insert(position, std::move(shape));
      names.insert(place, step);
    } else if (place == names.end()) {
      ASSERT_THROW(array.Erase(position), std::out_of_range);
      ASSERT_THROW(array.Replace(position, std::move(shape)), std::out_of_range);
      ASSERT_THROW(array.Insert(position + 1, std::move(shape)), std::out_of_range);
      ASSERT_TRUE(shape) << "stays with the caller";
    } else if (change == 2) {
      ASSERT_EQ(array.Replace(position, std::move(shape))->name, std::exchange(*place, step));
    } else {
      ASSERT_EQ(array.Erase(position)->name, *place);
      names.erase(place);
    }
    ASSERT_EQ(array.Size(), static_cast<int32_t>(names.size()));
    for (int32_t i = 0; i < array.Size(); ++i)
      ASSERT_TRUE(array[i].number == i && array.At(i).name == names[static_cast<std::size_t>(i)]) << i;
  }
}

TEST(ArrayTest, CopiesDeeplyAndAdoptsRangesAndArrays) {
  Array<Shape> array, adopting;
  std::unique_ptr<Shape> loose[2];
  for (int i = 0; i < 2; ++i)
    loose[i] = std::make_unique<Shape>(Shape{7 + i});
  array.Adopt(std::begin(loose), std::end(loose));
  Array<Shape> copy(array);
  EXPECT_TRUE(copy == array);
  copy[0].name = 9;
  EXPECT_TRUE(copy != array);
  copy.Copy(copy);
  ASSERT_EQ(copy.Size(), 4);
  EXPECT_EQ(copy[3].name * 10 + copy[3].number, 83);
  adopting.Add(Shape{3});
  adopting.Adopt(array);
  adopting.Adopt(adopting);
  EXPECT_THROW(adopting.Add(std::unique_ptr<Shape>()), std::invalid_argument);
  EXPECT_TRUE(array.Empty() && adopting.Size() == 3 && adopting[2].name == 8 && adopting[2].number == 2);
}

std::shared_ptr<GenericMetadataProfile> Profile(const std::string& name, const std::string& value) {
  auto profile = std::make_shared<GenericMetadataProfile>(name);
  profile->Set("key", value);
  return profile;
}

// A profile, and a dictionary of profiles with one entry, are given the same names and values.
TEST(MetadataTest, ProfilesAndDictionariesAgreeWithAMap) {
  std::mt19937 random(20240608);
  const auto any = [&] { return std::string(1, "abc"[random() % 3]); };
  GenericMetadataProfile profile("n");
  MetadataProfileDictionary dictionary;
  std::map<std::string, std::string> model;
  for (int step = 0; step < 3000; ++step) {
    const auto formerModel = model;
    const auto formerProfile = profile.Clone();
    const MetadataProfileDictionary formerDictionary = dictionary.DeepCopy();
    const std::string name = any(), value = any();
    const auto change = random() % 9;
    if (change == 0) {
      profile.Clear();
      dictionary.Clear();
      model.clear();
    } else if (change <= 2) {
      ASSERT_EQ(profile.Erase(name), model.count(name) == 1);
      ASSERT_EQ(dictionary.Erase(name), model.erase(name) == 1);
    } else if (change <= 4 && model.count(name) == 1) {
      profile[name] = value;
      dynamic_cast<GenericMetadataProfile&>(dictionary.At(name)).Set("key", value);
      model[name] = value;
    } else {
      profile.Set(name, value);
      dictionary.Set(Profile(name, value));
      model[name] = value;
    }
    std::vector<std::string> names, values;
    std::string untilName, seen;
    for (const auto& [at, with] : model) {
      names.push_back(at);
      values.push_back(with);
      if (at <= name) untilName += at;
    }
    ASSERT_EQ(profile.Keys(), names);
    ASSERT_THAT(dictionary.Keys(), testing::ElementsAreArray(names));
    ASSERT_EQ(profile.Values(), values);
    const bool isThere = model.count(name) == 1;
    const auto isBefore = [&](const std::string& at) {
      seen += at;
      return at != name;
    };
    ASSERT_EQ(profile.Iterate([&](const std::string& at, const std::string&) { return isBefore(at); }),
              !isThere);
    ASSERT_EQ(dictionary.Iterate([&](const MetadataProfile& at) { return isBefore(at.ToString()); }),
              !isThere);
    if (isThere) {
      ASSERT_EQ(seen, untilName + untilName);
      ASSERT_TRUE(profile.Get(name) == model[name] && dictionary.At(name) == *Profile(name, model[name]));
    } else {
      ASSERT_THROW(profile.Get(name), std::out_of_range);
      ASSERT_THROW(dictionary.At(name), std::out_of_range);
      ASSERT_THROW(std::as_const(dictionary).At(name), std::out_of_range);
    }
    ASSERT_EQ(dictionary[name] != nullptr, isThere);
    ASSERT_TRUE(profile.Contains(name) == isThere && dictionary.Contains(name) == isThere);
    ASSERT_TRUE(dictionary.Size() == model.size() && profile.Size() == static_cast<int32_t>(model.size()));
    ASSERT_EQ(profile == *formerProfile, model == formerModel);
    ASSERT_EQ(dictionary == formerDictionary, model == formerModel);
  }
}

// The entities' tests look for profiles by their class.
TEST(MetadataTest, CopiesOfADictionaryShareItsProfiles) {
  MetadataProfileDictionary dictionary;
  const auto profile = Profile("name", "1");
  dictionary.Set(profile);
  EXPECT_FALSE(*profile == *Profile("other", "1"));
  const MetadataProfileDictionary copy = dictionary;
  profile->Set("key", "2");
  EXPECT_TRUE(copy == dictionary && copy.At("name") == *Profile("name", "2"));
  EXPECT_FALSE(dictionary.Erase(Profile("name", "2"))) << "another profile of the name";
  EXPECT_TRUE(dictionary.Erase(profile));
  EXPECT_THROW(dictionary.Set(nullptr), std::invalid_argument);
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
