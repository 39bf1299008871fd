#include "StepFormatReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "Gk_ErrMgr.h"
#include "InputError.h"
#include "Progress.h"
#include "StepEntityReader.h"
#include "StepEntitySource.h"
#include "StepModelReader.h"
#include "StepOptions.h"
#include "StepSections.h"

namespace {

constexpr std::uint32_t kProgressInterval = 4096;  // instances
constexpr char kNoStepHint[] = "the input must be an ISO 10303-21 (STEP) clear text file";
constexpr char kChanged[] = "; the file has changed since it was read";
constexpr char kChangedHint[] = "translate it again when nothing writes to it";

}  // namespace

StepFormatReader::StepFormatReader(VRELFileHandle const& document, std::string shownName, VRELOptions* givenOptions)
    : Document(document), options(givenOptions), diagnostics(std::move(shownName)), lossRecord(losses) {}

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
    diagnostics.Error(0, 0, std::string("cannot read: ") + (error != 0 ? std::strerror(error) : "not a regular file"));
    return VREL_E_FILE_OPEN;
  }
  CreateParts();
  VRINResult const encoding = SetEncoding();
  if (encoding.IsFailure()) return encoding;
  try {
    structure->ReadOpening();
  } catch (InputError const& error) {
    diagnostics.Error(error.line, error.column, error.text, kNoStepHint);
    return error.result;
  }
  headerSections.add(new StepHeaderSection(buffer, *this));
  isOpen = true;
  return VREL_S_OK;
}

void StepFormatReader::CreateParts() {
  scanner = std::make_unique<StepScanner>(*bytes);
  lines = std::make_unique<StepLines>(contents, *bytes);
  references = std::make_unique<StepReferences>(contents, *bytes, *scanner, *lines);
  parser = std::make_unique<StepParser>(*scanner, strings, references.get());
  structure = std::make_unique<StepStructure>(
      StepStructure::Parts{*bytes, *scanner, *parser, contents, *references, *lines, types, diagnostics, lossRecord});
}

VRINResult StepFormatReader::SetEncoding() {
  VRELString name;
  if (!FindStepOption(options, "Reader", "Encoding", name)) return VREL_S_OK;
  if (strings.SetEncoding(name.toUtf8())) return VREL_S_OK;
  diagnostics.Error(0, 0, "unknown encoding '" + name.toUtf8() + "' in option Step.*.Reader.Encoding",
                    "name an encoding as ICU does, such as UTF-8, ISO-8859-1 or Shift_JIS");
  return VREL_E_INVALID_ARGUMENT;
}

VRINResult StepFormatReader::GetState() const {
  if (!isOpen || duplicates != 0) return VREL_E_INVALID_FILE;
  if (lossRecord.Count() == 0 && !lossRecord.IsIncomplete()) return VREL_S_OK;
  return GetInstanceCount() != 0 ? VREL_S_PARTIAL : VREL_E_INVALID_FILE;
}

long StepFormatReader::GetInstanceCount() const {
  return structure == nullptr ? 0 : structure->SimpleCount() + structure->ComplexCount();
}

long StepFormatReader::GetComplexCount() const {
  return structure == nullptr ? 0 : structure->ComplexCount();
}

long StepFormatReader::GetEscapedCount() const {
  return structure == nullptr ? 0 : structure->EscapedCount();
}

VRELEntityReader* StepFormatReader::ReadNextHeaderEntity() {
  StepScanner::Position begin;
  return structure->NextHeaderEntity(begin) ? new StepHeaderEntity(buffer, *this, begin) : nullptr;
}

VRELSectionReader* StepFormatReader::GetNextDataSection() {
  if (!isOpen || structure->IsEnded()) return nullptr;
  if (!structure->NextDataSection()) {
    std::string const encodings = strings.UsedEncodings();
    if (!encodings.empty()) diagnostics.Note("encoding of strings: " + encodings);
    return nullptr;
  }
  auto* const section = new StepDataSection(buffer, *this);
  dataSections.add(section);
  contents.SetEntities(section);
  return section;
}

