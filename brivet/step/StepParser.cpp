#include "StepParser.h"

#include <string>
#include <vector>

#include "InputError.h"
#include "StepIds.h"
#include "StepText.h"

namespace {

// 2 to the power of 63 has 19 digits.
constexpr std::size_t SURE_DIGITS = 18;

bool IsPlain(std::string_view text) {
  for (char const byte : text) {
    if (byte == '\\' || static_cast<unsigned char>(byte) >= 0x80) return false;
  }
  return true;
}

}  // namespace

DocumentVisitor::Id StepParser::IdOf(StepScanner::Token const& token) {
  DocumentVisitor::Id id;
  id.digits = token.Digits();
  // Digit by digit: Gk_StringParser clips at 32 bits and VRELFloatUtil is exact up to 2^53, and ids that come out alike
  // would be taken for one.
  if (id.digits.size() <= SURE_DIGITS) {
    id.number = 0;
    for (char const digit : id.digits) id.number = id.number * 10 + (digit - '0');
  }
  return id;
}

bool StepParser::ReadInstance(DocumentVisitor& visitor) {
  bool const isComplex = AtSymbol('(');
  if (isComplex) scanner.Next();
  do {
    if (scanner.Current().kind != StepScanner::Keyword) Fail("an entity name");
    ReadRecord(visitor);
  } while (isComplex && !AtSymbol(')'));
  if (isComplex) scanner.Next();
  if (!AtSymbol(';')) Fail("; behind an instance");
  return isComplex;
}

void StepParser::ReadRecord(DocumentVisitor& visitor) {
  bool const hasType = scanner.Current().kind == StepScanner::Keyword;
  visitor.BeginRecord(hasType ? std::string_view(scanner.Current().text) : std::string_view());
  if (hasType) scanner.Next();
  ReadParameters(visitor);
  visitor.EndRecord();
}

// From the parenthesis that opens the list to the one that closes it.
void StepParser::ReadParameters(DocumentVisitor& visitor) {
  Expect('(', "an entity name");
  std::vector<bool> openTyped;  // an entry for each open list or typed parameter inside: whether it is typed
  bool mayClose = true;         // an empty list, or a value just read
  bool afterValue = false;
  while (true) {
    StepScanner::Token const& token = scanner.Current();
    if (mayClose && AtSymbol(')')) {
      scanner.Next();
      if (openTyped.empty()) return;
      openTyped.back() ? visitor.EndTyped() : visitor.EndList();
      openTyped.pop_back();
      afterValue = true;
    } else if (afterValue) {
      if (!AtSymbol(',')) Fail(", or ) behind a parameter");
      afterValue = false;
      mayClose = false;
      scanner.Next();
    } else if (AtSymbol('(') || token.kind == StepScanner::Keyword) {
      if (openTyped.size() == DEPTH_LIMIT) Fail("lists at most 10,000,000 deep");
      bool const isTyped = token.kind == StepScanner::Keyword;
      isTyped ? visitor.BeginTyped(token.text) : visitor.BeginList();
      scanner.Next();
      if (isTyped) Expect('(', "a type name");
      openTyped.push_back(isTyped);
      mayClose = true;
    } else {
      ReadValue(visitor);
      afterValue = true;
      mayClose = true;
    }
  }
}

void StepParser::ReadValue(DocumentVisitor& visitor) {
  StepScanner::Token const& token = scanner.Current();
  std::string_view const text = token.text;
  switch (token.kind) {
    case StepScanner::String:
      ReadText(visitor);
      break;
    case StepScanner::Number:
      text.find_first_of(".Ee") == std::string_view::npos ? visitor.Integer(text) : visitor.Real(text);
      break;
    case StepScanner::Instance: {
      DocumentVisitor::Id const id = IdOf(token);
      visitor.Reference(id, defined == nullptr || defined->Find(id) != StepIds::NONE);
      break;
    }
    case StepScanner::Enumeration:
      visitor.Enumeration(text.substr(1, text.size() - 2));
      break;
    case StepScanner::Binary:
      visitor.Binary(text.substr(1, text.size() - 2));
      break;
    default:
      if (AtSymbol('$')) {
        visitor.Unset();
      } else if (AtSymbol('*')) {
        visitor.Derived();
      } else {
        Fail("a parameter");
      }
  }
  scanner.Next();
}

// Most strings stand for themselves.
void StepParser::ReadText(DocumentVisitor& visitor) {
  StepScanner::Token const& token = scanner.Current();
  DocumentVisitor::Text text;
  text.encoded = token.text;
  text.line = token.line;
  if (IsPlain(token.text)) {
    text.utf8 = token.text;
    visitor.String(text);
    return;
  }
  StepText const decoded = DecodeStepText(token.text);
  std::string const utf8 = decoded.text.toUtf8();
  text.utf8 = utf8;
  text.escaped = decoded.escaped;
  visitor.String(text);
}

void StepParser::Expect(char symbol, std::string_view behind) {
  if (!AtSymbol(symbol)) Fail(std::string(1, symbol) + " behind " + std::string(behind));
  scanner.Next();
}

void StepParser::ExpectWord(char const* word) {
  if (!AtWord(word)) Fail(word);
  scanner.Next();
  Expect(';', word);
}

void StepParser::Fail(std::string const& expected) const {
  StepScanner::Token const& token = scanner.Current();
  throw InputError{VREL_E_INVALID_FILE, token.line, "expected " + expected + ", found " + token.Name()};
}
