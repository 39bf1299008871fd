// Grammar: an exchange structure is a header section, optional ANCHOR and REFERENCE sections, data sections and the
// end, which SIGNATURE sections may follow. The functions are those of a recursive-descent parser, turned inside out
// because the reader frame asks for one entity after the other. There is one token of lookahead: `hasPendingToken` says
// that the current token was examined and belongs to what is read next.
//
// Instances in the usual form are read ahead by StepInstanceText, from the name to the semicolon; ReadInstance then
// only counts them. All others, and so all errors, are handled by the parser.
//
// Recovery: each entity, entry or instance that fails has a begin, its first token. From there StepRecovery finds
// where reading resumes, which may be before the position of the error, so that bytes are read again. A hostile file
// could make each instance fail at the end of the file. Once kRescanFactor times the size of the file was read again,
// reading therefore resumes after the error instead, which bounds the total time.
#include "StepStructure.h"

#include <algorithm>
#include <string_view>

#include "StepHeader.h"

namespace {

constexpr char kEndOfExchange[] = "END-ISO-10303-21";
constexpr unsigned long kRescanFactor = 4;
constexpr char kInstanceIsLost[] = "the instance is lost";
constexpr unsigned long kOpeningLimit = 4096;  // bytes that are searched for the header of a damaged file

// Counts the strings with escapes.
class EscapeCounter : public DocumentVisitor {
 public:
  void String(Text const& text) override { escaped += text.escaped ? 1 : 0; }
  long escaped = 0;
};

// Composes the type of an instance from those of its records.
class TypeCollector final : public EscapeCounter {
 public:
  void BeginRecord(std::string_view type) override {
    // Longer names are all counted as one type.
    if (name.size() > StepTypes::kNameLimit) return;
    if (!name.empty()) name += ' ';
    name += type;
  }
  std::string name;
};

// Composes the same type from an instance in the usual form that has several records.
struct ComplexTypeSink : StepInstanceText::Ignore {
  void BeginRecord(std::string_view type) {
    if (name.size() > StepTypes::kNameLimit) return;
    if (name.size() > 1) name += ' ';
    name += type;
  }
  std::string name = "(";
};

// The type of an instance in the usual form that has one record.
struct SimpleTypeSink : StepInstanceText::Ignore {
  void BeginRecord(std::string_view type) { name = type; }
  std::string_view name;
};

// Returns the position after a word of the text and `next`, with blanks between; npos if the text does not contain
// them.
std::size_t FindAfter(std::string_view text, std::string_view word, char next) {
  for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) {
    std::size_t const end = text.find_first_not_of(" \t\r\n", at + word.size());
    if (end != text.npos && text[end] == next) return end + 1;
  }
  return text.npos;
}

}  // namespace

StepStructure::StepStructure(Parts const& documentParts)
    : parts(documentParts), scanner(parts.scanner), parser(parts.parser), recovery(parts.buffer) {}

// Goes to the next token, unless the current one is still to be read.
void StepStructure::Advance() {
  try {
    if (!hasPendingToken) scanner.Next();
  } catch (InputError const&) {
    pieceBegin = scanner.CurrentPosition();
    throw;
  }
  hasPendingToken = false;
  pieceBegin = scanner.CurrentPosition();
}

void StepStructure::GoTo(StepScanner::Position position) {
  hasPendingToken = false;
  if (scanner.Current().begin == position.offset && scanner.Current().kind != StepScanner::End) return;
  scanner.Seek(position);
  scanner.Next();
}

void StepStructure::Resume(StepScanner::Position position) {
  hasPendingToken = false;
  scanner.Seek(position);
}

StepScanner::Position StepStructure::FindResumption(StepScanner::Position begin, Part part) {
  StepScanner::Position const failure = {scanner.Offset(), scanner.Line()};
  StepScanner::Position const position = recovery.Find(begin, part);
  if (position.offset >= failure.offset) return position;
  rescanned += failure.offset - position.offset;
  return rescanned <= kRescanFactor * parts.buffer.Size() ? position : recovery.Find(failure, part);
}

