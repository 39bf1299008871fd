#include "StepReader.h"

#include <initializer_list>
#include <utility>
#include <vector>

#include "Gk_ErrMgr.h"
#include "StepError.h"
#include "StepText.h"

namespace {

constexpr int SLOTS = 17;

// All 64 bits count, so that ids a multiple of 2 to the power of 32 apart do not meet.
unsigned int HashId(std::uint64_t const& id) {
  return VRELMixInteger(static_cast<int>(id ^ (id >> 32) * 0x9E3779B1U));
}

bool EqualIds(std::uint64_t const& a, std::uint64_t const& b) {
  return a == b;
}

StepSummary::HeaderEntity Entity(char const* name, std::initializer_list<char const*> parameters) {
  StepSummary::HeaderEntity entity;
  entity.name = name;
  for (char const* parameter : parameters) entity.parameters.push_back({parameter, false, {}});
  return entity;
}

}  // namespace

StepReader::StepReader(ByteSource& source) : scanner(source), ids(SLOTS) {
  ids.SetFunctions(HashId, EqualIds);
  summary.header.push_back(Entity("FILE_DESCRIPTION", {"description", "implementation_level"}));
  summary.header.push_back(Entity("FILE_NAME", {"name", "time_stamp", "author", "organization", "preprocessor_version",
                                                "originating_system", "authorization"}));
  summary.header.push_back(Entity("FILE_SCHEMA", {"schema_identifiers"}));
}

StepSummary StepReader::Read() {
  ReadHeader();
  CheckHeader();
  ReadSections();
  return std::move(summary);
}

void StepReader::ReadSections() {
  ExpectWord("ENDSEC");
  while (!AtWord("END-ISO-10303-21")) {
    if (AtWord("DATA")) {
      ReadData();
    } else if (AtWord("ANCHOR") || AtWord("REFERENCE")) {
      SkipSection();
    } else {
      Fail("DATA or END-ISO-10303-21");
    }
  }
  // The byte behind the end is not asked for: a terminal or a pipe may keep it back.
  scanner.Next();
  if (!AtSymbol(';')) Fail("; behind END-ISO-10303-21");
}

void StepReader::ReadHeader() {
  scanner.Next();
  ExpectWord("ISO-10303-21");
  ExpectWord("HEADER");
  place = "header";
  while (!AtWord("ENDSEC")) {
    StepSummary::HeaderEntity* known = nullptr;
    for (StepSummary::HeaderEntity& entity : summary.header) {
      if (AtWord(entity.name)) known = &entity;
    }
    if (known != nullptr) {
      if (known->line != 0) Fail(std::string("one ") + known->name + " in the header");
      ReadHeaderEntity(*known);
    } else {
      if (scanner.Current().kind != StepScanner::Keyword) Fail("an entity of the header or ENDSEC");
      scanner.Next();
      ReadParameters();
    }
    Expect(';', "an entity of the header");
  }
}

void StepReader::CheckHeader() const {
  for (StepSummary::HeaderEntity const& entity : summary.header) {
    if (entity.line == 0) Fail(std::string(entity.name) + " in the header");
  }
}

void StepReader::ReadHeaderEntity(StepSummary::HeaderEntity& entity) {
  entity.line = scanner.Current().line;
  scanner.Next();
  Expect('(', entity.name);
  bool first = true;
  for (StepSummary::Parameter& parameter : entity.parameters) {
    if (AtSymbol(')')) break;
    if (!first) Expect(',', "a parameter");
    first = false;
    ReadHeaderParameter(parameter);
  }
  Expect(')', std::string("the parameters of ") + entity.name);
}

void StepReader::ReadHeaderParameter(StepSummary::Parameter& parameter) {
  if (AtSymbol('$') || AtSymbol('*')) {
    scanner.Next();
    return;
  }
  parameter.isSet = true;
  if (!AtSymbol('(')) {
    ReadHeaderText(parameter);
    return;
  }
  scanner.Next();
  for (bool first = true; !AtSymbol(')'); first = false) {
    if (!first) Expect(',', "a string");
    if (AtSymbol('$')) {
      scanner.Next();
    } else {
      ReadHeaderText(parameter);
    }
  }
  scanner.Next();
}

void StepReader::ReadHeaderText(StepSummary::Parameter& parameter) {
  if (scanner.Current().kind != StepScanner::String) Fail(std::string("a string for ") + parameter.name);
  parameter.texts.push_back(ReadText());
}

// Anchors and references name instances; they define none.
void StepReader::SkipSection() {
  place = AtWord("ANCHOR") ? "anchor" : "reference";
  while (!AtWord("ENDSEC")) {
    if (scanner.Current().kind == StepScanner::String) {
      ReadText();
    } else if (scanner.Next().kind == StepScanner::End) {
      Fail("ENDSEC");
    }
  }
  ExpectWord("ENDSEC");
}

