#include "ShapeEvaluator.h"

#include <gtest/gtest.h>

#include <vector>

#include "MeshFixture.h"

namespace {

class CountingEvaluator final : public ShapeEvaluator {
 public:
  bool IsAvailable() override { return isAvailable; }
  void Evaluate(ProductModel& model, int parts, Progress& /*progress*/) override {
    model.products[0].computed = ModelComputed();
    calls.push_back(parts);
  }

  bool isAvailable = true;
  std::vector<int> calls;
};

}  // namespace

TEST(ShapeEvaluatorTest, EvaluatesEachPartOnce) {
  ModelDocument document(PlateModel());
  CountingEvaluator evaluator;
  BrivetWriteRequest request;
  request.document = &document;
  request.shapes = &evaluator;
  EXPECT_EQ(GetEvaluatedModel(request, ShapeEvaluator::Properties), &document.model);
  EXPECT_FALSE(document.hasGeometry);
  EXPECT_TRUE(document.model.products[0].computed.has_value());
  GetEvaluatedModel(request, ShapeEvaluator::Meshes | ShapeEvaluator::Properties);
  EXPECT_TRUE(document.hasGeometry);
  GetEvaluatedModel(request, ShapeEvaluator::Meshes);
  EXPECT_EQ(evaluator.calls, (std::vector<int>{ShapeEvaluator::Properties, ShapeEvaluator::Meshes}));
}

TEST(ShapeEvaluatorTest, ReturnsModelWithoutModule) {
  ModelDocument document(PlateModel());
  BrivetWriteRequest request;
  request.document = &document;
  EXPECT_EQ(GetEvaluatedModel(request, ShapeEvaluator::Meshes), &document.model);
  CountingEvaluator evaluator;
  evaluator.isAvailable = false;
  request.shapes = &evaluator;
  EXPECT_EQ(GetEvaluatedModel(request, ShapeEvaluator::Meshes), &document.model);
  EXPECT_TRUE(evaluator.calls.empty());
  EXPECT_EQ(document.model.evaluatedParts, 0);
}
