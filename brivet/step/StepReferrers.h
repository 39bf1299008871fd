// Who refers to whom.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

// Tells the referrers of each instance of a document, in the document's order. Takes memory in proportion to the number
// of instances, not of references: the referrers are collected for one span of instances after the other, each time by
// a walk over all references. Most documents are one or two spans. Takes 16 bytes an instance at most, and up to
// 4 MiB.
//
// Throws InputError (VREL_E_INVALID_FILE) if a walk finds other references than the one before.
//
//   StepReferrers referrers(count, walk);
//   for (std::uint32_t i = 0; i < count; ++i)
//     for (std::uint32_t source : referrers.Of(i)) ...
class StepReferrers {
 public:
  using Note = std::function<void(std::uint32_t source, std::uint32_t target)>;
  // Calls `note` for each reference of the document, sources in rising order.
  using Walk = std::function<void(Note const& note)>;

  // How many referrers are kept at once: so many for each instance of the document, and at least so many in all.
  static constexpr std::uint64_t KEPT = 2;
  static constexpr std::uint64_t LEAST_KEPT = std::uint64_t(1) << 20U;

  // Walks once, to count.
  StepReferrers(std::uint32_t instances, Walk walk);

  struct Range {
    std::uint32_t const* first;
    std::uint32_t const* last;
    std::uint32_t const* begin() const noexcept { return first; }
    std::uint32_t const* end() const noexcept { return last; }
  };

  // The referrers of an instance, each once, in rising order; good until the next call. Asked from 0 on in rising
  // order, each span is walked for once.
  Range Of(std::uint32_t target);

 private:
  void Count();
  void Collect(std::uint32_t first);
  void Fill();
  void BeginSpan(std::uint32_t first);
  void EndSpan();
  std::uint32_t EndOf(std::uint32_t target) const;

  Walk const walk;
  // How many referrers each instance has; within the span, where they begin.
  std::vector<std::uint32_t> counts;
  std::uint32_t spanBegin = 0;
  std::uint32_t spanEnd = 0;
  std::vector<std::uint32_t> sources;  // the referrers of the span, those of one instance after those of the other
};
