#include "Manifest.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string_view>
#include <vector>

#include "VRELCfgFile.h"
#include "VRELCfgFileKey.h"
#include "VRELCfgFileSection.h"

namespace {

struct FileCloser {
  void operator()(std::FILE* stream) const noexcept { std::fclose(stream); }
};

std::vector<std::string> Split(std::string const& list) {
  std::vector<std::string> items;
  for (std::size_t at = 0; at < list.size();) {
    std::size_t const end = list.find(',', at);
    items.push_back(list.substr(at, end - at));
    at = end == list.npos ? list.size() : end + 1;
  }
  return items;
}

// Thrown by value: what is wrong with the manifest.
struct Problem {
  std::string text;
};

class ManifestParser {
 public:
  explicit ManifestParser(std::string& bytes) {
    std::unique_ptr<std::FILE, FileCloser> const stream(fmemopen(bytes.data(), bytes.size(), "r"));
    if (stream == nullptr) throw std::bad_alloc();
    if (file.Load(stream.get()).IsFailure()) throw Problem{std::string("damaged manifest: ") + file.GetErrorMessage(0)};
  }

  ModuleDescription Parse() {
    ModuleDescription module;
    section = "";
    module.sdkVersion = ParseNumber(Get("sdk"));
    module.name = Get("module");
    module.title = Find("title");
    module.version = Get("version");
    for (std::string const& name : Split(Get("formats"))) module.formats.push_back(ParseFormat(name));
    return module;
  }

 private:
  FormatDescription ParseFormat(std::string const& name) {
    FormatDescription format;
    section = name;
    format.name = name;
    format.title = Get("title");
    format.component = Find("component");
    format.mediaType = Find("media type");
    format.extensions = Split(Get("extensions"));
    for (std::string const& each : Split(Find("signatures"))) format.signatures.push_back(ParseSignature(each));
    format.reads = GetBool("reads");
    format.writes = GetBool("writes");
    format.evaluates = Find("evaluates") == "TRUE";
    format.usesShapes = Find("uses shapes") == "TRUE";
    std::string const readerOptions = Find("reader options");
    std::string const writerOptions = Find("writer options");
    for (std::string const& each : Split(readerOptions)) {
      format.readerOptions.push_back(ParseOption(each, std::string(name).append(" Reader ").append(each)));
    }
    for (std::string const& each : Split(writerOptions)) {
      format.writerOptions.push_back(ParseOption(each, std::string(name).append(" Writer ").append(each)));
    }
    return format;
  }

  OptionDescription ParseOption(std::string const& name, std::string const& sectionOfOption) {
    OptionDescription option;
    section = sectionOfOption;
    option.name = name;
    if (!FindOptionType(Get("type"), option.type)) throw Problem{"damaged manifest: unknown type in [" + section + "]"};
    option.defaultValue = Find("default");
    option.choices = Split(Find("choices"));
    option.minimum = Find("minimum");
    option.maximum = Find("maximum");
    option.help = Get("help");
    return option;
  }

  Signature ParseSignature(std::string const& text) const {
    constexpr std::string_view kDigits = "0123456789abcdef";
    Signature signature;
    std::size_t const colon = text.find(':');
    if (colon == text.npos || (text.size() - colon) % 2 == 0) throw Problem{"damaged manifest: signature " + text};
    signature.offset = ParseNumber(text.substr(0, colon));
    for (std::size_t i = colon + 1; i < text.size(); i += 2) {
      std::size_t const high = kDigits.find(text[i]);
      std::size_t const low = kDigits.find(text[i + 1]);
      if (high == kDigits.npos || low == kDigits.npos) throw Problem{"damaged manifest: signature " + text};
      signature.bytes += static_cast<char>(high * 16 + low);
    }
    return signature;
  }

  static int ParseNumber(std::string const& text) {
    bool const isNumber = !text.empty() && text.size() <= 6 && text.find_first_not_of("0123456789") == text.npos;
    if (!isNumber) throw Problem{"damaged manifest: '" + text + "' is not a number"};
    return std::atoi(text.c_str());
  }

  bool GetBool(char const* key) {
    std::string const value = Get(key);
    if (value != "TRUE" && value != "FALSE") throw Problem{"damaged manifest: " + Where(key) + " is not TRUE or FALSE"};
    return value == "TRUE";
  }

  std::string Get(char const* key) const {
    std::string value = Find(key);
    if (value.empty()) throw Problem{"damaged manifest: no " + Where(key)};
    return value;
  }

  std::string Find(char const* key) const {
    VRELCfgFileSection const* const found = file.findSection(section.c_str());
    VRELCfgFileKey const* const entry = found != nullptr ? found->findKey(key) : nullptr;
    return entry != nullptr ? entry->GetAllValues().toUtf8() : "";
  }

  std::string Where(char const* key) const {
    return std::string("'") + key + "'" + (section.empty() ? "" : " in [" + section + "]");
  }

  VRELCfgFile file;
  std::string section;
};

}  // namespace

Manifest Manifest::Parse(std::string bytes, std::string const& name) {
  Manifest manifest;
  try {
    if (bytes.empty()) throw Problem{"damaged manifest: empty"};
    manifest.module = ManifestParser(bytes).Parse();
    if (manifest.module.name != name) throw Problem{"the manifest is of module '" + manifest.module.name + "'"};
    if (manifest.module.sdkVersion == BRIVET_SDK_VERSION) manifest.problem = manifest.module.InvalidReason();
  } catch (Problem const& problem) {
    manifest.problem = problem.text;
  }
  return manifest;
}
