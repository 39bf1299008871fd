#include "Gk_RWString.h"

#include <algorithm>
#include <cctype>

char& Gk_RWString::operator[](int index) {
  if (char* const byte = writable(index)) return *byte;
  static thread_local char spare;
  spare = '\0';
  return spare;
}

void Gk_RWString::toLower() {
  std::string_view const view = visible();
  char* const begin = const_cast<char*>(view.data());
  std::transform(begin, begin + view.size(), begin,
                 [](unsigned char byte) { return static_cast<char>(std::tolower(byte)); });
}
