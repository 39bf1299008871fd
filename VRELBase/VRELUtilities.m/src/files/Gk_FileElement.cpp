#include "Gk_FileElement.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <string_view>

#include "Gk_DirElement.h"
#include "VRELPathBytes.h"

namespace {

constexpr int kCurrentDirBytes = 1024;

Gk_String StringOf(std::string_view bytes) {
  Gk_String result(bytes.data(), static_cast<int>(bytes.size()));
  result.append('\0');
  return result;
}

// Returns a zeroed record if the file does not exist.
struct stat stat_file(Gk_String const& path) {
  struct stat stats = {};
  if (stat(VRELPathBytes(path), &stats) != 0) stats = {};
  return stats;
}

}  // namespace

Gk_FileElement::Gk_FileElement(Gk_String const& path) : Gk_String(path.copy()) {}

Gk_FileElement::Gk_FileElement(Gk_FileElement const& other) : Gk_String(other.copy()) {}

Gk_FileElement& Gk_FileElement::operator=(Gk_FileElement const& other) {
  Gk_String::operator=(other.copy());
  return *this;
}

bool Gk_FileElement::exists() const {
  struct stat stats;
  return stat(VRELPathBytes(*this), &stats) == 0;
}

bool Gk_FileElement::isDirectory() const {
  return S_ISDIR(stat_file(*this).st_mode);
}

bool Gk_FileElement::isFile() const {
  return S_ISREG(stat_file(*this).st_mode);
}

bool Gk_FileElement::canRead() const {
  return (stat_file(*this).st_mode & S_IRUSR) != 0;
}

bool Gk_FileElement::canWrite() const {
  return (stat_file(*this).st_mode & S_IWUSR) != 0;
}

long Gk_FileElement::length() const {
  return stat_file(*this).st_size;
}

long Gk_FileElement::lastModified() const {
  return stat_file(*this).st_mtime;
}

Gk_String Gk_FileElement::dirName() const {
  std::string_view const path = text();
  std::size_t const end = VRELDirectoryEnd(path);
  return end == std::string_view::npos ? Gk_String(".") : StringOf(path.substr(0, end));
}

Gk_String Gk_FileElement::baseName() const {
  return StringOf(VRELBaseName(text()));
}

Gk_String Gk_FileElement::identifier() const {
  std::string_view const name = VRELBaseName(text());
  return StringOf(name.substr(0, name.find('.')));
}

Gk_FileElement& Gk_FileElement::changeExtn(char const* extension) {
  // `extension` may point into this path.
  Gk_String const added(extension);
  std::string_view const path = text();
  Gk_String changed = StringOf(path.substr(0, path.find('.')));
  changed.append(".");
  changed.append(added);
  Gk_String::operator=(changed);
  return *this;
}

Gk_FileElement& Gk_FileElement::flatten() {
  for (int i = 0, end = len(); i < end; ++i) {
    char& byte = (*this)[i];
    if (byte == '/' || byte == '\\') byte = '_';
  }
  return *this;
}

Gk_String Gk_FileElement::relativeName(Gk_FileElement const& base) const {
  std::string_view const path = text();
  std::string_view const start = base.text();
  if (path.substr(0, start.size()) != start) return Gk_String();
  if (path.size() == start.size() || path[start.size()] != '/') return Gk_String();
  return StringOf(path.substr(start.size() + 1));
}

bool Gk_FileElement::erase() const {
  return unlink(VRELPathBytes(*this)) == 0;
}

bool Gk_FileElement::renameTo(Gk_FileElement const& target) const {
  return std::rename(VRELPathBytes(*this), VRELPathBytes(target)) == 0;
}

Gk_String Gk_FileElement::getCurrentDir() {
  char bytes[kCurrentDirBytes] = {};
  if (getcwd(bytes, sizeof bytes) == nullptr) bytes[0] = '\0';
  return Gk_String(bytes);
}

bool Gk_FileElement::ensureParent() const {
  Gk_DirElement const parent(dirName());
  if (parent.exists()) return false;
  parent.mkdir();
  return true;
}
