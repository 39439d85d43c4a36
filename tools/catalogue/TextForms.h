#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/DateTime.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/Rate.h"
#include "Oru/TimePoints/Core/Duration.h"
#include "Oru/TimePoints/Core/TimeBoundary.h"
#include "Oru/TimePoints/Core/TimeCode.h"

#include <string>

namespace Catalogue {

// How values are shown to a reader. "-" for what isn't set.

/// Text that some file or user gave, with blanks for control characters, which a terminal would obey.
std::string Printable(const std::string& text);
/// A text in which a search has put what matched between "<b>" and "</b>", likewise printable: in bold for a
/// terminal, between brackets elsewhere.
std::string Highlighted(const std::string& text, bool isTerminal);

/// "00:00:02.002", to the millisecond.
std::string DurationText(const Oru::TimePoints::Duration& duration);
/// The same of a place on a clip's own time line.
std::string PlaceText(const Oru::TimePoints::TimeBoundary& place);
/// "2026-01-31 18:05:00 UTC".
std::string DateText(Oru::BusinessEntityModel::BaseTypes::DateTime date);
/// "10:00:00:24, 50 samples a second".
std::string TimeCodeText(const Oru::TimePoints::TimeCode& timeCode);
/// "25" or "29.97".
std::string RateText(const Oru::DataModel::MediaAssets::Rate& rate);
/// The entry of a generic profile, empty if there is no such entry.
std::string EntryText(const Oru::BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadata,
                      const std::string& profile, const std::string& key);

/// What the list says of a clip's wrapper, pictures and sound: "MXFOP1a", "MPEG2 1920x1080i 25", "PCM 4 ch".
std::string WrapperSummary(const Oru::DataModel::MediaAssets::MediaAsset& clip);
std::string VideoSummary(const Oru::DataModel::MediaAssets::MediaAsset& clip);
std::string AudioSummary(const Oru::DataModel::MediaAssets::MediaAsset& clip);

}  // namespace Catalogue
