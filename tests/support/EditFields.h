#pragma once

#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"
#include "Oru/BusinessEntityModel/Edits/Edit.h"

#include "support/EntityFields.h"

namespace Oru::TestSupport {

namespace Edits = BusinessEntityModel::Edits;

template <>
inline const Fields<Edits::DapOperatorTimecodeRegen> fieldsOf<Edits::DapOperatorTimecodeRegen> = {
    [](auto& e, auto& r) { e.ContinueIn(r.template Any<Edits::DapOperatorTimecodeRegen::Continuity>()); },
    [](auto& e, auto& r) { e.From(r.template Any<Edits::DapOperatorTimecodeRegen::Reference>()); },
    [](auto& e, auto& r) { e.TimecodeRef(r.TimeCode()); },
    [](auto& e, auto& r) { e.In(r.template Any<Edits::DapOperatorTimecodeRegen::Output>()); },
};

template <>
inline const Fields<Edits::DapOperatorMetadataProfile> fieldsOf<Edits::DapOperatorMetadataProfile> = {
    [](auto& e, auto& r) { e.ServerId(ZuServerId(10 * (1 + r.Count() % 214748364))); },
    [](auto& e, auto& r) { e.Page(r.Int32()); },
    [](auto& e, auto& r) { e.Bank(r.Int32()); },
    [](auto& e, auto& r) { e.Row(r.Int32()); },
    [](auto& e, auto& r) { e.UmId(r.Text()); },
    [](auto& e, auto& r) { e.VarId(r.Text()); },
    [](auto& e, auto& r) { e.VideoElementsCount(r.Int32()); },
    [](auto& e, auto& r) { e.ArchiveStatus(r.template Any<ArchiveStatus>()); },
    [](auto& e, auto& r) {
      Edits::DapOperatorTimecodeRegen regen;
      regen.TimecodeRef(r.TimeCode());
      SetFields(regen, r);
      e.TimecodeRegen(regen);
    },
};

/// What edits and sequences have in common. The operator's profile stays.
template <class T>
Fields<T> FieldsOfEditsAndSequences() {
  return {
      [](auto& e, auto& r) { e.Name(r.Text()); },
      [](auto& e, auto& r) { e.CreationDate(r.Int64()); },
      [](auto& e, auto& r) { e.CreationOwner(r.Text()); },
      [](auto& e, auto& r) { e.ModificationDate(r.Int64()); },
      [](auto& e, auto& r) { e.ModificationOwner(r.Text()); },
      [](auto& e, auto& r) {
        const auto profile = e.Metadata().template Get<Edits::DapOperatorMetadataProfile>();
        r.Fill(e.Metadata());
        if (profile) e.Metadata().Set(profile);
      },
  };
}

template <>
inline const Fields<Edits::Edit> fieldsOf<Edits::Edit> = FieldsOfEditsAndSequences<Edits::Edit>();

template <>
inline const Fields<Edits::Sequence> fieldsOf<Edits::Sequence> = [] {
  auto all = FieldsOfEditsAndSequences<Edits::Sequence>();
  all.insert(all.end(),
             {[](auto& e, auto& r) { e.Version(r.Int32()); },
              [](auto& e, auto& r) { e.SetTimePoint(TimePoints::TimePoint::FromNanoseconds(r.Int64())); },
              [](auto& e, auto& r) {
                e.Duration(Edits::SequenceDuration(TimePoints::Duration::FromNanoseconds(r.Int64())));
              },
              [](auto& e, auto& r) {
                const auto profile = std::make_shared<Edits::DapOperatorMetadataProfile>();
                profile->ServerId(ZuServerId(10));
                SetFields(*profile, r);
                e.Metadata().Set(profile);
              }});
  return all;
}();

}  // namespace Oru::TestSupport
