#include "Diagnostics.h"

#include <cstddef>

#include "EscapedText.h"
#include "VRELError.h"
#include "VRELInfo.h"
#include "VRELWarning.h"

namespace {

// In bytes of the channel, where a percent sign takes two. The messages of brivet fit into the rest.
constexpr std::size_t kSubjectLimit = 600;

// Returns the text as a format: the channel formats what it is given a second time, and "%%" becomes "%".
std::string FormatOf(std::string const& text, std::string const& hint) {
  std::string escaped;
  AppendEscapingControls(escaped, text);
  if (!hint.empty()) {
    escaped += "\nhint: ";
    AppendEscapingControls(escaped, hint);
  }
  std::string format;
  for (char const byte : escaped) {
    if (byte == '%') format += '%';
    format += byte;
  }
  return format;
}

bool ContinuesCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

// Returns the end of the text, which begins with a whole UTF-8 character.
std::string Shorten(std::string const& text) {
  std::string escaped;
  AppendEscapingControls(escaped, text);
  std::size_t begin = escaped.size();
  for (std::size_t length = 0; begin > 0; --begin) {
    length += escaped[begin - 1] == '%' ? 2U : 1U;
    if (length > kSubjectLimit) break;
  }
  if (begin == 0) return escaped;
  while (begin < escaped.size() && ContinuesCharacter(escaped[begin])) ++begin;
  return "..." + escaped.substr(begin);
}

void SendError(std::string const& text, std::string const& hint = "") {
  VRELError::Printf("%s", FormatOf(text, hint).c_str());
}

void SendWarning(std::string const& text, std::string const& hint = "") {
  VRELWarning::Printf("%s", FormatOf(text, hint).c_str());
}

}  // namespace

void ReportProblem(std::string const& text) {
  SendError(text);
}

void ReportProblem(std::string const& subject, std::string const& text) {
  SendError(Shorten(subject) + ": " + text);
}

void ReportWarning(std::string const& subject, std::string const& text) {
  SendWarning(Shorten(subject) + ": " + text);
}

void ReportMessage(std::string const& text) {
  VRELInfo::Printf("%s", FormatOf(text, "").c_str());
}

void ReportErrorAt(SourceLocation const& location, std::string const& text, std::string const& hint) {
  SendError(FormatLocation(location) + ": error: " + text, hint);
}

void ReportWarningAt(SourceLocation const& location, std::string const& text, std::string const& hint) {
  SendWarning(FormatLocation(location) + ": warning: " + text, hint);
}

std::string FormatLocation(SourceLocation const& location) {
  std::string text = Shorten(location.file);
  if (location.line > 0) text += ":" + std::to_string(location.line);
  if (location.line > 0 && location.column > 0) text += ":" + std::to_string(location.column);
  return text;
}

bool HasLocation(std::string const& message) {
  return message.find(": error: ") != std::string::npos || message.find(": warning: ") != std::string::npos;
}
