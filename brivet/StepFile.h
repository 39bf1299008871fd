// An ISO 10303-21 file that is being read.
#pragma once

#include <string>

#include "ByteSource.h"
#include "InputFile.h"
#include "StepReader.h"

// Open from construction to destruction. Throws StepError as InputFile does.
class StepFile {
 public:
  explicit StepFile(std::string const& path)
      : file(path), source([this](char* block, std::size_t size) { return file.Read(block, size); }), reader(source) {}
  StepFile(StepFile const&) = delete;
  StepFile& operator=(StepFile const&) = delete;

  StepReader& Reader() { return reader; }

 private:
  InputFile file;
  ByteSource source;
  StepReader reader;
};
