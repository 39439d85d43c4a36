#pragma once

#include "support/Prelude.h"

#include <csignal>
#include <new>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Oru::Reliability {

/// A copy of this process that runs one function and ends. The process must not have other threads.
class ChildProcess {
 public:
  /// @param body  throws nothing; the child ends with 0 when it gives true
  explicit ChildProcess(const std::function<bool()>& body) : mPid(fork()) {
    // Without the parent's destructors and its checks at the end.
    if (mPid == 0) _exit(body() ? 0 : 1);
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() {
    Kill();
    Succeeds();
  }

  pid_t Id() const { return mPid; }
  void Kill() {
    if (mPid > 0) kill(mPid, SIGKILL);
  }
  /// Waits for the end; whether the child ended by itself and its function gave true.
  bool Succeeds() {
    int status = -1;
    const bool hasEnded = mPid > 0 && waitpid(mPid, &status, 0) == mPid;
    mPid = -1;
    return hasEnded && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }

 private:
  pid_t mPid = -1;
};

/// An object in memory that this process shares with the children that it starts later.
template <class T>
std::shared_ptr<T> SharedWithChildren() {
  void* memory = mmap(nullptr, sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  return std::shared_ptr<T>(new (memory) T{}, [](T* object) { munmap(object, sizeof(T)); });
}

}  // namespace Oru::Reliability
