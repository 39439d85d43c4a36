#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace Oru::TestSupport {

/// A new, empty directory that is removed with all that it holds at the end of the scope.
class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "oru-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary directory");
    mPath = pattern;
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
  }

  const std::filesystem::path& Path() const { return mPath; }
  /// The path of a file in the directory, as text; the file need not exist.
  std::string File(const std::string& name) const { return (mPath / name).string(); }

 private:
  std::filesystem::path mPath;
};

}  // namespace Oru::TestSupport
