// Splits, compares and appends strings, reads numbers, and converts to other encodings and to the standard library.
#include <iostream>
#include <string>
#include <unordered_map>
#include <vector>

#include "VRELString.h"
#include "VRELStringConversions.h"
#include "VRELStringISO1030321Reader.h"
#include "VRELStringISO1030321Writer.h"
#include "VRELStringTokenizer.h"
#include "VRINResult.h"

void Split() {
  VRELStringTokenizer const tokens(VRELString(L" Stra\u00DFe;12 mm;;yes"), L';');
  for (int i = 0; i < tokens.GetTokenCount(); ++i) {
    std::cout << "[" << VRELStringGetTrimmedString(tokens.Token(i)) << "]";
  }
  std::cout << "\n";
}

void Compare() {
  VRELString const street(L"Stra\u00DFe");
  std::cout << (street == L"STRASSE") << street.equalsIgnoreCase(L"STRASSE") << street.startsWith(L"") << "\n";
}

void Append() {
  VRELString name = L"bolt " + VRELStringFromInteger(8);
  name += u" \u00D7 40";
  std::unordered_map<VRELString, int> count;
  ++count[name];
  std::cout << name << ": " << count[L"bolt 8 \u00D7 40"] << "\n";
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
  std::vector<char> bytes(static_cast<std::size_t>(street.getConvertToMBCSSize("ISO-8859-1")));
  street.convertToMBCS(bytes.data(), static_cast<int>(bytes.size()), "ISO-8859-1", false);
  std::cout << bytes.size() << " bytes, the fifth is " << static_cast<int>(static_cast<unsigned char>(bytes[4]))
            << "\n";

  char plain[8];
  street.convertToRestrictedASCII(plain, sizeof plain);
  char tooShort[4] = "abc";
  VRINResult const result = street.convertToUTF8(tooShort, sizeof tooShort);
  std::cout << plain << ", " << result.GetMessage() << " '" << tooShort << "'\n";
}

void UseStandardStrings() {
  std::string const utf8 = "Stra\xC3\x9F\x65";
  VRELString const street(utf8);
  std::u16string const utf16 = street.toUtf16();
  std::wstring const wide = street.toWide();
  std::cout << street.toUtf8().size() << " bytes, " << utf16.size() << " units, " << wide.size() << " characters\n";
}

void EncodeForStep() {
  VRELStringISO1030321Writer writer;
  char const* encoded = nullptr;
  writer.ConvertToASCII(L"Geh\u00E4use", encoded);
  VRELStringISO1030321Reader reader;
  VRELString decoded;
  reader.ConvertFromASCII(encoded, decoded);
  std::cout << encoded << " is " << decoded << "\n";
}

int main() {
  Split();
  Compare();
  Append();
  ReadNumbers();
  Convert();
  UseStandardStrings();
  EncodeForStep();
}
