#include "Oru/DataModel/MediaAssets/MediaResource.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"

#include "support/Changes.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <utility>

namespace Oru::DataModel::MediaAssets {
namespace {

MediaResource FilledResource() {
  MediaResource resource("r");
  resource.ObjectId(9);
  resource.Name("name");
  resource.CreationDate(100);
  resource.Adopt(std::make_unique<Stream>("loaded"));
  resource.Add("known");
  return resource;
}

TEST(MediaResourceTest, TheModificationDateOnlyGoesForward) {
  MediaResource resource;
  resource.CreationDate(100);
  EXPECT_EQ(resource.ModificationDate(), 100);
  resource.ModificationDate(300);
  EXPECT_THAT(
      [&] { resource.ModificationDate(299); },
      testing::ThrowsMessage<std::runtime_error>(
          "Oru::DataModel::MediaAssets::MediaResource::ModificationDate: New modification Date < actual "
          "modification date"));
  EXPECT_EQ(resource.ModificationDate(), 300);
  resource.CreationDate(-50);
  EXPECT_EQ(resource.ModificationDate(), -50);
}

TEST(MediaResourceTest, EveryFieldCounts) {
  TestSupport::ExpectEachChangeCounts<MediaResource>(
      FilledResource(),
      {
          [](MediaResource& resource) { resource.Id("other"); },
          [](MediaResource& resource) { resource.Name("other"); },
          [](MediaResource& resource) { resource.GeneralFormat(ResourceFormat::ToBeDefined); },
          [](MediaResource& resource) { resource.CreationDate(99); },
          [](MediaResource& resource) { resource.ModificationDate(101); },
          [](MediaResource& resource) { resource.Timebounds().Insert(TimePoints::TimeBounds()); },
          [](MediaResource& resource) {
            resource.Metadata()->Set(std::make_shared<BaseTypes::GenericMetadataProfile>("added"));
          },
          [](MediaResource& resource) { resource.Add("third"); },
          [](MediaResource& resource) { std::swap(resource.Streams()[0], resource.Streams()[1]); },
          [](MediaResource& resource) {
            auto other = std::make_unique<Stream>("loaded");
            other->Format(WrapperFormat::AVI);
            resource.Streams()[0] = std::move(other);
          },
      });
  EXPECT_THROW(FilledResource().Adopt(nullptr), std::invalid_argument);
}

TEST(MediaResourceTest, ACopySharesTheStreamsAndACloneDoesNot) {
  MediaResource resource = FilledResource(), copy = resource, lazy = resource;
  const auto clone = resource.Clone();
  EXPECT_TRUE(*clone == resource && clone->ObjectId() == 9);
  lazy.Streams()[0] = StreamReference(StreamId("loaded"));
  EXPECT_TRUE(lazy == resource) << "what one side has not loaded is compared by identifier";
  resource.Streams()[0]->Format(WrapperFormat::AVI);
  EXPECT_EQ(copy.Streams()[0]->Format(), WrapperFormat::AVI);
  EXPECT_EQ(clone->Streams()[0]->Format(), WrapperFormat::unknown);
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
