#include "StepFormatReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "Gk_ErrMgr.h"
#include "InputError.h"
#include "Progress.h"
#include "StepEntityReader.h"
#include "StepHeader.h"
#include "StepSections.h"

namespace {

constexpr char END_OF_EXCHANGE[] = "END-ISO-10303-21";
constexpr std::uint32_t PROGRESS_STEP = 4096;  // instances

// Counts the texts with escapes.
class EscapeCounter : public DocumentVisitor {
 public:
  void String(Text const& text) override { escaped += text.escaped ? 1 : 0; }
  long escaped = 0;
};

// The type of an instance as its records tell it.
class TypeCollector final : public EscapeCounter {
 public:
  void BeginRecord(std::string_view type) override {
    // Of a longer name no more is told.
    if (name.size() > StepTypes::NAME_LIMIT) return;
    if (!name.empty()) name += ' ';
    name += type;
  }
  std::string name;
};

// One record of the header, read by the walk.
class StepHeaderEntity final : public VRELEntityReader {
 public:
  StepHeaderEntity(VRELBufferHandle& source, std::function<VRINResult()> reading)
      : VRELEntityReader(source), read(std::move(reading)) {}

  VRINResult ReadEntity() override { return read(); }

 private:
  std::function<VRINResult()> const read;
};

}  // namespace

StepFormatReader::StepFormatReader(VRELFileHandle const& document, std::string shownName)
    : Document(document),
      problems(std::move(shownName)),
      ids(
          [this](std::uint32_t instance) {
            StepEntityReader const& entity = EntityAt(instance);
            return entity.IsRead() ? entity.Number() : StepIds::LEFT_OUT;
          },
          [this](std::uint64_t place) { return DigitsAt(place); }) {}

StepFormatReader::~StepFormatReader() {
  for (VRELSectionReader* section : headerSections) delete section;
  for (VRELSectionReader* section : dataSections) delete section;
}

VRINResult StepFormatReader::Open() {
  errno = 0;
  bytes = new StepBuffer(file, this);
  buffer = bytes;
  if (!bytes->IsValid().IsSuccess()) {
    int const error = errno;
    problems.Error(0,
                   "expected a file that can be read, found " +
                       std::string(error != 0 ? std::strerror(error) : "something else, such as a folder or a pipe"));
    return VREL_E_FILE_OPEN;
  }
  scanner = std::make_unique<StepScanner>(*bytes);
  parser = std::make_unique<StepParser>(*scanner, &ids);
  try {
    ReadOpening();
  } catch (InputError const& error) {
    problems.Error(error.line, error.text + "; translate an ISO 10303-21 (STEP) file");
    return error.result;
  }
  headerSections.add(new StepHeaderSection(buffer, *this));
  opened = true;
  return VREL_S_OK;
}

void StepFormatReader::ReadOpening() {
  scanner->Next();
  parser->ExpectWord("ISO-10303-21");
  parser->ExpectWord("HEADER");
  waiting = true;
}

VRINResult StepFormatReader::GetState() const {
  if (!opened || repeated != 0) return VREL_E_INVALID_FILE;
  bool const isWhole = failed == 0 && !incomplete;
  if (isWhole) return VREL_S_OK;
  return simple + complex != 0 ? VREL_S_PARTIAL : VREL_E_INVALID_FILE;
}

// Goes to the next token, unless the current one is still to be read.
void StepFormatReader::Advance() {
  if (!waiting) scanner->Next();
  waiting = false;
}

void StepFormatReader::GoTo(Place place) {
  waiting = false;
  if (scanner->Current().begin == place.begin && scanner->Current().kind != StepScanner::End) return;
  scanner->Seek(place.begin, place.line);
  scanner->Next();
}

// Goes on to where the reading can begin anew: a semicolon, a word that opens or ends something or, where they serve,
// an instance.
void StepFormatReader::Skip(bool instancesServe) {
  bool found = false;
  bool broken = false;
  while (!found) {
    try {
      // What follows a token that does not end, or is too long, may serve.
      if (broken) scanner->Next();
      broken = false;
      found = SkipToken(instancesServe);
    } catch (InputError const&) {
      broken = true;
    }
  }
}

