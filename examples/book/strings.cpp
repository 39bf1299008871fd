// Text cut up, compared, read as numbers, and brought into other encodings.
#include <iostream>
#include <vector>

#include "VRELString.h"
#include "VRELStringConversions.h"
#include "VRELStringTokenizer.h"
#include "VRINResult.h"

void CutUp() {
  VRELStringTokenizer const pieces(VRELString(L" Stra\u00DFe;12 mm;;yes"), L';');
  for (int i = 0; i < pieces.GetTokenCount(); ++i) {
    std::cout << "[" << VRELStringGetTrimmedString(pieces.Token(i)) << "]";
  }
  std::cout << "\n";
}

void Compare() {
  VRELString const street(L"Stra\u00DFe");
  std::cout << street.equals(L"STRASSE") << street.equalsIgnoreCase(L"STRASSE") << street.startsWith(L"") << "\n";
}

void ReadNumbers() {
  int length = 0;
  double offset = 7.0;
  bool closed = false;
  VRELStringToInteger(L"12 mm", length);
  VRINResult const result = VRELStringToDouble(L".0", offset);
  VRELStringToBool(L"yes", closed);
  std::cout << length << ", " << result.GetMessage() << " " << offset << ", " << closed << "\n";
}

void Convert() {
  VRELString const street(L"Stra\u00DFe");
  std::vector<char> bytes(street.getConvertToMBCSSize("ISO-8859-1"));
  street.convertToMBCS(bytes.data(), static_cast<int>(bytes.size()), "ISO-8859-1", false);
  std::cout << bytes.size() << " bytes, the fifth is " << static_cast<int>(static_cast<unsigned char>(bytes[4]))
            << "\n";

  char plain[8];
  street.convertToRestrictedASCII(plain, sizeof plain);
  char tooShort[4] = "abc";
  VRINResult const result = street.convertToUTF8(tooShort, sizeof tooShort);
  std::cout << plain << ", " << result.GetMessage() << " '" << tooShort << "'\n";
  std::cout << street.toUtf8().size() << " bytes of UTF-8 in a std::string\n";
}

int main() {
  CutUp();
  Compare();
  ReadNumbers();
  Convert();
}
