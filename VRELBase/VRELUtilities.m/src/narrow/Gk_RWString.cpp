#include "Gk_RWString.h"

#include <algorithm>
#include <cctype>

void Gk_RWString::toLower() {
  std::transform(bytes(), bytes() + len(), bytes(),
                 [](unsigned char byte) { return static_cast<char>(std::tolower(byte)); });
}
