#include "VRELFilePath.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "VRELAllocException.h"
#include "VRELFindUnit.h"
#include "VRELStringTokenizer.h"

namespace {

constexpr char16_t kSlash = u'/';
constexpr char16_t kBackslash = u'\\';
constexpr char16_t kDot = u'.';
constexpr char16_t kColon = u':';

bool IsEmpty(VRELString const& text) {
  return text.length() < 1;
}

// Returns the index of the last occurrence of a code unit, or -1.
int LastIndexOf(std::u16string_view text, char16_t unit) {
  std::size_t const found = VRELFindLastUnit(text, unit);
  return found != std::u16string_view::npos ? static_cast<int>(found) : -1;
}

bool EndsWithSlash(VRELString const& text) {
  return text.charAt(text.length() - 1) == kSlash;
}

VRELString Concatenate(std::u16string_view first, std::u16string_view second, std::u16string_view third) {
  try {
    std::u16string sum;
    sum.reserve(first.size() + second.size() + third.size());
    sum.append(first).append(second).append(third);
    return VRELString(std::u16string_view(sum));
  } catch (std::bad_alloc const&) {
    // operator+ does not throw: it returns an empty string.
    return VRELString(first) + VRELString(second) + VRELString(third);
  }
}

// Returns the whole string for index -1.
std::u16string_view PrefixOf(VRELString const& text, int index) {
  return text.view().substr(0, static_cast<std::size_t>(index));
}

VRELString NameBefore(VRELString&& name, int index) {
  if (index < 0) return std::move(name);
  return name.substring(0, index);
}

// Returns true only if `size` bytes are enough in every codepage: none needs more than 8 bytes for a unit, plus 80 for
// shift sequences. Saves the exact computation of the size for ordinary paths.
bool IsCertainlyEnough(int size, VRELString const& text) {
  return size / 8 - 10 > text.length();
}

// Returns whether the path is longer than file system calls accept. A code unit takes at least a byte, so that short
// strings need no conversion.
bool IsTooLong(VRELString const& text) {
  return text.length() >= VRELFilePath::maxByteCount && text.getConvertToMBCSSize(nullptr) > VRELFilePath::maxByteCount;
}

// Returns false for drives of another machine, and for the directory itself.
bool IsUsable(VRELString const& component) {
  return component.indexOf(kColon) < 0 && component.view() != u".";
}

// Returns the usable components in [begin, end), joined by slashes, followed by `tail`.
VRELString PrependComponents(VRELStringTokenizer const& components, int begin, int end, VRELString const& tail) {
  try {
    std::u16string sum;
    for (int i = begin; i < end; ++i) {
      VRELString component;
      components.GetToken(i, component);
      if (IsUsable(component)) sum.append(component.view()).append(u"/");
    }
    return VRELString(std::u16string_view(sum.append(tail.view())));
  } catch (std::bad_alloc const&) {
    throw VRELAllocException();
  }
}

template <class Field>
VRINResult ReadStats(VRELFilePath const& path, long& value, Field field) {
  struct stat stats = {};
  VRINResult const result = path.GetFileStats(stats);
  if (result.IsSuccess()) value = field(stats);
  return result;
}

}  // namespace

VRELFilePath::VRELFilePath() = default;

VRELFilePath::VRELFilePath(VRELFilePath const& other) = default;

VRELFilePath::VRELFilePath(VRELString const& text) : path(text) {
  VRELFilePath::FixSeparator(path);
}

VRELFilePath::VRELFilePath(char const* text) : path(text, nullptr) {
  VRELFilePath::FixSeparator(path);
}

VRELFilePath::~VRELFilePath() = default;

VRELFilePath& VRELFilePath::operator=(VRELFilePath const& other) = default;

int VRELFilePath::GetLastSeparatorIndex(VRELString const& text) {
  return LastIndexOf(text.view(), kSlash);
}

