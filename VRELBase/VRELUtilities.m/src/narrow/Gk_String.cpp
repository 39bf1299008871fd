#include "Gk_String.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <functional>

#include "VRELAllocException.h"

Gk_String::Gk_String(char const* s) : array(Gk_ROString(s).array) {}

Gk_String::Gk_String(char const* s, int n) : array(Gk_ROString(s, n).array) {}

Gk_String::Gk_String(Gk_ROString const& view)
    : Gk_String(view.visible().data(), static_cast<int>(view.visible().size())) {
  if (len() > 0) terminate();
}

int Gk_String::dataLen() const {
  int const length = len();
  return length > 0 && array[length - 1] == '\0' ? length - 1 : length;
}

Gk_String::operator char*() const {
  return len() > 0 ? const_cast<char*>(array.getArray()) : nullptr;
}

char Gk_String::operator[](int index) const {
  return index >= 0 && index < len() ? array[index] : '\0';
}

std::string_view Gk_String::text() const {
  std::string_view const all(array.getArray(), static_cast<std::size_t>(len()));
  return all.substr(0, all.find('\0'));
}

// Returns the index of an address in the bytes of this string, or -1 if it is elsewhere.
int Gk_String::offsetOf(char const* place) const {
  char const* const begin = array.getArray();
  std::less<char const*> const before;
  if (before(place, begin) || !before(place, begin + len())) return -1;
  return static_cast<int>(place - begin);
}

void Gk_String::replaceLast(char const* bytes, int count) {
  replaceFrom(std::max(len() - 1, 0), bytes, count);
}

// Keeps the first `kept` elements and adds the bytes, which may be part of this string.
void Gk_String::replaceFrom(int kept, char const* bytes, int count) {
  if (count > INT_MAX - 1 - kept) throw VRELAllocException();
  int const own = offsetOf(bytes);
  array.resize(kept + count);
  if (count > 0) std::memmove(&array[kept], own < 0 ? bytes : &array[own], static_cast<std::size_t>(count));
}

void Gk_String::terminate() {
  if (len() == 0 || array[len() - 1] != '\0') array.add('\0');
}

void Gk_String::appendBytes(char const* bytes, int n) {
  if (bytes != nullptr) array.append(bytes, n);
}

void Gk_String::append(char const* s) {
  if (s == nullptr) return;
  int const own = offsetOf(s);
  int const limit = own < 0 ? INT_MAX : len() - own;
  replaceLast(s, static_cast<int>(strnlen(s, static_cast<std::size_t>(limit))));
  array.add('\0');
}

void Gk_String::append(Gk_String const& other) {
  replaceLast(other.array.getArray(), other.len());
}

void Gk_String::append(Gk_ROString const& view) {
  std::string_view const bytes = view.visible();
  append(static_cast<int>(bytes.size()), bytes.data());
}

void Gk_String::append(int n, char const* s) {
  replaceLast(s, s != nullptr ? std::max(n, 0) : 0);
  terminate();
}

void Gk_String::chop(int n) {
  if (n >= len()) return;
  array.resize(std::max(n, -1) + 1);
  array.add('\0');
}

void Gk_String::ensure(int n) {
  int const length = len();
  if (n <= length) {
    chop(n);
    return;
  }
  int const kept = std::max(length - 1, 0);
  int const blanks = n - length;
  if (blanks > INT_MAX - 1 - kept) throw VRELAllocException();
  array.resize(kept + blanks + 1);
  std::memset(&array[kept], ' ', static_cast<std::size_t>(blanks));
  array[kept + blanks] = '\0';
}

Gk_String Gk_String::subset(int start, int count) const {
  int const begin = std::max(start, 0);
  int const end = static_cast<int>(std::min<long>(static_cast<long>(start) + count, len()));
  Gk_String result = begin < end ? Gk_String(&array[begin], end - begin) : Gk_String();
  result.terminate();
  return result;
}

Gk_String Gk_String::copy() const {
  Gk_String result;
  result.array = array.copy();
  return result;
}

Gk_RWString Gk_String::dataStr() const {
  return len() > 0 ? Gk_RWString(array) : Gk_RWString();
}

bool operator<(Gk_String const& a, Gk_String const& b) {
  return a.text() < b.text();
}

bool operator==(Gk_String const& a, Gk_String const& b) {
  if (a.len() == 0 || b.len() == 0) return a.len() == b.len();
  return a.text() == b.text();
}

bool operator==(Gk_String const& a, char const* b) {
  if (a.len() == 0 || b == nullptr) return a.len() == 0 && b == nullptr;
  return a.text() == b;
}
