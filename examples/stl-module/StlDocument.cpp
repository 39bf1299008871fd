#include "StlDocument.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

#include "Diagnostics.h"
#include "DocumentVisitor.h"
#include "Gk_ErrMgr.h"
#include "InputError.h"
#include "ModuleOptions.h"
#include "Progress.h"
#include "RealText.h"
#include "VRELFilePath.h"

namespace {

constexpr std::size_t kHeaderSize = 84;  // of a binary file: 80 bytes of text, the number of facets
constexpr std::size_t kFacetSize = 50;   // twelve numbers and two more bytes

double MillimetresOf(std::string const& unit) {
  return unit == "inch" ? 25.4 : unit == "m" ? 1000 : unit == "cm" ? 10 : 1;
}

// Words of an ASCII file, with their lines.
class Words {
 public:
  explicit Words(std::string const& bytes) : text(bytes) {}

  // Returns the next word; empty at the end.
  std::string_view Next() {
    std::size_t const begin = text.find_first_not_of(" \t\r\n", at);
    for (; at < std::min(begin, text.size()); ++at) line += text[at] == '\n' ? 1 : 0;
    if (begin == text.npos) return {};
    at = std::min(text.find_first_of(" \t\r\n", begin), text.size());
    return text.substr(begin, at - begin);
  }
  // Returns the rest of the line.
  std::string_view Rest() {
    std::size_t const begin = std::min(at + 1, text.size());
    at = std::min(text.find_first_of("\r\n", at), text.size());
    return begin < at ? text.substr(begin, at - begin) : std::string_view();
  }
  void Expect(std::string_view word) {
    std::string_view const found = Next();
    if (found != word) Fail("'" + std::string(word) + "'", found);
  }
  float Number() {
    std::string const word(Next());
    char* end = nullptr;
    float const number = std::strtof(word.c_str(), &end);
    if (word.empty() || *end != '\0' || !(number - number == 0)) Fail("a number", word);
    return number;
  }
  [[noreturn]] void Fail(std::string const& expected, std::string_view found) const {
    std::string const shown = found.empty() ? "the end of the file" : "'" + std::string(found.substr(0, 40)) + "'";
    throw InputError{VREL_E_INVALID_FILE, line, "expected " + expected + ", found " + shown, 0};
  }
  std::size_t Position() const { return at; }

 private:
  std::string_view const text;
  std::size_t at = 0;
  long line = 1;
};

void DescribePoint(DocumentVisitor& visitor, float const* point, double scale) {
  visitor.BeginList();
  for (int i = 0; i < 3; ++i) visitor.Real(FormatReal(static_cast<float>(static_cast<double>(point[i]) * scale)));
  visitor.EndList();
}

void DescribeString(DocumentVisitor& visitor, std::string const& value) {
  DocumentVisitor::Text text;
  text.encoded = text.utf8 = value;
  visitor.String(text);
}

}  // namespace

StlDocument::StlDocument(VRELFileHandle const& openedFile, std::string const& name, VRELOptions* options)
    : Document(openedFile), shownName(name) {
  ModuleOptions const given(options, "Stl", ModuleOptions::Reader);
  scale = MillimetresOf(given.GetString("Unit", "mm"));
  product = given.GetString("Product", "");
}

VRINResult StlDocument::Open() {
  VRELFilePath path;
  std::FILE* const stream = file->GetFilePath(path).IsSuccess() ? path.OpenFile("rb") : nullptr;
  if (stream == nullptr) {
    ReportProblem(shownName, "cannot open the file");
    return VREL_E_FILE_OPEN;
  }
  char block[65536];
  while (std::size_t const size = std::fread(block, 1, sizeof block, stream)) bytes.append(block, size);
  bool const isComplete = std::ferror(stream) == 0;
  std::fclose(stream);
  return isComplete ? VREL_S_OK : VREL_E_FILE_OPEN;
}

VRINResult StlDocument::PreprocessData() {
  std::uint32_t facetCount = 0;
  if (bytes.size() >= kHeaderSize) std::memcpy(&facetCount, bytes.data() + 80, sizeof facetCount);
  // Some binary files begin with "solid", too.
  bool const isBinary =
      bytes.size() >= kHeaderSize && bytes.size() == kHeaderSize + std::size_t{facetCount} * kFacetSize;
  if (!isBinary && bytes.compare(0, 5, "solid") == 0) {
    ReadAscii();
  } else if (bytes.size() >= kHeaderSize) {
    ReadBinary();
  } else {
    throw InputError{VREL_E_INVALID_FILE, 1, "not an STL file", 0};
  }
  if (product.empty()) product = "solid";
  for (char& byte : product) {
    if (byte < 0x20 || byte > 0x7E || byte == '\\') byte = '_';
  }
  isRead = true;
  bytes = std::string();
  return VREL_S_OK;
}

