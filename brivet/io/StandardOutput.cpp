#include "StandardOutput.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "Descriptor.h"
#include "Diagnostics.h"

VRINResult PrintPage(std::string const& page) {
  if (WriteAll(STDOUT_FILENO, page)) return VREL_S_OK;
  ReportProblem("standard output", std::string("expected a place to write to, found: ") + std::strerror(errno) +
                                       "; make room, or send it elsewhere");
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
