#include "Oru/DataModel/MediaAssets/Stream.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include "support/Changes.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace Oru::DataModel::MediaAssets {
namespace {

Stream FilledStream() {
  Stream stream("s");
  stream.ObjectId(5);
  stream.Format(WrapperFormat::MP4);
  stream.Essences().Add(std::make_unique<VideoEssence>());
  stream.Essences().Add(std::make_unique<AudioEssence>());
  auto profile = std::make_shared<BaseTypes::GenericMetadataProfile>("technical");
  profile->Set("key", "value");
  stream.Metadata()->Set(std::move(profile));
  return stream;
}

TEST(StreamTest, EveryFieldCountsAndACopyOwnsWhatItHolds) {
  TestSupport::ExpectEachChangeCounts<Stream>(
      FilledStream(),
      {
          [](Stream& stream) { stream.Id("other"); },
          [](Stream& stream) { stream.Format(WrapperFormat::RAW); },
          [](Stream& stream) { stream.Timebounds().InBoundary(TimePoints::TimePoint::FromNanoseconds(1)); },
          [](Stream& stream) { stream.Timebounds().Insert(TimePoints::TimeBounds()); },
          [](Stream& stream) { stream.Essences()[1].ChannelCount(2); },
          [](Stream& stream) { stream.Essences().Erase(0); },
          [](Stream& stream) { stream.Locations().Add(Location(Location::Type::file, "a.mp4")); },
          [](Stream& stream) {
            dynamic_cast<BaseTypes::GenericMetadataProfile&>(stream.Metadata()->At("technical"))
                .Set("key", "new");
          },
      });
}

TEST(StreamTest, AssignmentCopiesDeep) {
  const Stream original = FilledStream();
  Stream copy;
  copy = original;
  EXPECT_NE(&copy.Metadata()->At("technical"), &original.Metadata()->At("technical"));
  Stream& self = copy;
  copy = self;
  EXPECT_TRUE(copy == original && copy.ObjectId() == 5);
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
