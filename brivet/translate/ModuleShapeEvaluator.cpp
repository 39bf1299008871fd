#include "ModuleShapeEvaluator.h"

#include "Diagnostics.h"
#include "ProductModel.h"

bool ModuleShapeEvaluator::IsAvailable() {
  if (!isSearched) format = Format::OfEvaluation(source.extension);
  isSearched = true;
  return format != nullptr;
}

void ModuleShapeEvaluator::Evaluate(ProductModel& model, int parts, Progress& /*progress*/) {
  if (!IsAvailable()) return;
  if (module == nullptr) module = std::make_unique<FormatModule>(*format);
  BrivetEvaluateRequest request;
  request.path = path;
  request.shownName = shownName;
  request.model = &model;
  request.parts = parts;
  request.options = &options;
  if (module->Evaluate(request).IsFailure()) {
    model.evaluationFailure = "the module has failed";
    ReportWarning(shownName, "exact shapes are not evaluated: " + model.evaluationFailure);
  }
}
