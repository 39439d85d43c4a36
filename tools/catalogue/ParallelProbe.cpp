#include "ParallelProbe.h"

#include "MediaProbe.h"

#include <algorithm>
#include <utility>

namespace Catalogue {

ParallelProbe::ParallelProbe(std::vector<MediaFile> files, unsigned jobs)
    : mFiles(std::move(files)), mAhead(size_t{4} * jobs) {
  const size_t count = std::min<size_t>(jobs, mFiles.size());
  for (size_t n = 0; n < count; ++n)
    mThreads.emplace_back([this] { Work(); });
}

ParallelProbe::~ParallelProbe() {
  {
    const std::lock_guard lock(mMutex);
    mIsEnding = true;
  }
  mHasMoved.notify_all();
  for (std::thread& thread : mThreads)
    thread.join();
}

std::optional<ParallelProbe::Result> ParallelProbe::Next() {
  std::unique_lock lock(mMutex);
  if (mTaken == mFiles.size()) return std::nullopt;
  mHasMoved.wait(lock, [this] { return mFailure || mResults.count(mTaken) > 0; });
  if (mFailure) std::rethrow_exception(mFailure);
  std::optional<Result> result = std::move(mResults.extract(mTaken++).mapped());
  lock.unlock();
  mHasMoved.notify_all();
  return result;
}

void ParallelProbe::Work() {
  std::unique_lock lock(mMutex);
  for (;;) {
    mHasMoved.wait(lock, [this] { return mIsEnding || mBegun == mFiles.size() || mBegun < mTaken + mAhead; });
    if (mIsEnding || mBegun == mFiles.size()) return;
    const size_t n = mBegun++;
    lock.unlock();
    Result result{mFiles[n], std::nullopt, ""};
    std::exception_ptr failure;
    try {
      result.report = ProbeMedia(result.file.path);
    } catch (const NotMedia& reason) {
      result.reason = reason.what();
    } catch (...) {
      failure = std::current_exception();
    }
    lock.lock();
    mResults.emplace(n, std::move(result));
    if (failure) mFailure = failure;
    mHasMoved.notify_all();
  }
}

}  // namespace Catalogue