// Reports an error, adds a loss from `begin` on, and resumes reading after it.
void StepStructure::Lose(InputError const& error, StepScanner::Position begin, Part part, char const* what,
                         std::string const& instance) {
  if (parts.diagnostics.SendsWarning()) {
    std::string const in = instance.empty() ? "" : " in " + instance;
    parts.diagnostics.Warn(error.line, error.column, error.text + in + "; " + what);
  } else {
    parts.diagnostics.CountWarning();
  }
  StepScanner::Position const position = FindResumption(begin, part);
  bool const endsBefore = recovery.IsAtLineBegin() && position.line > begin.line;
  Loss loss = {begin.line, endsBefore ? position.line - 1 : position.line, {}, error.text};
  if (!instance.empty()) loss.instances.push_back(instance);
  parts.losses.Add(std::move(loss));
  Resume(position);
}

// Reports that the file lacks something at the current token.
void StepStructure::MarkIncomplete(std::string const& expected, std::string const& consequence) {
  StepScanner::Token const& token = scanner.Current();
  std::string const text = "expected " + expected + ", found " + token.Describe();
  parts.diagnostics.Warn(token.line, scanner.Column(), text + "; " + consequence);
  parts.losses.AddIncomplete(token.line, text);
}

void StepStructure::ReadOpening() {
  try {
    scanner.Next();
    if (scanner.Current().kind == StepScanner::End) CheckEmpty();
    parser.ExpectWord("ISO-10303-21");
    if (!parser.AtWord("HEADER")) parser.Fail("HEADER");
    scanner.Next();
    if (!parser.AtSymbol(';')) parser.Fail("';' after HEADER");
  } catch (InputError const& error) {
    FindHeader(error);
  }
}

// Errors: InputError without a line if the file has no bytes, or nothing but white space and a byte order mark.
void StepStructure::CheckEmpty() {
  if (parts.buffer.Size() == 0) throw InputError{VREL_E_INVALID_FILE, 0, "the file is empty"};
  std::string block(kOpeningLimit, '\0');
  for (unsigned long position = 0; position < parts.buffer.Size();) {
    Gk_ErrMgr::checkAbort();
    std::size_t const count = parts.buffer.ReadAt(position, block.data(), block.size());
    if (block.find_first_not_of(" \t\r\n\v\f\xEF\xBB\xBF") < count || count == 0) return;
    position += count;
  }
  throw InputError{VREL_E_INVALID_FILE, 0, "the file contains nothing but white space"};
}

// Finds the header of a file whose first lines are damaged.
void StepStructure::FindHeader(InputError const& error) {
  std::string bytes(kOpeningLimit, '\0');
  bytes.resize(parts.buffer.ReadAt(0, bytes.data(), bytes.size()));
  std::size_t begin = FindAfter(bytes, "HEADER", ';');
  if (begin == std::string::npos) {
    for (char const* type : {"FILE_DESCRIPTION", "FILE_NAME", "FILE_SCHEMA"}) {
      if (FindAfter(bytes, type, '(') != std::string::npos) begin = std::min(begin, bytes.find(type));
    }
  }
  if (begin == std::string::npos) throw error;
  long const line = 1 + std::count(bytes.begin(), bytes.begin() + static_cast<long>(begin), '\n');
  parts.diagnostics.Warn(error.line, error.column, error.text + "; reading begins at the header");
  parts.losses.Add({1, line, {}, error.text});
  Resume({begin, line});
}

// Skips a word and its semicolon. A missing semicolon is reported, and what is there instead is read next.
bool StepStructure::SkipHeading(char const* word) {
  if (!parser.AtWord(word)) return false;
  try {
    scanner.Next();
  } catch (InputError const&) {
    return true;
  }
  if (parser.AtSymbol(';')) return true;
  parts.diagnostics.Warn(scanner.Current().line, scanner.Column(),
                         std::string("expected ';' after ") + word + ", found " + scanner.Current().Describe());
  hasPendingToken = true;
  return true;
}

bool StepStructure::EndsAnySection() const {
  StepScanner::Kind const kind = scanner.Current().kind;
  if (kind != StepScanner::Keyword) return kind == StepScanner::End;
  for (char const* word : {"ENDSEC", "DATA", "ANCHOR", "REFERENCE", kEndOfExchange}) {
    if (parser.AtWord(word)) return true;
  }
  return false;
}

