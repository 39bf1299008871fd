// Extraction of the product model of a STEP file, compared with the transfer of the same file by Open CASCADE's XDE.
// Both have read the file before; what is measured is the model with the boxes of all edges.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "ProductModel.h"
#include "Progress.h"
#include "StepFormatReader.h"
#include "VRELFormatReaderHandle.h"
#include "VRELReader.h"
#ifdef VREL_BENCHMARK_OCCT_XDE
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFApp_Application.hxx>
#endif

namespace {

// Writes boxes as manifold solids of one product, about 3 MB for 300.
class BoxFile {
 public:
  explicit BoxFile(long count)
      : path((std::filesystem::temp_directory_path() / ("boxes" + std::to_string(count) + ".stp")).string()),
        out(path) {
    out << "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',(''),(''),'','','');\n"
           "FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));\nENDSEC;\nDATA;\n"
           "#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
           "#2=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));\n"
           "#3=(NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT());\n"
           "#4=UNCERTAINTY_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E-07),#1,'distance_accuracy_value','');\n"
           "#5=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT((#4))"
           "GLOBAL_UNIT_ASSIGNED_CONTEXT((#1,#2,#3))REPRESENTATION_CONTEXT('',''));\n"
           "#6=APPLICATION_CONTEXT('automotive_design');\n"
           "#7=APPLICATION_PROTOCOL_DEFINITION('','automotive_design',2000,#6);\n#8=PRODUCT_CONTEXT('',#6,'mechanical')"
           ";\n"
           "#9=PRODUCT('boxes','boxes','',(#8));\n#10=PRODUCT_DEFINITION_FORMATION('','',#9);\n"
           "#11=PRODUCT_DEFINITION_CONTEXT('part "
           "definition',#6,'design');\n#12=PRODUCT_DEFINITION('design','',#10,#11);\n"
           "#13=PRODUCT_DEFINITION_SHAPE('','',#12);\n#14=SHAPE_DEFINITION_REPRESENTATION(#13,#15);\n";
    std::string solids;
    for (long i = 0; i < count; ++i)
      solids += (i == 0 ? "#" : ",#") + std::to_string(AddBox(20.0 * static_cast<double>(i)));
    out << "#15=ADVANCED_BREP_SHAPE_REPRESENTATION('',(" << solids << "),#5);\nENDSEC;\nEND-ISO-10303-21;\n";
    out.close();
  }
  ~BoxFile() { std::filesystem::remove(path); }
  BoxFile(BoxFile const&) = delete;
  BoxFile& operator=(BoxFile const&) = delete;

  std::string const path;

 private:
  long Add(std::string const& record) {
    out << "#" << ++last << "=" << record << ";\n";
    return last;
  }
  static std::string Name(long id) { return "#" + std::to_string(id); }
  static std::string Triple(double x, double y, double z) {
    std::array<char, 120> text;
    std::snprintf(text.data(), text.size(), "('',(%.6f,%.6f,%.6f))", x, y, z);
    return text.data();
  }

