// Three layers: LineWriter folds lines, StepWriter turns the calls of a visitor into tokens, HeaderWriter replaces
// fields of the header.
#include "StepWriter.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "BrivetModule.h"
#include "CheckedOutputStream.h"
#include "Diagnostics.h"
#include "Document.h"
#include "DocumentVisitor.h"
#include "Progress.h"
#include "StepBytes.h"
#include "StepEncoder.h"
#include "StepFormatReader.h"
#include "StepOptions.h"
#include "VRELOption.h"
#include "VRELOptionName.h"
#include "VRELOptions.h"
#include "VRELString.h"
#include "VRELStringISO1030321Writer.h"

namespace {

constexpr std::size_t kBlockSize = 65536;  // bytes

// Writes lines of a limited length. A piece is what no line end may divide. The piece that is being composed is the end
// of the buffer; where it begins, a line end is inserted if it does not fit into the line. The buffer is sent in
// blocks.
class LineWriter {
 public:
  LineWriter(CheckedOutputStream& target, int width)
      : stream(target), limit(width > 0 ? static_cast<std::size_t>(width) : std::string::npos) {
    Grow(2 * kBlockSize);
  }

  void Begin() {
    if (limit != std::string::npos) PlacePiece();
    if (size >= kBlockSize) Send();
    pieceBegin = size;
  }
  void Begin(std::string_view text) {
    Begin();
    Join(text);
  }
  void Join(std::string_view text) {
    if (buffer.size() - size < text.size()) Grow(text.size());
    std::copy(text.begin(), text.end(), buffer.begin() + static_cast<std::ptrdiff_t>(size));
    size += text.size();
  }
  void Join(char byte) {
    if (buffer.size() == size) Grow(1);
    buffer[size++] = byte;
  }
  void EndLine() {
    Begin();
    Join('\n');
    column = 0;
    pieceBegin = size;
  }
  void WriteLine(std::string_view text) {
    Begin(text);
    EndLine();
  }
  // Sends what is left.
  void Flush() {
    if (size != 0) Send();
  }

 private:
  void PlacePiece() {
    std::size_t const length = size - pieceBegin;
    if (column != 0 && limit - std::min(limit, column) < length) {
      Join('\n');
      auto const begin = buffer.begin() + static_cast<std::ptrdiff_t>(pieceBegin);
      std::rotate(begin, begin + static_cast<std::ptrdiff_t>(length), begin + static_cast<std::ptrdiff_t>(length + 1));
      column = 0;
    }
    column += length;
    pieceBegin = size;
  }
  void Grow(std::size_t wanted) { buffer.resize(std::max(size + wanted, buffer.size() + buffer.size() / 2)); }
  void Send() {
    stream.write(buffer.data(), static_cast<int>(size));
    stream.Check();
    size = 0;
    pieceBegin = 0;
  }

  CheckedOutputStream& stream;
  std::size_t const limit;
  std::size_t column = 0;  // bytes of the present line before the piece
  std::vector<char> buffer;
  std::size_t size = 0;  // bytes of the buffer that are used
  std::size_t pieceBegin = 0;
};

std::string Quote(std::string_view encoded) {
  std::string quoted = "'";
  for (char const byte : encoded) {
    if (byte == '\'') quoted += '\'';
    quoted += byte;
  }
  return quoted + "'";
}

// Writes what is not in the header.
class StepWriter : public DocumentVisitor {
 public:
  StepWriter(LineWriter& target, StepEncoder& stringEncoder) : out(target), encoder(stringEncoder) {}

  void BeginSection() override {
    out.Begin("DATA");
    inHeading = true;
  }
  void EndSection() override {
    EndHeading();
    out.WriteLine("ENDSEC;");
  }
  void BeginInstance(Id const& id, bool complex) override {
    EndHeading();
    out.Begin("#");
    out.Join(id.digits);
    out.Join(complex ? "=(" : "=");
    isComplex = complex;
    isFirst = true;
    depth = 0;
  }
  void EndInstance() override {
    out.Join(isComplex ? ");" : ";");
    out.EndLine();
  }

