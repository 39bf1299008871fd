// Document read from an STL file.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "Document.h"
#include "ProductModel.h"

class VRELOptions;

// Instance 1 is SOLID('name',.MM.); instance i + 2 is FACET(normal,(corner,corner,corner)), each a list of three reals
// in millimetres.
class StlDocument final : public Document {
 public:
  // `options` may be null. Ownership: it is not kept.
  StlDocument(VRELFileHandle const& openedFile, std::string const& name, VRELOptions* options);

  VRINResult Open() override;
  // Reads the file. Throws InputError if its content is not STL.
  VRINResult PreprocessData() override;
  VRELFileHeader& GetFileHeader() override { return header; }
  VRINResult GetState() const override { return losses.empty() ? VREL_S_OK : VREL_S_PARTIAL; }
  long GetFailedCount() const override { return static_cast<long>(losses.size()); }
  long GetSectionCount() const override { return 1; }
  long GetInstanceCount() const override { return isRead ? 1 + GetTypeInstanceCount(1) : 0; }
  long GetComplexCount() const override { return 0; }
  std::size_t GetTypeCount() const override { return facets.empty() ? 1 : 2; }
  std::string GetTypeName(std::size_t type) const override { return type == 0 ? "SOLID" : "FACET"; }
  long GetTypeInstanceCount(std::size_t type) const override {
    return type == 0 ? 1 : static_cast<long>(facets.size());
  }
  VRINResult DescribeHeader(DocumentVisitor& visitor) override;
  VRINResult Describe(DocumentVisitor& visitor, Progress& receiver, bool referrers) override;
  // One product with one mesh.
  ProductModel const* GetModel(bool geometry, Progress& receiver) override;

 private:
  using Facet = std::array<float, 12>;  // the normal and three corners

  void ReadBinary();
  void ReadAscii();
  void Lose(long line, std::string const& reason);

  std::string shownName;
  std::string bytes;
  VRELFileHeader header;
  std::string product;
  double scale = 1;  // millimetres in a unit of the file
  std::vector<Facet> facets;
  ProductModel model;
  bool isRead = false;
};
