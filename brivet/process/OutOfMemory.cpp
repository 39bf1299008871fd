#include "OutOfMemory.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "VRINResult.h"

namespace {

// As in CommandLine, the option may be abbreviated.
bool RequestsQuiet(char const* word) {
  char const* const name = word + (std::strncmp(word, "--", 2) == 0 ? 2 : 1);
  return word[0] == '-' && *name != '\0' && std::strncmp(name, "quiet", std::strlen(name)) == 0;
}

}  // namespace

int ReportOutOfMemory(int count, char const* const* arguments) noexcept {
  constexpr char kMessage[] = "brivet: out of memory\n";
  char const* const* const end =
      std::find_if(arguments, arguments + count, [](char const* word) { return std::strcmp(word, "--") == 0; });
  bool const isQuiet = std::any_of(arguments, end, RequestsQuiet);
  if (!isQuiet && write(STDERR_FILENO, kMessage, sizeof kMessage - 1) < 0) {
    // The exit status still reports it.
  }
  return static_cast<int>(VRINResult(VREL_E_UNEXPECTED).GetReturnCode());
}
