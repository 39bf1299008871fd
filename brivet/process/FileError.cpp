#include "FileError.h"

#include <cstddef>
#include <cstring>

#include "EscapedText.h"

namespace {

constexpr std::size_t kNameLimit = 600;  // bytes, so that the reason fits into an event as well

bool ContinuesCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

}  // namespace

FileError MakeFileError(VRINResult result, char const* action, std::string_view name, int error) {
  return {result, std::string("cannot ") + action + " " + QuoteName(name) + ": " + std::strerror(error), ""};
}

std::string QuoteName(std::string_view name) {
  std::string escaped;
  AppendEscapingControls(escaped, name);
  if (escaped.size() <= kNameLimit) return "'" + escaped + "'";
  std::size_t begin = escaped.size() - kNameLimit;
  while (begin < escaped.size() && ContinuesCharacter(escaped[begin])) ++begin;
  return "'..." + escaped.substr(begin) + "'";
}
