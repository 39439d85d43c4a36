#pragma once

#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"
#include "Oru/BusinessEntityModel/Edits/Edit.h"

#include "support/EntityFields.h"

namespace Oru::TestSupport {

namespace Edits = BusinessEntityModel::Edits;

using Regen = Edits::DapOperatorTimecodeRegen;
template <>
inline const Fields<Regen> fieldsOf<Regen> = {&Regen::ContinueIn, &Regen::From, &Regen::TimecodeRef,
                                              &Regen::In};

using Profile = Edits::DapOperatorMetadataProfile;
template <>
inline const Fields<Profile> fieldsOf<Profile> =
    FieldsOfOperators<Profile>({&Profile::VideoElementsCount, [](auto& e, auto& r) {
                                  Regen regen;
                                  regen.TimecodeRef(r.TimeCode());
                                  SetFields(regen, r);
                                  e.TimecodeRegen(regen);
                                }});

/// What edits and sequences have in common, and more. The operator's profile stays.
template <class T>
Fields<T> FieldsOfEditsAndSequences(Fields<T> more) {
  more.insert(more.end(), {&T::Name, &T::CreationDate, &T::CreationOwner, &T::ModificationDate,
                           &T::ModificationOwner, [](auto& e, auto& r) {
                             const auto profile = e.Metadata().template Get<Profile>();
                             r.Fill(e.Metadata());
                             if (profile) e.Metadata().Set(profile);
                           }});
  return more;
}

template <>
inline const Fields<Edits::Edit> fieldsOf<Edits::Edit> = FieldsOfEditsAndSequences<Edits::Edit>({});

template <>
inline const Fields<Edits::Sequence> fieldsOf<Edits::Sequence> =
    FieldsOfEditsAndSequences<Edits::Sequence>({&Edits::Sequence::Version, &Edits::Sequence::SetTimePoint,
                                                &Edits::Sequence::Duration, [](auto& e, auto& r) {
                                                  const auto profile = std::make_shared<Profile>();
                                                  profile->ServerId(ZuServerId(10));
                                                  SetFields(*profile, r);
                                                  e.Metadata().Set(profile);
                                                }});

}  // namespace Oru::TestSupport