void StepReader::ReadData() {
  ++summary.dataSections;
  place = "data";
  scanner.Next();
  if (AtSymbol('(')) ReadParameters();
  Expect(';', "DATA");
  ReadInstances();
  ExpectWord("ENDSEC");
}

// Up to the ENDSEC of the section. An instance that holds a scope stays open while the instances of the scope are read.
void StepReader::ReadInstances() {
  std::vector<std::string> openInstances;
  while (!AtWord("ENDSEC") || !openInstances.empty()) {
    if (!openInstances.empty() && AtWord("ENDSCOPE")) {
      CloseScope();
      place = std::move(openInstances.back());
      openInstances.pop_back();
    } else {
      OpenInstance();
      if (AtWord("&SCOPE")) {
        openInstances.push_back(place);
        scanner.Next();
        continue;
      }
    }
    ReadRecords();
    Expect(';', place);
  }
}

void StepReader::OpenInstance() {
  Gk_ErrMgr::checkAbort();
  StepScanner::Token const& token = scanner.Current();
  if (token.kind != StepScanner::Instance) Fail("an instance or ENDSEC");
  if (!token.idFits) Fail("an instance id below 2^64");
  if (!ids.Add(token.id)) Fail("an id that no other instance has");
  place = token.text;
  scanner.Next();
  Expect('=', place);
}

// ENDSCOPE, and the instances that the scope lets out: /#1, #2/. The record of the instance around it follows.
void StepReader::CloseScope() {
  scanner.Next();
  if (!AtSymbol('/')) return;
  do {
    if (scanner.Next().kind != StepScanner::Instance) Fail("an instance that the scope lets out");
    scanner.Next();
  } while (AtSymbol(','));
  Expect('/', "the instances that the scope lets out");
}

// One record, or several in parentheses.
void StepReader::ReadRecords() {
  bool const isComplex = AtSymbol('(');
  if (isComplex) scanner.Next();
  do {
    if (scanner.Current().kind != StepScanner::Keyword) Fail("an entity name");
    scanner.Next();
    ReadParameters();
  } while (isComplex && !AtSymbol(')'));
  if (isComplex) scanner.Next();
  ++(isComplex ? summary.complexInstances : summary.simpleInstances);
}

// From the parenthesis that opens the list to the one that closes it. A list inside, typed or not, only adds a level.
void StepReader::ReadParameters() {
  Expect('(', "an entity name");
  std::size_t level = 1;
  bool mayClose = true;  // an empty list, or a value just read
  bool afterValue = false;
  while (level != 0) {
    StepScanner::Token const& token = scanner.Current();
    if (mayClose && AtSymbol(')')) {
      --level;
      afterValue = true;
      scanner.Next();
    } else if (afterValue) {
      if (!AtSymbol(',')) Fail(", or ) behind a parameter");
      afterValue = false;
      mayClose = false;
      scanner.Next();
    } else if (AtSymbol('(')) {
      ++level;
      mayClose = true;
      scanner.Next();
    } else if (token.kind == StepScanner::Keyword) {
      scanner.Next();
      if (!AtSymbol('(')) Fail("( behind a type name");
    } else {
      if (token.kind == StepScanner::End || (token.kind == StepScanner::Other && !AtSymbol('$') && !AtSymbol('*'))) {
        Fail("a parameter");
      }
      if (token.kind == StepScanner::String) {
        ReadText();
      } else {
        scanner.Next();
      }
      afterValue = true;
      mayClose = true;
    }
  }
}

// Decodes the current string and notes it if it carries an escape.
VRELString StepReader::ReadText() {
  StepScanner::Token const& token = scanner.Current();
  VRELString text;
  // Most strings of a file are names that nobody asks for.
  if (place == "header" || token.text.find('\\') != std::string::npos) {
    StepText decoded = DecodeStepText(token.text);
    text = decoded.text;
    if (decoded.escaped) summary.escapedStrings.push_back({token.line, place, std::move(decoded.text)});
  }
  scanner.Next();
  return text;
}

void StepReader::Expect(char symbol, std::string_view behind) {
  if (!AtSymbol(symbol)) Fail(std::string(1, symbol) + " behind " + std::string(behind));
  scanner.Next();
}

// A word of the format, with its semicolon.
void StepReader::ExpectWord(char const* word) {
  if (!AtWord(word)) Fail(word);
  scanner.Next();
  Expect(';', word);
}

void StepReader::Fail(std::string const& expected) const {
  StepScanner::Token const& token = scanner.Current();
  throw StepError{VREL_E_INVALID_FILE, token.line, "expected " + expected + ", found " + token.Name()};
}
