#include "VRELCfgFile.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <memory>

#include "Gk_StringParser.h"
#include "VRELCfgLine.h"
#include "VRELFilePath.h"
#include "VRELStringAsciiCharUtil.h"
#include "VRELStringConversions.h"

namespace {

struct FileCloser {
  void operator()(std::FILE* stream) const noexcept { std::fclose(stream); }
};

// Appends a key with its values. Overwrites the commas in `text`.
void AddKey(VRELCfgFileSection& section, char const* name, char* text) {
  auto const commas = std::count(text, text + std::strlen(text), ',');
  VRELCfgFileKey* const key = section.createKey(name, static_cast<int>(commas) + 1);
  while (char* const comma = std::strchr(text, ',')) {
    *comma = '\0';
    key->AppendValue(text);
    text = comma + 1;
  }
  key->AppendValue(text);
}

bool ParseDouble(VRELString const& text, double& value) {
  Gk_StringParser parser(text);
  if (!parser.isReal(0)) return false;
  value = parser.realValue();
  return true;
}

bool ParseInt(VRELString const& text, int& value) {
  Gk_StringParser parser(text);
  if (!parser.isInteger(0)) return false;
  value = parser.intValue();
  return true;
}

bool ParseBool(VRELString const& text, bool& value) {
  bool const isTrue = VRELStringIsWord(text, u"true");
  if (!isTrue && !VRELStringIsWord(text, u"false")) return false;
  value = isTrue;
  return true;
}

bool ParseLogical(VRELString const& text, int& value) {
  bool truth = false;
  int number = -1;
  if (ParseBool(text, truth)) {
    number = truth ? 1 : 0;
  } else if (!ParseInt(text, number) || (number != 0 && number != 1)) {
    return false;
  }
  value = number;
  return true;
}

}  // namespace

VRELCfgFile::VRELCfgFile() = default;

VRELCfgFile::~VRELCfgFile() {
  for (VRELCfgFileSection const* const section : sections) delete section;
}

VRINResult VRELCfgFile::Load(std::FILE* stream) {
  if (stream == nullptr) return VREL_E_INVALID_ARGUMENT;
  char line[1024];
  VRELCfgFileSection* current = createSection("");
  for (long lineNumber = 1; std::fgets(line, sizeof line, stream) != nullptr; ++lineNumber) {
    ReadLine(line, lineNumber, current);
  }
  if (GetErrorCount() > 0) return VREL_E_FAIL;
  return VREL_S_OK;
}

VRINResult VRELCfgFile::Load(VRELFilePath const& path) {
  if (!path.IsValid()) return VREL_E_INVALID_ARGUMENT;
  std::unique_ptr<std::FILE, FileCloser> const stream(path.OpenFile("rt"));
  if (stream == nullptr) return VREL_E_FILE_OPEN;
  return Load(stream.get());
}

void VRELCfgFile::ReadLine(char* line, long lineNumber, VRELCfgFileSection*& current) {
  VRELCfgLine const parsed = VRELCfgLine::Parse(line);
  switch (parsed.kind) {
    case VRELCfgLine::kBlank:
      break;
    case VRELCfgLine::kSection:
      current = createSection(parsed.text);
      break;
    case VRELCfgLine::kKey:
      AddKey(*current, parsed.text, parsed.value);
      break;
    case VRELCfgLine::kBadSection:
      // Compatibility: the quotation marks do not match.
      flagError("Incorrect syntax: line %ld:%s *** \"[section name]' expected.", lineNumber, parsed.text);
      break;
    case VRELCfgLine::kBadKey:
      flagError("Incorrect syntax: line %ld:%s *** \"key=value\" expected", lineNumber, parsed.text);
      break;
  }
}

VRELCfgFileSection* VRELCfgFile::findSection(char const* name) const {
  return sectionIndex.Find(sections.begin(), sections.size(), name != nullptr ? name : "",
                           [](VRELCfgFileSection const& section) { return section.GetSectionName().text(); });
}

VRELCfgFileSection* VRELCfgFile::createSection(char const* name) {
  VRELCfgFileSection* const found = findSection(name);
  if (found != nullptr) return found;
  auto section = std::make_unique<VRELCfgFileSection>(name);
  sections.add(section.get());
  return section.release();
}

char const* VRELCfgFile::GetErrorMessage(int index) const {
  return index >= 0 && index < errorMessages.size() ? static_cast<char const*>(errorMessages[index]) : nullptr;
}

void VRELCfgFile::flagError(char const* format, ...) {
  if (format == nullptr) return;
  char text[4096];
  text[0] = '\0';
  va_list arguments;
  va_start(arguments, format);
  static_cast<void>(std::vsnprintf(text, sizeof text, format, arguments));
  va_end(arguments);
  errorMessages.add(Gk_String(text));
}

void VRELCfgFile::removeWhiteSpaces(char* text) {
  if (text == nullptr) return;
  char const* const rest = VRELCfgLine::Trimmed(text);
  if (rest != text) std::memmove(text, rest, std::strlen(rest) + 1);
}

VRELCfgFileKey const* VRELCfgFile::FindKey(char const* key, char const* section) const {
  VRELCfgFileSection const* const found = findSection(section);
  return found != nullptr ? found->findKey(key) : nullptr;
}

bool VRELCfgFile::ExistKey(char const* key, char const* section) const {
  return FindKey(key, section) != nullptr;
}

int VRELCfgFile::GetArraySize(char const* key, char const* section) const {
  VRELCfgFileKey const* const found = FindKey(key, section);
  return found != nullptr ? found->GetNumValues() : 0;
}

int VRELCfgFile::GetString(char const* key, VRELString& value, int index, char const* section) const {
  VRELCfgFileKey const* const found = FindKey(key, section);
  if (found == nullptr) return 0;
  value = found->GetValue(index);
  return 1;
}

template <class T, class Parse>
int VRELCfgFile::Read(char const* key, T& value, int index, char const* section, char const* expected,
                      Parse const& parse) {
  VRELCfgFileKey const* const found = FindKey(key, section);
  if (found == nullptr) return 0;
  VRELString const text = found->GetValue(index);
  if (text.length() > 0 && parse(text, value)) return 1;
  VRELStringAsciiCharUtil const narrowName(found->GetName(), false);
  char const* const name = narrowName;
  flagError("Incorrect syntax: key:%s *** %s expected.", name != nullptr ? name : "", expected);
  return 0;
}

int VRELCfgFile::GetDouble(char const* key, double& value, int index, char const* section) {
  return Read(key, value, index, section, "double value", ParseDouble);
}

int VRELCfgFile::GetInt(char const* key, int& value, int index, char const* section) {
  return Read(key, value, index, section, "integer value", ParseInt);
}

int VRELCfgFile::GetLogical(char const* key, int& value, int index, char const* section) {
  return Read(key, value, index, section, "integer \"0\" or \"1\" or string \"TRUE\" or \"FALSE\"", ParseLogical);
}

int VRELCfgFile::GetBool(char const* key, bool& value, int index, char const* section) {
  return Read(key, value, index, section, "bool value \"true\" or \"false\"", ParseBool);
}
