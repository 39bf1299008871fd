#include "StepEntityPool.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kSmallest = std::size_t(1) << 14U;
constexpr std::size_t kLargest = std::size_t(1) << 21U;  // a huge page of x86-64

}  // namespace

StepEntityPool::~StepEntityPool() {
  for (void* const chunk : chunks) std::free(chunk);
}

void StepEntityPool::AddChunk(std::size_t size) {
  std::size_t const wanted = std::max(std::clamp(2 * chunkSize, kSmallest, kLargest), size);
  chunks.reserve(chunks.size() + 1);
  void* const chunk = wanted == kLargest ? std::aligned_alloc(kLargest, kLargest) : std::malloc(wanted);
  if (chunk == nullptr) throw std::bad_alloc();
  chunks.push_back(chunk);
#ifdef MADV_HUGEPAGE
  // Without huge pages the memory is the same, only slower.
  if (wanted == kLargest) static_cast<void>(madvise(chunk, kLargest, MADV_HUGEPAGE));
#endif
  chunkSize = wanted;
  next = static_cast<char*>(chunk);
  end = next + wanted;
}
