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
  const bool hasTables = database.GetMediaAssetTable().DeleteByServerId(110) &&
                         !database.GetAnglesMediaAssetGroupItemTable().Exists(1) &&
                         !database.GetVideoEssenceTable().Exists(1) && !database.GetSequenceTable().Exists(1);
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
