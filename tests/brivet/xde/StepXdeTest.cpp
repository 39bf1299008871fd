// Compares product models with those of Open CASCADE's XDE, an independent reader, on the folders of STEP files that
// VREL_CORPUS and VREL_MODELS name.
#include <BRepBndLib.hxx>
#include <BRep_Builder.hxx>
#include <Bnd_Box.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Quantity_Color.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Compound.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <gp_Trsf.hxx>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "ModelFixture.h"
#include "ProductModel.h"

namespace {

// Node of the structure with its placement in the root, in millimetres.
struct Node {
  std::string path;  // names of the products from the root on
  std::array<double, 12> placement;
};

bool IsBefore(Node const& a, Node const& b) {
  if (a.path != b.path) return a.path < b.path;
  for (std::size_t i = 0; i < 12; ++i) {
    if (std::abs(a.placement[i] - b.placement[i]) > 1e-6) return a.placement[i] < b.placement[i];
  }
  return false;
}

class ExternalModel {
 public:
  explicit ExternalModel(std::string const& path) {
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    STEPCAFControl_Reader reader;
    reader.SetNameMode(true);
    reader.SetColorMode(true);
    isRead = reader.ReadFile(path.c_str()) == IFSelect_RetDone && reader.Transfer(document);
    if (!isRead) return;
    Handle(XCAFDoc_ShapeTool) const tool = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    TDF_LabelSequence roots;
    tool->GetFreeShapes(roots);
    TopoDS_Compound edges;
    BRep_Builder builder;
    builder.MakeCompound(edges);
    for (TDF_Label const& root : roots) {
      Add(root, "", TopLoc_Location());
      for (TopExp_Explorer each(XCAFDoc_ShapeTool::GetShape(root), TopAbs_EDGE); each.More(); each.Next()) {
        builder.Add(edges, each.Current());
      }
    }
    BRepBndLib::AddOptimal(edges, box, false, false);
    std::sort(nodes.begin(), nodes.end(), IsBefore);
    Handle(XCAFDoc_ColorTool) const colourTool = XCAFDoc_DocumentTool::ColorTool(document->Main());
    TDF_LabelSequence labels;
    colourTool->GetColors(labels);
    for (TDF_Label const& label : labels) {
      Quantity_Color colour;
      if (!XCAFDoc_ColorTool::GetColor(label, colour)) continue;
      double red = 0.0;
      double green = 0.0;
      double blue = 0.0;
      colour.Values(red, green, blue, Quantity_TOC_sRGB);
      colours.insert(ModelColour{red, green, blue, 0.0}.Hexadecimal());
    }
  }
  ~ExternalModel() { XCAFApp_Application::GetApplication()->Close(document); }
  ExternalModel(ExternalModel const&) = delete;
  ExternalModel& operator=(ExternalModel const&) = delete;

  bool isRead = false;
  std::vector<Node> nodes;
  std::set<std::string> colours;
  Bnd_Box box;

 private:
  void Add(TDF_Label const& label, std::string const& parentPath, TopLoc_Location const& parent) {
    TDF_Label shape = label;
    TopLoc_Location location = parent;
    if (XCAFDoc_ShapeTool::IsReference(label)) {
      location = parent * XCAFDoc_ShapeTool::GetLocation(label);
      XCAFDoc_ShapeTool::GetReferredShape(label, shape);
    }
    Handle(TDataStd_Name) name;
    std::string path = parentPath + "/";
    if (shape.FindAttribute(TDataStd_Name::GetID(), name)) {
      TCollection_AsciiString const text(name->Get());
      path += text.ToCString();
    }
    Node node;
    node.path = path;
    gp_Trsf const transformation = location.Transformation();
    for (int row = 1; row <= 3; ++row) {
      for (int column = 1; column <= 4; ++column) {
        node.placement[static_cast<std::size_t>(4 * row + column - 5)] = transformation.Value(row, column);
      }
    }
    nodes.push_back(node);
    if (!XCAFDoc_ShapeTool::IsAssembly(shape)) return;
    TDF_LabelSequence components;
    XCAFDoc_ShapeTool::GetComponents(shape, components);
    for (TDF_Label const& each : components) Add(each, path, location);
  }

