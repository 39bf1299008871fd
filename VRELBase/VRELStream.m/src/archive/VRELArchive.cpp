#include "VRELArchive.h"

#include <sys/mman.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <typeinfo>

#include "VRELArchiveException.h"
#include "VRELString.h"

namespace {

constexpr unsigned short kNewClassTag = 0xFFFF;
constexpr unsigned short kLongTag = 0x7FFF;
constexpr std::uint32_t kClassFlag = 0x80000000U;
constexpr unsigned short kMaxClassName = 64;

// Strings of up to this many bytes, terminator included, are read into the stack.
constexpr std::size_t kStackBytes = 16384;

// Anonymous memory that is committed page by page as it is written.
class ReservedMemory {
 public:
  explicit ReservedMemory(std::size_t count)
      : size(count),
        block(mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0)) {}
  ReservedMemory(ReservedMemory const&) = delete;
  ReservedMemory& operator=(ReservedMemory const&) = delete;
  ~ReservedMemory() {
    if (block != MAP_FAILED) munmap(block, size);
  }

  // Returns null if the memory could not be reserved.
  void* Get() const { return block != MAP_FAILED ? block : nullptr; }

 private:
  std::size_t size;
  void* block;
};

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

// Reads a string of `length` units with one read. The memory of a long string is reserved and not touched before the
// stream writes to it, so that a false length costs address space only.
template <class Unit>
VRELString VRELArchive::TakeText(long length) {
  constexpr long unitSize = sizeof(Unit);
  // A length below 0 is a second mark of a wide string. A count of more bytes than an int holds cannot be read at once.
  if (length < 0 || length > std::numeric_limits<int>::max() / unitSize) ThrowEndReached();

  std::array<Unit, kStackBytes / sizeof(Unit)> units;
  if (length < static_cast<long>(units.size())) {
    if (length > 0) Read(reinterpret_cast<char*>(units.data()), static_cast<int>(length * unitSize));
    units[static_cast<std::size_t>(length)] = 0;
    return VRELString(units.data());
  }
  ReservedMemory const block(static_cast<std::size_t>(length + 1) * sizeof(Unit));
  auto* const reserved = static_cast<Unit*>(block.Get());
  if (reserved == nullptr) ThrowEndReached();
  Read(static_cast<char*>(block.Get()), static_cast<int>(length * unitSize));
  // Fresh pages are zero, but a stream may have written more than it returned.
  reserved[length] = 0;
  return VRELString(reserved);
}

VRINResult VRELArchive::RestoreClassObject(VRELString& name, unsigned short* tagOut) {
  auto const tag = Take<unsigned short>();
  std::uint32_t const objectTag = tag == kLongTag ? Take<unsigned int>() : (tag & 0x8000U) << 16 | (tag & 0x7FFFU);
  if (tagOut != nullptr) *tagOut = tag;
  if ((objectTag & kClassFlag) == 0) return VREL_E_FAIL;
  return tag == kNewClassTag ? RestoreNewClass(name) : VRINResult(VREL_S_OK);
}

VRINResult VRELArchive::RestoreNewClass(VRELString& name) {
  Take<unsigned short>();  // the schema
  auto const length = Take<unsigned short>();
  if (length >= kMaxClassName) return VREL_E_FAIL;
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
