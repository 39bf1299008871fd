// brivet-describe: writes the manifest of a format module.
//
// brivet-describe MODULE [MANIFEST]    loads the module, checks its description and its entry points, and writes the
//                                      manifest to the file, or to standard output
#include <dlfcn.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>
#include <string>

#include "BrivetModule.h"
#include "ModuleDescription.h"

namespace {

void* FindFunction(void* module, char const* name, char const* reason) {
  void* const function = dlsym(module, name);
  if (function == nullptr) throw std::runtime_error(std::string("no function ") + name + reason);
  return function;
}

ModuleDescription Describe(std::string const& path) {
  std::string const file = path.find('/') == path.npos ? "./" + path : path;
  void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) throw std::runtime_error(std::string("cannot load the module: ") + dlerror());
  constexpr char kHint[] = "; define it by BRIVET_DESCRIBE_MODULE";
  auto const version =
      reinterpret_cast<BrivetSdkVersionFunction*>(FindFunction(module, BRIVET_SDK_VERSION_FUNCTION, kHint));
  if (version() != BRIVET_SDK_VERSION) {
    throw std::runtime_error("the module was built for version " + std::to_string(version()) + " of the SDK, this is " +
                             std::to_string(BRIVET_SDK_VERSION));
  }
  ModuleDescription description;
  reinterpret_cast<BrivetDescribeFunction*>(FindFunction(module, BRIVET_DESCRIBE, kHint))(description);
  std::string const fault = description.InvalidReason();
  if (!fault.empty()) throw std::runtime_error("invalid description: " + fault);
  std::string const name = "lib" + description.name + ".so";
  if (file.substr(file.rfind('/') + 1) != name) {
    throw std::runtime_error("invalid description: a module of this name is in " + name);
  }
  for (char const* entry : {BRIVET_INITIALIZE, BRIVET_FINALIZE}) FindFunction(module, entry, "");
  for (FormatDescription const& format : description.formats) {
    std::string const reason = ", but the description says that " + format.name + " is ";
    if (format.reads) FindFunction(module, BRIVET_OPEN, (reason + "read").c_str());
    if (format.writes) FindFunction(module, BRIVET_WRITE, (reason + "written").c_str());
    if (format.evaluates) FindFunction(module, BRIVET_EVALUATE, (reason + "evaluated").c_str());
  }
  return description;
}

// A line of a configuration file has at most 1023 bytes.
void AddKey(std::string& text, char const* key, std::string const& value) {
  if (value.size() > 1000)
    throw std::runtime_error(std::string("invalid description: the list of ") + key + " is too long");
  if (!value.empty()) text += std::string(key) + " = " + value + "\n";
}

template <class Items, class NameOfItem>
std::string Join(Items const& items, NameOfItem const& nameOfItem) {
  std::string list;
  for (auto const& item : items) list += (list.empty() ? "" : ",") + nameOfItem(item);
  return list;
}

std::string Itself(std::string const& text) {
  return text;
}

std::string NameOfOption(OptionDescription const& option) {
  return option.name;
}

// "0:736f6c6964"
std::string ShowSignature(Signature const& signature) {
  std::string text = std::to_string(signature.offset) + ":";
  for (char const byte : signature.bytes) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(static_cast<unsigned char>(byte)));
    text += digits;
  }
  return text;
}

void AddOptions(std::string& text, std::string const& section, std::vector<OptionDescription> const& options) {
  for (OptionDescription const& option : options) {
    text += "\n[" + section + option.name + "]\n";
    AddKey(text, "type", NameOf(option.type));
    AddKey(text, "default", option.defaultValue);
    AddKey(text, "choices", Join(option.choices, Itself));
    AddKey(text, "minimum", option.minimum);
    AddKey(text, "maximum", option.maximum);
    AddKey(text, "help", option.help);
  }
}

std::string ManifestOf(ModuleDescription const& module) {
  std::string text = "# Written by brivet-describe.\n";
  AddKey(text, "sdk", std::to_string(module.sdkVersion));
  AddKey(text, "module", module.name);
  AddKey(text, "title", module.title);
  AddKey(text, "version", module.version);
  AddKey(text, "formats", Join(module.formats, [](FormatDescription const& format) { return format.name; }));
  for (FormatDescription const& format : module.formats) {
    text += "\n[" + format.name + "]\n";
    AddKey(text, "title", format.title);
    AddKey(text, "component", format.component);
    AddKey(text, "media type", format.mediaType);
    AddKey(text, "extensions", Join(format.extensions, Itself));
    AddKey(text, "signatures", Join(format.signatures, ShowSignature));
    AddKey(text, "reads", format.reads ? "TRUE" : "FALSE");
    AddKey(text, "writes", format.writes ? "TRUE" : "FALSE");
    AddKey(text, "evaluates", format.evaluates ? "TRUE" : "");
    AddKey(text, "uses shapes", format.usesShapes ? "TRUE" : "");
    AddKey(text, "reader options", Join(format.readerOptions, NameOfOption));
    AddKey(text, "writer options", Join(format.writerOptions, NameOfOption));
    AddOptions(text, format.name + " Reader ", format.readerOptions);
    AddOptions(text, format.name + " Writer ", format.writerOptions);
  }
  return text;
}

void Write(std::string const& path, std::string const& text) {
  std::FILE* const file = std::fopen(path.c_str(), "w");
  bool const isWritten = file != nullptr && std::fputs(text.c_str(), file) >= 0;
  if (file == nullptr || std::fclose(file) != 0 || !isWritten) throw std::runtime_error("cannot write " + path);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2 && count != 3) {
    std::fputs("usage: brivet-describe MODULE [MANIFEST]\n", stderr);
    return 2;
  }
  try {
    std::string const text = ManifestOf(Describe(arguments[1]));
    if (count == 3) {
      Write(arguments[2], text);
    } else {
      std::fputs(text.c_str(), stdout);
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
  } catch (std::exception const& error) {
    std::fprintf(stderr, "brivet-describe: %s: %s\n", arguments[1], error.what());
    return 1;
  }
}
