// Uses something of each library that it is linked with, and ends with 0 if that works.
#ifdef HAS_TIME_POINTS
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"
#endif
#ifdef HAS_DATABASE
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#endif
#ifdef HAS_BASE_TYPES
#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#endif
#ifdef HAS_ENTITIES
#include "Oru/DataModel/MediaAssets/Utils/DapId.h"
#endif
#ifdef HAS_EDITS
#include "Oru/BusinessEntityModel/Edits/Edit.h"
#endif

int main() {
  bool works = true;
#ifdef HAS_TIME_POINTS
  using Oru::TimePoints::TimeCodeBuilder;
  works = works && TimeCodeBuilder().ClockTime(10, 0, 0, 12).Build().AddSample(38).Second() == 1;
#endif
#ifdef HAS_DATABASE
  Oru::Common::Databases::Sqlite::DatabaseSqlite database(":memory:", nullptr);
  database.Open();
  works = works && database.ExecuteStatement("CREATE TABLE t (a)");
#endif
#ifdef HAS_BASE_TYPES
  works = works && Oru::BusinessEntityModel::BaseTypes::Identifier::Generate().Value().size() == 36;
#endif
#ifdef HAS_ENTITIES
  works = works && Oru::DataModel::MediaAssets::DapId("110/111A").ServerId().SerialNumber() == 110;
#endif
#ifdef HAS_EDITS
  works = works && Oru::BusinessEntityModel::Edits::Edit("edit").Clone()->Id() == "edit";
#endif
  return works ? 0 : 1;
}
