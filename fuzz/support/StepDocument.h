// STEP documents in memory for fuzzers.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <map>
#include <string>
#include <vector>

#include "DocumentVisitor.h"
#include "Progress.h"
#include "Require.h"
#include "StepFormatReader.h"
#include "VRELFile.h"
#include "VRELFormatReaderHandle.h"
#include "VRELReader.h"

// Writes the sections of a document as STEP clear text, and counts what they contain.
class PlainWriter final : public DocumentVisitor {
 public:
  using Names = std::vector<std::string>;

  void BeginSection() override {
    text += "DATA";
    inSection = true;
  }
  void EndSection() override {
    EndHeading();
    text += "ENDSEC;\n";
    inSection = false;
  }
  void BeginOtherSection(std::string_view keyword) override {
    if (keyword == "SIGNATURE" && !isEnded) {
      text += "END-ISO-10303-21;\n";
      isEnded = true;
    }
    text += std::string(keyword) + ";\n";
  }
  void EndOtherSection() override { text += "ENDSEC;\n"; }
  void BeginEntry(std::string_view name) override {
    text += std::string(name) + "=";
    isFirst = true;
    inEntry = true;
    depth = 0;
  }
  void EndEntry() override {
    text += ";\n";
    inEntry = false;
  }
  void Lines(std::string_view lines) override { text += lines; }
  void BeginInstance(Id const& id, bool isComplex) override {
    EndHeading();
    present = std::string(id.digits);
    text += "#" + present + (isComplex ? "=(" : "=");
    end = isComplex ? ");\n" : ";\n";
    ++instances;
    complex += isComplex ? 1 : 0;
  }
  void EndInstance() override {
    text += end;
    present.clear();
  }
  void BeginRecord(std::string_view type) override { Open(std::string(type)); }
  void EndRecord() override { Close(); }
  void Integer(std::string_view number) override { Value(std::string(number)); }
  void Real(std::string_view number) override { Value(std::string(number)); }
  void String(Text const& value) override {
    std::string quoted;
    for (char const c : value.encoded) quoted.append(c == '\'' ? 2 : 1, c);
    Value("'" + quoted + "'");
    escaped += value.escaped && !inEntry ? 1 : 0;
  }
  void Enumeration(std::string_view name) override { Value("." + std::string(name) + "."); }
  void Binary(std::string_view digits) override { Value("\"" + std::string(digits) + "\""); }
  void Reference(Id const& target, bool defined) override {
    std::string const name(target.digits);
    Value("#" + name);
    if (!defined || target.ordinal == 0 || present.empty()) return;
    Names& sources = references[name];
    if (sources.empty() || sources.back() != present) sources.push_back(present);
  }
  void Unset() override { Value("$"); }
  void Derived() override { Value("*"); }
  void BeginList() override { OpenValue(""); }
  void EndList() override { Close(); }
  void BeginTyped(std::string_view type) override { OpenValue(std::string(type)); }
  void EndTyped() override { Close(); }
  void Name(std::string_view name) override { Value(std::string(name)); }
  void Resource(std::string_view resource) override { Value(std::string(resource)); }
  void BeginBraces(std::string_view tag) override {
    if (inEntry && depth == 0) isFirst = true;
    if (!isFirst) text += ",";
    text += "{" + std::string(tag) + (tag.empty() ? "" : ":");
    isFirst = true;
    ++depth;
  }
  void EndBraces() override {
    text += "}";
    isFirst = false;
    --depth;
  }
  void Referrer(Id const& source) override { referrers[present].push_back(std::string(source.digits)); }

  std::string text;
  std::map<std::string, Names> references;  // by their target
  std::map<std::string, Names> referrers;
  long instances = 0;
  long complex = 0;
  long escaped = 0;

 private:
  // The parameters of a section end with the first instance or the section.
  void EndHeading() {
    if (inSection) text += ";\n";
    inSection = false;
  }
  void Open(std::string const& type) {
    text += type + "(";
    isFirst = true;
    ++depth;
  }
  void OpenValue(std::string const& type) {
    if (!isFirst) text += ",";
    Open(type);
  }
  void Close() {
    text += ")";
    isFirst = false;
    --depth;
  }
  void Value(std::string const& value) {
    if (!isFirst) text += ",";
    text += value;
    isFirst = false;
  }

  std::string present;
  char const* end = "";
  bool inSection = false;
  bool isEnded = false;  // the exchange structure
  bool inEntry = false;
  bool isFirst = true;
  int depth = 0;
};

// One file in memory for the whole process.
class FileInMemory {
 public:
  std::string const& With(std::string const& bytes) const {
    Require(ftruncate(descriptor, 0) == 0, "the system empties a file in memory");
    Require(pwrite(descriptor, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()),
            "the system writes a file in memory");
    return path;
  }

 private:
  int descriptor = memfd_create("part.stp", MFD_CLOEXEC);
  std::string path = "/proc/self/fd/" + std::to_string(descriptor);
};

// A document read as the driver reads it.
class ReadDocument {
 public:
  explicit ReadDocument(std::string const& bytes) {
    static FileInMemory const file;
    document = new StepFormatReader(VRELFileHandle(new VRELFile(file.With(bytes).c_str())), "part.stp");
    handle = document;
    isOpen = document->Open().IsSuccess();
    VRELReader reader(handle);
    reader.ReadHeaderSection();
    reader.ReadDataSection();
    isResolved = reader.Resolve().IsSuccess();
  }

  void Describe(PlainWriter& writer, bool withReferrers) {
    Progress progress;
    VRINResult const result = document->Describe(writer, progress, withReferrers);
    Require(result == VREL_S_OK, "a document that was resolved is described");
  }

  StepFormatReader* document = nullptr;
  bool isOpen = false;
  bool isResolved = false;

 private:
  VRELFormatReaderHandle handle;
};
