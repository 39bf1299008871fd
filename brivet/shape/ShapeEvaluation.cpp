#include "ShapeEvaluation.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <unordered_map>
#include <utility>

#include "Diagnostics.h"
#include "RealText.h"
#include "ShapeEvaluator.h"
#include "ShapeProtocol.h"

namespace {

constexpr std::size_t kReportLimit = 20;
constexpr double kMillimetresPerMetre = 1000.0;

// Returns the number of an instance "#12"; 0 if it has none that the engine can represent.
std::uint32_t NumberOf(std::string const& instance) {
  std::uint64_t number = 0;
  if (instance.size() < 2 || instance[0] != '#') return 0;
  for (std::size_t i = 1; i < instance.size(); ++i) {
    if (instance[i] < '0' || instance[i] > '9') return 0;
    number = 10 * number + static_cast<std::uint64_t>(instance[i] - '0');
    if (number > 0x7FFFFFFFU) return 0;
  }
  return static_cast<std::uint32_t>(number);
}

std::string NameOfInstance(std::uint32_t number) {
  return "#" + std::to_string(number);
}

// Returns the factor from millimetres to the unit of a product. Without a unit the engine takes millimetres.
double FactorOf(ProductModel const& model, ModelProduct const& product) {
  double const metres = product.units < 0 ? 0.0 : model.units[static_cast<std::size_t>(product.units)].metres;
  double const factor = 1.0 / (metres * kMillimetresPerMetre);
  return metres > 0.0 && std::isfinite(factor) ? factor : 1.0;
}

}  // namespace

bool ShapeEvaluation::NeedsMesh(ModelProduct const& product) const {
  return (parts & ShapeEvaluator::Meshes) != 0 && product.meshes.empty() && !product.visibleFaces.empty();
}

bool ShapeEvaluation::IsWanted(ModelProduct const& product) const {
  return product.faces > 0 && ((parts & ShapeEvaluator::Properties) != 0 || NeedsMesh(product));
}

std::string ShapeEvaluation::RequestOf(ShapeSettings const& settings) const {
  // The decimal point does not depend on the locale.
  std::string request =
      std::to_string(parts) + " " + FormatReal(settings.deflection) + " " + FormatReal(settings.angle) + "\n";
  bool isEmpty = true;
  for (ModelProduct const& product : model.products) {
    request += NeedsMesh(product) ? "1" : "0";
    if (IsWanted(product)) {
      for (std::string const& shape : product.shapes) {
        std::uint32_t const number = NumberOf(shape);
        if (number == 0) continue;
        request += " " + std::to_string(number);
        isEmpty = false;
      }
    }
    request += "\n";
  }
  return isEmpty ? "" : request;
}

void ShapeEvaluation::Run(ShapeSettings const& settings) {
  std::string const request = RequestOf(settings);
  if (request.empty()) return;
  ShapeAnswer answer(model.products.size(), settings.limits.bytes);
  ShapeProcess::Outcome const outcome =
      ShapeProcess::Run(settings.worker, documentPath, request, settings.limits,
                        [&answer](std::string_view bytes) { return answer.Add(bytes); });
  if (answer.InvalidReason().empty()) {
    ReportProblems(answer);
    Apply(answer);
  }
  ReportEnd(answer, outcome, settings);
}

void ShapeEvaluation::Apply(ShapeAnswer& answer) {
  for (std::size_t i = 0; i < model.products.size() && i < answer.Products().size(); ++i) {
    ShapeAnswer::Product& evaluated = answer.Products()[i];
    ModelProduct& product = model.products[i];
    if (!evaluated.isDone) continue;
    double const factor = FactorOf(model, product);
    if (evaluated.computed.has_value() && (parts & ShapeEvaluator::Properties) != 0) {
      ModelComputed computed = *evaluated.computed;
      computed.volume *= factor * factor * factor;
      computed.area *= factor * factor;
      ModelBox extent;
      for (double& each : computed.centroid) each *= factor;
      if (!computed.extent.isEmpty) {
        for (double* const corner : {computed.extent.low, computed.extent.high}) {
          double scaled[3] = {corner[0] * factor, corner[1] * factor, corner[2] * factor};
          extent.Extend(scaled);
        }
      }
      computed.extent = extent;
      product.computed = computed;
    }
    if (NeedsMesh(product)) ApplyMeshes(product, evaluated, factor);
  }
}

void ShapeEvaluation::ApplyMeshes(ModelProduct& product, ShapeAnswer::Product& evaluated, double factor) const {
  std::unordered_map<std::uint32_t, int> colours;
  for (ModelFace const& face : product.visibleFaces) colours.emplace(NumberOf(face.instance), face.colour);
  int const onlyColour = product.colours.size() == 1 ? product.colours[0] : -1;
  std::vector<ModelMesh> meshes;
  for (ShapeAnswer::Face& face : evaluated.faces) {
    auto const found = colours.find(face.instance);
    // A face that is known to the engine, but is not visible.
    if (face.instance != 0 && found == colours.end()) continue;
    ModelMesh mesh = std::move(face.mesh);
    mesh.instance = NameOfInstance(face.instance != 0 ? face.instance : face.item);
    mesh.colour = face.instance != 0 ? found->second : onlyColour;
    for (double& coordinate : mesh.points) coordinate *= factor;
    meshes.push_back(std::move(mesh));
  }
  product.meshes = std::move(meshes);
}

void ShapeEvaluation::ReportProblems(ShapeAnswer const& answer) const {
  auto const& problems = answer.Problems();
  for (std::size_t i = 0; i < std::min(problems.size(), kReportLimit); ++i) {
    std::string const instance = problems[i].instance == 0 ? "" : NameOfInstance(problems[i].instance) + ": ";
    ReportWarning(shownName, instance + problems[i].text);
  }
  if (problems.size() > kReportLimit) {
    ReportWarning(shownName, std::to_string(problems.size() - kReportLimit) + " more shapes are not evaluated");
  }
}

void ShapeEvaluation::ReportEnd(ShapeAnswer const& answer, ShapeProcess::Outcome const& outcome,
                                ShapeSettings const& settings) const {
  std::string reason;
  switch (outcome.end) {
    case ShapeProcess::Exited:
      if (outcome.number == 0 && answer.IsComplete()) return;
      if (outcome.number == kWorkerOutOfMemory) {
        reason = "the memory limit of " + std::to_string(settings.limits.bytes >> 20U) +
                 " MB was reached; the option Shape.*.Reader.MemoryLimit raises it";
      } else if (outcome.number == kWorkerUnreadable) {
        reason = "the engine cannot read the file";
      } else if (outcome.number == 0) {
        reason = "the answer of the shape worker is incomplete";
      } else if (outcome.number == kWorkerNotStarted) {
        reason = "the shape worker does not start: Open CASCADE 7.6 is not installed";
      } else {
        reason = "the shape worker has failed with status " + std::to_string(outcome.number);
      }
      break;
    case ShapeProcess::Killed:
      reason = std::string("the shape worker has crashed: ") + strsignal(outcome.number);
      break;
    case ShapeProcess::TimedOut:
      reason = "the time limit of " + std::to_string(settings.limits.seconds) +
               " s was reached; the option Shape.*.Reader.TimeLimit raises it";
      break;
    case ShapeProcess::Refused:
      reason = "the shape worker is not usable: " + answer.InvalidReason();
      break;
    case ShapeProcess::NotStarted:
      reason = "cannot start the shape worker: " + std::string(std::strerror(outcome.number));
      break;
  }
  model.evaluationFailure = reason;
  ReportWarning(shownName, "exact shapes are not evaluated: " + reason);
}
