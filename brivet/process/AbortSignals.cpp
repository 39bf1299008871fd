#include "AbortSignals.h"

#include <csignal>
#include <initializer_list>

#include "Gk_ErrMgr.h"

namespace {

// Sets a flag only; a signal handler may do little more.
extern "C" void RequestAbort(int) {
  Gk_ErrMgr::setAbort();
}

}  // namespace

void AbortOnSignals() {
  for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action = {};
    if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = RequestAbort;
    action.sa_flags = static_cast<int>(SA_RESETHAND);  // the highest bit
    sigaction(signal, &action, nullptr);
  }
}

void IgnoreFileSizeSignal() {
  std::signal(SIGXFSZ, SIG_IGN);
}
