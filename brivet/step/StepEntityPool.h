// Memory of the instances of a STEP file.
#pragma once

#include <cstddef>
#include <vector>

// Allocates objects of one size one after the other, and frees all at once. A document has an object for each instance,
// and the general allocator would add a header to each and fill pages of 4 KiB one by one.
//
// Memory: chunks that double up to 2 MiB; large ones are huge pages where the system permits that.
// Errors: std::bad_alloc.
class StepEntityPool {
 public:
  StepEntityPool() = default;
  ~StepEntityPool();
  StepEntityPool(StepEntityPool const&) = delete;
  StepEntityPool& operator=(StepEntityPool const&) = delete;

  // Returns memory for an object. Requires: the same size, a multiple of 8, at each call.
  void* Allocate(std::size_t size) {
    if (static_cast<std::size_t>(end - next) < size) AddChunk(size);
    char* const object = next;
    next += size;
    return object;
  }

 private:
  void AddChunk(std::size_t size);

  std::vector<void*> chunks;
  std::size_t chunkSize = 0;
  char* next = nullptr;
  char* end = nullptr;
};