int VRELFilePath::GetLastExtensionIndex(VRELString const& text) {
  return text.lastIndexOf(kDot, GetLastSeparatorIndex(text));
}

int VRELFilePath::GetFirstExtensionIndex(VRELString const& text) {
  return text.indexOf(kDot, GetLastSeparatorIndex(text));
}

int VRELFilePath::GetNameIndex(VRELString const& text) {
  return GetLastSeparatorIndex(text) + 1;
}

VRELString VRELFilePath::GetPath() const {
  return path;
}

VRELString VRELFilePath::GetName() const {
  return path.substring(GetNameIndex(path));
}

VRELString VRELFilePath::GetNameWithoutExtension() const {
  VRELString name = GetName();
  int const index = name.indexOf(kDot);
  return NameBefore(std::move(name), index);
}

VRELString VRELFilePath::GetNameWithoutLastExtension() const {
  VRELString name = GetName();
  int const index = LastIndexOf(name.view(), kDot);
  return NameBefore(std::move(name), index);
}

VRELString VRELFilePath::GetLastExtension() const {
  VRELString const name = GetName();
  int const index = LastIndexOf(name.view(), kDot);
  return index < 0 ? VRELString() : name.substring(index + 1);
}

VRELString VRELFilePath::GetDirectory() const {
  return path.substring(0, GetLastSeparatorIndex(path));
}

bool VRELFilePath::IsValid() const {
  return !IsEmpty(path);
}

bool VRELFilePath::IsAbsolute() const {
  if (!IsValid()) return false;
  auto const isSeparator = [](int unit) { return unit == kSlash || unit == kBackslash; };
  return isSeparator(path.charAt(0)) || (path.charAt(1) == kColon && isSeparator(path.charAt(2)));
}

bool VRELFilePath::HasLastExtensionIgnoringCase(VRELString const& extension) const {
  VRELString const own = GetLastExtension();
  return own.equalsIgnoreCase(extension.charAt(0) == kDot ? extension.substring(1) : extension);
}

void VRELFilePath::AddExtension(VRELString const& extension) {
  path = Concatenate(path.view(), u".", extension.view());
}

VRELFilePath VRELFilePath::ReplaceLastExtension(VRELString const& extension) const {
  std::u16string_view const before = PrefixOf(path, GetLastExtensionIndex(path));
  return Concatenate(before, extension.charAt(0) == kDot ? u"" : u".", extension.view());
}

VRELFilePath VRELFilePath::ReplaceFirstExtension(VRELString const& extension) const {
  return Concatenate(PrefixOf(path, GetFirstExtensionIndex(path)), u"", extension.view());
}

// Path resolution
// ===============
//
// The tails of the path are tried from the shortest to the longest, one component more each time, because files of an
// assembly usually keep their names and inner folders when they are copied to another machine. Each attempt prepends a
// component to the tail and calls DoesFileExist once, so n components cost n system calls. Building each tail copies
// the one before; that would be quadratic, but tails above the 4096 bytes of a file system call cannot exist. The first
// such tail ends the search: the remaining components are prepended at once, and the result is returned without a call.
// The same holds for a directory that is too long. The time is thus linear in the length of both paths.
VRELFilePath VRELFilePath::ResolveAgainst(VRELFilePath& base) const {
  VRELString const name = GetName();
  VRELString const directory = base.GetDirectory();
  VRELFilePath candidate;
  if (IsEmpty(name)) return candidate;
  if (IsAbsolute() && DoesFileExist()) return *this;

  VRELString text = GetPath();
  int first = 0;
  if (text.charAt(0) == kSlash) {
    text = text.substring(1);
    if (text.charAt(0) == kSlash) {
      // The first component is the name of a server.
      text = text.substring(1);
      first = 1;
    }
  }
  VRELStringTokenizer const components(text, L'/');

  std::u16string_view const separator = IsEmpty(directory) || EndsWithSlash(directory) ? u"" : u"/";
  bool const isDirectoryTooLong = IsTooLong(directory);
  VRELString tail;
  for (int i = components.GetTokenCount() - 1; i >= first; --i) {
    VRELString component;
    components.GetToken(i, component);
    if (!IsUsable(component)) continue;
    tail = IsEmpty(tail) ? component : Concatenate(component.view(), u"/", tail.view());
    // A tail that is too long to exist stays so with further components: only the longest tail is needed then.
    bool const isTooLong = isDirectoryTooLong || IsTooLong(tail);
    if (isTooLong) tail = PrependComponents(components, first, i, tail);
    candidate = Concatenate(directory.view(), separator, tail.view());
    if (isTooLong || candidate.DoesFileExist()) break;
  }
  return candidate;
}

