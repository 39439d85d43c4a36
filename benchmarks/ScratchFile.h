#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace Oru::Benchmarks {

/// A name for a file that is removed at the end of the scope, and at its beginning.
class ScratchFile {
 public:
  explicit ScratchFile(const std::string& folder) : path(folder + "/oru-benchmark.db") { Remove(); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;
  ~ScratchFile() { Remove(); }

  std::string Uri(const std::string& options) const { return "file:" + path + "?" + options; }
  const std::string& Path() const { return path; }

 private:
  void Remove() const {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
      std::error_code ignored;
      std::filesystem::remove(path + suffix, ignored);
    }
  }

  std::string path;
};

}  // namespace Oru::Benchmarks
