#include "Oru/DataModel/MediaAssets/Essence.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include "support/Changes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets {
namespace {

using TestSupport::Changes;
using TestSupport::ExpectEachChangeCounts;

template <class Kind>
Changes<Kind> ChangesOfAnyKind() {
  return {
      [](Kind& essence) { essence.Nr(3); },
      [](Kind& essence) { essence.ChannelCount(3); },
      [](Kind& essence) {
        essence.Metadata()->Set(std::make_shared<BaseTypes::GenericMetadataProfile>("added"));
      },
      [](Kind& essence) { essence.TrackChannels().Insert(std::make_shared<TrackChannel>("t", 9)); },
      [](Kind& essence) { essence.TimeCodeTables().Insert(std::make_shared<TimeCodeTable>("ltc")); },
  };
}

TEST(EssenceTest, ANewOneStandsAtTheDefaults) {
  const VideoEssence video;
  EXPECT_EQ(video.GetType(), Essence::Type::Video);
  EXPECT_EQ(video.ObjectId(), -1);
  EXPECT_EQ(video.Nr(), -1);
  EXPECT_EQ(video.FrameRate(), MediaAssets::Rate(1, 1));
  EXPECT_EQ(video.AspectRatio(), MediaAssets::AspectRatio(1, 1));
  const AudioEssence audio;
  EXPECT_EQ(audio.GetType(), Essence::Type::Audio);
  EXPECT_EQ(audio.SampleRate(), MediaAssets::Rate(1, 1));
  const DataEssence data;
  EXPECT_EQ(data.GetType(), Essence::Type::Data);
  ASSERT_NE(data.Metadata(), nullptr);
  EXPECT_NE(data.Metadata(), audio.Metadata());
}

TEST(EssenceTest, TheArrayNumbersItsEssencesByPosition) {
  std::vector<std::unique_ptr<Essence>> read;
  for (const int32_t stored : {2, 5, 7}) {
    read.push_back(std::make_unique<DataEssence>());
    read.back()->Nr(stored);
    read.back()->ObjectId(stored);
  }
  EssenceArray essences;
  essences.Add(std::make_unique<VideoEssence>());
  essences.Adopt(read.begin(), read.end());
  ASSERT_EQ(essences.Size(), 4);
  for (int32_t position = 0; position < 4; ++position)
    EXPECT_EQ(essences[position].Nr(), position);
  EXPECT_EQ(essences[3].ObjectId(), 7);
}

TEST(EssenceTest, EveryFieldCounts) {
  ExpectEachChangeCounts(DataEssence(), ChangesOfAnyKind<DataEssence>());

  ExpectEachChangeCounts(AudioEssence(), ChangesOfAnyKind<AudioEssence>());
  ExpectEachChangeCounts<AudioEssence>(
      AudioEssence(), {
                          [](AudioEssence& audio) { audio.AudioCodec(AudioCodingFormat::PCM); },
                          [](AudioEssence& audio) { audio.BitRate(1); },
                          [](AudioEssence& audio) { audio.BitRateMode(BitRateMode::cbr); },
                          [](AudioEssence& audio) {
                            audio.SampleRate({48000, 1});
                          },
                          [](AudioEssence& audio) {
                            audio.SampleRate({1, 2});
                          },
                          [](AudioEssence& audio) { audio.BitDepth(24); },
                          [](AudioEssence& audio) { audio.FourCC("sowt"); },
                      });

  ExpectEachChangeCounts(VideoEssence(), ChangesOfAnyKind<VideoEssence>());
  ExpectEachChangeCounts<VideoEssence>(
      VideoEssence(), {
                          [](VideoEssence& video) { video.VideoCodec(VideoCodingFormat::H264); },
                          [](VideoEssence& video) { video.BitRate(1); },
                          [](VideoEssence& video) { video.BitRateMode(BitRateMode::vbr); },
                          [](VideoEssence& video) { video.BitDepth(10); },
                          [](VideoEssence& video) {
                            video.FrameRate({30000, 1001});
                          },
                          [](VideoEssence& video) { video.Height(1080); },
                          [](VideoEssence& video) { video.Width(1920); },
                          [](VideoEssence& video) { video.ChromaSubSampling(ChromaSubSampling::CS_422); },
                          [](VideoEssence& video) { video.ColorSpace(ColorSpace::BT709); },
                          [](VideoEssence& video) { video.ScanMode(ScanMode::interlaced); },
                          [](VideoEssence& video) {
                            video.AspectRatio({16, 1});
                          },
                          [](VideoEssence& video) {
                            video.AspectRatio({1, 9});
                          },
                          [](VideoEssence& video) { video.Boxing(Boxing::letterbox); },
                          [](VideoEssence& video) { video.FourCC("avc1"); },
                      });

  EXPECT_TRUE(static_cast<const Essence&>(AudioEssence()) != DataEssence());
}

TEST(EssenceTest, ACloneIsOfTheSameClassAndSharesNothing) {
  VideoEssence video;
  video.ObjectId(12);
  video.FourCC("avc1");
  video.TrackChannels().Insert(std::make_shared<TrackChannel>("t", 1));
  const std::unique_ptr<Essence> clone = std::as_const(static_cast<Essence&>(video)).Clone();
  EXPECT_TRUE(*clone == video);
  EXPECT_EQ(clone->ObjectId(), 12);
  ASSERT_NE(dynamic_cast<VideoEssence*>(clone.get()), nullptr);
  video.TrackChannels().Front()->ChannelNr(2);
  EXPECT_EQ(clone->TrackChannels().Front()->ChannelNr(), 1);
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
