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

constexpr mode_t directoryMode = 0777;

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool Exists(char const* path) {
  struct stat stats;
  return stat(path, &stats) == 0;
}

// The walk of fetchLeafFiles. The types that readdir tells spare a call of stat for each entry. A directory is read to
// its end before those in it are opened, so that depth costs no descriptors.
class LeafSearch {
 public:
  explicit LeafSearch(Gk_ROString const& thePattern) : pattern(thePattern) {}

  void Search(Gk_String const& directory) {
    std::string entries;
    Place place = {};
    if (!Read(directory, entries, place)) return;
    if (std::find(way.begin(), way.end(), place) != way.end()) return;
    way.push_back(place);
    Gk_String path;
    for (std::size_t at = 0; at < entries.size();) {
      auto const type = static_cast<unsigned char>(entries[at]);
      std::string_view const name(&entries[at + 1]);
      at += name.size() + 2;
      if (Join(directory, name, path)) Take(path, type);
    }
    way.pop_back();
  }

  VRELDynamicArray<Gk_FileElement> found;

 private:
  // What tells a directory, whatever path leads to it.
  struct Place {
    dev_t device;
    ino_t node;
    bool operator==(Place const& other) const { return device == other.device && node == other.node; }
  };

  // Gathers the type of each entry that may be a file or a directory, and its name with a zero byte behind it.
  static bool Read(Gk_String const& directory, std::string& entries, Place& place) {
    std::unique_ptr<Gk_DirTraversor> const walk(Gk_DirTraversor::create(Gk_DirElement(directory)));
    struct stat stats;
    // Fails where the directory may be listed, but none of its files be reached.
    if (walk == nullptr || fstatat(walk->descriptor(), ".", &stats, 0) != 0) return false;
    place = {stats.st_dev, stats.st_ino};
    do {
      unsigned char const type = walk->current().type();
      if (type == DT_REG || type == DT_DIR || type == DT_LNK || type == DT_UNKNOWN) {
        entries += static_cast<char>(type);
        entries.append(walk->current().name()) += '\0';
      }
    } while (walk->next());
    return true;
  }

  // False where the path is too long for the system.
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

  void Take(Gk_String const& path, unsigned char type) {
    if (type == DT_DIR) {
      Descend(path);
    } else if (type == DT_REG) {
      if (Matches(path)) found.add(path);
    } else {
      TakeByStatus(path);
    }
  }

  // A link, or a file system that does not tell types.
  void TakeByStatus(Gk_String const& path) {
    struct stat stats;
    if (stat(path.begin(), &stats) != 0) return;
    if (S_ISDIR(stats.st_mode)) {
      Descend(path);
    } else if (S_ISREG(stats.st_mode) && Matches(path)) {
      found.add(path);
    }
  }

  // "." and ".." end in a dot as well.
  void Descend(Gk_String const& path) {
    if (!EndsWith(path.text(), ".")) Search(path.copy());
  }

  bool Matches(Gk_String const& path) const { return path.rwString().matchPathPattern(pattern); }

  Gk_ROString pattern;
  std::vector<Place> way;
};

}  // namespace

Gk_DirElement::Gk_DirElement(Gk_String const& path) : Gk_FileElement(path) {}

bool Gk_DirElement::isDot() const {
  return EndsWith(text(), ".") && !isDotDot();
}

bool Gk_DirElement::isDotDot() const {
  return EndsWith(text(), "..");
}

// Steps up to the first directory that exists, then makes those below it on the way back; without recursion, because
// a path may have any number of slashes. Of one that is too long for the system only the start can lead to directories.
bool Gk_DirElement::mkdir() const {
  std::string path(text().substr(0, PATH_MAX));
  std::vector<std::string> missing;
  for (std::size_t end = VRELDirectoryEnd(path); end != std::string::npos; end = VRELDirectoryEnd(path)) {
    path.resize(end);
    if (Exists(path.c_str())) break;
    missing.push_back(path);
  }
  for (; !missing.empty(); missing.pop_back()) ::mkdir(missing.back().c_str(), directoryMode);
  return ::mkdir(VRELPathBytes(*this), directoryMode) == 0;
}

bool Gk_DirElement::rmdir() const {
  return ::rmdir(VRELPathBytes(*this)) == 0;
}

VRELDynamicArray<Gk_FileElement> Gk_DirElement::children() const {
  std::unique_ptr<Gk_DirTraversor> const walk(Gk_DirTraversor::create(*this));
  if (walk == nullptr) return VRELDynamicArray<Gk_FileElement>();
  walk->readAll();
  return walk->entries();
}

VRELDynamicArray<Gk_FileElement> Gk_DirElement::fetchLeafFiles(Gk_ROString const& pattern) const {
  LeafSearch search(pattern);
  search.Search(*this);
  return search.found;
}

Gk_String Gk_DirElement::fullPath() const {
  std::unique_ptr<Gk_DirTraversor> const walk(Gk_DirTraversor::create(*this));
  if (walk == nullptr) return Gk_String();
  do {
    std::string_view const child = walk->currentName().text();
    if (!EndsWith(child, ".") || EndsWith(child, "..")) continue;
    if (Gk_FileElement(walk->currentName()).isDirectory()) {
      return walk->currentName().subset(0, static_cast<int>(child.size()) - 2);
    }
  } while (walk->next());
  return Gk_String();
}