// Returns whether the current token ends a section: ENDSEC, or what can only be after that.
bool StepStructure::EndsSection(char const* content) {
  if (!EndsAnySection()) return false;
  if (SkipHeading("ENDSEC")) return true;
  std::string const expected = std::string(content) + " or ENDSEC";
  if (scanner.Current().kind == StepScanner::End) {
    MarkIncomplete(expected, "the file is cut off");
  } else {
    parts.diagnostics.Warn(scanner.Current().line, scanner.Column(),
                           "expected " + expected + ", found " + scanner.Current().Describe());
  }
  hasPendingToken = true;
  return true;
}

bool StepStructure::NextHeaderEntity(StepScanner::Position& begin) {
  if (ended) return false;
  while (true) {
    Gk_ErrMgr::checkAbort();
    try {
      Advance();
      bool const isInstance = scanner.Current().kind == StepScanner::Instance;
      if (isInstance || EndsSection("header entity")) {
        hasPendingToken = hasPendingToken || isInstance;
        CheckHeader(scanner.Current().line);
        return false;
      }
      if (scanner.Current().kind != StepScanner::Keyword) parser.Fail("header entity or ENDSEC");
      begin = pieceBegin;
      headerEntities.push_back(begin);
      return true;
    } catch (InputError const& error) {
      Lose(error, pieceBegin, Part::Header, "this part of the header is lost");
    }
  }
}

VRINResult StepStructure::ReadHeaderEntity(StepScanner::Position begin, VRELFileHeader& header) {
  try {
    GoTo(begin);
    std::string const type = scanner.Current().text;
    StepHeader filler(header);
    parser.ReadRecord(filler);
    if (!parser.AtSymbol(';')) parser.Fail("';' after a header entity");
    missingEntities.erase(std::remove(missingEntities.begin(), missingEntities.end(), type), missingEntities.end());
    return VREL_S_OK;
  } catch (InputError const& error) {
    // The entity that is read is always the last one that was found.
    headerEntities.pop_back();
    Lose(error, begin, Part::Header, "the header entity is lost");
    return error.result;
  }
}

void StepStructure::CheckHeader(long line) {
  for (std::string const& type : missingEntities) {
    parts.diagnostics.Warn(line, 0, "expected " + type + " in the header, found none");
  }
}

bool StepStructure::NextDataSection() {
  while (!ended) {
    Gk_ErrMgr::checkAbort();
    try {
      Advance();
      StepScanner::Token const& token = scanner.Current();
      if (parser.AtWord("DATA")) {
        BeginData();
        return true;
      }
      if (token.kind == StepScanner::Instance) {
        BeginDataWithoutHeading();
        return true;
      }
      if (parser.AtWord("ANCHOR") || parser.AtWord("REFERENCE")) {
        ReadEntries();
      } else if (parser.AtWord("SIGNATURE")) {
        ReadSignature();
      } else if (parser.AtWord(kEndOfExchange) || token.kind == StepScanner::End) {
        EndExchange();
      } else if (!SkipHeading("ENDSEC")) {
        parser.Fail("DATA or END-ISO-10303-21");
      }
    } catch (InputError const& error) {
      Lose(error, pieceBegin, Part::Data, "this part of the file is lost");
    }
  }
  return false;
}

void StepStructure::EndExchange() {
  ended = true;
  if (parser.AtWord(kEndOfExchange) && SkipSemicolon()) {
    ReadTrailingSignatures();
    return;
  }
  // If the file ends within a section, that was reported.
  if (!parts.losses.IsIncomplete()) MarkIncomplete("END-ISO-10303-21;", "the file may be cut off");
}

bool StepStructure::SkipSemicolon() {
  try {
    scanner.Next();
    return parser.AtSymbol(';');
  } catch (InputError const&) {
    return false;
  }
}

// Anything else after the end of the exchange structure is ignored.
void StepStructure::ReadTrailingSignatures() {
  auto const atSignature = [this] {
    try {
      scanner.Next();
      return parser.AtWord("SIGNATURE");
    } catch (InputError const&) {
      return false;
    }
  };
  while (atSignature()) {
    try {
      ReadSignature();
    } catch (InputError const& error) {
      parts.diagnostics.Warn(error.line, error.column, error.text + "; the signature is lost");
      parts.losses.Add({error.line, error.line, {}, error.text});
      return;
    }
  }
}

