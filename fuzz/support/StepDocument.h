// A STEP file in memory as a document, and its description as text, for fuzzers.
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

// Writes the data of a document as in a STEP file, and counts instances, references and escapes.
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
    escaped += value.escaped ? 1 : 0;
  }
  void Enumeration(std::string_view name) override { Value("." + std::string(name) + "."); }
  void Binary(std::string_view digits) override { Value("\"" + std::string(digits) + "\""); }
  void Reference(Id const& target, bool defined) override {
    std::string const name(target.digits);
    Value("#" + name);
    if (!defined || present.empty()) return;
    Names& sources = references[name];
    if (sources.empty() || sources.back() != present) sources.push_back(present);
  }
  void Unset() override { Value("$"); }
  void Derived() override { Value("*"); }
  void BeginList() override { OpenValue(""); }
  void EndList() override { Close(); }
  void BeginTyped(std::string_view type) override { OpenValue(std::string(type)); }
  void EndTyped() override { Close(); }
  void Referrer(Id const& source) override { referrers[present].push_back(std::string(source.digits)); }

  std::string text;
  std::map<std::string, Names> references;  // by their target
  std::map<std::string, Names> referrers;
  long instances = 0;
  long complex = 0;
  long escaped = 0;

 private:
  // A section's own parameters end with the first instance or the section.
  void EndHeading() {
    if (inSection) text += ";\n";
    inSection = false;
  }
  void Open(std::string const& type) {
    text += type + "(";
    isFirst = true;
  }
  void OpenValue(std::string const& type) {
    if (!isFirst) text += ",";
    Open(type);
  }
  void Close() {
    text += ")";
    isFirst = false;
  }
  void Value(std::string const& value) {
    OpenValue(value);
    text.pop_back();
    isFirst = false;
  }

  std::string present;
  char const* end = "";
  bool inSection = false;
  bool isFirst = true;
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

// A document that is read completely, as the driver does.
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
