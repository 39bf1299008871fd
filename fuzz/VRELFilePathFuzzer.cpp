// Compares VRELFilePath with a model on plain strings. The first line is the path, the second line the base of
// ResolveAgainst, the rest an extension or a path to append. The base is used as it is and below a directory with a few
// files.
#include "VRELFilePath.h"

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "Require.h"

namespace {

using Text = std::u16string;

constexpr std::size_t kNone = Text::npos;

Text TextOf(VRELString const& string) {
  return Text(string.view());
}

Text WithSlashes(Text text) {
  for (char16_t& unit : text) {
    if (unit == u'\\') unit = u'/';
  }
  return text;
}

// Model of the name arithmetic: a path is split at its last slash.
struct Model {
  explicit Model(Text const& given) : path(WithSlashes(given)) {
    std::size_t const slash = path.rfind(u'/');
    if (slash != kNone) directory = path.substr(0, slash);
    nameStart = slash == kNone ? 0 : slash + 1;
    name = path.substr(nameStart);
  }

  bool IsAbsolute() const {
    if (path.empty()) return false;
    return path[0] == u'/' || (path.size() > 2 && path[1] == u':' && path[2] == u'/');
  }

  Text WithLastExtension(Text const& extension) const {
    Text const dotted = extension.substr(0, 1) == u"." ? extension : u"." + extension;
    std::size_t const dot = name.rfind(u'.');
    return WithSlashes((dot == kNone ? path : path.substr(0, nameStart + dot)) + dotted);
  }

  Text WithFirstExtension(Text const& extension) const {
    std::size_t const dot = name.find(u'.');
    return WithSlashes((dot == kNone ? path : path.substr(0, nameStart + dot)) + extension);
  }

  Text Joined(Text const& appended) const {
    bool const isGlued = appended.substr(0, 1) == u"." || (!path.empty() && path.back() == u'/');
    return WithSlashes(path + (isGlued ? u"" : u"/") + appended);
  }

  // Returns the paths that ResolveAgainst tries, in order.
  std::vector<Text> Candidates(Model const& base) const {
    Text rest = path;
    std::size_t first = 0;
    if (rest.substr(0, 2) == u"//") first = 1;
    rest.erase(0, first == 1 ? 2 : rest.substr(0, 1) == u"/" ? 1 : 0);
    std::vector<Text> components;
    while (!rest.empty()) {
      std::size_t const slash = rest.find(u'/');
      components.push_back(rest.substr(0, slash));
      rest.erase(0, slash == kNone ? kNone : slash + 1);
      if (slash != kNone && rest.empty()) components.emplace_back();
    }
    std::vector<Text> candidates;
    Text front = base.directory;
    if (!front.empty() && front.back() != u'/') front += u'/';
    Text tail;
    for (std::size_t i = components.size(); i > first; --i) {
      Text const& component = components[i - 1];
      if (component.find(u':') != kNone || component == u".") continue;
      tail = tail.empty() ? component : component + u"/" + tail;
      candidates.push_back(front + tail);
    }
    return candidates;
  }

