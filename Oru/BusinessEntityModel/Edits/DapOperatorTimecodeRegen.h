#pragma once

#include "Oru/BusinessEntityModel/Edits/Export.h"
#include "Oru/TimePoints/Core/TimeCode.h"

#include <cstdint>
#include <string>

namespace Oru::BusinessEntityModel::Edits {

/// How the time code of a sequence is regenerated when it is played out. The numbers of the enumerations are
/// stored in files and never change; a number without a name can come out of a file and is carried as it is.
class ORU_EDITS_EXPORT DapOperatorTimecodeRegen {
 public:
  /// Over what the time code counts on: the whole sequence, or each block of it.
  enum class Continuity : int32_t {
    Sequence = 0,
    Blocks = 1,
  };
  /// What it starts from: the time code of these settings, that of the time of day, or the user's.
  enum class Reference : int32_t {
    Reference = 0,
    Tod = 1,
    User = 2,
  };
  /// Which ancillary time code it is put out in.
  enum class Output : int32_t {
    AtcVitc = 0,
    AtcLtc = 1,
    Both = 2,
  };

  /// Every enumeration at 0, and a default time code.
  DapOperatorTimecodeRegen();

  /// Over what the time code counts on.
  Continuity ContinueIn() const noexcept { return continuity; }
  void ContinueIn(Continuity value) noexcept { continuity = value; }
  /// What it starts from.
  Reference From() const noexcept { return from; }
  void From(Reference value) noexcept { from = value; }
  /// A file keeps it at the rates 50/1 and 60/1 (drop or not); at another rate only the count of samples
  /// comes back.
  const TimePoints::TimeCode& TimecodeRef() const noexcept { return reference; }
  void TimecodeRef(const TimePoints::TimeCode& value) noexcept { reference = value; }
  /// Which time code it is put out in.
  Output In() const noexcept { return in; }
  void In(Output value) noexcept { in = value; }

  /// The same settings.
  bool operator==(const DapOperatorTimecodeRegen& other) const;
  bool operator!=(const DapOperatorTimecodeRegen& other) const { return !(*this == other); }

 private:
  Continuity continuity = Continuity::Sequence;
  Reference from = Reference::Reference;
  TimePoints::TimeCode reference;
  Output in = Output::AtcVitc;
};

/// The name of the value, or its number in decimal when it has none.
ORU_EDITS_EXPORT std::string ToString(DapOperatorTimecodeRegen::Continuity value);
ORU_EDITS_EXPORT std::string ToString(DapOperatorTimecodeRegen::Reference value);
ORU_EDITS_EXPORT std::string ToString(DapOperatorTimecodeRegen::Output value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_EDITS_EXPORT bool TryParse(const std::string& text, DapOperatorTimecodeRegen::Continuity& value);
ORU_EDITS_EXPORT bool TryParse(const std::string& text, DapOperatorTimecodeRegen::Reference& value);
ORU_EDITS_EXPORT bool TryParse(const std::string& text, DapOperatorTimecodeRegen::Output& value);

}  // namespace Oru::BusinessEntityModel::Edits
