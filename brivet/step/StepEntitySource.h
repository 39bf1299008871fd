// Instances of a STEP file for StepEntityStore.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "StepBuffer.h"
#include "StepContents.h"
#include "StepEntityStore.h"
#include "StepReferences.h"
#include "StepTypes.h"

// Lists all instances of a document, and loads those that are asked for, in any order. Blocks of the file are cached,
// because most instances refer to others that are near.
//
// Memory: up to 280 KiB.
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
  void RethrowFailure() const {
    if (failure != nullptr) std::rethrow_exception(failure);
  }

  void Load(std::uint32_t ordinal) noexcept override;
  std::string IdOf(std::uint32_t ordinal) const override;
  std::uint32_t TypeNumberOf(std::uint32_t ordinal) const noexcept override;
  std::uint64_t OffsetOf(std::uint32_t ordinal) const noexcept override;
  char const* BytesAt(std::uint64_t offset) noexcept override;
  std::uint32_t Find(std::int64_t id) const noexcept override;

 private:
  struct Block {
    std::uint64_t number = UINT64_MAX;
    std::size_t size = 0;
    std::unique_ptr<char[]> bytes;
  };

  void Read(std::uint32_t instance);
  void Read(Block& block, std::uint64_t number);

  Parts const parts;
  Describe const describe;
  StepEntityStore store;
  std::vector<StepEntityStore::Type> known;  // by the number of StepTypes
  std::vector<Block> cache;
  std::string digits;
  std::exception_ptr failure;
};
