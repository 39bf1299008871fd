#include "ShapeEvaluator.h"

#include "BrivetModule.h"
#include "Document.h"
#include "ProductModel.h"
#include "Progress.h"

ProductModel const* GetEvaluatedModel(BrivetWriteRequest const& request, int parts) {
  bool const withGeometry = (parts & ShapeEvaluator::Meshes) != 0;
  Progress ignored;
  Progress& progress = request.progress != nullptr ? *request.progress : ignored;
  ProductModel const* const model = request.document->GetModel(withGeometry, progress);
  if (model == nullptr || request.shapes == nullptr) return model;
  int const missing = parts & ~model->evaluatedParts;
  if (missing == 0 || !request.shapes->IsAvailable()) return model;
  // The document owns the model and does not change it; no other thread uses the document.
  auto& completed = const_cast<ProductModel&>(*model);
  completed.evaluatedParts |= missing;
  request.shapes->Evaluate(completed, missing, progress);
  return model;
}
