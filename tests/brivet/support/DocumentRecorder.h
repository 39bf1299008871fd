// Records what a document passes to a visitor.
#pragma once

#include <string>

#include "DocumentVisitor.h"

// #12 = A('x',$,(1,#7)) is recorded as "#12 A< 'x' $ ( i:1 #7 ) >;", with blanks between the pieces. A complex instance
// has "c" after its id, a reference to nothing a question mark. A decoded string that differs from the encoded one
// follows it: 'a=b'.
class DocumentRecorder final : public DocumentVisitor {
 public:
  std::string text;

  void BeginSection() override { Add("DATA"); }
  void EndSection() override { Add("ENDSEC"); }
  void BeginInstance(Id const& id, bool complex) override { Add(Name(id) + (complex ? "c" : "")); }
  void EndInstance() override { text += ";"; }
  void BeginRecord(std::string_view type) override { Add(std::string(type) + "<"); }
  void EndRecord() override { Add(">"); }
  void Integer(std::string_view number) override { Add("i:" + std::string(number)); }
  void Real(std::string_view number) override { Add("r:" + std::string(number)); }
  void String(Text const& value) override {
    std::string shown = "'" + std::string(value.encoded);
    if (value.utf8 != value.encoded) shown += "=" + std::string(value.utf8);
    if (value.escaped) shown += "@" + std::to_string(value.line);
    Add(shown + "'");
  }
  void Enumeration(std::string_view name) override { Add("." + std::string(name)); }
  void Binary(std::string_view digits) override { Add("b:" + std::string(digits)); }
  void Reference(Id const& target, bool defined) override { Add(Name(target) + (defined ? "" : "?")); }
  void Unset() override { Add("$"); }
  void Derived() override { Add("*"); }
  void BeginList() override { Add("("); }
  void EndList() override { Add(")"); }
  void BeginTyped(std::string_view type) override { Add(std::string(type) + "["); }
  void EndTyped() override { Add("]"); }
  void Name(std::string_view name) override { Add(std::string(name)); }
  void Resource(std::string_view resource) override { Add(std::string(resource)); }
  void BeginBraces(std::string_view tag) override { Add("{" + std::string(tag) + (tag.empty() ? "" : ":")); }
  void EndBraces() override { Add("}"); }
  void BeginOtherSection(std::string_view keyword) override { Add(std::string(keyword)); }
  void EndOtherSection() override { Add("ENDSEC"); }
  void BeginEntry(std::string_view name) override { Add(std::string(name) + "="); }
  void EndEntry() override { Add(";"); }
  void Lines(std::string_view lines) override { Add("[" + std::string(lines) + "]"); }
  void Referrer(Id const& source) override { Add("<-" + std::string(source.digits)); }

 private:
  // The number is marked where it differs from the digits.
  static std::string Name(Id const& id) {
    std::string const digits(id.digits);
    if (id.fits()) return "#" + digits + (std::to_string(id.number) == digits ? "" : "!");
    return "##" + digits;
  }
  void Add(std::string const& piece) {
    if (!text.empty()) text += ' ';
    text += piece;
  }
};
