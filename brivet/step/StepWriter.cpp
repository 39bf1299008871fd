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
#include "StepOptions.h"
#include "VRELOption.h"
#include "VRELOptionName.h"
#include "VRELOptions.h"
#include "VRELString.h"
#include "VRELStringISO1030321Writer.h"

namespace {

constexpr std::size_t kBlockSize = 65536;  // bytes

// Writes lines of a limited length. A piece is what no line end may divide. Lines are sent in blocks, because one may
// be as long as the document.
class LineWriter {
 public:
  LineWriter(CheckedOutputStream& target, int width)
      : stream(target), limit(width > 0 ? static_cast<std::size_t>(width) : std::string::npos) {}

  void Begin(std::string_view text) {
    PlacePiece();
    piece = text;
  }
  void Join(std::string_view text) { piece += text; }
  void EndLine() {
    PlacePiece();
    BreakLine();
    Send();
  }
  void WriteLine(std::string_view text) {
    Begin(text);
    EndLine();
  }

 private:
  void PlacePiece() {
    if (column != 0 && limit - std::min(limit, column) < piece.size()) BreakLine();
    pending += piece;
    column += piece.size();
    piece.clear();
    if (pending.size() >= kBlockSize) Send();
  }
  void BreakLine() {
    pending += '\n';
    column = 0;
  }
  void Send() {
    stream.write(pending.data(), static_cast<int>(pending.size()));
    stream.Check();
    pending.clear();
  }

  CheckedOutputStream& stream;
  std::size_t const limit;
  std::size_t column = 0;  // bytes of the present line
  std::string pending;
  std::string piece;
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
    out.Join("(");
    isFirst = true;
  }
  void EndRecord() override {
    out.Join(")");
    isFirst = false;
  }
  void Integer(std::string_view number) override { Put(number); }
  void Real(std::string_view number) override { Put(number); }
  void String(Text const& text) override { Put(encoder.IsActive() ? encoder.Encode(text) : Quote(text.encoded)); }
  void Enumeration(std::string_view name) override { Put("." + std::string(name) + "."); }
  void Binary(std::string_view digits) override { Put("\"" + std::string(digits) + "\""); }
  void Reference(Id const& target, bool /*defined*/) override { Put("#" + std::string(target.digits)); }
  void Unset() override { Put("$"); }
  void Derived() override { Put("*"); }
  void BeginList() override { Open("("); }
  void EndList() override { Close(")"); }
  void BeginTyped(std::string_view type) override { Open(std::string(type) + "("); }
  void EndTyped() override { Close(")"); }
  void Name(std::string_view name) override { Put(name); }
  void Resource(std::string_view resource) override { Put(resource); }
  void BeginBraces(std::string_view tag) override {
    std::string const text = "{" + std::string(tag) + (tag.empty() ? "" : ":");
    // Those of an entry follow its value without a comma.
    if (inEntry && depth == 0) isFirst = true;
    Open(text);
  }
  void EndBraces() override { Close("}"); }

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
  virtual void Put(std::string_view value) {
    Separate();
    out.Begin(value);
    isFirst = false;
  }
  virtual void Open(std::string_view text) {
    Separate();
    out.Begin(text);
    isFirst = true;
    ++depth;
  }
  virtual void Close(std::string_view text) {
    out.Join(text);
    isFirst = false;
    --depth;
  }

  LineWriter& out;
  StepEncoder& encoder;
  bool isFirst = true;    // nothing precedes in the present list
  std::size_t depth = 0;  // of lists within the record or the entry

 private:
  void Separate() {
    if (!isFirst) out.Join(",");
  }
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
  void Put(std::string_view value) override {
    if (level != 0 ? isReplaced : Replace()) return;
    StepWriter::Put(value);
  }
  void Open(std::string_view text) override {
    if (level == 0) isReplaced = Replace();
    ++level;
    if (!isReplaced) StepWriter::Open(text);
  }
  void Close(std::string_view text) override {
    --level;
    if (!isReplaced) StepWriter::Close(text);
  }

  // Begins the next parameter of the entity. Returns whether an option replaces it.
  bool Replace() {
    ++parameter;
    for (HeaderField const& field : HeaderFields()) {
      if (entity != field.entity || parameter != field.parameter) continue;
      VRELString value;
      if (!FindStepOption(options, kDirection, static_cast<VRELString>(field.option), value)) return false;
      StepWriter::Put(field.isList ? "(" + Encode(value) + ")" : Encode(value));
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
  if (result.IsFailure()) return result;
  CheckedOutputStream stream(request.stream);
  LineWriter out(stream, length);
  try {
    return Write(request, out, encoder);
  } catch (CheckedOutputStream::Failure const&) {
    return VREL_E_FILE_SAVE;
  }
}
