// Evaluation of the shapes of a product model by the worker.
#pragma once

#include <string>

#include "ProductModel.h"
#include "ShapeAnswer.h"
#include "ShapeProcess.h"

struct ShapeSettings {
  std::string worker;         // path of the program
  double deflection = 0.001;  // largest distance of a mesh from its surface, as a share of the diagonal of the product
  double angle = 0.3;         // largest angle between neighbouring segments, in radians
  ShapeProcess::Limits limits;
};

// Completes the model of a document. Products match by the instances of their representations, meshes by those of their
// faces. Invisible faces are left out. A product that has meshes already keeps those.
//
// What the worker cannot evaluate, a crash, an exceeded limit and an invalid answer are warnings. After a crash or a
// limit the products that were complete are kept; after an invalid answer none.
class ShapeEvaluation {
 public:
  // `path` is the file, `name` what messages call it. Ownership: the model is not owned.
  ShapeEvaluation(std::string const& path, std::string const& name, ProductModel& productModel, int evaluatedParts)
      : documentPath(path), shownName(name), model(productModel), parts(evaluatedParts) {}

  void Run(ShapeSettings const& settings);
  // Returns the request to the worker; empty if the model has no exact shapes.
  std::string RequestOf(ShapeSettings const& settings) const;
  // Adds the products of the answer that are complete.
  void Apply(ShapeAnswer& answer);

 private:
  bool NeedsMesh(ModelProduct const& product) const;
  bool IsWanted(ModelProduct const& product) const;
  void ApplyMeshes(ModelProduct& product, ShapeAnswer::Product& evaluated, double factor) const;
  void ReportProblems(ShapeAnswer const& answer) const;
  void ReportEnd(ShapeAnswer const& answer, ShapeProcess::Outcome const& outcome, ShapeSettings const& settings) const;

  std::string const& documentPath;
  std::string const& shownName;
  ProductModel& model;
  int parts;
};
