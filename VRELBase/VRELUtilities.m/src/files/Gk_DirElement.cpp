#include "Gk_DirElement.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Gk_DirTraversor.h"
#include "VRELPathBytes.h"

namespace {

constexpr mode_t kDirectoryMode = 0777;

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool Exists(char const* path) {
  struct stat stats;
  return stat(path, &stats) == 0;
}

// Depth-first search of fetchLeafFiles.
//
// The entry types that readdir reports save a call of stat for each entry; only links and entries of unknown type need
// one. A directory is read completely and closed before its subdirectories are opened, so that the number of open
// descriptors does not grow with the depth.
//
// Links may form cycles. The device and inode of every directory on the current path from the root are kept in
// `ancestors`; a directory that is among them is not searched again. PATH_MAX limits the length of a path and with it
// the depth of the recursion.
class LeafSearch {
 public:
  explicit LeafSearch(Gk_ROString const& thePattern) : pattern(thePattern) {}

  void Search(Gk_String const& directory) {
    std::string entries;
    Identity identity = {};
    if (!Read(directory, entries, identity)) return;
    if (std::find(ancestors.begin(), ancestors.end(), identity) != ancestors.end()) return;
    ancestors.push_back(identity);
    Gk_String path;
    for (std::size_t position = 0; position < entries.size();) {
      auto const type = static_cast<unsigned char>(entries[position]);
      std::string_view const name(&entries[position + 1]);
      position += name.size() + 2;
      if (Join(directory, name, path)) Add(path, type);
    }
    ancestors.pop_back();
  }

  VRELDynamicArray<Gk_FileElement> found;

 private:
  // Identity of a directory, independent of the path.
  struct Identity {
    dev_t device;
    ino_t node;
    bool operator==(Identity const& other) const { return device == other.device && node == other.node; }
  };

  // Collects the type byte and the zero-terminated name of each entry that may be a file or a directory.
  static bool Read(Gk_String const& directory, std::string& entries, Identity& identity) {
    std::unique_ptr<Gk_DirTraversor> const traversor(Gk_DirTraversor::create(Gk_DirElement(directory)));
    struct stat stats;
    // fstatat fails without search permission; the files of the directory are not accessible then.
    if (traversor == nullptr || fstatat(traversor->descriptor(), ".", &stats, 0) != 0) return false;
    identity = {stats.st_dev, stats.st_ino};
    do {
      unsigned char const type = traversor->current().type();
      if (type == DT_REG || type == DT_DIR || type == DT_LNK || type == DT_UNKNOWN) {
        entries += static_cast<char>(type);
        entries.append(traversor->current().name()) += '\0';
      }
    } while (traversor->next());
    return true;
  }

  // Returns false if the path would be longer than PATH_MAX.
  static bool Join(Gk_String const& directory, std::string_view name, Gk_String& path) {
    std::string_view const front = directory.text();
    if (front.size() + name.size() + 2 > PATH_MAX) return false;
    path.clear();
    path.appendBytes(front.data(), static_cast<int>(front.size()));
    path.append('/');
    path.appendBytes(name.data(), static_cast<int>(name.size()));
    path.append('\0');
    return true;
  }

  void Add(Gk_String const& path, unsigned char type) {
    if (type == DT_DIR) {
      Descend(path);
    } else if (type == DT_REG) {
      if (Matches(path)) found.add(path);
    } else {
      AddByStatus(path);
    }
  }

  // For links, and for file systems that do not report types.
  void AddByStatus(Gk_String const& path) {
    struct stat stats;
    if (stat(path.begin(), &stats) != 0) return;
    if (S_ISDIR(stats.st_mode)) {
      Descend(path);
    } else if (S_ISREG(stats.st_mode) && Matches(path)) {
      found.add(path);
    }
  }

  // Skips "." and "..", and all other names that end in a dot.
  void Descend(Gk_String const& path) {
    if (!EndsWith(path.text(), ".")) Search(path.copy());
  }

  bool Matches(Gk_String const& path) const { return path.rwString().matchPathPattern(pattern); }

  Gk_ROString pattern;
  std::vector<Identity> ancestors;
};

}  // namespace

Gk_DirElement::Gk_DirElement(Gk_String const& path) : Gk_FileElement(path) {}

bool Gk_DirElement::isDot() const {
  return EndsWith(text(), ".") && !isDotDot();
}

bool Gk_DirElement::isDotDot() const {
  return EndsWith(text(), "..");
}

// Finds the nearest parent that exists, then creates the missing directories below it. Iterates instead of recursing,
// because a path may have any number of slashes. A prefix longer than PATH_MAX cannot be created, so only the first
// PATH_MAX bytes are split.
bool Gk_DirElement::mkdir() const {
  std::string path(text().substr(0, PATH_MAX));
  std::vector<std::string> missing;
  for (std::size_t end = VRELDirectoryEnd(path); end != std::string::npos; end = VRELDirectoryEnd(path)) {
    path.resize(end);
    if (Exists(path.c_str())) break;
    missing.push_back(path);
  }
  for (; !missing.empty(); missing.pop_back()) ::mkdir(missing.back().c_str(), kDirectoryMode);
  return ::mkdir(VRELPathBytes(*this), kDirectoryMode) == 0;
}

bool Gk_DirElement::rmdir() const {
  return ::rmdir(VRELPathBytes(*this)) == 0;
}

VRELDynamicArray<Gk_FileElement> Gk_DirElement::children() const {
  std::unique_ptr<Gk_DirTraversor> const traversor(Gk_DirTraversor::create(*this));
  if (traversor == nullptr) return VRELDynamicArray<Gk_FileElement>();
  traversor->readAll();
  return traversor->entries();
}

VRELDynamicArray<Gk_FileElement> Gk_DirElement::fetchLeafFiles(Gk_ROString const& pattern) const {
  LeafSearch search(pattern);
  search.Search(*this);
  return search.found;
}

Gk_String Gk_DirElement::fullPath() const {
  std::unique_ptr<Gk_DirTraversor> const traversor(Gk_DirTraversor::create(*this));
  if (traversor == nullptr) return Gk_String();
  do {
    std::string_view const child = traversor->currentName().text();
    if (!EndsWith(child, ".") || EndsWith(child, "..")) continue;
    if (Gk_FileElement(traversor->currentName()).isDirectory()) {
      return traversor->currentName().subset(0, static_cast<int>(child.size()) - 2);
    }
  } while (traversor->next());
  return Gk_String();
}
