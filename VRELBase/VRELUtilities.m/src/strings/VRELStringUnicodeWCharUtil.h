// Temporary wide-character form of a string.
#pragma once

#include <memory>

#include "VRELExport.h"
#include "VRELString.h"

// Converts a string to wide characters (UTF-32) for the lifetime of the object.
//
//   std::fputws(VRELStringUnicodeWCharUtil(name), file);
//
// Ownership: the object owns the characters, so that the pointer is valid as long as the object.
class VREL_EXPORT VRELStringUnicodeWCharUtil {
 public:
  explicit VRELStringUnicodeWCharUtil(VRELString const& text);
  virtual ~VRELStringUnicodeWCharUtil() = default;
  VRELStringUnicodeWCharUtil(VRELStringUnicodeWCharUtil const&) = delete;
  VRELStringUnicodeWCharUtil& operator=(VRELStringUnicodeWCharUtil const&) = delete;

  // Returns the characters; null for an uninitialized string and for invalid UTF-16.
  operator wchar_t const*() const noexcept { return text.get(); }

 private:
  std::unique_ptr<wchar_t[]> text;
};
