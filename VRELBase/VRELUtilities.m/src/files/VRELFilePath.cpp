#include "VRELFilePath.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "VRELAllocException.h"
#include "VRELStringTokenizer.h"

namespace {

constexpr char16_t slash = u'/';
constexpr char16_t backslash = u'\\';
constexpr char16_t dot = u'.';
constexpr char16_t colon = u':';

bool IsEmpty(VRELString const& text) {
  return text.length() < 1;
}

// The last place of a unit, -1 for none. Looks at four units at once: where one of them is the unit, its lane of the
// difference is 0, and of all lanes only a 0 borrows into its topmost bit.
int LastIndexOf(std::u16string_view text, char16_t unit) {
  constexpr std::size_t laneCount = 4;
  constexpr std::uint64_t ones = 0x0001000100010001;
  std::uint64_t const wanted = unit * ones;
  std::size_t end = text.size();
  for (; end >= laneCount; end -= laneCount) {
    std::uint64_t lanes;
    std::memcpy(&lanes, text.data() + (end - laneCount), sizeof lanes);
    std::uint64_t const difference = lanes ^ wanted;
    if (((difference - ones) & ~difference & (ones << 15)) != 0) break;
  }
  while (end > 0 && text[end - 1] != unit) --end;
  return static_cast<int>(end) - 1;
}

bool EndsWithSlash(VRELString const& text) {
  return text.charAt(text.length() - 1) == slash;
}

VRELString Concatenate(std::u16string_view first, std::u16string_view second, std::u16string_view third) {
  try {
    std::u16string sum;
    sum.reserve(first.size() + second.size() + third.size());
    sum.append(first).append(second).append(third);
    return VRELString(std::u16string_view(sum));
  } catch (std::bad_alloc const&) {
    // Texts do not throw.
    return VRELString(first) + VRELString(second) + VRELString(third);
  }
}

// The whole text for an index of -1.
std::u16string_view TextBefore(VRELString const& text, int index) {
  return text.view().substr(0, static_cast<std::size_t>(index));
}

VRELString NameBefore(VRELString&& name, int index) {
  if (index < 0) return std::move(name);
  return name.substring(0, index);
}

// No codepage makes more than 8 bytes of a unit, or more than those of 10 units for entering and leaving its states.
bool IsSurelyEnough(int size, VRELString const& text) {
  return size / 8 - 10 > text.length();
}

// Whether the text takes more bytes than any path. No look at the bytes where it has fewer units.
bool IsTooLong(VRELString const& text) {
  return text.length() >= VRELFilePath::maxByteCount && text.getConvertToMBCSSize(nullptr) > VRELFilePath::maxByteCount;
}

// A drive of another machine, and the directory itself, lead nowhere here.
bool IsUsable(VRELString const& component) {
  return component.indexOf(colon) < 0 && component.view() != u".";
}

// The usable components from `begin` on, up to but not with `end`, in front of the tail.
VRELString WithFront(VRELStringTokenizer const& components, int begin, int end, VRELString const& tail) {
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
  return LastIndexOf(text.view(), slash);
}

int VRELFilePath::GetLastExtensionIndex(VRELString const& text) {
  return text.lastIndexOf(dot, GetLastSeparatorIndex(text));
}

int VRELFilePath::GetFirstExtensionIndex(VRELString const& text) {
  return text.indexOf(dot, GetLastSeparatorIndex(text));
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
  int const index = name.indexOf(dot);
  return NameBefore(std::move(name), index);
}

VRELString VRELFilePath::GetNameWithoutLastExtension() const {
  VRELString name = GetName();
  int const index = LastIndexOf(name.view(), dot);
  return NameBefore(std::move(name), index);
}

VRELString VRELFilePath::GetLastExtension() const {
  VRELString const name = GetName();
  int const index = LastIndexOf(name.view(), dot);
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
  auto const isSeparator = [](int unit) { return unit == slash || unit == backslash; };
  return isSeparator(path.charAt(0)) || (path.charAt(1) == colon && isSeparator(path.charAt(2)));
}

bool VRELFilePath::HasLastExtensionIgnoringCase(VRELString const& extension) const {
  VRELString const own = GetLastExtension();
  return own.equalsIgnoreCase(extension.charAt(0) == dot ? extension.substring(1) : extension);
}

void VRELFilePath::AddExtension(VRELString const& extension) {
  path = Concatenate(path.view(), u".", extension.view());
}

VRELFilePath VRELFilePath::ReplaceLastExtension(VRELString const& extension) const {
  std::u16string_view const before = TextBefore(path, GetLastExtensionIndex(path));
  return Concatenate(before, extension.charAt(0) == dot ? u"" : u".", extension.view());
}

VRELFilePath VRELFilePath::ReplaceFirstExtension(VRELString const& extension) const {
  return Concatenate(TextBefore(path, GetFirstExtensionIndex(path)), u"", extension.view());
}

VRELFilePath VRELFilePath::ResolveAgainst(VRELFilePath& base) const {
  VRELString const name = GetName();
  VRELString const directory = base.GetDirectory();
  VRELFilePath candidate;
  if (IsEmpty(name)) return candidate;
  if (IsAbsolute() && DoesFileExist()) return *this;

  VRELString text = GetPath();
  int first = 0;
  if (text.charAt(0) == slash) {
    text = text.substring(1);
    if (text.charAt(0) == slash) {
      // The server's name is never a directory here.
      text = text.substring(1);
      first = 1;
    }
  }
  VRELStringTokenizer const components(text, L'/');

  std::u16string_view const separator = IsEmpty(directory) || EndsWithSlash(directory) ? u"" : u"/";
  VRELString tail;
  for (int i = components.GetTokenCount() - 1; i >= first; --i) {
    VRELString component;
    components.GetToken(i, component);
    if (!IsUsable(component)) continue;
    tail = IsEmpty(tail) ? component : Concatenate(component.view(), u"/", tail.view());
    // What is too long to exist stays so with more in front: the longest tail is then all that is asked for.
    bool const isTooLong = IsTooLong(tail);
    if (isTooLong) tail = WithFront(components, first, i, tail);
    candidate = Concatenate(directory.view(), separator, tail.view());
    if (isTooLong || candidate.DoesFileExist()) break;
  }
  return candidate;
}

bool VRELFilePath::DoesFileExist() const {
  char bytes[maxByteCount];
  if (GetMBCSBuffer(bytes, maxByteCount).IsFailure()) return false;
  // What fopen for reading does, without a stream.
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
  if (text.indexOf(backslash) >= 0) text = text.replace(backslash, slash);
}

VRELFilePath VRELFilePath::operator+(VRELString const& appended) const {
  bool const isGlued = appended.charAt(0) == dot || EndsWithSlash(path);
  return Concatenate(path.view(), isGlued ? u"" : u"/", appended.view());
}

VRINResult VRELFilePath::GetMBCSBuffer(char* buffer, int size) const {
  if (!IsSurelyEnough(size, path) && (size < 1 || size < path.getConvertToMBCSSize(nullptr))) return VREL_E_FAIL;
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
