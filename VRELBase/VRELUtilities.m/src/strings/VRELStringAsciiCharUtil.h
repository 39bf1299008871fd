// A short-lived char view of a text.
#pragma once

#include <memory>

#include "VRELExport.h"
#include "VRELString.h"

// Holds the text in US-ASCII, as long as the object lives. Characters outside ASCII are 0x1A, or underscores if asked
// for.
//
//   std::fputs(VRELStringAsciiCharUtil(name, true), file);
class VREL_EXPORT VRELStringAsciiCharUtil {
 public:
  VRELStringAsciiCharUtil(VRELString const& text, bool substToUnderscore);
  virtual ~VRELStringAsciiCharUtil() = default;
  VRELStringAsciiCharUtil(VRELStringAsciiCharUtil const&) = delete;
  VRELStringAsciiCharUtil& operator=(VRELStringAsciiCharUtil const&) = delete;

  // Null for an uninitialized text.
  operator char const*() const noexcept { return text.get(); }

 private:
  std::unique_ptr<char[]> text;
};
