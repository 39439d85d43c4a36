#include "Oru/BusinessEntityModel/BaseTypes/SortedVector.h"

#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorSharedPointer.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorWeakPointer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <stdexcept>
#include <vector>

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

// What `Insert` does, by linear search.
bool InsertInto(std::vector<Item>& model, const Item& item) {
  const auto place =
      std::find_if(model.begin(), model.end(), [&](const Item& at) { return at.key >= item.key; });
  if (place != model.end() && *place == item) return false;
  model.insert(place, item);
  return true;
}

TEST(SortedVectorTest, AgreesWithALinearModel) {
  std::mt19937 random(20240607);
  const auto anyItem = [&] { return Item{static_cast<int>(random() % 8), static_cast<int>(random() % 3)}; };
  SortedVector<Item> vector;
  std::vector<Item> model;
  for (int step = 0; step < 20000; ++step) {
    const Item item = anyItem();
    const auto found = std::find(model.begin(), model.end(), item) - model.begin();
    ASSERT_EQ(vector.Find(item) - vector.begin(), found);
    const std::size_t index = random() % (model.size() + 1);
    auto changed = model;
    bool accepted = true;
    std::function<void()> change;
    switch (random() % 8) {
      case 0:
        if (found < changed.end() - changed.begin()) changed.erase(changed.begin() + found);
        ASSERT_EQ(vector.Erase(item), changed != model);
        break;
      case 1:
        if (index == model.size()) {
          ASSERT_THROW(vector.Erase(index), std::out_of_range);
          ASSERT_THROW(vector.Replace(index, item), std::out_of_range);
          break;
        }
        changed.erase(changed.begin() + static_cast<std::ptrdiff_t>(index));
        if (step % 2 == 0) {
          vector.Erase(index);
          break;
        }
        accepted = InsertInto(changed, item);
        change = [&] { vector.Replace(index, item); };
        break;
      case 2: {
        const std::vector<Item> several{item, anyItem(), anyItem()};
        if (step % 2 == 0) changed.clear();
        for (const Item& one : several)
          accepted = accepted && InsertInto(changed, one);
        change = [&vector, several, step] {
          step % 2 == 0 ? vector.Values(several) : vector.Insert(several);
        };
        break;
      }
      default:
        accepted = InsertInto(changed, item);
        change = [&] { vector.Insert(item); };
    }
    if (!accepted) {
      ASSERT_THAT(change, isRefused);
    } else {
      if (change) change();
      model = changed;
    }
    ASSERT_EQ(vector.Values(), model) << "step " << step;
  }
}

TEST(SortedVectorTest, ReachesItsElements) {
  SortedVector<int> vector;
  EXPECT_THROW(vector.Front(), std::out_of_range);
  EXPECT_THROW(vector.Back(), std::out_of_range);
  vector.Values({5, 1, 3, 9});
  EXPECT_EQ(vector.Erase(vector.cbegin() + 1, vector.cend() - 1) - vector.begin(), 1);
  EXPECT_TRUE(vector.Front() == 1 && vector.Back() == 9);
  vector.Values(vector.Values());
  vector.Front() = 10;
  vector.Sort();
  EXPECT_THAT(vector, testing::ElementsAre(9, 10)) << "its own elements, changed in place";
}

TEST(SortedVectorTest, SharedPointersCompareByTheirObjects) {
  SortedVectorSharedPointer<Item> vector;
  for (const Item& item : {Item{2, 0}, Item{1, 0}, Item{2, 1}})
    vector.Insert(std::make_shared<Item>(item));
  EXPECT_THAT([&] { vector.Insert(std::make_shared<Item>(Item{1, 0})); }, isRefused);
  EXPECT_THAT(vector, testing::ElementsAre(testing::Pointee(Item{1, 0}), testing::Pointee(Item{2, 1}),
                                           testing::Pointee(Item{2, 0})));
  EXPECT_THROW(vector.Insert(std::shared_ptr<Item>()), std::invalid_argument);
  EXPECT_THROW(vector.Values({nullptr}), std::invalid_argument);
  EXPECT_THROW(vector.Replace(0, nullptr), std::invalid_argument);
  EXPECT_EQ(vector.Find(nullptr), vector.end());
  EXPECT_FALSE(vector.Erase(nullptr));
  EXPECT_EQ(vector.Size(), 3U);
}

TEST(SortedVectorTest, WeakPointersRefuseObjectsThatAreGone) {
  const auto first = std::make_shared<Item>(Item{1, 0});
  auto second = std::make_shared<Item>(Item{2, 0});
  SortedVectorWeakPointer<Item> vector;
  vector.Insert(second);
  vector.Insert(first);
  EXPECT_EQ(vector.Front().lock(), first);
  EXPECT_THAT([&] { vector.Insert(std::make_shared<Item>(*first)); }, isRefused);
  second.reset();
  EXPECT_THAT([&] { static_cast<void>(vector == SortedVectorWeakPointer<Item>(vector)); },
              testing::ThrowsMessage<std::runtime_error>(
                  "Oru::DataModel::MediaAssets::CompareEqualWeakPointer: weak pointer object is expired"));
  EXPECT_THROW(CompareEqualWeakPointer<Item>()(first, {}), std::runtime_error);
  EXPECT_THROW(CompareLessWeakPointer<Item>()({}, first), std::runtime_error);
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
