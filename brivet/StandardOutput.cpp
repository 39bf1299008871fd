#include "StandardOutput.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <string_view>

#include "ProblemReport.h"
#include "VRELFileOutputStream.h"

namespace {

// The stream hands over what the system takes at once.
bool WriteAll(std::string_view rest) {
  while (!rest.empty()) {
    errno = 0;
    int const size = static_cast<int>(std::min<std::size_t>(rest.size(), INT_MAX));
    int const count = VRELFileOutputStream::console.write(rest.data(), size);
    if (count > 0) {
      rest.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

}  // namespace

VRINResult PrintPage(std::string const& page) {
  if (WriteAll(page)) return VREL_S_OK;
  ReportProblem("standard output", std::string("expected a place to write to, found: ") + std::strerror(errno));
  return VREL_E_FILE_SAVE;
}

void ReserveStandardStreams() {
  // A new descriptor takes the lowest free place.
  int descriptor = 0;
  do {
    descriptor = open("/dev/null", O_RDONLY);
  } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
  if (descriptor >= 0) close(descriptor);
}
