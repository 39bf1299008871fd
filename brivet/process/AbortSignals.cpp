#include "AbortSignals.h"

#include <csignal>
#include <initializer_list>

#include "Gk_ErrMgr.h"

namespace {

// Sets a flag and nothing else: that is all a handler may do.
extern "C" void AskForAbort(int) {
  Gk_ErrMgr::setAbort();
}

}  // namespace

void AbortOnSignals() {
  for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action = {};
    if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = AskForAbort;
    action.sa_flags = SA_RESETHAND;
    sigaction(signal, &action, nullptr);
  }
}
