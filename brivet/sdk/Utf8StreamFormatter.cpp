#include "Utf8StreamFormatter.h"

#include "VRELString.h"

void Utf8StreamFormatter::dump(VRELString const& text) {
  dump(text.toUtf8().c_str());
}
