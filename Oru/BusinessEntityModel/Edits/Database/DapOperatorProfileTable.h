#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"
#include "Oru/BusinessEntityModel/Edits/Database/DapOperatorProfileEncapsulated.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/TimePoints/Core/Rate.h"
#include "Oru/TimePoints/Core/TimeCode.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Oru::BusinessEntityModel::Edits::Database {

/// The operator's settings of sequences: one row at most per sequence, under the sequence's key.
///
/// The reference time code of a regeneration is stored as its count of samples since 1900. At 50/1 and 60/1
/// it comes back as it was, but always with a date; at other rates it keeps its count and comes back at 1/1.
class ORU_DATAMODEL_DATABASE_EXPORT DapOperatorProfileTable
    : public Common::Databases::Sqlite::OwnerKeyTable<DapOperatorProfileTable, DapOperatorMetadataProfile,
                                                      DapOperatorProfileEncapsulated> {
 public:
  /// @param database  must outlive the table
  explicit DapOperatorProfileTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~DapOperatorProfileTable() override;

  using OwnerKeyTable::Delete;
  using OwnerKeyTable::ReadFromCursor;
  using OwnerKeyTable::Save;

  /// Stores the operator's profile of a dictionary for a sequence. Without one nothing is written and what is
  /// stored stays.
  bool Write(BaseTypes::MetadataProfileDictionary& metadataDictionary, int64_t fk);
  /// Stores a profile, whose object id becomes the sequence's key.
  bool Save(DapOperatorProfileEncapsulated& obj, bool lazy) override {
    return SaveUnder(obj.sequenceFk, obj, lazy);
  }
  /// The same for a profile that already has the sequence's key as its object id.
  bool Save(DapOperatorMetadataProfile& profile, bool lazy);
  bool Save(DapOperatorMetadataProfile& profile) { return Save(profile, true); }
  /// Deletes the row of a profile's object id, which becomes -1.
  bool Delete(DapOperatorMetadataProfile& profile);

  bool BindToCursor(Common::Databases::Cursor& cursor, DapOperatorProfileEncapsulated& obj) override;
  /// Reads the row without the key: the profile keeps its object id.
  /// @throws std::invalid_argument for a stored number that is no server's, 0 included; std::out_of_range for
  ///         a negative count of the time code
  void ReadFromCursor(const Common::Databases::Cursor& cursor, DapOperatorMetadataProfile& obj,
                      bool lazy) override;
  void SetObjectId(DapOperatorProfileEncapsulated& obj, int64_t objectId) override;
  int64_t GetObjectId(DapOperatorProfileEncapsulated& obj) const override { return obj.profile.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t {
      RefSequence,
      ZuServerId,
      DapIdPage,
      DapIdBank,
      DapIdRow,
      UmId,
      VarId,
      NbVideoElements,
      ArchiveStatus,
      TcRegenOn,
      TcRegenContinuity,
      TcRegenReference,
      TcRegenTimecodeRef,
      TcRegenTimecodeRefFormat,
      TcRegenOutput
    };
  };
  static const std::array<std::string, 15> columnNames;

 protected:
  /// The number that a time code's rate and way of counting are stored as, and what such a number gives back:
  static int32_t TimecodeFormat(const TimePoints::TimeCode& timeCode);
  static TimePoints::Rate TimecodeRate(int32_t format);
  static bool TimecodeDrop(int32_t format);
};

}  // namespace Oru::BusinessEntityModel::Edits::Database

ORU_TABLE_TEMPLATES(extern, Oru::BusinessEntityModel::Edits::DapOperatorMetadataProfile,
                    Oru::BusinessEntityModel::Edits::Database::DapOperatorProfileEncapsulated)
