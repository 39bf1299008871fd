// Evaluator of shapes that loads its module when it is needed.
#pragma once

#include <memory>
#include <string>

#include "FormatModule.h"
#include "Formats.h"
#include "ShapeEvaluator.h"

class VRELOptions;

// Evaluates the shapes of one document by the first module for documents of its format.
//
// Errors of loading the module are warnings.
class ModuleShapeEvaluator final : public ShapeEvaluator {
 public:
  // Ownership: the options are not owned.
  ModuleShapeEvaluator(Format const& documentFormat, std::string documentPath, std::string documentName,
                       VRELOptions& documentOptions)
      : source(documentFormat),
        path(std::move(documentPath)),
        shownName(std::move(documentName)),
        options(documentOptions) {}

  bool IsAvailable() override;
  void Evaluate(ProductModel& model, int parts, Progress& progress) override;

 private:
  Format const& source;
  std::string const path;
  std::string const shownName;
  VRELOptions& options;
  bool isSearched = false;
  Format const* format = nullptr;
  std::unique_ptr<FormatModule> module;
};