  void BeginRecord(std::string_view type) override {
    // The first record of an instance is not separated from the equals sign.
    isFirst ? out.Join(type) : out.Begin(type);
    out.Join('(');
    isFirst = true;
  }
  void EndRecord() override {
    out.Join(')');
    isFirst = false;
  }
  void Integer(std::string_view number) override { Put(kNothing, number, kNothing); }
  void Real(std::string_view number) override { Put(kNothing, number, kNothing); }
  void String(Text const& text) override {
    if (encoder.IsActive()) {
      Put(kNothing, encoder.Encode(text), kNothing);
    } else if (text.encoded.find('\'') == std::string_view::npos) {
      Put('\'', text.encoded, '\'');
    } else {
      Put(kNothing, Quote(text.encoded), kNothing);
    }
  }
  void Enumeration(std::string_view name) override { Put('.', name, '.'); }
  void Binary(std::string_view digits) override { Put('"', digits, '"'); }
  void Reference(Id const& target, bool /*defined*/) override { Put('#', target.digits, kNothing); }
  void Unset() override { Put('$', {}, kNothing); }
  void Derived() override { Put('*', {}, kNothing); }
  void BeginList() override { Open({}, '('); }
  void EndList() override { Close(')'); }
  void BeginTyped(std::string_view type) override { Open(type, '('); }
  void EndTyped() override { Close(')'); }
  void Name(std::string_view name) override { Put(kNothing, name, kNothing); }
  void Resource(std::string_view resource) override { Put(kNothing, resource, kNothing); }
  void BeginBraces(std::string_view tag) override {
    // Those of an entry follow its value without a comma.
    if (inEntry && depth == 0) isFirst = true;
    tag.empty() ? Open({}, '{') : Open("{" + std::string(tag), ':');
  }
  void EndBraces() override { Close('}'); }

  void BeginOtherSection(std::string_view keyword) override {
    // Signatures are after the end of the exchange structure.
    if (keyword == "SIGNATURE") EndExchange();
    out.WriteLine(std::string(keyword) + ";");
  }
  void EndOtherSection() override { out.WriteLine("ENDSEC;"); }
  void BeginEntry(std::string_view name) override {
    out.Begin(name);
    out.Join("=");
    inEntry = true;
    isFirst = true;
    depth = 0;
  }
  void EndEntry() override {
    out.Join(";");
    out.EndLine();
    inEntry = false;
  }
  void Lines(std::string_view text) override {
    while (!text.empty()) {
      std::size_t const end = std::min(text.find('\n'), text.size());
      out.WriteLine(text.substr(0, end));
      text.remove_prefix(std::min(end + 1, text.size()));
    }
  }

  void EndExchange() {
    if (!isEnded) out.WriteLine("END-ISO-10303-21;");
    isEnded = true;
  }

 protected:
  // Not part of a value.
  static constexpr char kNothing = '\0';

  // Returns whether the value that begins is replaced by another one.
  virtual bool IsReplaced() { return false; }
  virtual void Open(std::string_view text, char bracket) {
    Write(kNothing, text, bracket);
    isFirst = true;
    ++depth;
  }
  virtual void Close(char bracket) {
    out.Join(bracket);
    isFirst = false;
    --depth;
  }
  // Writes a value between two bytes.
  void Put(char before, std::string_view value, char after) {
    if (!IsReplaced()) Write(before, value, after);
  }
  void Write(char before, std::string_view value, char after) {
    if (!isFirst) out.Join(',');
    out.Begin();
    if (before != kNothing) out.Join(before);
    out.Join(value);
    if (after != kNothing) out.Join(after);
    isFirst = false;
  }

  LineWriter& out;
  StepEncoder& encoder;
  bool isFirst = true;    // nothing precedes in the present list
  std::size_t depth = 0;  // of lists within the record or the entry

 private:
  // The parameters of the section itself are in its heading.
  void EndHeading() {
    if (!inHeading) return;
    out.Join(";");
    out.EndLine();
    inHeading = false;
  }

