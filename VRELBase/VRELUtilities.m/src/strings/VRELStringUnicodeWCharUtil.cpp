#include "VRELStringUnicodeWCharUtil.h"

VRELStringUnicodeWCharUtil::VRELStringUnicodeWCharUtil(VRELString const& source) {
  int const size = source.getConvertToWideCharacterSize();
  if (size <= 0) return;
  text.reset(new wchar_t[static_cast<std::size_t>(size)]);
  if (source.convertToWideCharacter(text.get(), size).IsFailure()) text.reset();
}
