#include "StepParser.h"

#include <string>

#include "InputError.h"
#include "StepReferences.h"
#include "StepText.h"

namespace {

// Every number of 18 digits fits into 63 bits.
constexpr std::size_t kSafeDigits = 18;

std::string Quote(char symbol) {
  return std::string("'") + symbol + "'";
}

// Passes an instance in the usual form to a visitor.
class VisitorSink {
 public:
  VisitorSink(DocumentVisitor& target, StepReferences const* resolved, long line)
      : visitor(target), references(resolved), firstLine(line) {}

  void BeginRecord(std::string_view type) { visitor.BeginRecord(type); }
  void EndRecord() { visitor.EndRecord(); }
  void Number(std::string_view number, bool isReal) { isReal ? visitor.Real(number) : visitor.Integer(number); }
  void String(std::string_view string, bool isDoubled, long lines) {
    if (isDoubled) {
      reduced.clear();
      for (std::size_t i = 0; i < string.size(); ++i) {
        reduced += string[i];
        if (string[i] == '\'') ++i;
      }
      string = reduced;
    }
    DocumentVisitor::Text text;
    text.encoded = string;
    text.utf8 = string;
    text.line = firstLine + lines;
    visitor.String(text);
  }
  void Enumeration(std::string_view name) { visitor.Enumeration(name); }
  void Reference(StepInstanceText::Number const& target) {
    DocumentVisitor::Id id;
    id.digits = target.digits;
    id.number = target.value;
    bool const isDefined = references == nullptr || references->Resolve(id);
    visitor.Reference(id, isDefined);
  }
  void Unset() { visitor.Unset(); }
  void Derived() { visitor.Derived(); }
  void BeginList() { visitor.BeginList(); }
  void EndList() { visitor.EndList(); }
  void BeginTyped(std::string_view type) { visitor.BeginTyped(type); }
  void EndTyped() { visitor.EndTyped(); }

 private:
  DocumentVisitor& visitor;
  StepReferences const* references;
  long const firstLine;
  std::string reduced;
};

}  // namespace

DocumentVisitor::Id StepParser::IdOf(StepScanner::Token const& token) {
  DocumentVisitor::Id id;
  id.digits = token.Digits();
  // Not Gk_StringParser, which clips at 32 bits, and not VRELFloatUtil, which is exact up to 2^53: ids must stay
  // distinct.
  if (id.digits.size() <= kSafeDigits) {
    id.number = 0;
    for (char const digit : id.digits) id.number = id.number * 10 + (digit - '0');
  }
  return id;
}

unsigned long StepParser::DigitsOffset(StepScanner::Token const& token) {
  return token.begin + token.text.size() - token.Digits().size();
}

bool StepParser::ReadInstance(DocumentVisitor& visitor) {
  bool const isComplex = AtSymbol('(');
  if (isComplex) scanner.Next();
  do {
    if (scanner.Current().kind != StepScanner::Keyword) Fail("entity name");
    ReadRecord(visitor);
  } while (isComplex && !AtSymbol(')'));
  if (isComplex) scanner.Next();
  if (!AtSymbol(';')) Fail("';' after an instance");
  return isComplex;
}

std::size_t StepParser::FindUsualInstance(std::size_t limit) const {
  char const* const bytes = scanner.Ahead();
  if (bytes == nullptr) return 0;
  StepInstanceText text(bytes);
  StepInstanceText::Ignore ignored;
  return text.ReadRecords(ignored) && text.Size() <= limit ? text.Size() : 0;
}

void StepParser::ReadUsualInstance(DocumentVisitor& visitor) {
  StepInstanceText text(scanner.Ahead());
  VisitorSink sink(visitor, references, scanner.Line());
  text.ReadRecords(sink);
  scanner.Skip(text);
}

void StepParser::ReadRecord(DocumentVisitor& visitor) {
  bool const hasType = scanner.Current().kind == StepScanner::Keyword;
  visitor.BeginRecord(hasType ? std::string_view(scanner.Current().text) : std::string_view());
  if (hasType) scanner.Next();
  ReadParameters(visitor);
  visitor.EndRecord();
}

void StepParser::ReadEntry(DocumentVisitor& visitor) {
  StepScanner::Kind const kind = scanner.Current().kind;
  bool const isName = kind == StepScanner::Resource || kind == StepScanner::Instance || kind == StepScanner::Name;
  if (!isName) Fail("name of an entry");
  visitor.BeginEntry(scanner.Current().text);
  scanner.Next();
  Expect('=', "the name of an entry");
  open.clear();
  do {
    if (BeginNested(visitor)) {
      ReadNested(visitor);
    } else {
      ReadValue(visitor);
    }
  } while (AtSymbol('{'));
  if (!AtSymbol(';')) Fail("';' after an entry");
  visitor.EndEntry();
}

// Reads from the opening parenthesis of a record to the closing one.
void StepParser::ReadParameters(DocumentVisitor& visitor) {
  Expect('(', "an entity name");
  open.assign(1, Nested::Record);
  ReadNested(visitor);
}

