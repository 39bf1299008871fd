// Receives a document, piece by piece.
#pragma once

#include <cstdint>
#include <string_view>

// What a document tells of itself goes through these operations, in the document's order. All views are valid during
// the call only. An operation that a visitor doesn't override does nothing.
//
// #12=PAIR('a',$,(1,#7)); comes as
//
//   BeginInstance(12, false) BeginRecord("PAIR") String("a") Unset() BeginList() Integer("1") Reference(7)
//   EndList() EndRecord() EndInstance()
class DocumentVisitor {
 public:
  // The name of an instance within its document.
  struct Id {
    std::string_view digits;   // decimal, without zeros in front; any number of them
    std::int64_t number = -1;  // the same as a number; -1 where it does not fit
    bool fits() const noexcept { return number >= 0; }
  };

  // A text as the document writes it, and as it reads.
  struct Text {
    std::string_view encoded;  // without enclosing apostrophes; doubled ones are one; escapes stand
    std::string_view utf8;     // decoded
    bool escaped = false;      // whether it holds an escape, a broken or an unknown one too
    long line = 0;             // where it begins, from 1 on
  };

  DocumentVisitor() = default;
  DocumentVisitor(DocumentVisitor const&) = delete;
  DocumentVisitor& operator=(DocumentVisitor const&) = delete;
  virtual ~DocumentVisitor() = default;

  // A section of data. Its own parameters, if any, follow as one record without a type.
  virtual void BeginSection() {}
  virtual void EndSection() {}

  // Complex: with several records in parentheses, or one.
  virtual void BeginInstance(Id const& /*id*/, bool /*complex*/) {}
  virtual void EndInstance() {}

  virtual void BeginRecord(std::string_view /*type*/) {}
  virtual void EndRecord() {}

  virtual void Integer(std::string_view /*number*/) {}
  virtual void Real(std::string_view /*number*/) {}
  virtual void String(Text const& /*text*/) {}
  // Without the points around it.
  virtual void Enumeration(std::string_view /*name*/) {}
  // Without the quotes around it.
  virtual void Binary(std::string_view /*digits*/) {}
  // `defined` tells whether the document holds such an instance.
  virtual void Reference(Id const& /*target*/, bool /*defined*/) {}
  // $ and *.
  virtual void Unset() {}
  virtual void Derived() {}
  virtual void BeginList() {}
  virtual void EndList() {}
  // A parameter that names its type, with one parameter inside: LENGTH_MEASURE(5.0).
  virtual void BeginTyped(std::string_view /*type*/) {}
  virtual void EndTyped() {}

  // An instance that refers to the present one: between its last record and EndInstance, each once, in the document's
  // order, if the document was asked for them.
  virtual void Referrer(Id const& /*source*/) {}
};
