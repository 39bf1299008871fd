#include "VRELStringTokenizer.h"

VRELStringTokenizer::VRELStringTokenizer(VRELString const& text, wchar_t separator) {
  Initialize(text, separator);
}

VRELStringTokenizer::VRELStringTokenizer(char const* text, wchar_t separator) {
  Initialize(VRELString(text), separator);
}

int VRELStringTokenizer::GetTokenCount() const {
  return tokens.size();
}

VRINResult VRELStringTokenizer::GetToken(int index, VRELString& out) const {
  if (index < 0 || index >= tokens.size()) return VREL_E_FAIL;
  out = tokens[index];
  return VREL_S_OK;
}

void VRELStringTokenizer::Initialize(VRELString const& text, wchar_t separator) {
  auto const unit = static_cast<unsigned short>(separator);
  int const length = text.length();
  if (length < 1) return;
  int count = 1;
  for (int found = text.indexOf(unit); found != -1; found = text.indexOf(unit, found + 1)) ++count;
  tokens.reserve(count);
  int position = 0;
  while (position != -1) {
    int const found = text.indexOf(unit, position);
    tokens.addMoved(text.substring(position, found == -1 ? length : found));
    position = found == -1 ? -1 : found + 1;
  }
}
