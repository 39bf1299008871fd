#include "PageShading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MeshFixture.h"
#include "RecordingListener.h"
#include "VRELOptions.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Meshes the first face of the first product, or fails.
class FakeEvaluator final : public ShapeEvaluator {
 public:
  bool IsAvailable() override { return isAvailable; }
  void Evaluate(ProductModel& model, int parts, Progress& /*progress*/) override {
    calls.push_back(parts);
    model.evaluationFailure = failure;
    if (!failure.empty()) return;
    ModelMesh mesh = Mesh({0, 0, 0, 2, 0, 0, 0, 1, 0}, {0, 1, 2});
    mesh.instance = instance;
    model.products[0].meshes = {mesh};
  }

  bool isAvailable = true;
  std::string failure;
  std::string instance = "#20";
  std::vector<int> calls;
};

// Two products with exact faces, #20 and #21, #30, and one with a mesh.
ProductModel ExactModel() {
  ProductModel model = PlateModel();
  model.products.resize(3);
  model.products[2].meshes = model.products[0].meshes;
  model.products[0].meshes.clear();
  model.products[0].visibleFaces = {{"#20", -1}, {"#21", -1}};
  model.products[1].visibleFaces = {{"#30", -1}};
  model.products[2].visibleFaces = {{"#40", -1}};
  return model;
}

class PageShadingTest : public testing::Test {
 protected:
  PageShading Evaluate() {
    request.document = &document;
    request.options = &options;
    request.title = "part.stp";
    request.shownName = "folder/part.stp";
    request.shapes = &evaluator;
    RecordingListener listener;
    PageShading shading = PageShading::Evaluate(request, document.model);
    warnings = listener.Texts();
    return shading;
  }

  ModelDocument document{ExactModel()};
  VRELOptions options;
  FakeEvaluator evaluator;
  BrivetWriteRequest request;
  std::vector<std::string> warnings;
};

}  // namespace

TEST_F(PageShadingTest, ReportsFacesWithoutMesh) {
  EXPECT_THAT(Evaluate().leftOut,
              ElementsAre("The faces of 1 product are not shaded: the engine does not evaluate them.",
                          "1 face is not shaded: the engine does not evaluate it."));
  EXPECT_THAT(evaluator.calls, ElementsAre(ShapeEvaluator::Meshes | ShapeEvaluator::Properties));
  EXPECT_THAT(warnings, IsEmpty());
}

// A mesh of an item can be that of any face.
TEST_F(PageShadingTest, CountsMeshesOfItems) {
  document.model.products.erase(document.model.products.begin() + 1);
  document.model.products[0].visibleFaces.pop_back();
  evaluator.instance = "#10";
  EXPECT_THAT(Evaluate().leftOut, IsEmpty());
}

TEST_F(PageShadingTest, ReportsFailure) {
  evaluator.failure = "the shape worker has crashed: Segmentation fault";
  EXPECT_THAT(Evaluate().leftOut, ElementsAre("The faces of 2 products are not shaded: the shape worker has crashed: "
                                              "Segmentation fault."));
}

TEST_F(PageShadingTest, OffNeverEvaluates) {
  options.AddOption(L"Html.*.Writer.Shade", false);
  EXPECT_THAT(Evaluate().leftOut, IsEmpty());
  EXPECT_THAT(evaluator.calls, IsEmpty());
}

TEST_F(PageShadingTest, AutoAcceptsMissingModule) {
  evaluator.isAvailable = false;
  EXPECT_THAT(Evaluate().leftOut, IsEmpty());
  EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(PageShadingTest, OnWarnsOfMissingModule) {
  options.AddOption(L"Html.*.Writer.Shade", true);
  evaluator.isAvailable = false;
  EXPECT_THAT(Evaluate().leftOut, ElementsAre("Faces are not shaded: no module evaluates exact shapes."));
  EXPECT_THAT(warnings,
              ElementsAre("folder/part.stp: faces are not shaded: install the package brivet-shape, which meshes "
                          "exact shapes"));
}

TEST_F(PageShadingTest, OnNeedsNothingWithoutExactShape) {
  options.AddOption(L"Html.*.Writer.Shade", true);
  evaluator.isAvailable = false;
  document.model = PlateModel();
  EXPECT_THAT(Evaluate().leftOut, IsEmpty());
  EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(PageShadingTest, AutoSkipsManyFaces) {
  document.model.products[1].visibleFaces.assign(4998, {"#30", -1});
  EXPECT_EQ(Evaluate().leftOut.size(), 2U);
  EXPECT_EQ(evaluator.calls.size(), 1U);
  document.model = ExactModel();
  document.model.products[1].visibleFaces.assign(4999, {"#30", -1});
  EXPECT_THAT(Evaluate().leftOut, ElementsAre("Faces are not shaded, because the document has more than 5000 faces. "
                                              "The option Html.*.Writer.Shade=On shades them."));
  EXPECT_EQ(evaluator.calls.size(), 1U);
  options.AddOption(L"Html.*.Writer.Shade", true);
  Evaluate();
  EXPECT_EQ(evaluator.calls.size(), 2U);
}
