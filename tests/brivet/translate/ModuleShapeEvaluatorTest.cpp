#include "ModuleShapeEvaluator.h"

#include <gtest/gtest.h>

#include "ModuleRegistry.h"
#include "ProductModel.h"
#include "Progress.h"
#include "RecordingListener.h"
#include "VRELOptions.h"

namespace {

constexpr Format kUnknown = {"iges", "IGES", "BrivetIges", ".igs", " .igs "};

}  // namespace

TEST(ModuleShapeEvaluatorTest, IsNotAvailableForOtherFormats) {
  VRELOptions options;
  ModuleShapeEvaluator evaluator(kUnknown, "part.igs", "part.igs", options);
  EXPECT_FALSE(evaluator.IsAvailable());
  RecordingListener const listener;
  ProductModel model;
  Progress progress;
  evaluator.Evaluate(model, ShapeEvaluator::Meshes, progress);
  EXPECT_TRUE(listener.events.empty());
}

TEST(ModuleShapeEvaluatorTest, FindsModuleByExtension) {
  bool const isInstalled = bool(ModuleRegistry::Get().FindName("shape", ModuleRegistry::Evaluating));
  VRELOptions options;
  ModuleShapeEvaluator evaluator(*Format::Named("step"), "part.stp", "part.stp", options);
  EXPECT_EQ(evaluator.IsAvailable(), isInstalled);
  if (!isInstalled) GTEST_SKIP() << "the shape module is not built";
  // A model without exact shapes needs no worker.
  RecordingListener const listener;
  ProductModel model;
  Progress progress;
  evaluator.Evaluate(model, ShapeEvaluator::Meshes, progress);
  EXPECT_TRUE(listener.events.empty());
}