  Handle(TDocStd_Document) document;
};

double MillimetresOf(ProductModel const& model, int product) {
  int const units = model.products[static_cast<std::size_t>(product)].units;
  return units < 0 ? 1.0 : 1000.0 * model.units[static_cast<std::size_t>(units)].metres;
}

// Nodes of the model in millimetres.
std::vector<Node> NodesOf(ProductModel const& model) {
  struct Entry {
    int product;
    std::string path;
    Placement placement;
  };
  std::vector<Node> nodes;
  std::vector<Entry> pending;
  for (int const root : model.roots) pending.push_back({root, "", Placement::Scaling(MillimetresOf(model, root))});
  while (!pending.empty()) {
    Entry const entry = pending.back();
    pending.pop_back();
    ModelProduct const& product = model.products[static_cast<std::size_t>(entry.product)];
    std::string const path = entry.path + "/" + product.DisplayName();
    Placement const placement = entry.placement * Placement::Scaling(1.0 / MillimetresOf(model, entry.product));
    nodes.push_back({path, placement.Numbers()});
    for (int const index : product.occurrences) {
      ModelOccurrence const& occurrence = model.occurrences[static_cast<std::size_t>(index)];
      pending.push_back({occurrence.child, path, entry.placement * occurrence.placement});
    }
  }
  std::sort(nodes.begin(), nodes.end(), IsBefore);
  return nodes;
}

// Box of the edges and free curves of the whole structure, in millimetres.
ModelBox BoxOf(ProductModel const& model) {
  struct Entry {
    int product;
    Placement placement;
  };
  ModelBox box;
  std::vector<Entry> pending;
  for (int const root : model.roots) pending.push_back({root, Placement::Scaling(MillimetresOf(model, root))});
  while (!pending.empty()) {
    Entry const entry = pending.back();
    pending.pop_back();
    ModelProduct const& product = model.products[static_cast<std::size_t>(entry.product)];
    for (ModelPolyline const& polyline : product.polylines) {
      for (std::size_t i = 0; i + 3 <= polyline.coordinates.size(); i += 3) {
        double point[3] = {polyline.coordinates[i], polyline.coordinates[i + 1], polyline.coordinates[i + 2]};
        entry.placement.Apply(point);
        box.Extend(point);
      }
    }
    for (int const index : product.occurrences) {
      ModelOccurrence const& occurrence = model.occurrences[static_cast<std::size_t>(index)];
      pending.push_back({occurrence.child, entry.placement * occurrence.placement});
    }
  }
  return box;
}

class StepXdeTest : public testing::TestWithParam<char const*> {};

}  // namespace

TEST_P(StepXdeTest, AgreesWithXde) {
  char const* const folder = std::getenv(GetParam());
  if (folder == nullptr) GTEST_SKIP() << "set " << GetParam() << " to a folder of STEP files to run this test";
  std::vector<std::filesystem::path> paths;
  for (auto const& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".stp") paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  for (std::filesystem::path const& path : paths) {
    SCOPED_TRACE(path.filename().string());
    ExternalModel const external(path.string());
    if (!external.isRead) continue;
    ReadDocument document(FileText(path.string()), "part.stp", false);
    Progress progress;
    ProductModel const* const model = document->GetModel(true, progress);
    ASSERT_NE(model, nullptr);
    std::vector<Node> const nodes = NodesOf(*model);
    std::vector<std::string> paths1;
    std::vector<std::string> paths2;
    for (Node const& node : nodes) paths1.push_back(node.path);
    for (Node const& node : external.nodes) paths2.push_back(node.path);
    EXPECT_EQ(paths1, paths2);
    if (paths1 == paths2) {
      for (std::size_t i = 0; i < nodes.size(); ++i) {
        for (std::size_t k = 0; k < 12; ++k) {
          EXPECT_NEAR(nodes[i].placement[k], external.nodes[i].placement[k], 1e-6) << nodes[i].path << " " << k;
        }
      }
    }
    std::set<std::string> colours;
    for (ModelColourUse const& each : model->colours) {
      if (each.items != 0) colours.insert(each.colour.Hexadecimal());
    }
    EXPECT_EQ(colours, external.colours);
    ModelBox const box = BoxOf(*model);
    ASSERT_EQ(box.isEmpty, external.box.IsVoid());
    if (box.isEmpty) continue;
    double low[3];
    double high[3];
    external.box.Get(low[0], low[1], low[2], high[0], high[1], high[2]);
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR(box.low[i], low[i], 2e-3 * box.Diagonal()) << i;
      EXPECT_NEAR(box.high[i], high[i], 2e-3 * box.Diagonal()) << i;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Folders, StepXdeTest, testing::Values("VREL_CORPUS", "VREL_MODELS"),
                         [](testing::TestParamInfo<char const*> const& info) { return std::string(info.param); });
