// Loads a format module by name and reads a document with it.
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

void ReadDocument(MakeReader makeReader) {
  VRELFormatReaderHandle const document(makeReader(new VRELFile("numbers.txt")));
  VRELReader reader(document);
  VRINResult const result = reader.ReadDataSection();
  std::cout << "data: " << result.GetMessage() << "\n";

  int failed = 0;
  for (VRELEntityReader* const entity : reader.GetDataEntityList()) {
    int id = 0;
    entity->GetEntityId(id);
    VRINResult const each = entity->ReadEntity();
    if (each.IsFailure()) ++failed;
    std::cout << entity->GetEntityType() << " " << id << ": " << each.GetMessage() << "\n";
  }
  std::cout << failed << " failed, resolve: " << reader.Resolve().GetMessage() << "\n";
}

int main() {
  {
    VRELBrivetLibrary library(L"BookFormat", L"StartBookFormat", L"StopBookFormat");
    void* function = nullptr;
    if (library.GetFunction(L"MakeReader", function).IsFailure()) return 1;
    ReadDocument(reinterpret_cast<MakeReader>(function));
    std::cout << library.GetFunction(L"MakeWriter", function).GetMessage() << "\n";
  }
  // The module is not in use any more, so it is unloaded.
  VRELLibraryManager::FreeLibraries();
  std::cout << VRELLibraryManager::_libraries.Size() << " modules\n";
}
