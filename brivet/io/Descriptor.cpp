#include "Descriptor.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

#include "Gk_ErrMgr.h"

namespace {

// A signal between the look at the flag and the wait would be seen late without a limit.
constexpr int WAIT = 200;  // milliseconds

void Wait(int descriptor, short event) {
  pollfd waited = {descriptor, event, 0};
  int count = 0;
  do {
    Gk_ErrMgr::checkAbort();
    count = poll(&waited, 1, WAIT);
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
