// Loads a format module by name and walks through a document with it.
#include <iostream>

#include "VRELBrivetLibrary.h"
#include "VRELEntityReader.h"
#include "VRELFile.h"
#include "VRELFormatReader.h"
#include "VRELFormatReaderHandle.h"
#include "VRELLibraryManager.h"
#include "VRELReader.h"
#include "VRINResult.h"

using MakeReader = VRELFormatReader* (*)(VRELFile*);

void Walk(MakeReader makeReader) {
  VRELFormatReaderHandle const document(makeReader(new VRELFile("numbers.txt")));
  VRELReader reader(document);
  VRINResult const result = reader.ReadDataSection();
  std::cout << "the walk: " << result.GetMessage() << "\n";

  int failed = 0;
  for (VRELEntityReader* const entity : reader.GetDataEntityList()) {
    int id = 0;
    entity->GetEntityId(id);
    VRINResult const each = entity->ReadEntity();
    if (each.IsFailure()) ++failed;
    std::cout << entity->GetEntityType() << " " << id << ": " << each.GetMessage() << "\n";
  }
  std::cout << failed << " failed, then: " << reader.Resolve().GetMessage() << "\n";
}

int main() {
  {
    VRELBrivetLibrary library(L"BookFormat", L"StartBookFormat", L"StopBookFormat");
    void* function = nullptr;
    if (library.GetFunction(L"MakeReader", function).IsFailure()) return 1;
    Walk(reinterpret_cast<MakeReader>(function));
    std::cout << library.GetFunction(L"MakeWriter", function).GetMessage() << "\n";
  }
  // Nothing of the module is held any more, so that it may go.
  VRELLibraryManager::FreeLibraries();
  std::cout << VRELLibraryManager::_libraries.Size() << " modules\n";
}
