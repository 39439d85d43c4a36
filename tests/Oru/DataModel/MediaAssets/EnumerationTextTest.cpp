#include "Oru/DataModel/MediaAssets/EnumerationText.h"

#include "Oru/DataModel/MediaAssets/AnnotationType.h"
#include "Oru/DataModel/MediaAssets/ArchiveStatus.h"
#include "Oru/DataModel/MediaAssets/AssetType.h"
#include "Oru/DataModel/MediaAssets/AudioCodingFormat.h"
#include "Oru/DataModel/MediaAssets/BitRateMode.h"
#include "Oru/DataModel/MediaAssets/Boxing.h"
#include "Oru/DataModel/MediaAssets/ChromaSubSampling.h"
#include "Oru/DataModel/MediaAssets/ColorSpace.h"
#include "Oru/DataModel/MediaAssets/FillAndKeyType.h"
#include "Oru/DataModel/MediaAssets/Location.h"
#include "Oru/DataModel/MediaAssets/ResourceFormat.h"
#include "Oru/DataModel/MediaAssets/ScanMode.h"
#include "Oru/DataModel/MediaAssets/TimecodePrimary.h"
#include "Oru/DataModel/MediaAssets/UserTimecodeType.h"
#include "Oru/DataModel/MediaAssets/VideoCodingFormat.h"
#include "Oru/DataModel/MediaAssets/WrapperFormat.h"

#include "support/EnumerationNames.h"
#include "support/StoredHash.h"

#include <gtest/gtest.h>

#include <string>

namespace Oru::DataModel::MediaAssets {
namespace {

using TestSupport::CheckedNames;

// The numbers are in stored files.
TEST(EnumerationTextTest, StoredNumbersKeepTheirNames) {
  const std::string names =
      CheckedNames<AssetType>() + CheckedNames<ResourceFormat>() + CheckedNames<WrapperFormat>() +
      CheckedNames<VideoCodingFormat>() + CheckedNames<AudioCodingFormat>() + CheckedNames<BitRateMode>() +
      CheckedNames<ChromaSubSampling>() + CheckedNames<ColorSpace>() + CheckedNames<ScanMode>() +
      CheckedNames<Boxing>() + CheckedNames<AnnotationType>() + CheckedNames<ArchiveStatus>() +
      CheckedNames<UserTimecodeType>() + CheckedNames<TimecodePrimary>() + CheckedNames<FillAndKeyType>() +
      CheckedNames<Location::Type>();
  EXPECT_EQ(TestSupport::StoredHash(names), 7751804348144559129U) << names;
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
