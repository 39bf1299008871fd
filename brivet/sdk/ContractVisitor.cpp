// A stack of scopes, one letter each: S section, O other section, I instance, R record, L list, T typed value, B
// braces, E entry.
#include "ContractVisitor.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kHexadecimal = "0123456789ABCDEF";

bool Consists(std::string_view text, std::string_view of) {
  return !text.empty() && text.find_first_not_of(of) == text.npos;
}

std::string_view WithoutSign(std::string_view number) {
  if (!number.empty() && (number[0] == '+' || number[0] == '-')) number.remove_prefix(1);
  return number;
}

// Returns what a real lacks; null if it is complete.
char const* FaultOfReal(std::string_view number) {
  number = WithoutSign(number);
  std::size_t const point = number.find('.');
  if (point == number.npos) return "has no decimal point";
  if (!Consists(number.substr(0, point), kDigits)) return "has no digits before the decimal point";
  number.remove_prefix(point + 1);
  std::size_t const exponent = number.find('E');
  std::string_view const fraction = number.substr(0, exponent);
  if (!fraction.empty() && !Consists(fraction, kDigits)) return "is no number";
  bool const hasExponent = exponent != number.npos;
  return hasExponent && !Consists(WithoutSign(number.substr(exponent + 1)), kDigits) ? "has no digits after E"
                                                                                     : nullptr;
}

bool IsUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    auto const first = static_cast<unsigned char>(text[i]);
    std::size_t const length = first < 0x80 ? 1 : first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if ((first >= 0x80 && first < 0xC2) || first > 0xF4 || length > text.size() - i) return false;
    unsigned code = length == 1 ? first : first & (0xFFU >> (length + 1));
    for (std::size_t k = 1; k < length; ++k) {
      auto const byte = static_cast<unsigned char>(text[i + k]);
      if ((byte & 0xC0U) != 0x80) return false;
      code = code << 6U | (byte & 0x3FU);
    }
    bool const isLong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    if (isLong || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return false;
    i += length;
  }
  return true;
}

std::string Quote(std::string_view text) {
  return " '" + std::string(text.substr(0, 60)) + "'";
}

}  // namespace

void ContractVisitor::Break(std::string const& message) {
  if (messages.size() < kMessageLimit) messages.push_back(where + message);
}

bool ContractVisitor::IsIn(std::string_view kinds) const {
  char const kind = scopes.empty() ? '-' : scopes.back().kind;
  return kinds.find(kind) != kinds.npos;
}

void ContractVisitor::Open(char kind, char const* call, std::string_view allowed) {
  if (!IsIn(allowed)) Break(std::string(call) + " is not allowed here");
  scopes.push_back({kind});
}

void ContractVisitor::Close(char kind, char const* call) {
  bool const isOpen = !scopes.empty() && scopes.back().kind == kind;
  if (isOpen) {
    scopes.pop_back();
  } else {
    Break(std::string(call) + " does not end what was begun last");
  }
}

void ContractVisitor::Value(char const* call) {
  if (!IsIn("RLTBE")) {
    Break(std::string(call) + " is outside a record");
    return;
  }
  if (++scopes.back().content == 2 && scopes.back().kind == 'T') Break("BeginTyped contains more than one value");
}

void ContractVisitor::CheckId(Id const& id) {
  bool const isDecimal = Consists(id.digits, kDigits) && (id.digits.size() == 1 || id.digits[0] != '0');
  if (!isDecimal) Break("id" + Quote(id.digits) + " is not decimal, or has leading zeros");
  if (id.fits() && std::to_string(id.number) != id.digits) {
    Break("id" + Quote(id.digits) + " has the number " + std::to_string(id.number));
  }
}

void ContractVisitor::CheckType(char const* call, std::string_view type) {
  std::string_view const name = type.substr(0, 1) == "!" ? type.substr(1) : type;
  if (!Consists(name, "ABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789")) {
    Break(std::string(call) + Quote(type) + " is not of upper-case letters, digits and '_'");
  }
}

std::string ContractVisitor::Finish() {
  where.clear();
  for (auto scope = scopes.rbegin(); scope != scopes.rend(); ++scope) {
    Break(std::string("something was begun and not ended: ") + scope->kind);
  }
  std::sort(ids.begin(), ids.end());
  auto const twice = std::adjacent_find(ids.begin(), ids.end());
  if (twice != ids.end()) Break("two instances have the id #" + *twice);
  for (std::string const& each : references) {
    if (!std::binary_search(ids.begin(), ids.end(), each))
      Break("Reference #" + each + " is defined, but no instance has it");
  }
  std::string text;
  for (std::string const& message : messages) text += message + "\n";
  return text;
}

void ContractVisitor::BeginSection() {
  if (part == Header) Break("BeginSection is in the header");
  Open('S', "BeginSection", "-");
  next->BeginSection();
}

void ContractVisitor::EndSection() {
  Close('S', "EndSection");
  next->EndSection();
}

void ContractVisitor::BeginInstance(Id const& id, bool complex) {
  where = "#" + std::string(id.digits) + ": ";
  if (!scopes.empty()) scopes.back().hasInstances = true;
  Open('I', "BeginInstance outside a section", "S");
  CheckId(id);
  ids.emplace_back(id.digits);
  isComplex = complex;
  next->BeginInstance(id, complex);
}

