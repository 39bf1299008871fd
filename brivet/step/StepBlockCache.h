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
// through the file. Consecutive blocks overlap, so that an instance which is no longer than the overlap is in the block
// where it begins. In the worst case each look-up reads one block.
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
    std::uint64_t const number = offset / kBlockSize;
    Block const& block = blocks[number % kSlots];
    if (block.number != number && !Read(number)) return nullptr;
    return &block.bytes[std::min<std::size_t>(offset % kBlockSize, block.size)];
  }
  // Makes a failure of the reader of the bytes one of the cache.
  void Fail(std::exception_ptr reason) noexcept { failure = std::move(reason); }
  bool HasFailed() const noexcept { return failure != nullptr; }
  void RethrowFailure() const {
    if (failure != nullptr) std::rethrow_exception(failure);
  }

 private:
  static constexpr std::size_t kSlots = 16;
  static constexpr std::size_t kBlockSize = 16384;
  static constexpr std::size_t kOverlap = 1024;

  struct Block {
    std::uint64_t number = UINT64_MAX;
    std::size_t size = 0;
    std::unique_ptr<char[]> bytes;
  };

  bool Read(std::uint64_t number) noexcept;

  StepBuffer const& buffer;
  std::array<Block, kSlots> blocks;
  std::exception_ptr failure;
};