// The keyword is read with a semicolon, as other headings have, and without one.
void StepStructure::ReadSignature() {
  StepScanner::Position const content = {scanner.Offset(), scanner.Line()};
  if (!SkipSemicolon()) scanner.Seek(content);
  StepContents::Section& section = parts.contents.Add(StepContents::Kind::Lines, "SIGNATURE");
  section.begin = {scanner.Offset(), scanner.Line()};
  scanner.ReadLinesBeforeEnd();
  scanner.Next();
  if (!SkipHeading("ENDSEC")) MarkIncomplete("ENDSEC", "the file is cut off");
}

// The keyword of the section is the current token.
void StepStructure::ReadEntries() {
  StepContents::Section& section = parts.contents.Add(StepContents::Kind::Entries, scanner.Current().text);
  SkipHeading(section.keyword.c_str());
  while (true) {
    Gk_ErrMgr::checkAbort();
    try {
      Advance();
      if (EndsSection("entry")) return;
      ReadEntry(section);
    } catch (InputError const& error) {
      Lose(error, pieceBegin, Part::Entries, "the entry is lost");
    }
  }
}

void StepStructure::ReadEntry(StepContents::Section& section) {
  bool const definesInstance = scanner.Current().kind == StepScanner::Instance;
  std::string const name = scanner.Current().text;
  DocumentVisitor ignored;
  parser.ReadEntry(ignored);
  section.entries.push_back(pieceBegin);
  if (!definesInstance) return;
  StepScanner::Token token;
  token.text = name;
  parts.references.AddExternal(StepParser::IdOf(token));
}

void StepStructure::BeginData() {
  parts.contents.Add(StepContents::Kind::Data);
  scanner.Next();
  ReadSectionParameters();
}

// The current token is the name of an instance.
void StepStructure::BeginDataWithoutHeading() {
  parts.contents.Add(StepContents::Kind::Data);
  StepScanner::Token const& token = scanner.Current();
  std::string const text = "expected DATA, found " + token.Describe();
  parts.diagnostics.Warn(token.line, scanner.Column(), text);
  parts.losses.Add({token.line, token.line, {}, text});
  hasPendingToken = true;
}

// Reads the parameters of a section, if there are any, and the semicolon. Errors do not affect the instances.
void StepStructure::ReadSectionParameters() {
  try {
    if (parser.AtSymbol('(')) {
      StepScanner::Position const begin = scanner.CurrentPosition();
      EscapeCounter counter;
      parser.ReadRecord(counter);
      escaped += counter.escaped;
      parts.contents.Last().hasParameters = true;
      parts.contents.Last().begin = begin;
    }
    if (!parser.AtSymbol(';')) parser.Fail("';' after DATA");
  } catch (InputError const& error) {
    bool const atInstance = scanner.Current().kind == StepScanner::Instance;
    StepScanner::Position const instance = scanner.CurrentPosition();
    Lose(error, pieceBegin, Part::Data, "the heading of the section is lost");
    if (atInstance) Resume(instance);
  }
}

// Reads by tokens until an instance, the end of the section, or an instance in the usual form.
StepEntityReader* StepStructure::NextOtherInstance(VRELBufferHandle& buffer) {
  while (true) {
    Part part = openScopes.empty() ? Part::Data : Part::Scope;
    try {
      Advance();
      if (!openScopes.empty() && parser.AtWord("ENDSCOPE")) return LeaveScope(buffer);
      if (!openScopes.empty() && EndsAnySection()) LoseScopes();
      if (openScopes.empty() && EndsSection("instance")) return nullptr;
      StepEntityReader* const entity = ReadInstanceName(buffer);
      if (entity != nullptr) return entity;
    } catch (InputError const& error) {
      Lose(error, pieceBegin, part, "this part of the section is lost");
    }
    Gk_ErrMgr::checkAbort();
    if (hasPendingToken || !openScopes.empty()) continue;
    StepEntityReader* const entity = ReadUsualInstance(buffer);
    if (entity != nullptr) return entity;
  }
}

// A section ends within scopes.
void StepStructure::LoseScopes() {
  StepScanner::Token const& token = scanner.Current();
  std::string const text = "expected ENDSCOPE, found " + token.Describe();
  parts.diagnostics.Warn(token.line, scanner.Column(), text + "; the instances of the open scopes are lost");
  for (std::uint64_t const number : openScopes) {
    parts.losses.Add({token.line, token.line, {parts.references.NameOf(number)}, text});
  }
  openScopes.clear();
}