void ContractVisitor::EndInstance() {
  if (IsIn("I")) {
    long const records = scopes.back().content;
    if (records == 0) Break("the instance has no record");
    if (records > 1 && !isComplex) Break("the simple instance has " + std::to_string(records) + " records");
  }
  Close('I', "EndInstance");
  where.clear();
  next->EndInstance();
}

void ContractVisitor::BeginRecord(std::string_view type) {
  if (part == Header) where = std::string(type) + ": ";
  bool const isOfSection = IsIn("S");
  if (isOfSection && scopes.back().hasInstances) Break("the record of the section is after its instances");
  if (isOfSection && !type.empty()) Break("BeginRecord" + Quote(type) + " is outside an instance");
  if (!isOfSection) CheckType("BeginRecord", type);
  if (!scopes.empty()) ++scopes.back().content;
  Open('R', "BeginRecord", part == Header ? "-" : "SI");
  next->BeginRecord(type);
}

void ContractVisitor::EndRecord() {
  Close('R', "EndRecord");
  next->EndRecord();
}

void ContractVisitor::Integer(std::string_view number) {
  Value("Integer");
  if (!Consists(WithoutSign(number), kDigits)) Break("Integer" + Quote(number) + " is no decimal number");
  next->Integer(number);
}

void ContractVisitor::Real(std::string_view number) {
  Value("Real");
  char const* const fault = FaultOfReal(number);
  if (fault != nullptr) Break("Real" + Quote(number) + " " + fault);
  next->Real(number);
}

void ContractVisitor::String(Text const& text) {
  Value("String");
  if (!IsUtf8(text.utf8)) Break("String: utf8 is not UTF-8");
  bool const isPlain = std::all_of(text.encoded.begin(), text.encoded.end(),
                                   [](char byte) { return static_cast<unsigned char>(byte) >= 0x20 && byte != 0x7F; });
  if (!isPlain) Break("String" + Quote(text.utf8) + ": encoded has control characters");
  if (!text.escaped && text.encoded.find("\\X") != std::string_view::npos) Break("String: escaped is not set");
  next->String(text);
}

void ContractVisitor::Enumeration(std::string_view name) {
  Value("Enumeration");
  CheckType("Enumeration", name);
  next->Enumeration(name);
}

void ContractVisitor::Binary(std::string_view digits) {
  Value("Binary");
  if (!Consists(digits, kHexadecimal) || digits[0] > '3') {
    Break("Binary" + Quote(digits) + " is not of upper-case hexadecimal digits after one from 0 to 3");
  }
  next->Binary(digits);
}

void ContractVisitor::Reference(Id const& target, bool defined) {
  Value("Reference");
  CheckId(target);
  if (defined) references.emplace_back(target.digits);
  next->Reference(target, defined);
}

void ContractVisitor::Unset() {
  Value("Unset");
  next->Unset();
}

void ContractVisitor::Derived() {
  Value("Derived");
  next->Derived();
}

void ContractVisitor::BeginList() {
  Value("BeginList");
  scopes.push_back({'L'});
  next->BeginList();
}

void ContractVisitor::EndList() {
  Close('L', "EndList");
  next->EndList();
}

void ContractVisitor::BeginTyped(std::string_view type) {
  Value("BeginTyped");
  CheckType("BeginTyped", type);
  scopes.push_back({'T'});
  next->BeginTyped(type);
}

void ContractVisitor::EndTyped() {
  if (IsIn("T") && scopes.back().content == 0) Break("BeginTyped contains no value");
  Close('T', "EndTyped");
  next->EndTyped();
}

void ContractVisitor::Name(std::string_view name) {
  Value("Name");
  next->Name(name);
}

void ContractVisitor::Resource(std::string_view resource) {
  Value("Resource");
  next->Resource(resource);
}

void ContractVisitor::BeginBraces(std::string_view tag) {
  Value("BeginBraces");
  scopes.push_back({'B'});
  next->BeginBraces(tag);
}

void ContractVisitor::EndBraces() {
  Close('B', "EndBraces");
  next->EndBraces();
}

void ContractVisitor::Referrer(Id const& source) {
  if (!IsIn("I") || scopes.back().content == 0) Break("Referrer is not after the records of an instance");
  next->Referrer(source);
}

void ContractVisitor::BeginOtherSection(std::string_view keyword) {
  Open('O', "BeginOtherSection", "-");
  next->BeginOtherSection(keyword);
}

void ContractVisitor::EndOtherSection() {
  Close('O', "EndOtherSection");
  next->EndOtherSection();
}

void ContractVisitor::BeginEntry(std::string_view name) {
  Open('E', "BeginEntry", "O");
  next->BeginEntry(name);
}

void ContractVisitor::EndEntry() {
  Close('E', "EndEntry");
  next->EndEntry();
}

void ContractVisitor::Lines(std::string_view text) {
  if (!IsIn("O")) Break("Lines is outside a section without instances");
  next->Lines(text);
}
