// What a document hands to a visitor, as a text.
#pragma once

#include <string>

#include "DocumentVisitor.h"

// #12 = A('x',$,(1,#7)) is recorded as "#12 A< 's:x' $ ( i:1 #7 ) >;": each piece between blanks. A complex instance
// has "c" behind its id, a reference to nothing a question mark, a decoded text that differs from the encoded one both.
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
  void Referrer(Id const& source) override { Add("<-" + std::string(source.digits)); }

 private:
  // The number behind the digits where it differs from them.
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
