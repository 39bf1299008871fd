#include "Descriptor.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

#include "Gk_ErrMgr.h"

namespace {

// A signal that arrives between the check of the abort flag and poll does not interrupt poll, so that it needs a limit.
constexpr int kWaitMilliseconds = 200;

void Wait(int descriptor, short event) {
  pollfd waited = {descriptor, event, 0};
  int count = 0;
  do {
    Gk_ErrMgr::checkAbort();
    count = poll(&waited, 1, kWaitMilliseconds);
  } while (count == 0 || (count < 0 && errno == EINTR));
}

}  // namespace

void WaitToRead(int descriptor) {
  Wait(descriptor, POLLIN);
}

void WaitToWrite(int descriptor) {
  Wait(descriptor, POLLOUT);
}

bool WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    WaitToWrite(descriptor);
    ssize_t const count = write(descriptor, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR && errno != EAGAIN) {
      return false;
    }
  }
  return true;
}
