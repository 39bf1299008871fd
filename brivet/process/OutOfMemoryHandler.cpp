#include "OutOfMemoryHandler.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <exception>

#include "VRINResult.h"

namespace {

bool isQuiet = false;
std::terminate_handler handlerBefore = nullptr;

bool AsksForQuiet(char const* word) {
  char const* const name = word + (std::strncmp(word, "--", 2) == 0 ? 2 : 1);
  return word[0] == '-' && *name != '\0' && std::strncmp(name, "quiet", std::strlen(name)) == 0;
}

[[noreturn]] void End() {
  _exit(OutOfMemoryHandler::Tell());
}

// Runs before the libraries come up.
void Arm(int count, char** arguments, char** /*environment*/) {
  char** const end =
      std::find_if(arguments, arguments + count, [](char const* word) { return !std::strcmp(word, "--"); });
  isQuiet = std::any_of(arguments, end, AsksForQuiet);
  handlerBefore = std::set_terminate(End);
}

__attribute__((section(".preinit_array"), used)) void (*const armed)(int, char**, char**) = Arm;

}  // namespace

int OutOfMemoryHandler::Tell() noexcept {
  constexpr char TEXT[] = "brivet: expected more memory, found no more; close other programs or split the file\n";
  if (!isQuiet && write(STDERR_FILENO, TEXT, sizeof TEXT - 1) < 0) {
    // There is nobody left to tell.
  }
  return static_cast<int>(VRINResult(VREL_E_UNEXPECTED).GetReturnCode());
}

void OutOfMemoryHandler::Disarm() noexcept {
  std::set_terminate(handlerBefore);
}