// Reads up to the end of everything that is open.
void StepParser::ReadNested(DocumentVisitor& visitor) {
  bool mayClose = true;  // after an opening parenthesis or a value
  bool afterValue = false;
  while (!open.empty()) {
    char const end = open.back() == Nested::Braces ? '}' : ')';
    if (mayClose && AtSymbol(end)) {
      scanner.Next();
      EndNested(visitor);
      afterValue = true;
    } else if (afterValue) {
      if (!AtSymbol(',')) Fail("',' or " + Quote(end) + " after a parameter");
      scanner.Next();
      afterValue = false;
      mayClose = false;
    } else if (BeginNested(visitor)) {
      mayClose = true;
    } else {
      ReadValue(visitor);
      afterValue = true;
      mayClose = true;
    }
  }
}

// Returns whether the current token began a list, a typed parameter or braces.
bool StepParser::BeginNested(DocumentVisitor& visitor) {
  bool const isTyped = scanner.Current().kind == StepScanner::Keyword;
  bool const isList = !isTyped && AtSymbol('(');
  if (!isTyped && !isList && !AtSymbol('{')) return false;
  if (open.size() > kDepthLimit) Fail("lists at most 10,000,000 deep");
  if (isTyped) {
    BeginTyped(visitor);
  } else if (isList) {
    visitor.BeginList();
    scanner.Next();
    open.push_back(Nested::List);
  } else {
    BeginBraces(visitor);
  }
  return true;
}

void StepParser::BeginTyped(DocumentVisitor& visitor) {
  visitor.BeginTyped(scanner.Current().text);
  scanner.Next();
  Expect('(', "a type name");
  open.push_back(Nested::Typed);
}

// A keyword after the brace is a tag or the name of a type.
void StepParser::BeginBraces(DocumentVisitor& visitor) {
  scanner.Next();
  std::string const word = scanner.Current().kind == StepScanner::Keyword ? scanner.Current().text : std::string();
  if (!word.empty()) scanner.Next();
  bool const isTag = !word.empty() && AtSymbol(':');
  visitor.BeginBraces(isTag ? word : std::string_view());
  open.push_back(Nested::Braces);
  if (isTag) scanner.Next();
  if (word.empty() || isTag) return;
  visitor.BeginTyped(word);
  Expect('(', "a type name");
  open.push_back(Nested::Typed);
}

void StepParser::EndNested(DocumentVisitor& visitor) {
  switch (open.back()) {
    case Nested::Record:
      break;
    case Nested::List:
      visitor.EndList();
      break;
    case Nested::Typed:
      visitor.EndTyped();
      break;
    case Nested::Braces:
      visitor.EndBraces();
      break;
  }
  open.pop_back();
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
      DocumentVisitor::Id id = IdOf(token);
      bool const isDefined = references == nullptr || references->Resolve(id);
      visitor.Reference(id, isDefined);
      break;
    }
    case StepScanner::Enumeration:
      visitor.Enumeration(text.substr(1, text.size() - 2));
      break;
    case StepScanner::Binary:
      visitor.Binary(text.substr(1, text.size() - 2));
      break;
    case StepScanner::Name:
      visitor.Name(text);
      break;
    case StepScanner::Resource:
      visitor.Resource(text);
      break;
    default:
      if (AtSymbol('$')) {
        visitor.Unset();
      } else if (AtSymbol('*')) {
        visitor.Derived();
      } else {
        Fail("parameter");
      }
  }
  scanner.Next();
}

// Most strings are plain ASCII without escapes.
void StepParser::ReadText(DocumentVisitor& visitor) {
  StepScanner::Token const& token = scanner.Current();
  DocumentVisitor::Text text;
  text.encoded = token.text;
  text.line = token.line;
  if (!token.hasNul && StepText::IsPlain(token.text)) {
    text.utf8 = token.text;
    visitor.String(text);
    return;
  }
  StepText::Decoded const decoded = strings.Decode(token.text);
  text.utf8 = decoded.utf8;
  text.escaped = decoded.escaped;
  // Zero bytes are not part of the format: only the decoded string has them.
  std::string withoutNul;
  if (token.hasNul) {
    for (char const byte : token.text) {
      if (byte != '\0') withoutNul += byte;
    }
    text.encoded = withoutNul;
  }
  visitor.String(text);
}

void StepParser::Expect(char symbol, std::string_view after) {
  if (!AtSymbol(symbol)) Fail(Quote(symbol) + " after " + std::string(after));
  scanner.Next();
}

void StepParser::ExpectWord(char const* word) {
  if (!AtWord(word)) Fail(word);
  scanner.Next();
  Expect(';', word);
}

void StepParser::Fail(std::string const& expected) const {
  StepScanner::Token const& token = scanner.Current();
  throw InputError{VREL_E_INVALID_FILE, token.line, "expected " + expected + ", found " + token.Describe(),
                   scanner.Column()};
}
