#include "VRELArrayHeader.h"

#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>

#include "VRELAllocException.h"

namespace {

bool IsValid(VRELArrayHeader const* header) {
  return header != nullptr && header->IsValid();
}

std::size_t Bytes(VRELArrayHeader const* header, int elements) {
  return static_cast<std::size_t>(elements) * static_cast<std::size_t>(header->elementSize);
}

unsigned char* Slot(VRELArrayHeader* header, int index) {
  return header->data + Bytes(header, index);
}

// A double holds each step exactly, as the extended format does.
int NextCapacity(int capacity, float growthFactor) {
  double const next = static_cast<double>(capacity) * static_cast<double>(growthFactor) + 1.0;
  if (!(next >= capacity + 1.0 && next <= std::numeric_limits<int>::max())) throw VRELAllocException();
  return static_cast<int>(next);
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

// Bytes from the start of the storage to an element in it; -1 for an element elsewhere.
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
  if (header->count >= header->capacity - 1) source = vrelArrayReallocAround(header, element);
  unsigned char* const slot = Slot(header, index);
  // An element of the tail moves with it.
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
