#include "Oru/BusinessEntityModel/BaseTypes/SharedReference.h"

#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {
namespace {

struct Clip : PersistentObject {
  explicit Clip(Identifier identifier) : id(std::move(identifier)) {}
  const Identifier& Id() const { return id; }

  Identifier id;
};
struct LiveClip : Clip {
  using Clip::Clip;
};

TEST(SharedReferenceTest, TakesObjectAndIdentifierFromEveryKindOfPointer) {
  const auto shared = std::make_shared<LiveClip>("x");
  std::weak_ptr<LiveClip> weak = shared;
  SharedReference<Clip> references[] = {shared, weak, std::make_unique<LiveClip>("x")};
  for (auto& reference : references) {
    EXPECT_TRUE(reference && reference.Id() == "x" && reference->ObjectId() == -1);
    EXPECT_EQ(reference, SharedReference<Clip>(Identifier("x"))) << "pointers don't count";
    EXPECT_EQ(reference, Identifier("x"));
  }
  references[0] = std::make_unique<Clip>("y");
  references[1] = std::shared_ptr<LiveClip>();
  references[2].Pointer(std::shared_ptr<Clip>());
  EXPECT_LT(references[2], references[0]);
  EXPECT_TRUE(references[1].IsEmpty()) << "an empty pointer assigned";
  EXPECT_TRUE(references[2].Id() == "x" && !references[2]) << "the object let go";
  weak = std::make_shared<LiveClip>("gone");
  EXPECT_TRUE(SharedReference<Clip>(weak).IsEmpty());
}

TEST(SharedReferenceTest, FollowsARenamedObjectOnlyWhenAsked) {
  SharedReference<Clip> reference(std::make_shared<Clip>("x")), known(Identifier("x"));
  reference->id = "y";
  EXPECT_EQ(reference.Id(), "x");
  reference.UpdateIdentifier();
  known.UpdateIdentifier();
  EXPECT_TRUE(reference.Id() == "y" && known.Id() == "x" && !known);
  EXPECT_THROW(known.Value(), std::logic_error);
  EXPECT_THROW(static_cast<void>(known->Id()), std::logic_error);
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
