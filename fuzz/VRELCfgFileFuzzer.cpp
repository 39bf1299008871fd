// Feeds VRELCfgFile a generated file. Compares sections, keys, values and messages with a model of the format, and
// checks that every typed read accepts what Gk_StringParser accepts, and sets its target or adds an error.
#include "VRELCfgFile.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "Gk_StringParser.h"
#include "Require.h"

namespace {

struct Key {
  std::string name;
  std::vector<std::string> values;
};

struct Section {
  std::string name;
  std::vector<Key> keys;
};

std::string Trimmed(std::string const& text) {
  std::size_t const first = text.find_first_not_of("\t \r\n");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of("\t \r\n") - first + 1);
}

// Simple model of the format.
struct Model {
  explicit Model(std::string const& file) {
    sections.push_back({});
    long number = 0;
    for (std::size_t at = 0; at < file.size();) {
      std::size_t const feed = std::min(file.find('\n', at), file.size() - 1);
      std::size_t const length = std::min<std::size_t>(feed + 1 - at, 1023);
      std::string const piece = file.substr(at, length);
      Read(Trimmed(piece.c_str()), ++number);
      at += length;
    }
  }

  void Read(std::string const& line, long number) {
    if (line.empty() || line[0] == '#' || line[0] == ';') return;
    if (line[0] == '[') {
      std::size_t const end = line.rfind(']');
      if (end == std::string::npos) {
        Error(number, line, "\"[section name]' expected.");
      } else {
        Enter(Trimmed(line.substr(1, end - 1)));
      }
      return;
    }
    std::size_t mark = line.find('=');
    if (mark == std::string::npos) mark = line.find(':');
    std::string const name = Trimmed(line.substr(0, mark));
    std::string const text = mark == std::string::npos ? "" : Trimmed(line.substr(mark + 1));
    if (name.empty() || text.empty()) {
      Error(number, line, "\"key=value\" expected");
      return;
    }
    Key key{name, {}};
    std::size_t at = 0;
    for (std::size_t comma = text.find(','); comma != std::string::npos; comma = text.find(',', at)) {
      key.values.push_back(text.substr(at, comma - at));
      at = comma + 1;
    }
    key.values.push_back(text.substr(at));
    sections[current].keys.push_back(key);
  }

  void Enter(std::string const& name) {
    auto const known =
        std::find_if(sections.begin(), sections.end(), [&](Section const& section) { return section.name == name; });
    current = static_cast<std::size_t>(known - sections.begin());
    if (known == sections.end()) sections.push_back({name, {}});
  }

  void Error(long number, std::string const& line, char const* expected) {
    errors.push_back("Incorrect syntax: line " + std::to_string(number) + ":" + line + " *** " + expected);
  }

  std::vector<Section> sections;
  std::vector<std::string> errors;
  std::size_t current = 0;
};

void Compare(VRELCfgFile const& file, Model const& model) {
  for (Section const& expected : model.sections) {
    VRELCfgFileSection const* const section = file.findSection(expected.name.c_str());
    Require(section != nullptr, "each section is found");
    Require(section->GetSectionName() == expected.name.c_str(), "a section is found by its name");
    Require(section->GetNumKeys() == static_cast<int>(expected.keys.size()), "a section has each key");
    for (int i = 0; i < section->GetNumKeys(); ++i) {
      Key const& key = expected.keys[static_cast<std::size_t>(i)];
      VRELCfgFileKey const& read = *section->GetKey(i);
      Require(read.GetName().equals(VRELString(key.name.c_str())), "a key has its name");
      Require(read.GetNumValues() == static_cast<int>(key.values.size()), "a key has each value");
      for (int j = 0; j < read.GetNumValues(); ++j) {
        VRELString const value(key.values[static_cast<std::size_t>(j)].c_str());
        Require(read.GetValue(j).equals(value), "values are separated by commas");
      }
    }
  }
  Require(file.GetErrorCount() == static_cast<int>(model.errors.size()), "each bad line adds an error");
  for (int i = 0; i < file.GetErrorCount(); ++i) {
    Require(file.GetErrorMessage(i) == model.errors[static_cast<std::size_t>(i)], "a message has the line");
  }
}

// Counts the errors of typed reads.
struct Reads {
  VRELCfgFile& file;
  int errors = file.GetErrorCount();

  void Check(int result, bool fits, bool changed) {
    if (!fits) ++errors;
    Require(result == (fits ? 1 : 0), "a typed read accepts what its parser accepts");
    Require(fits || !changed, "a failed read keeps its target");
    Require(file.GetErrorCount() == errors, "a failed read adds one error");
  }
};

void ReadValue(Reads& reads, char const* section, char const* key, VRELString const& value, int index) {
  VRELString text;
  Require(reads.file.GetString(key, text, index, section) == 1 && text.equals(value), "a string is read unchanged");

  Gk_StringParser parser(value);
  bool const isInteger = value.length() != 0 && parser.isInteger(0);
  bool const isReal = value.length() != 0 && parser.isReal(0);
  bool const isWord = value.equalsIgnoreCase(L"true") || value.equalsIgnoreCase(L"false");
  int const integer = isInteger ? parser.intValue() : 0;

  double real = -4.25;
  reads.Check(reads.file.GetDouble(key, real, index, section), isReal, real != -4.25);
  int number = -77;
  reads.Check(reads.file.GetInt(key, number, index, section), isInteger, number != -77);
  if (isInteger) Require(number == integer, "an integer is that of Gk_StringParser");
  int logical = -77;
  bool const isLogical = isWord || (isInteger && (integer == 0 || integer == 1));
  reads.Check(reads.file.GetLogical(key, logical, index, section), isLogical, logical != -77);
  bool truth = false;
  reads.Check(reads.file.GetBool(key, truth, index, section), isWord, truth);
}

void ReadValues(VRELCfgFile& file, Model const& model) {
  constexpr int most = 6;  // limits the time for long inputs
  Reads reads{file};
  int seen = 0;
  for (Section const& section : model.sections) {
    for (Key const& key : section.keys) {
      if (++seen > most) return;
      VRELCfgFileKey const* const read = file.findSection(section.name.c_str())->findKey(key.name.c_str());
      Require(read != nullptr && file.ExistKey(key.name.c_str(), section.name.c_str()), "a key is found by its name");
      int const count = file.GetArraySize(key.name.c_str(), section.name.c_str());
      Require(count == read->GetNumValues(), "the first key of a name is read");
      for (int i = -1; i <= std::min(count, most); ++i) {
        ReadValue(reads, section.name.c_str(), key.name.c_str(), read->GetValue(i), i);
      }
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::string text(reinterpret_cast<char const*>(bytes), size);
  std::FILE* const stream = fmemopen(text.data(), text.size(), "r");
  Require(stream != nullptr, "the system opens a file in memory");
  VRELCfgFile file;
  VRINResult const result = file.Load(stream);
  std::fclose(stream);

  Model const model(text);
  Require(result == (model.errors.empty() ? VREL_S_OK : VREL_E_FAIL), "the result reports errors");
  Compare(file, model);
  ReadValues(file, model);
  return 0;
}
