#include "StepWriter.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "BrivetModule.h"
#include "Document.h"
#include "DocumentVisitor.h"
#include "Progress.h"
#include "VRELOption.h"
#include "VRELOptionName.h"
#include "VRELOptions.h"
#include "VRELString.h"
#include "VRELStringISO1030321Writer.h"
#include "CheckedOutputStream.h"

namespace {

constexpr std::size_t BLOCK = 65536;  // bytes

// The lines of the file. A piece is what no line end may come into. A line is sent in blocks: it may be as long as the
// document.
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
    if (pending.size() >= BLOCK) Send();
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

class StepWriter : public DocumentVisitor {
 public:
  explicit StepWriter(LineWriter& target) : out(target) {}

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
  }
  void EndInstance() override {
    out.Join(isComplex ? ");" : ";");
    out.EndLine();
  }

  void BeginRecord(std::string_view type) override {
    // The first record of an instance stands right behind the sign.
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
  void String(Text const& text) override { Put(Quote(text.encoded)); }
  void Enumeration(std::string_view name) override { Put("." + std::string(name) + "."); }
  void Binary(std::string_view digits) override { Put("\"" + std::string(digits) + "\""); }
  void Reference(Id const& target, bool /*defined*/) override { Put("#" + std::string(target.digits)); }
  void Unset() override { Put("$"); }
  void Derived() override { Put("*"); }
  void BeginList() override { Open("("); }
  void EndList() override { Close(); }
  void BeginTyped(std::string_view type) override { Open(std::string(type) + "("); }
  void EndTyped() override { Close(); }

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
  }
  virtual void Close() {
    out.Join(")");
    isFirst = false;
  }

  LineWriter& out;
  bool isFirst = true;  // nothing stands in the present list yet

 private:
  void Separate() {
    if (!isFirst) out.Join(",");
  }
  // The section's own parameters stand in its heading.
  void EndHeading() {
    if (!inHeading) return;
    out.Join(";");
    out.EndLine();
    inHeading = false;
  }

  bool inHeading = false;
  bool isComplex = false;
};

// A field of the header that an option sets.
struct HeaderField {
  char const* entity;
  int parameter;  // from 0 on
  bool isList;
  VRELOptionName const& option;
};

std::vector<HeaderField> const& HeaderFields() {
  static std::vector<HeaderField> const FIELDS = {
      {"FILE_DESCRIPTION", 0, true, VRELOptionName::FileDescription},
      {"FILE_NAME", 2, true, VRELOptionName::AuthorName},
      {"FILE_NAME", 3, true, VRELOptionName::OrganizationName},
      {"FILE_NAME", 4, false, VRELOptionName::PreProcessorVersion},
      {"FILE_NAME", 5, false, VRELOptionName::SendingSystemName},
  };
  return FIELDS;
}

VRELOption* Find(VRELOptions* options, VRELOptionName const& name) {
  VRELOption* option = nullptr;
  if (options == nullptr) return nullptr;
  VRELString const path = VRELString("Step.Assembly.Writer.") + static_cast<VRELString>(name);
  return options->GetOption(path, option).IsSuccess() ? option : nullptr;
}

// As a string of the file. Control characters become blanks: the format has none.
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

// The header, with the fields that options set in the place of the document's.
class HeaderWriter final : public StepWriter {
 public:
  HeaderWriter(LineWriter& target, VRELOptions* given) : StepWriter(target), options(given) {}

  void BeginRecord(std::string_view type) override {
    entity = type;
    written.emplace_back(type);
    parameter = -1;
    depth = 0;
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
    if (depth != 0 ? isReplaced : Replace()) return;
    StepWriter::Put(value);
  }
  void Open(std::string_view text) override {
    if (depth == 0) isReplaced = Replace();
    ++depth;
    if (!isReplaced) StepWriter::Open(text);
  }
  void Close() override {
    --depth;
    if (!isReplaced) StepWriter::Close();
  }

  // Begins the next parameter of the entity. Whether an option took its place.
  bool Replace() {
    ++parameter;
    for (HeaderField const& field : HeaderFields()) {
      if (entity != field.entity || parameter != field.parameter) continue;
      VRELOption const* const option = Find(options, field.option);
      VRELString value;
      if (option == nullptr || !option->GetValue(value).IsSuccess()) return false;
      StepWriter::Put(field.isList ? "(" + Encode(value) + ")" : Encode(value));
      return true;
    }
    return false;
  }

  VRELOptions* const options;
  std::string entity;
  std::vector<std::string> written;
  int parameter = -1;
  int depth = 0;
  bool isReplaced = false;
};

// An entity that every header has, where the document's has none.
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

VRINResult Write(BrivetWriteRequest& request, LineWriter& out) {
  out.WriteLine("ISO-10303-21;");
  out.WriteLine("HEADER;");
  HeaderWriter header(out, request.options);
  VRINResult result = request.document->DescribeHeader(header);
  if (!result.IsSuccess()) return result;
  WriteEmpty(header, "FILE_DESCRIPTION", {"list", "2;1"});
  WriteEmpty(header, "FILE_NAME", {"", "", "list", "list", "", "", ""});
  WriteEmpty(header, "FILE_SCHEMA", {"list"});
  out.WriteLine("ENDSEC;");

  StepWriter data(out);
  result = request.document->Describe(data, *request.progress, false);
  if (result.IsSuccess()) out.WriteLine("END-ISO-10303-21;");
  return result;
}

}  // namespace

VRINResult WriteStep(BrivetWriteRequest& request) {
  CheckedOutputStream stream(request.stream);
  int width = 0;
  VRELOption const* const option = Find(request.options, VRELOptionName::FileLineLength);
  if (option != nullptr) option->GetValue(width);
  LineWriter out(stream, width);
  try {
    return Write(request, out);
  } catch (CheckedOutputStream::Failure const&) {
    return VREL_E_FILE_SAVE;
  }
}
