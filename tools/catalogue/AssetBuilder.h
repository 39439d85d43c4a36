#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/DateTime.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/TimePoints/Core/TimeCode.h"

#include "MediaReport.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace Catalogue {

/// Names of the profiles that the catalogue writes. Profiles of other names on an asset are not its own.
namespace Profiles {
inline constexpr char general[] = "oru.catalogue.general";
inline constexpr char file[] = "oru.catalogue.file";
inline constexpr char essence[] = "oru.catalogue.essence";
inline constexpr char sequence[] = "oru.catalogue.sequence";
}  // namespace Profiles

/// The identity of the clip in a file: ten letters and digits, always the same for the same path.
/// Two of 100,000 paths share one with a probability of 1 in 200,000.
std::string ClipIdOf(const std::filesystem::path& canonicalPath);

/// How long a clip lasts, in nanoseconds: counted in frames where it has pictures, else in samples, else as
/// its wrapper states it.
int64_t DurationOf(const MediaReport& report);

/// The start time code as the operator's profile keeps it, which counts 50 or 60 samples a second: a frame of
/// a 25 Hz clip is two samples. Nothing for frame rates that don't divide those, as 24, and for a text that
/// is no time code.
std::optional<Oru::TimePoints::TimeCode> UserTimeCodeOf(const StartTimeCode& startTimeCode);

/// A new asset of one resource, the file, which is one stream with an essence and a track per track of the
/// file: pictures first, then sound, then data. Its time line starts at 0; the start time code is its user
/// time code.
Oru::DataModel::MediaAssets::MediaAsset BuildAsset(const MediaReport& report,
                                                   Oru::BusinessEntityModel::BaseTypes::DateTime now);

/// Gives a stored clip what its file says by now, as `BuildAsset` has read it. What people have added stays:
/// description, annotations, the operator's profile but for the user time code, and profiles of other names.
void TakeFromFile(Oru::DataModel::MediaAssets::MediaAsset& clip,
                  const Oru::DataModel::MediaAssets::MediaAsset& read);

}  // namespace Catalogue
