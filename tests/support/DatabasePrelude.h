#pragma once

// The same for tests of the data model's database.

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/BusinessEntityModel/Edits/Database/EditRepository.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupRepository.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include "support/AssetReading.h"
#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"
#include "support/Prelude.h"

namespace Oru::DataModel::MediaAssets::Database {

using namespace BusinessEntityModel::BaseTypes;
using namespace Common::Databases;
using namespace Common::Databases::Sqlite;
using namespace TestSupport;

}  // namespace Oru::DataModel::MediaAssets::Database
