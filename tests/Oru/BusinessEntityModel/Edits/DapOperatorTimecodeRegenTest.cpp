#include "Oru/BusinessEntityModel/Edits/DapOperatorTimecodeRegen.h"

#include "support/Changes.h"
#include "support/EnumerationTable.h"

#include <gtest/gtest.h>

namespace Oru::BusinessEntityModel::Edits {
namespace {

using TestSupport::ExpectEnumeration;

// The numbers are in stored files.
TEST(DapOperatorTimecodeRegenTest, StoredEnumerations) {
  ExpectEnumeration<DapOperatorTimecodeRegen::Continuity>("Sequence Blocks");
  ExpectEnumeration<DapOperatorTimecodeRegen::Reference>("Reference Tod User");
  ExpectEnumeration<DapOperatorTimecodeRegen::Output>("AtcVitc AtcLtc Both");
}

TEST(DapOperatorTimecodeRegenTest, EveryPropertyCounts) {
  using Regen = DapOperatorTimecodeRegen;
  const Regen regen;
  TestSupport::ExpectEachChangeCounts<Regen>(
      regen, {
                 [](Regen& other) { other.ContinueIn(Regen::Continuity::Blocks); },
                 [](Regen& other) { other.From(Regen::Reference::User); },
                 [](Regen& other) { other.TimecodeRef(TimePoints::TimeCode().AddSample(1)); },
                 [](Regen& other) { other.In(Regen::Output::Both); },
             });
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::Edits