bool VRELFilePath::DoesFileExist() const {
  char bytes[maxByteCount];
  if (GetMBCSBuffer(bytes, maxByteCount).IsFailure()) return false;
  // Opens the file as fopen(path, "r") does, without allocating a stream.
  int const descriptor = open(bytes, O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  close(descriptor);
  return true;
}

std::FILE* VRELFilePath::OpenFile(char const* mode) const {
  char bytes[maxByteCount];
  if (mode == nullptr || GetMBCSBuffer(bytes, maxByteCount).IsFailure()) return nullptr;
  return std::fopen(bytes, mode);
}

bool VRELFilePath::RemoveFile() const {
  char bytes[maxByteCount];
  return GetMBCSBuffer(bytes, maxByteCount).IsSuccess() && std::remove(bytes) == 0;
}

void VRELFilePath::Initialize() {}

void VRELFilePath::FixSeparator(VRELString& text) {
  if (text.indexOf(kBackslash) >= 0) text = text.replace(kBackslash, kSlash);
}

VRELFilePath VRELFilePath::operator+(VRELString const& appended) const {
  bool const isGlued = appended.charAt(0) == kDot || EndsWithSlash(path);
  return Concatenate(path.view(), isGlued ? u"" : u"/", appended.view());
}

VRINResult VRELFilePath::GetMBCSBuffer(char* buffer, int size) const {
  if (!IsCertainlyEnough(size, path) && (size < 1 || size < path.getConvertToMBCSSize(nullptr))) return VREL_E_FAIL;
  return path.convertToMBCS(buffer, size, nullptr, false);
}

VRINResult VRELFilePath::GetWideCharacterBuffer(wchar_t* buffer, int size) const {
  if (size < 1 || size < path.getConvertToWideCharacterSize()) return VREL_E_FAIL;
  return path.convertToWideCharacter(buffer, size);
}

VRINResult VRELFilePath::GetFileStats(struct stat& stats) const {
  char bytes[maxByteCount];
  if (!IsValid() || GetMBCSBuffer(bytes, maxByteCount).IsFailure() || stat(bytes, &stats) != 0) return VREL_E_FAIL;
  return VREL_S_OK;
}

VRINResult VRELFilePath::GetFileSize(long& size) const {
  return ReadStats(*this, size, [](struct stat const& stats) { return stats.st_size; });
}

VRINResult VRELFilePath::GetCreationDate(long& date) const {
  return ReadStats(*this, date, [](struct stat const& stats) { return stats.st_ctime; });
}

VRINResult VRELFilePath::GetLastAccessDate(long& date) const {
  return ReadStats(*this, date, [](struct stat const& stats) { return stats.st_atime; });
}

VRINResult VRELFilePath::GetLastModificationDate(long& date) const {
  return ReadStats(*this, date, [](struct stat const& stats) { return stats.st_mtime; });
}

VRELFilePath VRELFilePath::GetCurrentWorkingDirectory() {
  char bytes[maxByteCount];
  if (getcwd(bytes, sizeof bytes) == nullptr) bytes[0] = '\0';
  return VRELFilePath(bytes);
}
