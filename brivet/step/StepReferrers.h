// Inverted index of references: the referrers of each instance.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

// Returns the referrers of each instance of a document, in the document's order. Memory does not grow with the number
// of references: see the source. Most documents need one or two passes.
//
// Memory: 16 bytes per instance at most, and what is kept at once.
// Errors: InputError (VREL_E_INVALID_FILE) if a pass finds other references than the one before.
//
//   StepReferrers referrers(count, traverse);
//   for (std::uint32_t i = 0; i < count; ++i)
//     for (std::uint32_t source : referrers.Of(i)) ...
class StepReferrers {
 public:
  using Note = std::function<void(std::uint32_t source, std::uint32_t target)>;
  // Calls `note` for each reference of the document, with the sources in ascending order.
  using Traversal = std::function<void(Note const& note)>;

  // How many referrers are kept at once: this number for each instance of the document, and at least this number in
  // all.
  static constexpr std::uint64_t kKeptEach = 2;
  static constexpr std::uint64_t kLeastKept = std::uint64_t(1) << 20U;

  // Counts the referrers in one pass. At least `kept` of them are kept at once.
  StepReferrers(std::uint32_t instances, Traversal traverse, std::uint64_t kept = 0);

  struct Range {
    std::uint32_t const* first;
    std::uint32_t const* last;
    std::uint32_t const* begin() const noexcept { return first; }
    std::uint32_t const* end() const noexcept { return last; }
  };

  // Returns the referrers of an instance, each once, in ascending order; valid until the next call. If the calls are in
  // ascending order from 0, each span takes one pass.
  Range Of(std::uint32_t target);

 private:
  void Count();
  void Collect(std::uint32_t first);
  void Fill();
  void BeginSpan(std::uint32_t first);
  void EndSpan();
  std::uint32_t EndOf(std::uint32_t target) const;

  Traversal const traverse;
  std::uint64_t const limit;
  // The number of referrers of each instance; within the span, the position of the first one in `sources`.
  std::vector<std::uint32_t> counts;
  std::uint32_t spanBegin = 0;
  std::uint32_t spanEnd = 0;
  std::vector<std::uint32_t> sources;  // the referrers of the span, grouped by target
};
