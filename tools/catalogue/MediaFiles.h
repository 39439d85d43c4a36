#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Catalogue {

/// A file that may be media.
struct MediaFile {
  std::filesystem::path path;
  /// Whether it was named, and not found in a folder.
  bool isNamed;
};

/// The files that are named, and those of the folders that are named and of the folders in them, in order. Each comes
/// once. In folders, names that begin with a point are passed over, as are folders that can't be read.
std::vector<MediaFile> FindMediaFiles(const std::vector<std::string>& names);

}  // namespace Catalogue
