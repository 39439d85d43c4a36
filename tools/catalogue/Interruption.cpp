#include "Interruption.h"

#include <csignal>

namespace Catalogue {

namespace {

volatile std::sig_atomic_t isAsked = 0;

}  // namespace

void Interruption::Watch() {
  struct sigaction action {};
  action.sa_handler = [](int) { isAsked = 1; };
  // Calls that wait go on, and the second signal has its usual effect.
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  ::sigaction(SIGINT, &action, nullptr);
  ::sigaction(SIGTERM, &action, nullptr);
}

bool Interruption::IsAsked() {
  return isAsked != 0;
}

}  // namespace Catalogue
