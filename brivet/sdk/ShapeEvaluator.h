// Evaluation of exact shapes, which an optional module provides.
#pragma once

struct BrivetWriteRequest;
class Progress;
struct ProductModel;

// Completes product models. The driver passes one to each writing module; it loads the module at the first evaluation.
//
//   ProductModel const* const model = GetEvaluatedModel(request, ShapeEvaluator::Meshes);
//
// Thread safety: one thread at a time.
class ShapeEvaluator {
 public:
  enum Parts {
    Meshes = 1,      // a mesh for each face, in ModelProduct::meshes, except for faces that the document tessellates
    Properties = 2,  // ModelProduct::computed
  };

  ShapeEvaluator() = default;
  ShapeEvaluator(ShapeEvaluator const&) = delete;
  ShapeEvaluator& operator=(ShapeEvaluator const&) = delete;
  virtual ~ShapeEvaluator() = default;

  // Returns whether a module is installed that evaluates shapes of the document's format.
  virtual bool IsAvailable() = 0;

  // Adds parts, a combination of the enumerators, to the products of the model of the document.
  //
  // Errors: what cannot be evaluated is a warning and leaves the product as it is.
  // Requires: IsAvailable. With Meshes, the model has geometry.
  virtual void Evaluate(ProductModel& model, int parts, Progress& progress) = 0;
};

// Returns the model of the document with the parts, a combination of ShapeEvaluator::Parts, as far as a module
// evaluates them; with geometry if Meshes is one of them. Each part is evaluated once as long as the document keeps its
// model. Null if the document has no model.
ProductModel const* GetEvaluatedModel(BrivetWriteRequest const& request, int parts);
