#pragma once

#include "MediaReport.h"

#include <filesystem>
#include <stdexcept>

namespace Catalogue {

/// A file that can't be catalogued; the message says why, without the file's name.
class NotMedia : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads what a media file says of itself, with MediaInfo's library. Only headers and indexes are
/// read, whatever the size of the file.
///
/// File names go to the library through the C locale, so `setlocale` must have chosen one that can
/// spell them.
///
/// Throws `NotMedia` when the file can't be opened or holds neither picture nor sound.
MediaReport ProbeMedia(const std::filesystem::path& path);

}  // namespace Catalogue
