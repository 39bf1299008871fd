// Instances of a STEP file for StepEntityStore.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "StepBlockCache.h"
#include "StepBuffer.h"
#include "StepContents.h"
#include "StepEntityStore.h"
#include "StepReferences.h"
#include "StepTypes.h"

// Lists all instances of a document, and loads those that are asked for, in any order.
// Errors: after a failure nothing is loaded any more. RethrowFailure throws it.
class StepEntitySource final : public StepEntityStore::Source {
 public:
  // Passes an instance, counted from 0, to a visitor.
  using Describe = std::function<void(std::uint32_t instance, DocumentVisitor& visitor)>;
  // Ownership: nothing is owned.
  struct Parts {
    StepContents const& contents;
    StepReferences const& references;
    StepTypes const& types;
    StepBuffer const& buffer;
  };

  // `describeInstance` is used for instances that are not in the usual form.
  StepEntitySource(Parts const& documentParts, Describe describeInstance);

  StepEntityStore& Store() noexcept { return store; }
  // Lists instances, counted from 0.
  void List(std::uint32_t first, std::uint32_t end);
  void RethrowFailure() const { blocks.RethrowFailure(); }

  void Load(std::uint32_t ordinal) noexcept override;
  std::string IdOf(std::uint32_t ordinal) const override;
  std::uint32_t TypeNumberOf(std::uint32_t ordinal) const noexcept override;
  std::uint64_t OffsetOf(std::uint32_t ordinal) const noexcept override;
  std::uint32_t Find(std::int64_t id) const noexcept override;

 private:
  void Read(std::uint32_t instance);

  Parts const parts;
  Describe const describe;
  StepBlockCache blocks;
  StepEntityStore store;
  std::vector<StepEntityStore::Type> known;  // by the number of StepTypes
  std::string digits;
};