  // Adds a box of size 10 and returns the id of its solid.
  long AddBox(double offset) {
    std::array<long, 8> vertices;
    std::array<long, 8> points;
    auto const at = [&](int corner, int axis) {
      return ((corner >> axis & 1) != 0 ? 10.0 : 0.0) + (axis == 0 ? offset : 0.0);
    };
    for (int i = 0; i < 8; ++i) {
      auto const k = static_cast<std::size_t>(i);
      points[k] = Add("CARTESIAN_POINT" + Triple(at(i, 0), at(i, 1), at(i, 2)));
      vertices[k] = Add("VERTEX_POINT(''," + Name(points[k]) + ")");
    }
    // Edges by their corners.
    std::array<std::array<long, 8>, 8> edges{};
    for (int from = 0; from < 8; ++from) {
      for (int axis = 0; axis < 3; ++axis) {
        if ((from >> axis & 1) != 0) continue;
        int const to = from | 1 << axis;
        long const direction =
            Add("DIRECTION" + Triple(axis == 0 ? 1.0 : 0.0, axis == 1 ? 1.0 : 0.0, axis == 2 ? 1.0 : 0.0));
        long const vector = Add("VECTOR(''," + Name(direction) + ",1.)");
        auto const a = static_cast<std::size_t>(from);
        auto const b = static_cast<std::size_t>(to);
        long const line = Add("LINE(''," + Name(points[a]) + "," + Name(vector) + ")");
        edges[a][b] = Add("EDGE_CURVE(''," + Name(vertices[a]) + "," + Name(vertices[b]) + "," + Name(line) + ",.T.)");
      }
    }
    // Corners of each face, counterclockwise seen from outside.
    static constexpr int kFaces[6][4] = {{0, 4, 6, 2}, {1, 3, 7, 5}, {0, 1, 5, 4},
                                         {2, 6, 7, 3}, {0, 2, 3, 1}, {4, 5, 7, 6}};
    std::string faces;
    for (int face = 0; face < 6; ++face) {
      std::string loop;
      for (int k = 0; k < 4; ++k) {
        auto const a = static_cast<std::size_t>(kFaces[face][k]);
        auto const b = static_cast<std::size_t>(kFaces[face][(k + 1) % 4]);
        bool const isForward = edges[a][b] != 0;
        long const edge = isForward ? edges[a][b] : edges[b][a];
        loop += (k == 0 ? "" : ",") + Name(Add("ORIENTED_EDGE('',*,*," + Name(edge) + (isForward ? ",.T.)" : ",.F.)")));
      }
      long const bound = Add("FACE_OUTER_BOUND(''," + Name(Add("EDGE_LOOP('',(" + loop + "))")) + ",.T.)");
      int const axis = face / 2;
      double const sign = face % 2 == 0 ? -1.0 : 1.0;
      long const normal =
          Add("DIRECTION" + Triple(axis == 0 ? sign : 0.0, axis == 1 ? sign : 0.0, axis == 2 ? sign : 0.0));
      long const reference = Add("DIRECTION" + Triple(axis == 0 ? 0.0 : 1.0, axis == 0 ? 1.0 : 0.0, 0.0));
      long const position = Add("AXIS2_PLACEMENT_3D(''," + Name(points[static_cast<std::size_t>(kFaces[face][0])]) +
                                "," + Name(normal) + "," + Name(reference) + ")");
      long const plane = Add("PLANE(''," + Name(position) + ")");
      faces += (face == 0 ? "" : ",") + Name(Add("ADVANCED_FACE('',(" + Name(bound) + ")," + Name(plane) + ",.T.)"));
    }
    return Add("MANIFOLD_SOLID_BREP(''," + Name(Add("CLOSED_SHELL('',(" + faces + "))")) + ")");
  }

  std::ofstream out;
  long last = 15;
};

void ExtractModel(benchmark::State& state, bool withGeometry) {
  BoxFile const file(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    VRELFormatReaderHandle handle;
    auto* const document = new StepFormatReader(VRELFileHandle(new VRELFile(file.path.c_str())), file.path.c_str());
    handle = document;
    document->Open();
    VRELReader reader(handle);
    reader.ReadHeaderSection();
    reader.ReadDataSection();
    Progress progress;
    state.ResumeTiming();
    ProductModel const* const model = document->GetModel(withGeometry, progress);
    if (model == nullptr || model->products.front().solids != state.range(0)) state.SkipWithError("nothing was read");
  }
}

#ifdef VREL_BENCHMARK_OCCT_XDE
void TransferByOpenCascade(benchmark::State& state) {
  BoxFile const file(state.range(0));
  Message::DefaultMessenger()->ChangePrinters().Clear();
  for (auto _ : state) {
    state.PauseTiming();
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    {
      STEPCAFControl_Reader reader;
      bool const isRead = reader.ReadFile(file.path.c_str()) == IFSelect_RetDone;
      state.ResumeTiming();
      if (!isRead || !reader.Transfer(document)) state.SkipWithError("nothing was read");
      state.PauseTiming();
    }
    XCAFApp_Application::GetApplication()->Close(document);
    state.ResumeTiming();
  }
}
#endif

}  // namespace

BENCHMARK_CAPTURE(ExtractModel, Summary, false)
    ->Name("Product model of a STEP file")
    ->Arg(300)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ExtractModel, Polylines, true)
    ->Name("Product model with polylines")
    ->Arg(300)
    ->Unit(benchmark::kMillisecond);
#ifdef VREL_BENCHMARK_OCCT_XDE
BENCHMARK(TransferByOpenCascade)
    ->Name("Product model of a STEP file, peer Open CASCADE")
    ->Arg(300)
    ->Unit(benchmark::kMillisecond);
#endif