long StepFormatReader::EstimateRest(long instances) const {
  auto const read = static_cast<double>(bytes->Offset());
  auto const rest = static_cast<double>(bytes->Size()) - read;
  return static_cast<long>(1.01 * rest * static_cast<double>(instances) / std::max(read, 1.0)) + 1;
}

VRINResult StepFormatReader::Resolve() {
  if (!isOpen) return VREL_E_FAIL;
  if (!references->IsBuilt()) {
    diagnostics.ReportSuppressed();
    duplicates = 0;
    danglingCount = 0;
    try {
      references->Build([this](std::uint32_t instance, std::uint32_t first) { HandleDuplicate(instance, first); },
                        [this](std::uint32_t source) { ReportDangling(source); });
    } catch (InputError const& error) {
      return ReportChange(error);
    }
    diagnostics.ReportSuppressed();
  }
  return duplicates == 0 ? VREL_S_OK : VREL_E_INVALID_FILE;
}

// The reference is the current token.
void StepFormatReader::ReportDangling(std::uint32_t source) {
  ++danglingCount;
  if (!diagnostics.SendsWarning()) return diagnostics.CountWarning();
  StepScanner::Token const& token = scanner->Current();
  std::string type = types.Name(contents.At(source).Type());
  if (type.size() > StepScanner::kNameLimit) type = type.substr(0, StepScanner::kNameLimit) + "...";
  diagnostics.Warn(token.line, scanner->Column(),
                   "no instance " + token.Describe() + " in the file, referred to in " + references->NameAt(source) +
                       " of type " + type);
}

void StepFormatReader::HandleDuplicate(std::uint32_t instance, std::uint32_t first) {
  std::string const name = references->NameAt(instance);
  std::string const text = "duplicate instance " + name + ", first defined in line " + std::to_string(lines->At(first));
  long const line = lines->At(instance);
  if (lossRecord.Count() == 0) {
    ++duplicates;
    diagnostics.Error(line, 0, text, "give one of them another id");
    return;
  }
  diagnostics.Warn(line, 0, text + "; the instance is lost");
  lossRecord.Add({line, line, {name}, text});
  structure->RemoveFromCounts(instance);
}

VRINResult StepFormatReader::DescribeHeader(DocumentVisitor& visitor) {
  if (structure == nullptr) return VREL_S_OK;
  try {
    for (StepScanner::Position const& begin : structure->HeaderEntities()) {
      structure->GoTo(begin);
      parser->ReadRecord(visitor);
    }
    return VREL_S_OK;
  } catch (InputError const& error) {
    return ReportChange(error);
  }
}

VRINResult StepFormatReader::Describe(DocumentVisitor& visitor, Progress& receiver, bool withReferrers) {
  if (!isOpen || !references->IsBuilt()) return VREL_E_FAIL;
  return DescribeSections(visitor, receiver, withReferrers, false);
}

VRINResult StepFormatReader::DescribeEscaped(DocumentVisitor& visitor) {
  if (GetEscapedCount() == 0) return VREL_S_OK;
  Progress nowhere;
  return DescribeSections(visitor, nowhere, false, true);
}

VRINResult StepFormatReader::DescribeSections(DocumentVisitor& visitor, Progress& receiver, bool withReferrers,
                                              bool onlyEscaped) {
  try {
    // Signatures are last, even if the file has them elsewhere: what is written after one is not read again.
    for (bool const signatures : {false, true}) {
      for (StepContents::Section const& section : contents.Sections()) {
        if ((section.kind == StepContents::Kind::Lines) != signatures) continue;
        if (section.kind == StepContents::Kind::Data) {
          DescribeSection(section, visitor, receiver, withReferrers, onlyEscaped);
        } else if (!onlyEscaped) {
          DescribeOtherSection(section, visitor);
        }
      }
    }
    return VREL_S_OK;
  } catch (InputError const& error) {
    return ReportChange(error);
  }
}

