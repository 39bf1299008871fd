// Parser of what the shape worker sends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ProductModel.h"

// Checks each byte, since damaged geometry may have damaged the worker: unknown records, indices out of range, numbers
// that are not finite, and wrong sizes are refused. Memory grows only as bytes arrive.
//
//   ShapeAnswer answer(products, limit);
//   while (...) if (!answer.Add(bytes)) break;
//   if (answer.IsComplete()) ...
class ShapeAnswer {
 public:
  // Mesh of one face, in millimetres.
  struct Face {
    std::uint32_t instance = 0;  // of the face; 0 if it is unknown
    std::uint32_t item = 0;      // of the item that contains it
    ModelMesh mesh;              // without instance and colour
  };
  struct Product {
    bool isDone = false;  // everything about it has arrived
    std::vector<Face> faces;
    std::optional<ModelComputed> computed;
  };
  struct Problem {
    std::uint32_t instance = 0;  // 0 for the file
    std::string text;
  };

  // `limit`: of the bytes of the answer.
  ShapeAnswer(std::size_t productCount, std::uint64_t limit) : products(productCount), remaining(limit) {}

  // Parses further bytes. Returns false if the answer is invalid, and from then on.
  bool Add(std::string_view bytes);
  // Returns whether the answer ended as it must.
  bool IsComplete() const noexcept { return isComplete && pending.empty() && problem.empty(); }
  // Returns why the answer is invalid; empty if it is not.
  std::string const& InvalidReason() const noexcept { return problem; }

  std::vector<Product>& Products() noexcept { return products; }
  std::vector<Problem> const& Problems() const noexcept { return problems; }

 private:
  bool Refuse(char const* reason);
  bool ParsePending();
  bool Parse(std::uint32_t kind, std::string_view content);
  bool ParseMesh(std::string_view content);
  bool ParseProperties(std::string_view content);
  bool ParseProblem(std::string_view content);

  static constexpr std::size_t kProblemLimit = 10000;

  std::vector<Product> products;
  std::vector<Problem> problems;
  std::string pending;
  std::string problem;
  std::uint64_t remaining;
  std::uint32_t records = 0;
  bool hasHeader = false;
  bool isComplete = false;
};
