// Format module for files of numbers. Each number is an entity.
#include <memory>
#include <vector>

#include "Gk_Source.h"
#include "VRELBuffer.h"
#include "VRELEntityReader.h"
#include "VRELFile.h"
#include "VRELFileInputStream.h"
#include "VRELFormatReader.h"
#include "VRELSectionReader.h"
#include "VRELStringConversions.h"

namespace {

class Number : public VRELEntityReader {
 public:
  Number(VRELBufferHandle& document, VRELString const& numberText, int id)
      : VRELEntityReader(document), text(numberText) {
    entityId = id;
  }
  VRINResult ReadEntity() override { return VRELStringToInteger(text, value); }
  VRELString GetEntityType() const override { return L"Number"; }

 private:
  VRELString text;
  int value = 0;
};

class Numbers : public VRELSectionReader {
 public:
  Numbers(VRELBufferHandle document, VRELInputStream* input) : VRELSectionReader(document) {
    Gk_Source source(input);
    source.setWhiteSpace(" \n");
    while (!source.isEmpty()) {
      owned.push_back(std::make_unique<Number>(buffer, VRELString(source.next()), static_cast<int>(owned.size()) + 1));
      entityList.add(owned.back().get());
    }
  }

 private:
  std::vector<std::unique_ptr<Number>> owned;
};

class NumberFormat : public VRELFormatReader {
 public:
  explicit NumberFormat(VRELFileHandle const& document) : VRELFormatReader(document) {
    std::FILE* stream = nullptr;
    if (file->GetFilePointer(stream, VRELFile::BinaryOpen).IsFailure()) return;
    VRELFileInputStream input(stream);
    buffer = VRELBufferHandle(new VRELBuffer(document));
    numbers = std::make_unique<Numbers>(buffer, &input);
    dataSections.add(numbers.get());
  }
  VRINResult Resolve() override { return VREL_S_OK; }

 private:
  std::unique_ptr<Numbers> numbers;
};

}  // namespace

extern "C" {
VREL_EXPORT void StartBookFormat() {}
VREL_EXPORT void StopBookFormat() {}

// Returns a reader with reference count 0. The caller stores it in a handle.
VREL_EXPORT VRELFormatReader* MakeReader(VRELFile* file) {
  return new NumberFormat(file);
}
}
