#include "OptionSource.h"

#include <cstring>

#include "VRELCfgFile.h"

namespace {

std::string Trimmed(std::string text) {
  VRELCfgFile::removeWhiteSpaces(text.data());
  text.resize(std::strlen(text.c_str()));
  return text;
}

}  // namespace

bool SplitSetting(std::string const& text, std::string& name, std::string& value) {
  std::size_t const separator = text.find('=');
  if (separator == text.npos) return false;
  name = Trimmed(text.substr(0, separator));
  value = Trimmed(text.substr(separator + 1));
  return true;
}

bool HasEmptyToken(std::string_view name) {
  return name.empty() || name.front() == '.' || name.back() == '.' || name.find("..") != name.npos;
}
