// Stream formatter for UTF-8.
#pragma once

#include "VRELStreamFormatter.h"

// Writes strings in UTF-8, where the base class writes ASCII only. Values and the file header write their strings
// through their formatter, so that they are UTF-8 too. An unpaired surrogate becomes U+FFFD.
class Utf8StreamFormatter : public VRELStreamFormatter {
 public:
  using VRELStreamFormatter::dump;
  using VRELStreamFormatter::VRELStreamFormatter;

  void dump(VRELString const& text) override;
};