  bool inHeading = false;
  bool inEntry = false;
  bool isComplex = false;
  bool isEnded = false;
};

// A field of the header that an option sets.
struct HeaderField {
  char const* entity;
  int parameter;  // from 0 on
  bool isList;
  VRELOptionName const& option;
};

std::vector<HeaderField> const& HeaderFields() {
  static std::vector<HeaderField> const kFields = {
      {"FILE_DESCRIPTION", 0, true, VRELOptionName::FileDescription},
      {"FILE_NAME", 2, true, VRELOptionName::AuthorName},
      {"FILE_NAME", 3, true, VRELOptionName::OrganizationName},
      {"FILE_NAME", 4, false, VRELOptionName::PreProcessorVersion},
      {"FILE_NAME", 5, false, VRELOptionName::SendingSystemName},
  };
  return kFields;
}

constexpr char kDirection[] = "Writer";

// Returns the value of an option as a string of the file. Control characters, which the format does not have, become
// blanks.
std::string Encode(VRELString const& text) {
  std::u16string units;
  for (char16_t const unit : text.view()) {
    if (unit == u'\\') units += unit;
    units += unit < 0x20 || unit == 0x7F ? u' ' : unit;
  }
  VRELStringISO1030321Writer writer;
  char const* encoded = nullptr;
  writer.ConvertToASCII(VRELString(std::u16string_view(units)), encoded);
  return Quote(encoded == nullptr ? "" : encoded);
}

// Writes the header, with the fields that options set instead of those of the document.
class HeaderWriter final : public StepWriter {
 public:
  HeaderWriter(LineWriter& target, StepEncoder& stringEncoder, VRELOptions* given)
      : StepWriter(target, stringEncoder), options(given) {}

  void BeginRecord(std::string_view type) override {
    entity = type;
    written.emplace_back(type);
    parameter = -1;
    level = 0;
    out.Begin("");
    isFirst = true;
    StepWriter::BeginRecord(type);
  }
  void EndRecord() override {
    StepWriter::EndRecord();
    out.Join(";");
    out.EndLine();
  }
  bool HasWritten(char const* type) const { return std::find(written.begin(), written.end(), type) != written.end(); }

 private:
  bool IsReplaced() override { return level != 0 ? isReplaced : Replace(); }
  void Open(std::string_view text, char bracket) override {
    if (level == 0) isReplaced = Replace();
    ++level;
    if (!isReplaced) StepWriter::Open(text, bracket);
  }
  void Close(char bracket) override {
    --level;
    if (!isReplaced) StepWriter::Close(bracket);
  }

  // Begins the next parameter of the entity. Returns whether an option replaces it.
  bool Replace() {
    ++parameter;
    for (HeaderField const& field : HeaderFields()) {
      if (entity != field.entity || parameter != field.parameter) continue;
      VRELString value;
      if (!FindStepOption(options, kDirection, static_cast<VRELString>(field.option), value)) return false;
      Write(kNothing, field.isList ? "(" + Encode(value) + ")" : Encode(value), kNothing);
      return true;
    }
    return false;
  }

  VRELOptions* const options;
  std::string entity;
  std::vector<std::string> written;
  int parameter = -1;
  int level = 0;  // of lists, replaced ones too
  bool isReplaced = false;
};

// Writes an entity that every header has, if the document has none.
void WriteEmpty(HeaderWriter& header, char const* type, std::initializer_list<char const*> parameters) {
  if (header.HasWritten(type)) return;
  header.BeginRecord(type);
  for (std::string_view const parameter : parameters) {
    DocumentVisitor::Text text;
    bool const isList = parameter == "list";
    if (isList) header.BeginList();
    text.encoded = isList ? "" : parameter;
    header.String(text);
    if (isList) header.EndList();
  }
  header.EndRecord();
}

// Says after the header that parts of the document are missing.
void WriteLosses(Document& document, LineWriter& out) {
  std::size_t const count = document.GetLosses().size();
  if (count == 0) return;
  out.WriteLine("/* INCOMPLETE: " + std::to_string(count) + (count == 1 ? " part" : " parts") +
                " of the document could not be read and " + (count == 1 ? "is" : "are") + " not part of this file. */");
}

// Finds whether a header names a schema.
class SchemaFinder final : public DocumentVisitor {
 public:
  void BeginRecord(std::string_view type) override { isInSchema = type == "FILE_SCHEMA"; }
  void String(Text const& text) override { hasSchema = hasSchema || (isInSchema && !text.encoded.empty()); }

