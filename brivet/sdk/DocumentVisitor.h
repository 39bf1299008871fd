// Interface that receives the content of a document.
#pragma once

#include <cstdint>
#include <string_view>

// A document passes its content to these functions, in the document's order. All views are valid during the call only.
// A function that a visitor does not override does nothing.
//
// #12=PAIR('a',$,(1,#7)); is passed as
//
//   BeginInstance(12, false) BeginRecord("PAIR") String("a") Unset() BeginList() Integer("1") Reference(7)
//   EndList() EndRecord() EndInstance()
//
// What a document owes its visitor is listed in ContractVisitor.h, which checks it in tests. In short: BeginSection,
// instances with their records, EndSection; types and enumerations in upper case; an integer as "-12", a real as
// "1.5E-3", always with a decimal point; a reference by the digits of the id. The header consists of records without
// instances.
class DocumentVisitor {
 public:
  // Name of an instance within its document.
  struct Id {
    std::string_view digits;    // decimal, without leading zeros; of Referrer at most kDigitLimit of them
    std::int64_t number = -1;   // the same as a number; -1 if it does not fit
    std::uint32_t ordinal = 0;  // position of the instance in the document, from 1; 0 if unknown
    bool fits() const noexcept { return number >= 0; }
  };
  static constexpr std::size_t kDigitLimit = 64;

  // A string as it is in the document, and decoded.
  struct Text {
    std::string_view encoded;  // without enclosing apostrophes; doubled ones reduced; escapes kept
    std::string_view utf8;     // decoded
    bool escaped = false;      // contains an escape, even an invalid or unknown one
    long line = 0;             // where it begins, from 1
  };

  DocumentVisitor() = default;
  DocumentVisitor(DocumentVisitor const&) = delete;
  DocumentVisitor& operator=(DocumentVisitor const&) = delete;
  virtual ~DocumentVisitor() = default;

  // A data section. Its own parameters, if any, follow as one record without a type.
  virtual void BeginSection() {}
  virtual void EndSection() {}

  // `complex`: several records in parentheses, or one.
  virtual void BeginInstance(Id const& /*id*/, bool /*complex*/) {}
  virtual void EndInstance() {}

  virtual void BeginRecord(std::string_view /*type*/) {}
  virtual void EndRecord() {}

  virtual void Integer(std::string_view /*number*/) {}
  virtual void Real(std::string_view /*number*/) {}
  virtual void String(Text const& /*text*/) {}
  // Without the enclosing points.
  virtual void Enumeration(std::string_view /*name*/) {}
  // Without the enclosing quotes.
  virtual void Binary(std::string_view /*digits*/) {}
  // `defined`: the document contains the instance.
  virtual void Reference(Id const& /*target*/, bool /*defined*/) {}
  // $ and *.
  virtual void Unset() {}
  virtual void Derived() {}
  virtual void BeginList() {}
  virtual void EndList() {}
  // A parameter that names its type, with the parameter that it contains: LENGTH_MEASURE(5.0).
  virtual void BeginTyped(std::string_view /*type*/) {}
  virtual void EndTyped() {}
  // The name of a value or a constant: @12, @PI, #PI.
  virtual void Name(std::string_view /*name*/) {}
  // A resource identifier with its angle brackets: <http://example.com/part.stp#top>.
  virtual void Resource(std::string_view /*resource*/) {}
  // Parameters in braces. `tag` is the name before a colon: {label:'x'}; empty if there is none.
  virtual void BeginBraces(std::string_view /*tag*/) {}
  virtual void EndBraces() {}

  // An instance that refers to the present one: between its last record and EndInstance, each once, in the document's
  // order, if referrers were asked for.
  virtual void Referrer(Id const& /*source*/) {}

  // A section that contains no instances: ANCHOR, REFERENCE or SIGNATURE. The sections of a document are passed in its
  // order, but SIGNATURE sections are after the end of the exchange structure.
  virtual void BeginOtherSection(std::string_view /*keyword*/) {}
  virtual void EndOtherSection() {}
  // An entry of ANCHOR or REFERENCE, "<top>=#1{label:'x'};": its name, then its values between BeginEntry and EndEntry.
  virtual void BeginEntry(std::string_view /*name*/) {}
  virtual void EndEntry() {}
  // The lines of a SIGNATURE section, each with a line feed.
  virtual void Lines(std::string_view /*text*/) {}
};
