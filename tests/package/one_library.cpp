// Linked with the one library of the tables, and with one header for all of them. Ends with 0 if all works.
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

namespace Assets = Oru::DataModel::MediaAssets;
namespace Databases = Oru::Common::Databases;
using Assets::Database::DataModelDatabase;

namespace {

template <class Thrown, class Run>
bool Throws(Run run) {
  try {
    run();
  } catch (const Thrown&) {
    return true;
  }
  return false;
}

}  // namespace

int main() {
  DataModelDatabase database(":memory:", nullptr);
  database.Open();
  const auto areEmpty = [](auto&... tables) { return (!tables.Exists(1) && ...); };
  const bool hasTables =
      areEmpty(database.GetMediaAssetTable(), database.GetMediaResourceTable(),
               database.GetRelationMediaAssetMediaResource(), database.GetStreamTable(),
               database.GetEssenceTable(), database.GetAudioEssenceTable(), database.GetDataEssenceTable(),
               database.GetVideoEssenceTable(), database.GetTrackTable(),
               database.GetRelationAssetTrackTable(), database.GetMediaAssetGroupTable(),
               database.GetAnglesMediaAssetGroupTable(), database.GetMediaAssetGroupItemTable(),
               database.GetAnglesMediaAssetGroupItemTable(), database.GetEditTable(),
               database.GetSequenceTable()) &&
      database.GetMediaAssetTable().DeleteByServerId(110);
  const bool hasValues =
      Assets::ZuServerId(110).SerialNumber() == 110 &&
      Oru::TimePoints::TimeCodeBuilder().ClockTime(10, 0, 0, 12).Build().AddSample(38).Second() == 1;
  const bool hasExceptions =
      Throws<Databases::ArgumentException>([] { DataModelDatabase(nullptr).Open(); }) &&
      Throws<Databases::InvalidOperationException>([&] { database.Open(); }) &&
      Throws<Databases::ObjectClosedException>([] { throw Databases::ObjectClosedException(); }) &&
      Throws<Databases::NotSupportedException>(
          [] { DataModelDatabase("/no/such/folder/x", nullptr).Open(); });
  return hasTables && hasValues && hasExceptions ? 0 : 1;
}
