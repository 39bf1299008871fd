// A formatter for pages in UTF-8.
#pragma once

#include "VRELStreamFormatter.h"

// Writes texts in UTF-8, where a plain formatter knows no characters beyond ASCII. Since values and the file header
// write their texts through their formatter, they come out readable too. Half a surrogate pair becomes U+FFFD.
class Utf8StreamFormatter : public VRELStreamFormatter {
 public:
  using VRELStreamFormatter::dump;
  using VRELStreamFormatter::VRELStreamFormatter;

  void dump(VRELString const& text) override;
};
