#include "StepBlockCache.h"

#include "Gk_ErrMgr.h"
#include "StepBuffer.h"
#include "StepRecordText.h"

bool StepBlockCache::Read(std::uint64_t offset) noexcept {
  if (failure != nullptr) return false;
  std::uint64_t const number = offset / kBlockSize;
  std::uint64_t const first = number * kBlockSize;
  Block& block = blocks[number % kSlots];
  Block const& before = blocks[(number + kSlots - 1) % kSlots];
  bool const hasPart = block.length != 0 && block.begin / kBlockSize == number;
  bool const continues = before.length != 0 && before.begin + before.length == first;
  bool const isWhole = hasPart || continues;
  block.begin = isWhole ? first : offset / kPartSize * kPartSize;
  block.length = 0;
  try {
    Gk_ErrMgr::checkAbort();
    if (block.bytes == nullptr) {
      block.bytes = std::make_unique<char[]>(kBlockSize + kOverlap + 1 + StepRecordText::kPadding);
    }
    std::size_t const length = isWhole ? kBlockSize : kPartSize;
    block.size = buffer.ReadAt(block.begin, block.bytes.get(), length + kOverlap);
    block.length = length;
  } catch (...) {
    failure = std::current_exception();
    return false;
  }
  block.bytes[block.size] = '\0';
  return true;
}