// Whether the current token is such a place; goes to the next token if it is not.
bool StepFormatReader::SkipToken(bool instancesServe) {
  StepScanner::Token const& token = scanner->Current();
  if (parser->AtSymbol(';')) return true;
  waiting = EndsAnySection();
  if (waiting) return true;
  bool const isInstance = token.kind == StepScanner::Instance;
  Place const place = {token.begin, token.line};
  scanner->Next();
  if (!instancesServe || !isInstance || !parser->AtSymbol('=')) return false;
  GoTo(place);
  waiting = true;
  return true;
}

void StepFormatReader::LeaveOut(InputError const& error, std::string const& what) {
  ++failed;
  problems.Warn(error.line, error.text + "; " + what + " is left out, mend the file and translate it again");
}

// A word with its semicolon; what is there instead of the semicolon is told and left to be read.
bool StepFormatReader::PassHeading(char const* word) {
  if (!parser->AtWord(word)) return false;
  scanner->Next();
  if (parser->AtSymbol(';')) return true;
  problems.Warn(scanner->Current().line, std::string("expected ; behind ") + word + ", found " +
                                             scanner->Current().Name() + "; read as if it was there");
  waiting = true;
  return true;
}

bool StepFormatReader::EndsAnySection() const {
  return scanner->Current().kind == StepScanner::End || parser->AtWord("ENDSEC") || parser->AtWord("DATA") ||
         parser->AtWord(END_OF_EXCHANGE);
}

// Whether the current token ends a section: its own end, or what can only stand behind that.
bool StepFormatReader::EndsSection(char const* what) {
  if (!EndsAnySection()) return false;
  if (PassHeading("ENDSEC")) return true;
  incomplete = incomplete || scanner->Current().kind == StepScanner::End;
  problems.Warn(scanner->Current().line, std::string("expected ") + what + " or ENDSEC;, found " +
                                             scanner->Current().Name() + "; what was read up to here is kept");
  waiting = true;
  return true;
}

VRELEntityReader* StepFormatReader::ReadNextHeaderEntity() {
  if (ended) return nullptr;
  while (true) {
    Gk_ErrMgr::checkAbort();
    try {
      Advance();
      if (EndsSection("an entity of the header")) {
        CheckHeader(scanner->Current().line);
        return nullptr;
      }
      StepScanner::Token const& token = scanner->Current();
      if (token.kind != StepScanner::Keyword) parser->Fail("an entity of the header or ENDSEC;");
      headerRecords.push_back({token.begin, token.line});
      return new StepHeaderEntity(buffer, [this, place = headerRecords.back()] { return ReadHeaderEntity(place); });
    } catch (InputError const& error) {
      LeaveOut(error, "this part of the header");
      Skip(false);
    }
  }
}

VRINResult StepFormatReader::ReadHeaderEntity(Place place) {
  try {
    GoTo(place);
    std::string const type = scanner->Current().text;
    StepHeader filler(header);
    parser->ReadRecord(filler);
    if (!parser->AtSymbol(';')) parser->Fail("; behind an entity of the header");
    missing.erase(std::remove(missing.begin(), missing.end(), type), missing.end());
    return VREL_S_OK;
  } catch (InputError const& error) {
    LeaveOut(error, "this entity of the header");
    Skip(false);
    auto const same = [place](Place const& each) { return each.begin == place.begin; };
    headerRecords.erase(std::remove_if(headerRecords.begin(), headerRecords.end(), same), headerRecords.end());
    return error.result;
  }
}

void StepFormatReader::CheckHeader(long line) {
  for (std::string const& type : missing) {
    problems.Warn(line, "expected " + type + " in the header, found none; the header is shown without it");
  }
}

VRELSectionReader* StepFormatReader::GetNextDataSection() {
  if (!opened || ended) return nullptr;
  while (true) {
    Gk_ErrMgr::checkAbort();
    try {
      Advance();
      if (parser->AtWord("DATA")) return ReadData();
      if (parser->AtWord(END_OF_EXCHANGE) || scanner->Current().kind == StepScanner::End) break;
      if (scanner->Current().kind != StepScanner::Keyword) parser->Fail("DATA or END-ISO-10303-21;");
      PassSection();
    } catch (InputError const& error) {
      LeaveOut(error, "this part of the file");
      Skip(false);
    }
  }
  EndExchange();
  return nullptr;
}

