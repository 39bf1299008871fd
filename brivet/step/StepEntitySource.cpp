// A direct-mapped cache: the block with a number has one slot, so that a look-up is a comparison. Exporters write
// instances in the order of the shape or grouped by type, so that a traversal reads at a few positions that advance
// through the file. Consecutive blocks overlap, so that an instance which is no longer than the overlap is in the block
// where it begins. In the worst case each instance takes a read of one block.
#include "StepEntitySource.h"

#include <algorithm>
#include <utility>

#include "Gk_ErrMgr.h"
#include "StepEntityReader.h"
#include "StepInstanceText.h"
#include "StepRecordText.h"

namespace {

constexpr std::size_t kSlots = 16;
constexpr std::size_t kBlockSize = 16384;
constexpr std::size_t kOverlap = 1024;

}  // namespace

StepEntitySource::StepEntitySource(Parts const& documentParts, Describe describeInstance)
    : parts(documentParts), describe(std::move(describeInstance)), store(parts.contents.Count(), *this), cache(kSlots) {
  for (std::size_t i = 0; i < parts.types.Size(); ++i) known.push_back(store.FindType(parts.types.Name(i)));
}

void StepEntitySource::List(std::uint32_t first, std::uint32_t end) {
  for (std::uint32_t instance = first; instance < end; ++instance) {
    StepEntityReader const& entity = parts.contents.At(instance);
    if (!entity.IsRead()) continue;
    StepEntityStore::Type const& type = known[entity.Type()];
    if (type.isComplete) {
      store.List(instance + 1, type, entity.Offset());
    } else {
      Read(instance);
    }
  }
}

void StepEntitySource::Load(std::uint32_t ordinal) noexcept {
  if (failure != nullptr) return;
  try {
    Read(ordinal - 1);
  } catch (...) {
    failure = std::current_exception();
  }
}

std::string StepEntitySource::IdOf(std::uint32_t ordinal) const {
  std::string idDigits;
  return "#" + std::string(parts.references.IdAt(ordinal - 1, idDigits).digits);
}

std::uint32_t StepEntitySource::Find(std::int64_t id) const noexcept {
  return parts.references.OrdinalOf(id);
}

void StepEntitySource::Read(std::uint32_t instance) {
  StepEntityReader const& entity = parts.contents.At(instance);
  DocumentVisitor::Id id;
  id.number = static_cast<std::int64_t>(parts.contents.NumberOf(entity));
  id.ordinal = instance + 1;
  if (!id.fits()) id = parts.references.IdAt(instance, digits);
  // Up to the next instance at most: the file may have been overwritten.
  std::size_t const limit = parts.contents.EndOf(instance) - entity.Offset();
  char const* const bytes = BytesAt(entity.Offset());
  if (bytes == nullptr) return;
  StepInstanceText text(bytes);
  if (!store.Add(id, known[entity.Type()], text, limit, parts.references)) {
    describe(instance, store);
  }
}

std::uint32_t StepEntitySource::TypeNumberOf(std::uint32_t ordinal) const noexcept {
  return known[parts.contents.At(ordinal - 1).Type()].number;
}

std::uint64_t StepEntitySource::OffsetOf(std::uint32_t ordinal) const noexcept {
  return parts.contents.At(ordinal - 1).Offset();
}

char const* StepEntitySource::BytesAt(std::uint64_t offset) noexcept {
  std::uint64_t const number = offset / kBlockSize;
  Block& block = cache[number % kSlots];
  if (block.number != number) {
    if (failure != nullptr) return nullptr;
    try {
      Read(block, number);
    } catch (...) {
      failure = std::current_exception();
      return nullptr;
    }
  }
  return &block.bytes[std::min<std::size_t>(offset % kBlockSize, block.size)];
}

void StepEntitySource::Read(Block& block, std::uint64_t number) {
  Gk_ErrMgr::checkAbort();
  if (block.bytes == nullptr)
    block.bytes = std::make_unique<char[]>(kBlockSize + kOverlap + 1 + StepRecordText::kPadding);
  block.number = UINT64_MAX;
  block.size = parts.buffer.ReadAt(number * kBlockSize, block.bytes.get(), kBlockSize + kOverlap);
  block.bytes[block.size] = '\0';
  block.number = number;
}
