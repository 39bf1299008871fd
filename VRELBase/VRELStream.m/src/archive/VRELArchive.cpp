#include "VRELArchive.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <typeinfo>
#include <vector>

#include "VRELArchiveException.h"
#include "VRELString.h"

namespace {

constexpr unsigned short newClassTag = 0xFFFF;
constexpr unsigned short longTag = 0x7FFF;
constexpr std::uint32_t classFlag = 0x80000000U;
constexpr unsigned short maxClassName = 64;

// Bytes that are asked for before any of them has come.
constexpr long firstPortion = 4096;

}  // namespace

static_assert(sizeof(wchar_t) == 4 && sizeof(int) == 4 && sizeof(float) == 4 && sizeof(double) == 8);

VRELArchive::VRELArchive(VRELInputStream* input)
    : stream(input),
      memory(input != nullptr && typeid(*input) == typeid(VRELStringInputStream)
                 ? static_cast<VRELStringInputStream*>(input)
                 : nullptr) {}

void VRELArchive::ThrowEndReached() {
  throw new VRELArchiveException(VRELArchiveEndReached);
}

void VRELArchive::ThrowNotANumber() {
  throw new VRELArchiveException(VRELArchiveNotANumber);
}

long VRELArchive::RestoreCount() {
  auto const count = Take<unsigned short>();
  return count == 0xFFFF ? static_cast<long>(Take<unsigned int>()) : count;
}

long VRELArchive::GetCStringLength() {
  auto const shortest = Take<unsigned char>();
  if (shortest != 0xFF) return shortest;
  auto const middle = Take<unsigned short>();
  if (middle == 0xFFFE) return -1;
  return middle == 0xFFFF ? static_cast<long>(Take<unsigned int>()) : middle;
}

void VRELArchive::RestoreCString(VRELString& out) {
  long const length = GetCStringLength();
  out = length == -1 ? TakeText<wchar_t>(GetCStringLength()) : TakeText<char>(length);
}

// A text of `length` units. A short one needs no memory of its own; of a long one each portion, as long as all before
// it, is asked for when those have come.
template <class Unit>
VRELString VRELArchive::TakeText(long length) {
  if (length < 0) ThrowEndReached();  // a second wide mark in the place of a length
  constexpr long unitSize = sizeof(Unit);
  constexpr long portion = firstPortion / unitSize;
  auto const readUnits = [this](Unit* units, long count) {
    if (count > 0) Read(reinterpret_cast<char*>(units), static_cast<int>(count * unitSize));
  };

  std::array<Unit, portion> first;
  if (length < portion) {
    readUnits(first.data(), length);
    first[static_cast<std::size_t>(length)] = 0;
    return VRELString(first.data());
  }
  readUnits(first.data(), portion);
  std::vector<Unit> text(first.begin(), first.end());
  constexpr long maxPortion = 1 << 24;
  for (long held = portion; held < length;) {
    long const count = std::min({length - held, held, maxPortion});
    text.resize(static_cast<std::size_t>(held + count));
    readUnits(text.data() + held, count);
    held += count;
  }
  text.push_back(0);
  return VRELString(text.data());
}

VRINResult VRELArchive::RestoreClassObject(VRELString& name, unsigned short* tagOut) {
  auto const tag = Take<unsigned short>();
  std::uint32_t const objectTag = tag == longTag ? Take<unsigned int>() : (tag & 0x8000U) << 16 | (tag & 0x7FFFU);
  if (tagOut != nullptr) *tagOut = tag;
  if ((objectTag & classFlag) == 0) return VREL_E_FAIL;
  return tag == newClassTag ? RestoreNewClass(name) : VRINResult(VREL_S_OK);
}

VRINResult VRELArchive::RestoreNewClass(VRELString& name) {
  Take<unsigned short>();  // the schema
  auto const length = Take<unsigned short>();
  if (length >= maxClassName) return VREL_E_FAIL;
  VRELString const found = TakeText<char>(length);
  if (name.length() < 1) {
    name = found;
    return VREL_S_OK;
  }
  return name.compareTo(found) == 0 ? VREL_S_OK : VREL_E_FAIL;
}

VRINResult VRELArchive::RestoreClassObject(char const* name, unsigned short* tagOut) {
  VRELString expected(name);
  return RestoreClassObject(expected, tagOut);
}

int VRELIsnan(char const* bytes) {
  constexpr std::uint32_t exponent = 0x7F800000;
  constexpr std::uint32_t mantissa = 0x7FFFFF;
  std::uint32_t word;
  std::memcpy(&word, bytes, sizeof word);
  return (word & exponent) == exponent ? static_cast<int>(word | mantissa) : 0;
}
