// Temporary US-ASCII form of a string.
#pragma once

#include <memory>

#include "VRELExport.h"
#include "VRELString.h"

// Converts a string to US-ASCII for the lifetime of the object. Characters outside ASCII become 0x1A, or underscores
// with substToUnderscore.
//
//   std::fputs(VRELStringAsciiCharUtil(name, true), file);
//
// Ownership: the object owns the bytes, so that the pointer is valid as long as the object.
class VREL_EXPORT VRELStringAsciiCharUtil {
 public:
  VRELStringAsciiCharUtil(VRELString const& text, bool substToUnderscore);
  virtual ~VRELStringAsciiCharUtil() = default;
  VRELStringAsciiCharUtil(VRELStringAsciiCharUtil const&) = delete;
  VRELStringAsciiCharUtil& operator=(VRELStringAsciiCharUtil const&) = delete;

  // Returns the bytes; null for an uninitialized string.
  operator char const*() const noexcept { return text.get(); }

 private:
  std::unique_ptr<char[]> text;
};
