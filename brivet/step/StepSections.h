// The sections of a STEP file.
#pragma once

#include <cstdint>

#include "VRELSectionReader.h"

class StepEntityReader;
class StepFormatReader;

// Both read on in the file as they are walked, and own the entities that they made.
class StepHeaderSection final : public VRELSectionReader {
 public:
  // The document must outlive the section.
  StepHeaderSection(VRELBufferHandle const& source, StepFormatReader& owner);
  ~StepHeaderSection() override;

  // The next record; null behind the last.
  VRELEntityReader* GetNextKey() override;

 private:
  StepFormatReader& document;
};

class StepDataSection final : public VRELSectionReader {
 public:
  StepDataSection(VRELBufferHandle const& source, StepFormatReader& owner);
  ~StepDataSection() override;

  // The next instance; null behind the last.
  VRELEntityReader* GetNextKey() override;
  // One that was walked over, from 0 on.
  StepEntityReader& At(std::uint32_t index) const;

 private:
  StepFormatReader& document;
};
