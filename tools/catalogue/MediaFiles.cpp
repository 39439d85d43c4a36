#include "MediaFiles.h"

#include <algorithm>
#include <set>
#include <system_error>

namespace Catalogue {

namespace fs = std::filesystem;

namespace {

bool IsHidden(const fs::path& path) {
  return path.filename().native().front() == '.';
}

std::vector<fs::path> FilesBelow(const fs::path& folder) {
  std::vector<fs::path> files;
  auto entry = fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied);
  for (; entry != fs::recursive_directory_iterator(); ++entry) {
    if (IsHidden(entry->path())) {
      entry.disable_recursion_pending();
    } else if (std::error_code error; entry->is_regular_file(error)) {
      files.push_back(entry->path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

std::vector<MediaFile> FindMediaFiles(const std::vector<std::string>& names) {
  std::vector<MediaFile> files;
  std::set<fs::path> known;
  const auto add = [&](const fs::path& path, bool isNamed) {
    std::error_code error;
    const fs::path canonical = fs::canonical(path, error);
    // What isn't there stays, so that it is named where it is read.
    if (known.insert(error ? path : canonical).second) files.push_back({path, isNamed});
  };
  for (const std::string& name : names) {
    std::error_code error;
    if (!fs::is_directory(name, error)) {
      add(name, true);
      continue;
    }
    for (const fs::path& path : FilesBelow(name))
      add(path, false);
  }
  return files;
}

}  // namespace Catalogue
