#include "VRELStringAsciiCharUtil.h"

VRELStringAsciiCharUtil::VRELStringAsciiCharUtil(VRELString const& source, bool substToUnderscore) {
  int const size = source.getConvertToMBCSSize(VRELString::CODEPAGE_NAME_ASCII);
  if (size <= 0) return;
  text.reset(new char[static_cast<std::size_t>(size)]);
  source.convertToMBCS(text.get(), size, VRELString::CODEPAGE_NAME_ASCII, substToUnderscore);
}
