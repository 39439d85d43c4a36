#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/DapMetadataEncapsulated.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/DapOperatorKeywordsTable.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/TimePoints/Core/Rate.h"
#include "Oru/TimePoints/Core/TimeCode.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// The operator's view of clips: one row at most per asset, under the asset's key, with the keywords beside
/// it.
///
/// Time codes are stored as their count of samples since 1900. Those at 50/1 and 60/1 come back as they were,
/// but always with a date; those at other rates keep their count and come back at 1/1.
class ORU_DATAMODEL_DATABASE_EXPORT DapOperatorMetadataTable
    : public Common::Databases::Sqlite::OwnerKeyTable<DapOperatorMetadataTable, DapOperatorMetadataProfile,
                                                      DapMetadataEncapsulated> {
 public:
  /// @param database  must outlive the table
  explicit DapOperatorMetadataTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~DapOperatorMetadataTable() override;

  using OwnerKeyTable::ReadFromCursor;
  using OwnerKeyTable::Save;

  /// Stores the operator's profile of a dictionary for an asset, with its keywords in place of the stored
  /// ones. Without such a profile nothing is written and what is stored stays.
  /// @return false, with a log entry, when the database refuses, and for what couldn't be read again: a time
  ///         code with a negative count
  /// @throws std::invalid_argument, as `DapOperatorMetadataProfile::DapId`, at a page, bank or row that isn't
  ///         between 0 and 255; the stored keywords are gone then
  bool Write(BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadataDictionary, int64_t fk);
  bool Write(BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadataDictionary, int64_t fk,
             Common::Databases::Sqlite::OwnerRow owner);
  /// Stores a profile, whose object id becomes the asset's key, and adds its keywords. Fails as `Write`, with
  /// nothing written.
  bool Save(DapMetadataEncapsulated& obj, bool lazy) override;

  DapOperatorKeywordsTable& GetDapOperatorKeywordsTable() { return *dapOperatorKeywordsTable; }

  bool BindToCursor(Common::Databases::Cursor& cursor, DapMetadataEncapsulated& obj) override;
  /// Reads the row, without keywords. A server number, page, bank, row or camera outside its range is passed
  /// over: the profile keeps what it holds.
  /// @throws std::out_of_range for a negative count of a time code
  void ReadFromCursor(const Common::Databases::Cursor& cursor, DapOperatorMetadataProfile& object,
                      bool lazy) override;
  void SetObjectId(DapMetadataEncapsulated& obj, int64_t objectId) override;
  int64_t GetObjectId(DapMetadataEncapsulated& obj) const override { return obj.metadata.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t {
      RefMediaAsset,
      ZuServerId,
      DapIdPage,
      DapIdBank,
      DapIdRow,
      DapIdCamera,
      UmId,
      VarId,
      Rating,
      ArchiveStatus,
      UserTimecodeType,
      PrimaryTimecode,
      UserTimecode,
      UserTimecodeFormat,
      TodTimecode,
      TodTimecodeFormat,
      Icon,
      Color,
      UserProtected,
      DapUIProtected,
      FillAndKeyType,
      FillAndKeyMediaAssetId
    };
  };
  static const std::array<std::string, 22> columnNames;

 protected:
  /// The number that a time code's rate and way of counting are stored as, and what such a number gives back:
  static int32_t TimecodeFormat(const TimePoints::TimeCode& timeCode);
  static TimePoints::Rate TimecodeRate(int32_t format);
  static bool TimecodeDrop(int32_t format);

 private:
  bool SaveWithKeywords(DapMetadataEncapsulated& obj, bool lazy, Common::Databases::Sqlite::OwnerRow owner);

  std::unique_ptr<DapOperatorKeywordsTable> dapOperatorKeywordsTable;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::DapOperatorMetadataProfile,
                    Oru::DataModel::MediaAssets::DapMetadataEncapsulated)