  bool hasSchema = false;

 private:
  bool isInSchema = false;
};

// Without the name of a schema the meaning of entities is unknown. A STEP file is copied as it is.
VRINResult CheckSchema(Document& document) {
  if (dynamic_cast<StepFormatReader*>(&document) != nullptr) return VREL_S_OK;
  SchemaFinder finder;
  VRINResult const result = document.DescribeHeader(finder);
  if (result.IsFailure() || finder.hasSchema) return result;
  ReportProblem("cannot write STEP: the format of the input has no ISO 10303-21 schema");
  ReportProblem("hint", "write html or text");
  return VREL_E_NOT_SUPPORTED;
}

VRINResult Write(BrivetWriteRequest& request, LineWriter& out, StepEncoder& encoder) {
  out.WriteLine("ISO-10303-21;");
  out.WriteLine("HEADER;");
  HeaderWriter header(out, encoder, request.options);
  VRINResult result = request.document->DescribeHeader(header);
  if (!result.IsSuccess()) return result;
  WriteEmpty(header, "FILE_DESCRIPTION", {"list", "2;1"});
  WriteEmpty(header, "FILE_NAME", {"", "", "list", "list", "", "", ""});
  WriteEmpty(header, "FILE_SCHEMA", {"list"});
  out.WriteLine("ENDSEC;");
  WriteLosses(*request.document, out);

  StepWriter data(out, encoder);
  result = request.document->Describe(data, *request.progress, false);
  if (result.IsSuccess()) data.EndExchange();
  return result;
}

VRINResult RefuseOption(char const* name, VRELString const& value, char const* expected) {
  ReportProblem(std::string("option Step.*.Writer.") + name,
                std::string("expected ") + expected + ", found '" + value.toUtf8() + "'");
  return VREL_E_INVALID_ARGUMENT;
}

// Sets the length of a line, 0 for any. Returns a failure, after a report, if the option is no number.
VRINResult FindLineLength(VRELOptions* options, int& length) {
  constexpr char kName[] = "FileLineLength";
  VRELString value;
  if (!FindStepOption(options, kDirection, kName, value)) return VREL_S_OK;
  std::string const text = value.toUtf8();
  bool const isDigits = std::all_of(text.begin(), text.end(), [](char byte) { return IsDigit(byte); });
  bool const isNumber = isDigits && !text.empty() && text.size() <= 10 && std::stoll(text) <= INT_MAX;
  if (!isNumber) return RefuseOption(kName, value, "a whole number from 0 to 2147483647");
  length = std::stoi(text);
  return VREL_S_OK;
}

VRINResult FindEncoding(VRELOptions* options, StepEncoder& encoder) {
  constexpr char kName[] = "Encoding";
  VRELString value;
  if (!FindStepOption(options, kDirection, kName, value)) return VREL_S_OK;
  if (encoder.SetEncoding(value.toUtf8())) return VREL_S_OK;
  return RefuseOption(kName, value, "an encoding that contains ASCII, such as US-ASCII or UTF-8");
}

}  // namespace

VRINResult WriteStep(BrivetWriteRequest& request) {
  int length = 0;
  StepEncoder encoder;
  VRINResult result = FindLineLength(request.options, length);
  if (result.IsSuccess()) result = FindEncoding(request.options, encoder);
  if (result.IsSuccess()) result = CheckSchema(*request.document);
  if (result.IsFailure()) return result;
  CheckedOutputStream stream(request.stream);
  LineWriter out(stream, length);
  try {
    result = Write(request, out, encoder);
    out.Flush();
    return result;
  } catch (CheckedOutputStream::Failure const&) {
    return VREL_E_FILE_SAVE;
  }
}
