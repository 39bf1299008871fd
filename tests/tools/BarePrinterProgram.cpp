// Defines variables of classes that only the library describes to a debugger, and waits for it.
#include <sys/prctl.h>
#include <unistd.h>

#include "VRELDynamicArray.h"
#include "VRELReferenceHandle.h"
#include "VRELString.h"

namespace shop {

struct Drawing {
  VRELString title;
};

}  // namespace shop

// A class of another library, about which the printers say nothing.
class Undefined;

int main() {
  VRELString const text(L"bracket");
  VRELDynamicArray<VRELString> const names(1, text);
  shop::Drawing const drawing = {text};
  VRELReferenceHandle const handle;
  auto const* const undefined = reinterpret_cast<Undefined const*>(&text);

  // By default a debugger may attach only to its own children.
  prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY);
  char byte = '\n';
  if (write(STDOUT_FILENO, &byte, 1) != 1) return 1;
  while (read(STDIN_FILENO, &byte, 1) > 0) {
  }
  return undefined != nullptr && drawing.title == names[0] ? 0 : 1;
}