void StepFormatReader::EndExchange() {
  ended = true;
  if (parser->AtWord(END_OF_EXCHANGE) && IsSemicolonNext()) return;
  // A file that broke off inside a section was told so already.
  if (!incomplete) {
    problems.Warn(scanner->Current().line, "expected END-ISO-10303-21;, found " + scanner->Current().Name() +
                                               "; what was read is kept, but the file may be cut off");
  }
  incomplete = true;
}

// The byte behind the semicolon is not asked for.
bool StepFormatReader::IsSemicolonNext() {
  try {
    scanner->Next();
    return parser->AtSymbol(';');
  } catch (InputError const&) {
    return false;
  }
}

VRELSectionReader* StepFormatReader::ReadData() {
  scanner->Next();
  Place const parameters = ReadSectionParameters();
  auto* const section = new StepDataSection(buffer, *this);
  dataSections.add(section);
  sections.push_back({section, ids.Count(), parameters});
  return section;
}

// The parameters of a section, if there are any, and the semicolon. Whatever stands there: the instances are read.
StepFormatReader::Place StepFormatReader::ReadSectionParameters() {
  Place parameters;
  try {
    if (parser->AtSymbol('(')) {
      Place const place = {scanner->Current().begin, scanner->Current().line};
      EscapeCounter counter;
      parser->ReadRecord(counter);
      escaped += counter.escaped;
      parameters = place;
    }
    if (!parser->AtSymbol(';')) parser->Fail("; behind DATA");
  } catch (InputError const& error) {
    LeaveOut(error, "this heading of a section");
    Skip(true);
  }
  return parameters;
}

// A section of another kind.
void StepFormatReader::PassSection() {
  StepScanner::Token const& token = scanner->Current();
  problems.Warn(token.line, "expected DATA, found " + token.Name() + "; this section is left out");
  incomplete = true;
  while (!EndsAnySection()) {
    Gk_ErrMgr::checkAbort();
    scanner->Next();
  }
  if (!PassHeading("ENDSEC")) waiting = true;
}

StepEntityReader* StepFormatReader::ReadNextInstance() {
  if (ended) return nullptr;
  while (true) {
    Gk_ErrMgr::checkAbort();
    try {
      Advance();
      bool const inScope = !openScopes.empty();
      if (inScope && parser->AtWord("ENDSCOPE")) return LeaveScope();
      if (inScope && EndsAnySection()) LeaveOutScopes();
      if (openScopes.empty() && EndsSection("an instance")) return nullptr;
      StepEntityReader* const entity = ReadInstanceName();
      if (entity != nullptr) return entity;
    } catch (InputError const& error) {
      LeaveOut(error, "this instance");
      Skip(true);
    }
  }
}

// A section ends inside of scopes.
void StepFormatReader::LeaveOutScopes() {
  failed += static_cast<long>(openScopes.size());
  problems.Warn(scanner->Current().line,
                "expected ENDSCOPE, found " + scanner->Current().Name() +
                    "; the instances around it are left out, mend the file and translate it again");
  openScopes.clear();
}

// #12 = and the begin of the records. Null for an instance that opens a scope: it comes behind those of the scope.
StepEntityReader* StepFormatReader::ReadInstanceName() {
  StepScanner::Token const& token = scanner->Current();
  if (token.kind != StepScanner::Instance) parser->Fail("an instance or ENDSEC;");
  std::uint64_t const number = StepIds::NumberOf(StepParser::IdOf(token), token.begin);
  std::string const name = token.Name();
  scanner->Next();
  parser->Expect('=', name);
  if (!parser->AtWord("&SCOPE")) return MakeEntity(number);
  openScopes.push_back(number);
  // The instances of the scope follow without a semicolon.
  scanner->Next();
  waiting = true;
  return nullptr;
}