  Text path;
  Text directory;
  Text name;
  std::size_t nameStart = 0;
};

bool Exists(Text const& path) {
  std::string const bytes = VRELString(std::u16string_view(path)).toUtf8();
  std::FILE* const file = bytes.size() < 4096 ? std::fopen(bytes.c_str(), "r") : nullptr;
  if (file != nullptr) std::fclose(file);
  return file != nullptr;
}

Text Resolved(Model const& model, Model const& base) {
  if (model.name.empty()) return Text();
  if (model.IsAbsolute() && Exists(model.path)) return model.path;
  Text last;
  for (Text const& candidate : model.Candidates(base)) {
    last = candidate;
    if (Exists(candidate)) break;
  }
  return last;
}

// Returns the path of a directory with a few files, which is removed when the process exits.
std::string MakeDirectory() {
  namespace fs = std::filesystem;
  static fs::path const directory = fs::temp_directory_path() / ("file-path-fuzzer-" + std::to_string(getpid()));
  fs::create_directories(directory / "a" / "b");
  for (char const* const file : {"c", "a/c", "a/b/c", "a/b/d.x"}) {
    if (std::FILE* const stream = std::fopen((directory / file).c_str(), "w")) std::fclose(stream);
  }
  std::atexit([] { fs::remove_all(directory); });
  return directory.string();
}

void RequireIndexes(VRELString const& string, Model const& model) {
  auto const index = [&](std::size_t dot) { return dot == kNone ? -1 : static_cast<int>(model.nameStart + dot); };
  auto const separator = static_cast<int>(model.nameStart) - 1;
  Require(VRELFilePath::GetLastSeparatorIndex(string) == separator, "GetLastSeparatorIndex finds the last slash");
  Require(VRELFilePath::GetNameIndex(string) == separator + 1, "GetNameIndex follows the last slash");
  Require(VRELFilePath::GetLastExtensionIndex(string) == index(model.name.rfind(u'.')),
          "GetLastExtensionIndex finds the last dot of the name");
  Require(VRELFilePath::GetFirstExtensionIndex(string) == index(model.name.find(u'.')),
          "GetFirstExtensionIndex finds the first dot of the name");
}

void RequireParts(VRELFilePath const& path, Model const& model) {
  std::size_t const firstDot = model.name.find(u'.');
  std::size_t const lastDot = model.name.rfind(u'.');
  Require(TextOf(path.GetPath()) == model.path, "GetPath returns the path with slashes");
  Require(TextOf(path.GetName()) == model.name, "GetName returns what follows the last slash");
  Require(TextOf(path.GetDirectory()) == model.directory, "GetDirectory returns what precedes the last slash");
  Require(TextOf(path.GetNameWithoutExtension()) == model.name.substr(0, firstDot),
          "GetNameWithoutExtension ends at the first dot");
  Require(TextOf(path.GetNameWithoutLastExtension()) == model.name.substr(0, lastDot),
          "GetNameWithoutLastExtension ends at the last dot");
  Require(TextOf(path.GetLastExtension()) == (lastDot == kNone ? Text() : model.name.substr(lastDot + 1)),
          "GetLastExtension follows the last dot");
  Require(path.IsValid() == !model.path.empty(), "IsValid is false for the empty path only");
  Require(path.IsAbsolute() == model.IsAbsolute(), "IsAbsolute recognizes slashes and drives");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  static std::string const directory = MakeDirectory();
  FuzzInput input(bytes, size);
  // As C strings: a path has no U+0000.
  VRELString const text(input.Line().c_str());
  VRELString const baseText(input.Line().c_str());
  VRELString const appended(input.Rest().c_str());

  Model const model(TextOf(text));
  Model const base(TextOf(baseText));
  VRELFilePath const path(text);
  VRELFilePath basePath(baseText);
  RequireIndexes(path.GetPath(), model);
  RequireParts(path, model);
  RequireParts(basePath, base);

  Text const extension = TextOf(appended);
  Require(TextOf(path.ReplaceLastExtension(appended).GetPath()) == model.WithLastExtension(extension),
          "ReplaceLastExtension replaces what follows the last dot");
  Require(TextOf(path.ReplaceFirstExtension(appended).GetPath()) == model.WithFirstExtension(extension),
          "ReplaceFirstExtension replaces the name from its first dot");
  Require(TextOf((path + appended).GetPath()) == model.Joined(extension), "operator+ joins with one slash");
  VRELFilePath extended(path);
  extended.AddExtension(appended);
  Require(TextOf(extended.GetPath()) == model.path + u"." + extension, "AddExtension appends a dot and the extension");
  Require(path.HasLastExtensionIgnoringCase(path.GetLastExtension()),
          "HasLastExtensionIgnoringCase accepts the extension itself");

  Require(path.DoesFileExist() == Exists(model.path), "DoesFileExist opens the file");
  Require(TextOf(path.ResolveAgainst(basePath).GetPath()) == Resolved(model, base),
          "ResolveAgainst returns the shortest tail that exists");
  VRELFilePath inDirectory(VRELString((directory + "/").c_str()) + baseText);
  Require(TextOf(path.ResolveAgainst(inDirectory).GetPath()) == Resolved(model, Model(TextOf(inDirectory.GetPath()))),
          "ResolveAgainst finds files below a directory");
  return 0;
}
