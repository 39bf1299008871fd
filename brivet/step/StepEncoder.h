// Encoder for the strings of ISO 10303-21 clear text.
#pragma once

#include <memory>
#include <string>

#include "DocumentVisitor.h"

struct UConverter;

// Encodes decoded strings again: ASCII as it is, with apostrophes and backslashes doubled; other characters as the
// bytes of the encoding or, if it does not have them, as escapes (\X2\, \X4\ beyond U+FFFF, \X\ for control
// characters).
class StepEncoder {
 public:
  StepEncoder();
  ~StepEncoder();

  // Sets the encoding by a name that ICU knows. Returns false, and changes nothing, if the name is unknown or if the
  // encoding does not contain ASCII with its usual bytes.
  bool SetEncoding(std::string const& name);
  // Returns whether an encoding is set.
  bool IsActive() const noexcept { return converter != nullptr; }

  // Returns the string with its apostrophes.
  // Requires: IsActive.
  std::string Encode(DocumentVisitor::Text const& text) const;

 private:
  struct Close {
    void operator()(UConverter* opened) const;
  };

  // Appends the character in the encoding. Returns false if the encoding does not have it.
  bool AppendBytes(std::string& target, int character) const;

  std::unique_ptr<UConverter, Close> converter;
};
