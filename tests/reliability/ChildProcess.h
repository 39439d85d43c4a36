#pragma once

#include "support/Prelude.h"

#include <csignal>
#include <cstring>
#include <exception>
#include <sys/wait.h>
#include <unistd.h>

namespace Oru::Reliability {

/// A copy of this process that runs one function and ends, and a pipe to hear from it. The process must not
/// have other threads.
class ChildProcess {
 public:
  /// @param body  is given the end of the pipe to write to; the child ends with 0 when it gives true
  explicit ChildProcess(const std::function<bool(int)>& body) {
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0) return;
    mPid = fork();
    if (mPid == 0) {
      close(ends[0]);
      bool isDone = false;
      try {
        isDone = body(ends[1]);
      } catch (const std::exception& exception) {
        isDone = write(ends[1], exception.what(), std::strlen(exception.what())) < 0;
      }
      // Without the parent's destructors and its checks at the end.
      _exit(isDone ? 0 : 1);
    }
    close(ends[1]);
    mPipe = ends[0];
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() {
    Kill();
    Succeeds();
    close(mPipe);
  }

  pid_t Id() const { return mPid; }
  void Kill() {
    if (mPid > 0) kill(mPid, SIGKILL);
  }
  /// Waits for the end; whether the child ended by itself and its function gave true.
  bool Succeeds() {
    if (mPid <= 0) return false;
    int status = 0;
    waitpid(mPid, &status, 0);
    mPid = -1;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }
  /// What the child has written since the last call; waits for something unless the child has ended.
  std::string HearSome() const {
    char buffer[4096];
    const ssize_t length = read(mPipe, buffer, sizeof buffer);
    return length > 0 ? std::string(buffer, static_cast<std::size_t>(length)) : std::string();
  }
  /// All that it writes up to its end.
  std::string Heard() const {
    std::string text;
    for (std::string some = HearSome(); !some.empty(); some = HearSome())
      text += some;
    return text;
  }

 private:
  pid_t mPid = -1;
  int mPipe = -1;
};

}  // namespace Oru::Reliability