// ENDSCOPE, and the instances that the scope lets out: /#1, #2/. The record of the instance around it follows.
StepEntityReader* StepFormatReader::LeaveScope() {
  std::uint64_t const number = openScopes.back();
  openScopes.pop_back();
  scanner->Next();
  if (parser->AtSymbol('/')) {
    do {
      if (scanner->Next().kind != StepScanner::Instance) parser->Fail("an instance that the scope lets out");
      scanner->Next();
    } while (parser->AtSymbol(','));
    parser->Expect('/', "the instances that the scope lets out");
  }
  return MakeEntity(number);
}

StepEntityReader* StepFormatReader::MakeEntity(std::uint64_t number) {
  if (ids.Count() % PROGRESS_STEP == 0) Tell(scanner->Offset());
  StepScanner::Token const& token = scanner->Current();
  ids.Add(number);
  return new StepEntityReader(buffer, number, token.begin, token.line);
}

void StepFormatReader::Tell(unsigned long done) {
  if (progress != nullptr) progress->Done(static_cast<long>(done));
}

VRINResult StepFormatReader::ReadInstance(StepEntityReader& entity) {
  if (entity.IsRead()) return VREL_S_OK;
  try {
    GoTo({entity.Offset(), entity.Line()});
    TypeCollector type;
    bool const isComplex = parser->ReadInstance(type);
    entity.SetType(types.Count(isComplex ? "(" + type.name + ")" : type.name), type.escaped != 0);
    escaped += type.escaped;
    ++(isComplex ? complex : simple);
    return VREL_S_OK;
  } catch (InputError const& error) {
    LeaveOut(error, "the instance that begins in line " + std::to_string(entity.Line()));
    Skip(true);
    return error.result;
  }
}

StepEntityReader& StepFormatReader::EntityAt(std::uint32_t instance) const {
  auto const behind = std::upper_bound(sections.begin(), sections.end(), instance,
                                       [](std::uint32_t wanted, Section const& each) { return wanted < each.first; });
  Section const& section = *(behind - 1);
  return section.entities->At(instance - section.first);
}

DocumentVisitor::Id StepFormatReader::IdAt(std::uint32_t instance, std::string& digits) const {
  return ids.IdOf(EntityAt(instance).Number(), digits);
}

// The window stays where it is: ids are asked for in any order.
std::string StepFormatReader::DigitsAt(std::uint64_t place) const {
  StepScanner::Token name;
  name.text = "#";
  char block[256];
  std::size_t found = sizeof block;
  for (++place; found == sizeof block; place += found) {
    std::string_view const read(block, bytes->ReadAt(place, block, sizeof block));
    found = std::min(read.find_first_not_of("0123456789"), read.size());
    name.text += read.substr(0, found);
  }
  // Where the file has changed there may be none.
  return name.text.size() == 1 ? std::string() : std::string(name.Digits());
}

// As messages tell it.
std::string StepFormatReader::NameAt(std::uint32_t instance) const {
  std::string digits;
  IdAt(instance, digits);
  return "#" + digits.substr(0, StepScanner::NAME_LIMIT - 1);
}

VRINResult StepFormatReader::Resolve() {
  if (!opened) return VREL_E_FAIL;
  if (referrers != nullptr) return GetResolved();
  problems.ReportSuppressed();
  try {
    IndexIds();
    // The first walk over the references counts them, and is the one that tells of those to nothing.
    bool isFirst = true;
    referrers = std::make_unique<StepReferrers>(ids.Count(), [this, isFirst](StepReferrers::Note const& note) mutable {
      WalkReferences([&](std::uint32_t source, std::uint32_t target) {
        if (target != StepIds::NONE) {
          note(source, target);
        } else if (isFirst) {
          TellMissing(source);
        }
      });
      isFirst = false;
    });
  } catch (InputError const& error) {
    return TellChange(error);
  }
  problems.ReportSuppressed();
  return GetResolved();
}

VRINResult StepFormatReader::GetResolved() const {
  return repeated == 0 ? VREL_S_OK : VREL_E_INVALID_FILE;
}

