#pragma once

#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"
#include "Oru/BusinessEntityModel/Edits/Edit.h"

#include "support/EntityFields.h"

namespace Oru::TestSupport {

template <>
inline const Fields<BusinessEntityModel::Edits::DapOperatorTimecodeRegen>& FieldsOf() {
  using Regen = BusinessEntityModel::Edits::DapOperatorTimecodeRegen;
  static const Fields<Regen> fields = {
      [](auto& e, auto& r) { e.ContinueIn(r.template Any<Regen::Continuity>()); },
      [](auto& e, auto& r) { e.From(r.template Any<Regen::Reference>()); },
      [](auto& e, auto& r) { e.TimecodeRef(r.TimeCode()); },
      [](auto& e, auto& r) { e.In(r.template Any<Regen::Output>()); },
  };
  return fields;
}

template <>
inline const Fields<BusinessEntityModel::Edits::DapOperatorMetadataProfile>& FieldsOf() {
  using namespace BusinessEntityModel::Edits;
  static const Fields<DapOperatorMetadataProfile> fields = {
      [](auto& e, auto& r) {
        e.ServerId(DataModel::MediaAssets::ZuServerId(10 * (1 + r.Count() % 214748364)));
      },
      [](auto& e, auto& r) { e.Page(r.Int32()); },
      [](auto& e, auto& r) { e.Bank(r.Int32()); },
      [](auto& e, auto& r) { e.Row(r.Int32()); },
      [](auto& e, auto& r) { e.UmId(r.Text()); },
      [](auto& e, auto& r) { e.VarId(r.Text()); },
      [](auto& e, auto& r) { e.VideoElementsCount(r.Int32()); },
      [](auto& e, auto& r) { e.ArchiveStatus(r.template Any<DataModel::MediaAssets::ArchiveStatus>()); },
      [](auto& e, auto& r) {
        DapOperatorTimecodeRegen regen;
        regen.TimecodeRef(r.TimeCode());
        SetFields(regen, r);
        e.TimecodeRegen(regen);
      },
  };
  return fields;
}

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
        using BusinessEntityModel::Edits::DapOperatorMetadataProfile;
        const auto profile = e.Metadata().template Get<DapOperatorMetadataProfile>();
        r.Fill(e.Metadata());
        if (profile) e.Metadata().Set(profile);
      },
  };
}

template <>
inline const Fields<BusinessEntityModel::Edits::Edit>& FieldsOf() {
  static const auto fields = FieldsOfEditsAndSequences<BusinessEntityModel::Edits::Edit>();
  return fields;
}

template <>
inline const Fields<BusinessEntityModel::Edits::Sequence>& FieldsOf() {
  using namespace BusinessEntityModel::Edits;
  static const auto fields = [] {
    auto all = FieldsOfEditsAndSequences<Sequence>();
    all.insert(all.end(),
               {[](auto& e, auto& r) { e.Version(r.Int32()); },
                [](auto& e, auto& r) { e.SetTimePoint(TimePoints::TimePoint::FromNanoseconds(r.Int64())); },
                [](auto& e, auto& r) {
                  e.Duration(SequenceDuration(TimePoints::Duration::FromNanoseconds(r.Int64())));
                },
                [](auto& e, auto& r) {
                  const auto profile = std::make_shared<DapOperatorMetadataProfile>();
                  profile->ServerId(DataModel::MediaAssets::ZuServerId(10));
                  SetFields(*profile, r);
                  e.Metadata().Set(profile);
                }});
    return all;
  }();
  return fields;
}

}  // namespace Oru::TestSupport
