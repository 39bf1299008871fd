// Sections of a STEP file.
#pragma once

#include <cstdint>

#include "StepEntityReader.h"
#include "StepScanner.h"
#include "VRELEntityReader.h"
#include "VRELSectionReader.h"

class StepFormatReader;

// An entity of the header.
class StepHeaderEntity final : public VRELEntityReader {
 public:
  StepHeaderEntity(VRELBufferHandle& source, StepFormatReader& owner, StepScanner::Position position)
      : VRELEntityReader(source), document(owner), begin(position) {}

  VRINResult ReadEntity() override;

 private:
  StepFormatReader& document;
  StepScanner::Position const begin;
};

// Both sections read the file while they are traversed, and own the entities that they create.
class StepHeaderSection final : public VRELSectionReader {
 public:
  // The document must outlive the section.
  StepHeaderSection(VRELBufferHandle const& source, StepFormatReader& owner);
  ~StepHeaderSection() override;

  // Returns the next entity, or null at the end.
  VRELEntityReader* GetNextKey() override;

 private:
  StepFormatReader& document;
};

class StepDataSection final : public VRELSectionReader {
 public:
  StepDataSection(VRELBufferHandle const& source, StepFormatReader& owner);
  ~StepDataSection() override;

  // Returns the next instance, or null at the end.
  VRELEntityReader* GetNextKey() override;
  // Returns an instance that was traversed, from 0.
  StepEntityReader& At(std::uint32_t index) const {
    return static_cast<StepEntityReader&>(*entityList.getArray()[index]);
  }

 private:
  void ReserveMore();

  StepFormatReader& document;
  int reserved = 0;
};
