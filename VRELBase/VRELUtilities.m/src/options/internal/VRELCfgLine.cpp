#include "VRELCfgLine.h"

#include <cstring>

namespace {

bool IsWhiteSpace(char byte) {
  return byte == '\t' || byte == ' ' || byte == '\r' || byte == '\n';
}

// Returns the separator of a trimmed key line; null if there is none, or nothing on one side of it.
char* FindSeparator(char* line) {
  char* separator = std::strchr(line, '=');
  if (separator == nullptr) separator = std::strchr(line, ':');
  bool const isComplete = separator != nullptr && separator != line && separator[1] != '\0';
  return isComplete ? separator : nullptr;
}

}  // namespace

char* VRELCfgLine::Trimmed(char* text) {
  while (IsWhiteSpace(*text)) ++text;
  char* end = text + std::strlen(text);
  while (end > text && IsWhiteSpace(end[-1])) --end;
  *end = '\0';
  return text;
}

VRELCfgLine VRELCfgLine::Parse(char* line) {
  line = Trimmed(line);
  if (*line == '\0' || *line == '#' || *line == ';') return {kBlank, line, nullptr};
  if (*line == '[') {
    char* const bracket = std::strrchr(line, ']');
    if (bracket == nullptr) return {kBadSection, line, nullptr};
    *bracket = '\0';
    return {kSection, Trimmed(line + 1), nullptr};
  }
  char* const separator = FindSeparator(line);
  if (separator == nullptr) return {kBadKey, line, nullptr};
  *separator = '\0';
  return {kKey, Trimmed(line), Trimmed(separator + 1)};
}
