#include "VRELStringAsciiCharUtil.h"

VRELStringAsciiCharUtil::VRELStringAsciiCharUtil(VRELString const& source, bool substToUnderscore) {
  int const size = source.getConvertToMBCSSize(VRELString::CODEPAGE_NAME_ASCII);
  if (size <= 0) return;
  auto const bytes = static_cast<std::size_t>(size);
  text.reset(new char[bytes]);
  source.convertToMBCS(text.get(), size, VRELString::CODEPAGE_NAME_ASCII, substToUnderscore);
}