void StepFormatReader::DescribeSection(StepContents::Section const& section, DocumentVisitor& visitor,
                                       Progress& receiver, bool withReferrers, bool onlyEscaped) {
  visitor.BeginSection();
  if (section.hasParameters) {
    structure->GoTo(section.begin);
    parser->ReadRecord(visitor);
  }
  for (std::uint32_t instance = section.first; instance < section.end; ++instance) {
    if (instance % kProgressInterval == 0) receiver.Done(static_cast<long>(instance));
    if (!onlyEscaped || contents.At(instance).HasEscapes()) DescribeInstance(instance, visitor, withReferrers);
  }
  visitor.EndSection();
}

void StepFormatReader::DescribeOtherSection(StepContents::Section const& section, DocumentVisitor& visitor) {
  visitor.BeginOtherSection(section.keyword);
  if (section.kind == StepContents::Kind::Lines) {
    scanner->Seek(section.begin);
    visitor.Lines(scanner->ReadLinesBeforeEnd());
  }
  for (StepScanner::Position const& entry : section.entries) {
    Gk_ErrMgr::checkAbort();
    structure->GoTo(entry);
    parser->ReadEntry(visitor);
  }
  visitor.EndOtherSection();
}

// Reads up to the next instance at most: the file may have been overwritten.
void StepFormatReader::DescribeInstance(std::uint32_t instance, DocumentVisitor& visitor, bool withReferrers) {
  Gk_ErrMgr::checkAbort();
  StepEntityReader const& entity = contents.At(instance);
  if (!entity.IsRead()) return;
  std::string digits;
  {
    StepBuffer::Limit const limit(*bytes, contents.EndOf(instance));
    if (!scanner->SkipTo(entity.Offset())) scanner->Seek({entity.Offset(), lines->At(instance)});
    StepScanner::Position const begin = {entity.Offset(), scanner->Line()};
    if (parser->FindUsualInstance(contents.EndOf(instance) - begin.offset) != 0) {
      visitor.BeginInstance(references->IdAt(instance, digits), *scanner->Ahead() == '(');
      parser->ReadUsualInstance(visitor);
    } else {
      structure->GoTo(begin);
      visitor.BeginInstance(references->IdAt(instance, digits), parser->AtSymbol('('));
      parser->ReadInstance(visitor);
    }
  }
  if (withReferrers) {
    for (std::uint32_t const source : references->ReferrersOf(instance)) {
      visitor.Referrer(references->IdAt(source, digits, DocumentVisitor::kDigitLimit));
    }
  }
  visitor.EndInstance();
}

VRINResult StepFormatReader::ReportChange(InputError const& error) {
  diagnostics.Error(error.line, error.column, error.text + kChanged, kChangedHint);
  return error.result;
}

ProductModel const* StepFormatReader::GetModel(bool geometry, Progress& receiver) {
  if (model != nullptr && (hasGeometry || !geometry)) return model.get();
  if (!isOpen) return nullptr;
  modelResult = VREL_S_OK;
  auto built = std::make_unique<ProductModel>();
  references->IndexIds();
  try {
    BuildModel(geometry, receiver, *built);
  } catch (InputError const& error) {
    modelResult = ReportChange(error);
    return nullptr;
  }
  if (model == nullptr) {
    for (std::string const& warning : built->warnings) diagnostics.Warn(0, 0, warning);
    diagnostics.ReportSuppressed();
  }
  model = std::move(built);
  hasGeometry = geometry;
  return model.get();
}

void StepFormatReader::BuildModel(bool geometry, Progress& receiver, ProductModel& built) {
  StepEntitySource source(
      {contents, *references, types, *bytes},
      [this](std::uint32_t instance, DocumentVisitor& visitor) { DescribeInstance(instance, visitor, false); });
  for (std::uint32_t first = 0; first < contents.Count();
       first += std::min(kProgressInterval, contents.Count() - first)) {
    receiver.Done(static_cast<long>(first));
    Gk_ErrMgr::checkAbort();
    source.List(first, first + std::min(kProgressInterval, contents.Count() - first));
  }
  StepShapes::Settings settings;
  settings.withGeometry = geometry;
  ReadStepModel(source.Store(), settings, built);
  source.RethrowFailure();
}
