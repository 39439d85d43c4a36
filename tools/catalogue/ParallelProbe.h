#pragma once

#include "MediaFiles.h"
#include "MediaReport.h"

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace Catalogue {

/// Reads media files side by side, and hands out what they say in their order. It reads only a few files before its
/// caller asks for them, so that a folder of any size fits into memory.
class ParallelProbe {
 public:
  struct Result {
    MediaFile file;
    /// Nothing when the file is no media.
    std::optional<MediaReport> report;
    /// Why it is no media.
    std::string reason;
  };

  /// @param jobs  how many files are read at a time, at least 1
  ParallelProbe(std::vector<MediaFile> files, unsigned jobs);
  ParallelProbe(const ParallelProbe&) = delete;
  ParallelProbe& operator=(const ParallelProbe&) = delete;
  /// Waits for the files that are being read.
  ~ParallelProbe();

  /// The next file's result, nothing after the last. Waits for it.
  /// @throws what reading the file has thrown, unless it is no media
  std::optional<Result> Next();

 private:
  void Work();

  const std::vector<MediaFile> mFiles;
  const size_t mAhead;
  std::mutex mMutex;
  std::condition_variable mHasMoved;
  size_t mBegun = 0;
  size_t mTaken = 0;
  bool mIsEnding = false;
  std::map<size_t, Result> mResults;
  std::exception_ptr mFailure;
  std::vector<std::thread> mThreads;
};

}  // namespace Catalogue
