#include "Diagnostics.h"

#include <cstddef>

#include "VRELError.h"
#include "VRELInfo.h"
#include "VRELWarning.h"

namespace {

// In bytes of the channel, in which a percent sign has two. The texts of brivet fit into what this leaves.
constexpr std::size_t SUBJECT_LIMIT = 600;

// A channel formats its text a second time, when a doubled percent sign becomes one.
std::string ForChannel(std::string const& text) {
  std::string escaped;
  for (char const byte : text) {
    if (byte == '%') escaped += '%';
    escaped += byte == '\0' ? '?' : byte;
  }
  return escaped;
}

bool ContinuesCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

// The end of the text; UTF-8 is cut between characters.
std::string Shorten(std::string const& text) {
  std::size_t begin = text.size();
  for (std::size_t cost = 0; begin > 0; --begin) {
    cost += text[begin - 1] == '%' ? 2 : 1;
    if (cost > SUBJECT_LIMIT) break;
  }
  if (begin == 0) return text;
  while (begin < text.size() && ContinuesCharacter(text[begin])) ++begin;
  return "..." + text.substr(begin);
}

}  // namespace

void ReportProblem(std::string const& text) {
  VRELError::Printf("%s", ForChannel(text).c_str());
}

void ReportProblem(std::string const& subject, std::string const& text) {
  ReportProblem(Shorten(subject) + ": " + text);
}

void ReportWarning(std::string const& subject, std::string const& text) {
  VRELWarning::Printf("%s", ForChannel(Shorten(subject) + ": " + text).c_str());
}

void ReportMessage(std::string const& text) {
  VRELInfo::Printf("%s", ForChannel(text).c_str());
}
