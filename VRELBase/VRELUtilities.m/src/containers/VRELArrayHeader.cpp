// The storage is one block from malloc, extended by realloc: elements are required to survive a byte copy, so the
// allocator may move the block, or map its pages elsewhere, without a copy at all. Everything from the old capacity on
// is set to zero after a growth. A copy shares the header, so growth through one owner is seen by all.
//
// An element handed to add or insert can be in the block that is about to move. Its offset is taken before the growth,
// and its address is computed again afterwards.
#include "VRELArrayHeader.h"

#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>

#include "VRELAllocException.h"

namespace {

constexpr int kMaxCapacity = std::numeric_limits<int>::max();

bool IsValid(VRELArrayHeader const* header) {
  return header != nullptr && header->IsValid();
}

std::size_t Bytes(VRELArrayHeader const* header, int elements) {
  return static_cast<std::size_t>(elements) * static_cast<std::size_t>(header->elementSize);
}

unsigned char* Slot(VRELArrayHeader* header, int index) {
  return header->data + Bytes(header, index);
}

// A double represents each step exactly, as the extended format does. The last step ends at kMaxCapacity.
int NextCapacity(int capacity, float growthFactor) {
  double const next = static_cast<double>(capacity) * static_cast<double>(growthFactor) + 1.0;
  // The negated comparison also rejects a growth factor that was overwritten with a NaN.
  if (!(next >= capacity + 1.0) || capacity == kMaxCapacity) throw VRELAllocException();
  return next < kMaxCapacity ? static_cast<int>(next) : kMaxCapacity;
}

void GrowTo(VRELArrayHeader* header, int capacity) {
  std::size_t const oldBytes = Bytes(header, header->capacity);
  std::size_t const newBytes = Bytes(header, capacity);
  auto* data = static_cast<unsigned char*>(std::realloc(header->data, newBytes));
  if (data == nullptr) throw VRELAllocException();
  std::memset(data + oldBytes, 0, newBytes - oldBytes);
  header->data = data;
  header->capacity = capacity;
  header->checkWord = data;
}

// Returns the offset of an element in the storage, or -1 for an element elsewhere.
std::ptrdiff_t OffsetOf(VRELArrayHeader const* header, void const* element) {
  auto const* const address = static_cast<unsigned char const*>(element);
  std::less<> const before;
  if (before(address, header->data) || !before(address, header->data + Bytes(header, header->capacity))) return -1;
  return address - header->data;
}

}  // namespace

VRELArrayHeader* vrelArrayAllocate(int capacity, int elementSize) {
  if (capacity < 1 || elementSize < 1) return nullptr;
  auto* const header = static_cast<VRELArrayHeader*>(std::malloc(sizeof(VRELArrayHeader)));
  if (header == nullptr) throw VRELAllocException();
  auto* const data = static_cast<unsigned char*>(
      std::calloc(static_cast<std::size_t>(capacity), static_cast<std::size_t>(elementSize)));
  if (data == nullptr) {
    std::free(header);
    throw VRELAllocException();
  }
  *header = {data, capacity, 0, elementSize, 1.5F, 0, data};
  return header;
}

int vrelArrayCheck(VRELArrayHeader*& header) {
  return IsValid(header) ? 1 : 0;
}

int vrelArrayCount(VRELArrayHeader* header) {
  return IsValid(header) ? header->count : 0;
}

int vrelArrayClear(VRELArrayHeader*& header) {
  if (!IsValid(header)) return 0;
  header->count = 0;
  return 1;
}

VRELArrayHeader* vrelArrayCopy(VRELArrayHeader* header) {
  if (IsValid(header)) ++header->shareCount;
  return header;
}

int vrelArrayFree(VRELArrayHeader*& header) {
  if (!IsValid(header)) return 0;
  if (header->shareCount > 0) {
    --header->shareCount;
    return 1;
  }
  header->checkWord = nullptr;
  std::free(header->data);
  std::free(header);
  header = nullptr;
  return 1;
}

int vrelArrayRealloc(VRELArrayHeader*& header) {
  if (!IsValid(header)) return 0;
  GrowTo(header, NextCapacity(header->capacity, header->growthFactor));
  return 1;
}

void const* vrelArrayReallocAround(VRELArrayHeader*& header, void const* element) {
  if (!IsValid(header)) return element;
  std::ptrdiff_t const offset = OffsetOf(header, element);
  vrelArrayRealloc(header);
  return offset < 0 ? element : header->data + offset;
}

int vrelArrayReallocFor(VRELArrayHeader*& header, int added) {
  if (!IsValid(header)) return 0;
  int capacity = header->capacity;
  while (capacity - header->count < added) capacity = NextCapacity(capacity, header->growthFactor);
  if (capacity != header->capacity) GrowTo(header, capacity);
  return 1;
}

int vrelArrayReserve(VRELArrayHeader*& header, int capacity) {
  if (!IsValid(header)) return 0;
  if (capacity > header->capacity) GrowTo(header, capacity);
  return 1;
}

int vrelArrayAdd(VRELArrayHeader*& header, void* element) {
  if (!IsValid(header) || element == nullptr) return 0;
  void const* source = element;
  if (header->count >= header->capacity) source = vrelArrayReallocAround(header, element);
  std::memmove(Slot(header, header->count), source, Bytes(header, 1));
  ++header->count;
  return 1;
}

int vrelArrayInsertAt(VRELArrayHeader*& header, int index, void* element) {
  if (!IsValid(header) || element == nullptr || index < 0) return 0;
  if (index > header->count) return vrelArrayAdd(header, element);
  void const* source = element;
  bool const isLastSlot = header->capacity == kMaxCapacity && header->count == kMaxCapacity - 1;
  if (header->count >= header->capacity - 1 && !isLastSlot) source = vrelArrayReallocAround(header, element);
  unsigned char* const slot = Slot(header, index);
  // An element after the slot moves with the others.
  std::ptrdiff_t const offset = OffsetOf(header, source);
  if (offset >= slot - header->data && offset < Slot(header, header->count) - header->data) {
    source = static_cast<unsigned char const*>(source) + header->elementSize;
  }
  std::memmove(slot + header->elementSize, slot, Bytes(header, header->count - index));
  std::memmove(slot, source, Bytes(header, 1));
  ++header->count;
  return 1;
}

int vrelArraySetAt(VRELArrayHeader*& header, int index, void* element) {
  if (!IsValid(header) || element == nullptr || index < 0 || index >= header->count) return 0;
  std::memmove(Slot(header, index), element, Bytes(header, 1));
  return 1;
}

int vrelArrayRemoveAt(VRELArrayHeader*& header, int index) {
  if (!IsValid(header) || index < 0 || index >= header->count) return 0;
  unsigned char* const slot = Slot(header, index);
  std::memmove(slot, slot + header->elementSize, Bytes(header, header->count - 1 - index));
  --header->count;
  return 1;
}

int vrelArrayAppend(VRELArrayHeader*& target, VRELArrayHeader* source) {
  if (!IsValid(target) || !IsValid(source) || target->elementSize != source->elementSize) return 0;
  int const added = source->count;
  vrelArrayReallocFor(target, added);
  std::memmove(Slot(target, target->count), target->data, Bytes(target, added));
  target->count += added;
  return 1;
}
