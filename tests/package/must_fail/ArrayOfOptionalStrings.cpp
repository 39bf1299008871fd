// An optional or a pair is as movable as its elements.
// error: VRELIsByteMovable
#include <optional>
#include <string>
#include <utility>

#include "VRELDynamicArray.h"

void Use() {
#ifdef WRONG
  VRELDynamicArray<std::optional<std::pair<int, std::string>>> pairs;
#else
  VRELDynamicArray<std::optional<std::pair<int, double>>> pairs;
#endif
  pairs.endGrow(1);
}
