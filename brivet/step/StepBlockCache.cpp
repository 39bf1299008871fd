#include "StepBlockCache.h"

#include "Gk_ErrMgr.h"
#include "StepBuffer.h"
#include "StepRecordText.h"

bool StepBlockCache::Read(std::uint64_t number) noexcept {
  if (failure != nullptr) return false;
  Block& block = blocks[number % kSlots];
  block.number = UINT64_MAX;
  try {
    Gk_ErrMgr::checkAbort();
    if (block.bytes == nullptr) {
      block.bytes = std::make_unique<char[]>(kBlockSize + kOverlap + 1 + StepRecordText::kPadding);
    }
    block.size = buffer.ReadAt(number * kBlockSize, block.bytes.get(), kBlockSize + kOverlap);
  } catch (...) {
    failure = std::current_exception();
    return false;
  }
  block.bytes[block.size] = '\0';
  block.number = number;
  return true;
}
