// Feeds VRELOptions::ReadFromFile a generated file. Checks that a file with a syntax error adds nothing, and that
// otherwise the keys above the first section are added one by one by AddOptionParseValue.
#include <cstdint>
#include <cstdio>
#include <string>

#include "Require.h"
#include "VRELCfgFile.h"
#include "VRELOptions.h"
#include "VRELStreamFormatter.h"
#include "VRELStringOutputStream.h"

namespace {

// Opens a string as a file and passes it to a function.
template <class Read>
VRINResult ReadText(std::string text, Read const& read) {
  std::FILE* const stream = fmemopen(text.data(), text.size(), "r");
  Require(stream != nullptr, "the system opens a file in memory");
  VRINResult const result = read(stream);
  std::fclose(stream);
  return result;
}

std::string Dumped(VRELOptions const& options) {
  VRELStringOutputStream out;
  {
    VRELStreamFormatter formatter(&out);
    options.DumpOptions(formatter);
  }
  out.writeChar('\0');
  return out.contents();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(bytes), size);
  VRELOptions options;
  VRINResult const result = ReadText(text, [&](std::FILE* stream) { return options.ReadFromFile(stream); });

  VRELCfgFile file;
  if (ReadText(text, [&](std::FILE* stream) { return file.Load(stream); }) != VREL_S_OK) {
    Require(result == VREL_E_FAIL && options.Size() == 0, "a file with a syntax error adds nothing");
    return 0;
  }
  Require(result == VREL_S_OK, "a file without syntax errors is read");
  VRELOptions expected;
  VRELCfgFileSection const* const section = file.findSection("");
  for (int i = 0; section != nullptr && i < section->GetNumKeys(); ++i) {
    VRELCfgFileKey const& key = *section->GetKey(i);
    expected.AddOptionParseValue(key.GetName(), key.GetAllValues());
  }
  Require(options.Size() == expected.Size(), "each key of the default section is added");
  Require(Dumped(options) == Dumped(expected), "options have the values of their lines");
  return 0;
}
