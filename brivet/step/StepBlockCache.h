// Blocks of a STEP file that were read last.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <utility>

class StepBuffer;

// A direct-mapped cache: the block with a number has one slot, so that a look-up is a comparison. Exporters write
// instances in the order of the shape or grouped by type, so that a traversal reads at a few positions that advance
// through the file. Of a block that does not continue the one before, only a part is read at first: a traversal of
// styles visits one place of each block. Consecutive blocks overlap, so that an instance which is no longer than the
// overlap is in the block where it begins. In the worst case each look-up reads one block.
//
// Memory: up to 280 KiB.
// Errors: after a failure nothing is read any more. RethrowFailure throws it.
class StepBlockCache {
 public:
  // Ownership: `source` is not owned.
  explicit StepBlockCache(StepBuffer const& source) noexcept : buffer(source) {}

  // Returns the bytes from an offset of the file on, with a NUL at an unspecified distance, or null. They are valid
  // until the next call, and StepRecordText can read them.
  char const* BytesAt(std::uint64_t offset) noexcept {
    Block const& block = blocks[offset / kBlockSize % kSlots];
    if (offset - block.begin >= block.length && !Read(offset)) return nullptr;
    return &block.bytes[std::min<std::size_t>(offset - block.begin, block.size)];
  }
  // Stores a failure, as one of reading: nothing is read after it.
  void Fail(std::exception_ptr reason) noexcept { failure = std::move(reason); }
  bool HasFailed() const noexcept { return failure != nullptr; }
  void RethrowFailure() const {
    if (failure != nullptr) std::rethrow_exception(failure);
  }

 private:
  static constexpr std::size_t kSlots = 16;
  static constexpr std::size_t kBlockSize = 16384;
  static constexpr std::size_t kPartSize = 4096;
  static constexpr std::size_t kOverlap = 1024;

  // Offsets from `begin` on, `length` of them, are found here. There are `size` bytes: more because of the overlap, or
  // fewer at the end of the file.
  struct Block {
    std::uint64_t begin = 0;
    std::size_t length = 0;
    std::size_t size = 0;
    std::unique_ptr<char[]> bytes;
  };

  bool Read(std::uint64_t offset) noexcept;

  StepBuffer const& buffer;
  std::array<Block, kSlots> blocks;
  std::exception_ptr failure;
};
