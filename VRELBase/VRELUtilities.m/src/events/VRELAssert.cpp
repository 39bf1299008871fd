#include "VRELAssert.h"

#include <cstdarg>
#include <cstdlib>

#include "VRELAssertEvent.h"
#include "VRELChannelLine.h"
#include "VRELErrorEvent.h"

VRELAssert::~VRELAssert() = default;

void VRELAssert::Printf(char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  VRELSendLine<VRELAssertEvent>(0, format, arguments);
  va_end(arguments);
}

void VRELAssert(bool condition, char const* message) {
  if (condition) return;
  VRELSendLine<VRELErrorEvent>(message);
  std::exit(0);
}
