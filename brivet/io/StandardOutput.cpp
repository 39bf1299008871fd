#include "StandardOutput.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "Descriptor.h"
#include "Diagnostics.h"

VRINResult PrintText(std::string const& text) {
  if (WriteAll(STDOUT_FILENO, text)) return VREL_S_OK;
  ReportProblem(std::string("cannot write to standard output: ") + std::strerror(errno));
  return VREL_E_FILE_SAVE;
}

void ReserveStandardStreams() {
  // open returns the lowest free descriptor.
  int descriptor = 0;
  do {
    descriptor = open("/dev/null", O_RDONLY);
  } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
  if (descriptor >= 0) close(descriptor);
}
