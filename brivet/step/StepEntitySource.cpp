#include "StepEntitySource.h"

#include <cstddef>
#include <exception>
#include <utility>

#include "StepEntityReader.h"
#include "StepInstanceText.h"

StepEntitySource::StepEntitySource(Parts const& documentParts, Describe describeInstance)
    : parts(documentParts),
      describe(std::move(describeInstance)),
      blocks(parts.buffer),
      store(parts.contents.Count(), *this, &blocks, parts.references.LongestRun()) {
  for (std::size_t i = 0; i < parts.types.Size(); ++i) known.push_back(store.FindType(parts.types.Name(i)));
}

void StepEntitySource::List(std::uint32_t first, std::uint32_t end) {
  parts.contents.ForEach(first, end, [this](std::uint32_t instance, StepEntityReader const& entity) {
    if (!entity.IsRead()) return;
    StepEntityStore::Type const& type = known[entity.Type()];
    if (type.isComplete) {
      store.List(instance + 1, type, entity.Offset());
    } else {
      Read(instance);
    }
  });
}

void StepEntitySource::Load(std::uint32_t ordinal) noexcept {
  if (blocks.HasFailed()) return;
  try {
    Read(ordinal - 1);
  } catch (...) {
    blocks.Fail(std::current_exception());
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
  char const* const bytes = blocks.BytesAt(entity.Offset());
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
