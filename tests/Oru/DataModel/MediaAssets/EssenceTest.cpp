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
  video.TrackChannels().Insert(std::make_shared<TrackChannel>("t", 1));
  const std::unique_ptr<Essence> clone = static_cast<const Essence&>(video).Clone();
  EXPECT_TRUE(*clone == video && clone->ObjectId() == 12);
  video.TrackChannels().Front()->ChannelNr(2);
  EXPECT_EQ(clone->TrackChannels().Front()->ChannelNr(), 1);
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
