// Prints the name of a part, and its encoding in a STEP file.
#include <iostream>

#include "VRELReferenceCount.h"
#include "VRELString.h"
#include "VRELStringISO1030321Reader.h"
#include "VRELStringISO1030321Writer.h"
#include "VRELTypedHandle.h"
#include "VRINResult.h"

// A part, shared by handles.
class Part : public VRELReferenceCount {
 public:
  Part(VRELString const& partName, int partQuantity) : name(partName), quantity(partQuantity) {}

  VRELString name;
  int quantity;
};

class PartHandle : public VRELTypedHandle<Part> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};

int main() {
  PartHandle const bolt(new Part(L"Schraube \u00D8 8", 8));
  VRELString const& name = bolt->name;
  std::cout << name << ": " << name.length() << " characters, " << name.getConvertToUTF8Size() - 1 << " bytes\n";
  if (name.startsWith(L"Schraube")) std::cout << name.substring(9) << "\n";

  VRELStringISO1030321Writer writer;
  char const* encoded = nullptr;
  writer.ConvertToASCII(name, encoded);
  std::cout << "'" << encoded << "'\n";

  VRELStringISO1030321Reader reader;
  VRELString decoded;
  reader.ConvertFromASCII(encoded, decoded);
  std::cout << (decoded.equals(name) ? "equal" : "different") << "\n";
}
