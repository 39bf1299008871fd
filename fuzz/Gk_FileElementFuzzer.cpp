// Compares the name operations of Gk_FileElement and Gk_DirElement with a model on std::string. The first line is the
// path, the second line a base, the rest an extension.
#include "Gk_FileElement.h"

#include <cstdint>
#include <string>

#include "FuzzInput.h"
#include "Gk_DirElement.h"
#include "Require.h"

namespace {

constexpr std::size_t kNone = std::string::npos;

std::string BytesOf(Gk_String const& string) {
  return std::string(string.text());
}

std::string DirectoryOf(std::string const& path) {
  for (char const separator : {'/', '\\'}) {
    for (std::size_t i = path.size(); i > 0; --i) {
      if (path[i - 1] == separator) return path.substr(0, i - 1);
    }
  }
  return ".";
}

std::string BaseNameOf(std::string const& path) {
  std::string name;
  for (char const byte : path) {
    if (byte == '/') {
      name.clear();
    } else {
      name += byte;
    }
  }
  return name;
}

std::string Relative(std::string const& path, std::string const& base) {
  std::string const start = base + "/";
  return path.compare(0, start.size(), start) == 0 ? path.substr(start.size()) : "";
}

std::string Flattened(std::string path) {
  for (char& byte : path) {
    if (byte == '/' || byte == '\\') byte = '_';
  }
  return path;
}

bool EndsIn(std::string const& path, std::string const& end) {
  return path.size() >= end.size() && path.compare(path.size() - end.size(), kNone, end) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  // As C strings: a path ends at its first zero byte.
  std::string const path = input.Line().c_str();
  std::string const base = input.Line().c_str();
  std::string const extension = input.Rest().c_str();

  // With and without a terminator among the bytes of the string.
  for (int const added : {0, 1}) {
    Gk_FileElement const element(Gk_String(path.c_str(), static_cast<int>(path.size()) + added));
    Require(BytesOf(element.pathName()) == path, "pathName returns the path");
    Require(BytesOf(element.dirName()) == DirectoryOf(path), "dirName precedes the last separator");
    std::string const name = BaseNameOf(path);
    Require(BytesOf(element.baseName()) == name, "baseName follows the last slash");
    Require(BytesOf(element.identifier()) == name.substr(0, name.find('.')), "identifier ends at the first dot");
    Require(BytesOf(element.relativeName(Gk_FileElement(Gk_String(base.c_str())))) == Relative(path, base),
            "relativeName follows the base and a slash");
    Gk_FileElement changed(element);
    changed.changeExtn(extension.c_str());
    Require(BytesOf(changed) == path.substr(0, path.find('.')) + "." + extension,
            "changeExtn replaces everything from the first dot");
    Gk_FileElement flat(element);
    flat.flatten();
    Require(BytesOf(flat) == Flattened(path), "flatten replaces separators");
    Require(BytesOf(element) == path, "a copy does not share its bytes");
    Gk_DirElement const directory(element);
    Require(directory.isDotDot() == EndsIn(path, ".."), "isDotDot examines the end");
    Require(directory.isDot() == (EndsIn(path, ".") && !EndsIn(path, "..")), "isDot examines the end");
  }
  return 0;
}
