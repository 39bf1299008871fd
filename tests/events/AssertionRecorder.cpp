// Prints the file and line of each failed assertion of some operations. This definition of Gk_ErrMgr::doAssert replaces
// that of the library in this program.
#include <cstdio>
#include <string>
#include <string_view>

#include "Gk_ErrMgr.h"
#include "Gk_String.h"
#include "Gk_StringParser.h"
#include "VRELPoint2D.h"
#include "VRELPoint3D.h"
#include "VRELStringInputStream.h"

void Gk_ErrMgr::doAssert(char const* file, int line) {
  std::string_view name(file);
  // The compiler's path of a source depends on the build; its name does not.
  if (name.substr(0, 9) != "VRELBase/") name.remove_prefix(name.rfind('/') + 1);
  bool const isFixed = name.find('/') != std::string_view::npos;
  std::printf("%.*s %s\n", static_cast<int>(name.size()), name.data(),
              isFixed ? std::to_string(line).c_str() : (line > 0 ? "line" : "no line"));
}

int main() {
  VRELStringInputStream stream(Gk_String("ab", 2));
  stream.duplicate();
  Gk_StringParser parser("12ab");
  parser.intValue();
  VRELPoint2D point(1.0, 2.0);
  VRELPoint& anyPoint = point;
  anyPoint.Add(VRELPoint3D(1.0, 2.0, 3.0));
}
