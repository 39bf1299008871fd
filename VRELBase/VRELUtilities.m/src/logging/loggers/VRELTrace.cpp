#include "VRELTrace.h"

#include <cstdarg>
#include <string_view>

#include "VRELChannelLine.h"
#include "VRELDebugEvent.h"
#include "VRELEnvironment.h"
#include "VRELErrorEvent.h"
#include "VRELMessageEvent.h"
#include "VRELString.h"

VRELTrace::VRELTrace(char const* name) : enabled(false) {
  VRELString names;
  if (name == nullptr || VRELEnvironment::GetVariable(L"VRELLoggers", names).IsFailure()) return;
  enabled = names.view().find(VRELString(name).view()) != std::u16string_view::npos;
}

VRELTrace::~VRELTrace() = default;

void VRELTrace::Printf(VRELTraceLevel level, char const* format, ...) const {
  if (!enabled) return;
  va_list arguments;
  va_start(arguments, format);
  switch (level) {
    case VREL_TRACE_DEBUG:
      VRELSendLine<VRELDebugEvent>(0, format, arguments);
      break;
    case VREL_TRACE_MESSAGE:
      VRELSendLine<VRELMessageEvent>(0, format, arguments);
      break;
    case VREL_TRACE_ERROR:
      VRELSendLine<VRELErrorEvent>(0, format, arguments);
      break;
  }
  va_end(arguments);
}
