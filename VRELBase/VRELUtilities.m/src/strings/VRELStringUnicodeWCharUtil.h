// A short-lived wchar_t view of a text.
#pragma once

#include <memory>

#include "VRELExport.h"
#include "VRELString.h"

// Holds the text in wide characters (UTF-32 where they have 4 bytes), as long as the object lives.
class VREL_EXPORT VRELStringUnicodeWCharUtil {
 public:
  explicit VRELStringUnicodeWCharUtil(VRELString const& text);
  virtual ~VRELStringUnicodeWCharUtil() = default;
  VRELStringUnicodeWCharUtil(VRELStringUnicodeWCharUtil const&) = delete;
  VRELStringUnicodeWCharUtil& operator=(VRELStringUnicodeWCharUtil const&) = delete;

  // Null for an uninitialized text and for one that is no valid UTF-16.
  operator wchar_t const*() const noexcept { return text.get(); }

 private:
  std::unique_ptr<wchar_t[]> text;
};