void StlDocument::ReadBinary() {
  std::uint32_t facetCount = 0;
  std::memcpy(&facetCount, bytes.data() + 80, sizeof facetCount);
  std::size_t at = kHeaderSize;
  for (; facets.size() < facetCount && at + kFacetSize <= bytes.size(); at += kFacetSize) {
    Gk_ErrMgr::checkAbort();
    Facet facet;
    std::memcpy(facet.data(), bytes.data() + at, sizeof facet);
    bool isFinite = true;
    for (float const number : facet) isFinite = isFinite && number - number == 0;
    if (!isFinite)
      throw InputError{VREL_E_INVALID_FILE, 0, "facet " + std::to_string(facets.size() + 1) + " has no numbers", 0};
    facets.push_back(facet);
    if (progress != nullptr) progress->Done(static_cast<long>(at));
  }
  if (facets.size() < facetCount) {
    Lose(0, "the file ends after " + std::to_string(facets.size()) + " of " + std::to_string(facetCount) + " facets");
  }
}

void StlDocument::ReadAscii() {
  Words words(bytes);
  words.Expect("solid");
  std::string_view const name = words.Rest();
  if (product.empty()) product = name;
  for (std::string_view word = words.Next(); word != "endsolid"; word = words.Next()) {
    Gk_ErrMgr::checkAbort();
    if (word != "facet") words.Fail("'facet'", word);
    Facet facet;
    words.Expect("normal");
    for (int i = 0; i < 3; ++i) facet[static_cast<std::size_t>(i)] = words.Number();
    words.Expect("outer");
    words.Expect("loop");
    for (std::size_t i = 3; i < 12; ++i) {
      if (i % 3 == 0) words.Expect("vertex");
      facet[i] = words.Number();
    }
    words.Expect("endloop");
    words.Expect("endfacet");
    facets.push_back(facet);
    if (progress != nullptr) progress->Done(static_cast<long>(words.Position()));
  }
}

void StlDocument::Lose(long line, std::string const& reason) {
  losses.push_back({line, line, {}, reason});
  ReportWarningAt({shownName, line}, reason);
}

VRINResult StlDocument::DescribeHeader(DocumentVisitor& visitor) {
  visitor.BeginRecord("FILE_NAME");
  DescribeString(visitor, product);
  visitor.EndRecord();
  return VREL_S_OK;
}

VRINResult StlDocument::Describe(DocumentVisitor& visitor, Progress& receiver, bool /*referrers*/) {
  std::string digits;
  auto const id = [&digits](std::size_t number) {
    digits = std::to_string(number);
    return DocumentVisitor::Id{digits, static_cast<std::int64_t>(number), static_cast<std::uint32_t>(number)};
  };
  visitor.BeginSection();
  visitor.BeginInstance(id(1), false);
  visitor.BeginRecord("SOLID");
  DescribeString(visitor, product);
  visitor.Enumeration("MM");
  visitor.EndRecord();
  visitor.EndInstance();
  for (std::size_t i = 0; i < facets.size(); ++i) {
    Gk_ErrMgr::checkAbort();
    visitor.BeginInstance(id(i + 2), false);
    visitor.BeginRecord("FACET");
    DescribePoint(visitor, facets[i].data(), 1);
    visitor.BeginList();
    for (std::size_t corner = 3; corner < 12; corner += 3) DescribePoint(visitor, facets[i].data() + corner, scale);
    visitor.EndList();
    visitor.EndRecord();
    visitor.EndInstance();
    receiver.Done(static_cast<long>(i) + 1);
  }
  visitor.EndSection();
  return VREL_S_OK;
}

ProductModel const* StlDocument::GetModel(bool geometry, Progress& /*receiver*/) {
  model = ProductModel();
  model.units.emplace_back();
  model.units[0].lengthName = "millimetre";
  model.units[0].metres = 0.001;
  ModelMesh mesh;
  mesh.instance = "#1";
  model.products.emplace_back();
  ModelProduct& solid = model.products[0];
  solid.instance = "#1";
  solid.definition = "#1";
  solid.name = product;
  solid.shapes = {"#1"};
  solid.units = 0;
  for (Facet const& facet : facets) {
    Gk_ErrMgr::checkAbort();
    for (std::size_t corner = 3; corner < 12; corner += 3) {
      double const point[3] = {facet[corner] * scale, facet[corner + 1] * scale, facet[corner + 2] * scale};
      solid.extent.Extend(point);
      if (!geometry) continue;
      mesh.triangles.push_back(static_cast<std::uint32_t>(mesh.points.size() / 3));
      mesh.points.insert(mesh.points.end(), point, point + 3);
    }
  }
  if (geometry) solid.meshes.push_back(std::move(mesh));
  model.extent = solid.extent;
  model.extentUnits = 0;
  model.roots = {0};
  return &model;
}
