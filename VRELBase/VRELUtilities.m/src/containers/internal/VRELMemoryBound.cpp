#include "VRELMemoryBound.h"

#include <malloc.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

unsigned int VRELHeapSizeCurrent = 0;
unsigned int VRELHeapSizeMax = 0;
unsigned int VRELMemoryAllocCounter = 0;
unsigned int VRELMemoryAllocate = 0;

namespace {

constexpr std::uint32_t kGuard = 0xDEADBEEF;

// The words before the caller's bytes.
struct Front {
  std::uint32_t size;
  std::uint32_t serial;
  std::uint32_t guards[2];
};

// The words after them.
struct Back {
  std::uint32_t guards[2];
  std::uint32_t serial;
  std::uint32_t size;
};

bool IsSound(Front const& front, Back const& back) {
  return front.size == back.size && front.serial == back.serial && front.guards[0] == kGuard &&
         front.guards[1] == kGuard && back.guards[0] == kGuard && back.guards[1] == kGuard;
}

}  // namespace

void* VRELMemoryBoundAllocate(unsigned int size) {
  std::size_t const rounded = (static_cast<std::size_t>(size) / 16 + 1) * 16;
  if (rounded > std::numeric_limits<std::uint32_t>::max()) return nullptr;
  auto* const block = static_cast<unsigned char*>(std::malloc(rounded + sizeof(Front) + sizeof(Back)));
  if (block == nullptr) return nullptr;
  ++VRELMemoryAllocCounter;
  auto const noted = static_cast<std::uint32_t>(rounded);
  Front const front = {noted, VRELMemoryAllocCounter, {kGuard, kGuard}};
  Back const back = {{kGuard, kGuard}, VRELMemoryAllocCounter, noted};
  std::memcpy(block, &front, sizeof front);
  std::memcpy(block + sizeof front + rounded, &back, sizeof back);
  VRELHeapSizeCurrent += noted;
  if (VRELHeapSizeMax < VRELHeapSizeCurrent) VRELHeapSizeMax = VRELHeapSizeCurrent;
  return block + sizeof front;
}

void VRELMemoryBoundFree(void* block) {
  if (block == nullptr) return;
  auto* const bytes = static_cast<unsigned char*>(block);
  Front front;
  Back back = {};
  std::memcpy(&front, bytes - sizeof front, sizeof front);
  // A damaged size misplaces the back words, but they are never read outside the block.
  std::size_t const extent = malloc_usable_size(bytes - sizeof front);
  if (sizeof front + front.size + sizeof back <= extent) std::memcpy(&back, bytes + front.size, sizeof back);
  if (!IsSound(front, back)) {
    std::printf(
        "*** Error memory boundary overwrite: szeF=%d, cntF=%d, db0=0x%x, db1=0x%x, db2=0x%x, db3=0x%x, cntB=%d, "
        "szeB=%d\n",
        static_cast<int>(front.size), static_cast<int>(front.serial), front.guards[0], front.guards[1], back.guards[0],
        back.guards[1], static_cast<int>(back.serial), static_cast<int>(back.size));
  }
  VRELHeapSizeCurrent -= front.size;
  std::free(bytes - sizeof front);
}