// The current token is a reference to nothing.
void StepFormatReader::TellMissing(std::uint32_t source) {
  StepScanner::Token const& token = scanner->Current();
  problems.Warn(token.line, "expected an instance " + token.Name() + ", to which " + NameAt(source) + ", a " +
                                types.Name(EntityAt(source).Type()).substr(0, StepScanner::NAME_LIMIT) +
                                ", refers, found none; it is written without a link");
}

void StepFormatReader::IndexIds() {
  repeated = 0;
  ids.Index([this](std::uint32_t instance, std::uint32_t first) {
    ++repeated;
    problems.Error(EntityAt(instance).Line(), "expected an id that no other instance has, found " + NameAt(instance) +
                                                  ", which stands in line " + std::to_string(EntityAt(first).Line()) +
                                                  " too; give one of them another id");
  });
}

// The target is NONE for a reference to nothing; the reference is the current token.
void StepFormatReader::WalkReferences(NoteReference const& note) {
  for (std::uint32_t source = 0; source < ids.Count(); ++source) {
    Gk_ErrMgr::checkAbort();
    StepEntityReader const& entity = EntityAt(source);
    if (!entity.IsRead()) continue;
    scanner->Seek(entity.Offset(), entity.Line());
    while (scanner->NextReference()) note(source, ids.Find(StepParser::IdOf(scanner->Current())));
  }
}

VRINResult StepFormatReader::DescribeHeader(DocumentVisitor& visitor) {
  try {
    for (Place const& place : headerRecords) {
      GoTo(place);
      parser->ReadRecord(visitor);
    }
    return VREL_S_OK;
  } catch (InputError const& error) {
    return TellChange(error);
  }
}

VRINResult StepFormatReader::Describe(DocumentVisitor& visitor, Progress& receiver, bool withReferrers) {
  if (referrers == nullptr) return VREL_E_FAIL;
  try {
    for (std::size_t i = 0; i < sections.size(); ++i) {
      visitor.BeginSection();
      DescribeParameters(sections[i], visitor);
      for (std::uint32_t instance = sections[i].first; instance < EndOf(i); ++instance) {
        if (instance % PROGRESS_STEP == 0) receiver.Done(static_cast<long>(instance));
        DescribeInstance(instance, visitor, withReferrers);
      }
      visitor.EndSection();
    }
    return VREL_S_OK;
  } catch (InputError const& error) {
    return TellChange(error);
  }
}

VRINResult StepFormatReader::DescribeEscaped(DocumentVisitor& visitor) {
  if (escaped == 0) return VREL_S_OK;
  try {
    for (std::size_t i = 0; i < sections.size(); ++i) {
      visitor.BeginSection();
      DescribeParameters(sections[i], visitor);
      for (std::uint32_t instance = sections[i].first; instance < EndOf(i); ++instance) {
        if (EntityAt(instance).HasEscapes()) DescribeInstance(instance, visitor, false);
      }
      visitor.EndSection();
    }
    return VREL_S_OK;
  } catch (InputError const& error) {
    return TellChange(error);
  }
}

// The number of the instance behind the last one of a section.
std::uint32_t StepFormatReader::EndOf(std::size_t section) const {
  return section + 1 < sections.size() ? sections[section + 1].first : ids.Count();
}

void StepFormatReader::DescribeParameters(Section const& section, DocumentVisitor& visitor) {
  if (section.parameters.begin == 0) return;
  GoTo(section.parameters);
  parser->ReadRecord(visitor);
}

void StepFormatReader::DescribeInstance(std::uint32_t instance, DocumentVisitor& visitor, bool withReferrers) {
  Gk_ErrMgr::checkAbort();
  StepEntityReader const& entity = EntityAt(instance);
  if (!entity.IsRead()) return;
  std::string digits;
  GoTo({entity.Offset(), entity.Line()});
  visitor.BeginInstance(IdAt(instance, digits), parser->AtSymbol('('));
  parser->ReadInstance(visitor);
  if (withReferrers) {
    for (std::uint32_t const source : referrers->Of(instance)) visitor.Referrer(IdAt(source, digits));
  }
  visitor.EndInstance();
}

VRINResult StepFormatReader::TellChange(InputError const& error) {
  problems.Error(error.line, error.text + "; the file has changed since it was read, translate it again");
  return error.result;
}
