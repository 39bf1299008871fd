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
      if (!colourTool->GetColor(label, colour)) continue;
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

std::vector<std::string> PathsOf(std::vector<Node> const& nodes) {
  std::vector<std::string> paths;
  for (Node const& node : nodes) paths.push_back(node.path);
  return paths;
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

// Returns the extent in millimetres, or an empty box without edges and free curves: the peer has edges where closed
// surfaces meet themselves, which a file need not have. Invisible edges count for both.
ModelBox EdgeBoxOf(ProductModel const& model) {
  ModelBox box;
  bool const hasEdges = std::any_of(model.products.begin(), model.products.end(), [](ModelProduct const& product) {
    return product.edges != 0 || !product.polylines.empty();
  });
  if (!hasEdges || model.extent.isEmpty) return box;
  double const factor = MillimetresOf(model, model.roots.front());
  box = model.extent;
  for (int i = 0; i < 3; ++i) {
    box.low[i] *= factor;
    box.high[i] *= factor;
  }
  return box;
}

// Colours of styled items that the peer does not transfer: placements and points, a mapped item whose items all have
// other colours, a callout, and tessellation.
struct ExtraColour {
  char const* file;
  char const* colour;
};
constexpr ExtraColour kExtraColours[] = {{"attributes-layers.stp", "#996633"},
                                         {"overriding-styles.stp", "#ff0000"},
                                         {"mapped-annotations.stp", "#ffffff"},
                                         {"tessellated-styled.stp", "#0000ff"},
                                         {"tessellated-styled.stp", "#ff0000"}};

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
    ASSERT_EQ(PathsOf(nodes), PathsOf(external.nodes));
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      for (std::size_t k = 0; k < 12; ++k) {
        EXPECT_NEAR(nodes[i].placement[k], external.nodes[i].placement[k], 1e-6) << nodes[i].path << " " << k;
      }
    }
    std::set<std::string> colours;
    for (ModelColourUse const& each : model->colours) {
      if (each.items != 0) colours.insert(each.colour.Hexadecimal());
    }
    std::set<std::string> expected = external.colours;
    for (ExtraColour const& extra : kExtraColours) {
      if (path.filename() == extra.file) expected.insert(extra.colour);
    }
    EXPECT_EQ(colours, expected);
    ModelBox const box = EdgeBoxOf(*model);
    if (box.isEmpty) continue;
    ASSERT_FALSE(external.box.IsVoid());
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
                         [](testing::TestParamInfo<char const*> const& row) { return std::string(row.param); });