// Reads the records of an instance that may have several.
bool StepStructure::ReadUsualRecords(StepInstanceText& text) {
  ComplexTypeSink type;
  if (!text.ReadRecords(type)) return false;
  aheadType = parts.types.Find(type.name + ")");
  return true;
}

// Reads an instance completely. Returns null, and has read nothing, if it is not in the usual form.
StepEntityReader* StepStructure::ReadUsualInstance(VRELBufferHandle& buffer) {
  char const* const bytes = scanner.Ahead();
  if (bytes == nullptr) return nullptr;
  StepInstanceText text(bytes);
  if (!text.ReadName()) return nullptr;
  StepScanner::Position const begin = {scanner.Offset() + text.Size(), scanner.Line() + text.Lines()};
  isAheadComplex = text.AtList();
  if (isAheadComplex) {
    if (!ReadUsualRecords(text)) return nullptr;
  } else {
    SimpleTypeSink type;
    if (!text.ReadRecords(type)) return nullptr;
    aheadType = parts.types.Find(type.name);
  }
  auto const number = static_cast<std::uint64_t>(text.Name().value);
  scanner.Skip(text);
  aheadBegin = begin.offset;
  return MakeEntity(number, begin, buffer);
}

// Reads "#12=". Returns null for an instance that opens a scope: it follows the instances of the scope.
StepEntityReader* StepStructure::ReadInstanceName(VRELBufferHandle& buffer) {
  StepScanner::Token const& token = scanner.Current();
  if (token.kind != StepScanner::Instance) parser.Fail("instance or ENDSEC");
  std::uint64_t const number = StepIds::NumberOf(StepParser::IdOf(token), StepParser::DigitsOffset(token));
  scanner.Next();
  if (!parser.AtSymbol('=')) parser.Fail("'=' after the name of an instance");
  try {
    scanner.Next();
  } catch (InputError const& error) {
    Lose(error, pieceBegin, openScopes.empty() ? Part::Data : Part::Scope, kInstanceIsLost,
         parts.references.NameOf(number));
    return nullptr;
  }
  if (!parser.AtWord("&SCOPE")) return MakeEntity(number, scanner.CurrentPosition(), buffer);
  openScopes.push_back(number);
  // The instances of the scope follow without a semicolon.
  scanner.Next();
  hasPendingToken = true;
  return nullptr;
}

// Reads ENDSCOPE and the instances that the scope exports: /#1, #2/. The record of the instance around it follows.
StepEntityReader* StepStructure::LeaveScope(VRELBufferHandle& buffer) {
  std::uint64_t const number = openScopes.back();
  openScopes.pop_back();
  scanner.Next();
  if (parser.AtSymbol('/')) {
    do {
      if (scanner.Next().kind != StepScanner::Instance) parser.Fail("exported instance");
      scanner.Next();
    } while (parser.AtSymbol(','));
    parser.Expect('/', "the exported instances");
  }
  return MakeEntity(number, scanner.CurrentPosition(), buffer);
}

VRINResult StepStructure::ReadOtherInstance(StepEntityReader& entity) {
  StepScanner::Position begin = lastBegin;
  if (entity.Offset() != begin.offset) {
    // An earlier instance, which could not be read before.
    begin = {entity.Offset(), parts.lines.At(parts.contents.IndexOf(entity.Offset()))};
  }
  try {
    GoTo(begin);
    TypeCollector type;
    bool const isComplex = parser.ReadInstance(type);
    parts.references.CountRead();
    std::uint32_t const number = parts.types.Find(isComplex ? "(" + type.name + ")" : type.name);
    parts.types.Count(number);
    entity.SetType(number, type.escaped != 0);
    escaped += type.escaped;
    ++(isComplex ? complex : simple);
    return VREL_S_OK;
  } catch (InputError const& error) {
    Lose(error, begin, openScopes.empty() ? Part::Data : Part::Scope, kInstanceIsLost,
         parts.references.NameOf(parts.contents.NumberOf(entity)));
    return error.result;
  }
}

void StepStructure::RemoveFromCounts(std::uint32_t instance) {
  StepEntityReader& entity = parts.contents.At(instance);
  parts.references.RemoveRead();
  GoTo({entity.Offset(), parts.lines.At(instance)});
  EscapeCounter counter;
  bool const isComplex = parser.ReadInstance(counter);
  escaped -= counter.escaped;
  --(isComplex ? complex : simple);
  parts.types.Remove(entity.Type());
  entity.SetUnread();
}
