#include "StlWriter.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "BrivetModule.h"
#include "CheckedOutputStream.h"
#include "Diagnostics.h"
#include "Document.h"
#include "DocumentVisitor.h"
#include "ModuleOptions.h"
#include "RealText.h"

namespace {

class StlWriter final : public DocumentVisitor {
 public:
  StlWriter(CheckedOutputStream& target, bool writesBinary) : stream(target), isBinary(writesBinary) {}

  void Begin(std::string const& name, long facets) {
    std::string text = "solid " + name + "\n";
    if (isBinary) {
      text = "binary STL";
      text.resize(80, ' ');
      auto const count = static_cast<std::uint32_t>(facets);
      text.append(reinterpret_cast<char const*>(&count), sizeof count);
    }
    Write(text);
  }
  void End(std::string const& name) {
    if (!isBinary) Write("endsolid " + name + "\n");
  }

  void BeginRecord(std::string_view type) override {
    isFacet = type == "FACET";
    numbers.clear();
  }
  void Real(std::string_view number) override {
    if (isFacet) numbers.push_back(std::strtof(std::string(number).c_str(), nullptr));
  }
  void EndRecord() override {
    if (!isFacet || numbers.size() != 12) return;
    if (isBinary) {
      std::string facet(reinterpret_cast<char const*>(numbers.data()), 12 * sizeof(float));
      Write(facet.append(2, '\0'));
    } else {
      Write("facet normal" + Point(0) + "\n outer loop\n  vertex" + Point(3) + "\n  vertex" + Point(6) + "\n  vertex" +
            Point(9) + "\n endloop\nendfacet\n");
    }
  }

 private:
  std::string Point(std::size_t first) const {
    std::string text;
    for (std::size_t i = first; i < first + 3; ++i) text += " " + FormatReal(numbers[i]);
    return text;
  }
  void Write(std::string const& text) {
    stream.write(text.data(), static_cast<int>(text.size()));
    stream.Check();
  }

  CheckedOutputStream& stream;
  bool const isBinary;
  bool isFacet = false;
  std::vector<float> numbers;
};

long FacetCount(Document& document) {
  for (std::size_t type = 0; type < document.GetTypeCount(); ++type) {
    if (document.GetTypeName(type) == "FACET") return document.GetTypeInstanceCount(type);
  }
  return 0;
}

}  // namespace

VRINResult WriteStl(BrivetWriteRequest& request) {
  long const facets = FacetCount(*request.document);
  if (facets == 0) {
    ReportProblem("cannot write STL: the document has no facets");
    return VREL_E_NOT_SUPPORTED;
  }
  CheckedOutputStream stream(request.stream);
  try {
    StlWriter writer(stream, ModuleOptions(request.options, "Stl", ModuleOptions::Writer).GetBool("Binary", false));
    writer.Begin(request.title, facets);
    VRINResult const result = request.document->Describe(writer, *request.progress, false);
    if (result.IsSuccess()) writer.End(request.title);
    return result;
  } catch (CheckedOutputStream::Failure const&) {
    return VREL_E_FILE_SAVE;
  }
}
