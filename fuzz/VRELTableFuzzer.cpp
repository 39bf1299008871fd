// Applies generated operations to a VRELTable, and compares each result with a model that searches its rows one by one.
#include "VRELTable.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "FuzzInput.h"
#include "Require.h"

namespace {

constexpr int kMaxColumns = 4;

// A value of the generated kind. The string is a piece of the input.
VRELValue MakeValue(FuzzInput& input) {
  int const kind = input.Number(6);
  std::string const piece = input.Piece(',');
  switch (kind) {
    case 0:
      return VRELValue();
    case 1:
      return VRELValue(std::strtod(piece.c_str(), nullptr));
    case 2:
      return VRELValue(static_cast<int>(std::strtol(piece.c_str(), nullptr, 10)));
    case 3:
      return VRELValue(!piece.empty());
    default:
      return VRELValue(std::string_view(piece));
  }
}

bool IsSame(VRELValue const& a, VRELValue const& b) {
  if (!a.IsValid() || !b.IsValid()) return a.IsValid() == b.IsValid();
  double x = 0;
  double y = 0;
  bool const areNaN = a.GetValue(x).IsSuccess() && b.GetValue(y).IsSuccess() && std::isnan(x) && std::isnan(y);
  return a == b || areNaN;
}

using Row = std::vector<VRELValue>;

// The same operations without a hash: keys are compared with each entry of the index.
struct Model {
  std::vector<Row> rows;
  std::vector<std::pair<VRELValue, std::size_t>> index;

  std::size_t Find(VRELValue const& key) const {
    for (auto const& entry : index) {
      if (entry.first == key) return entry.second;
    }
    return rows.size();
  }

  void Append(Row const& row, bool isIndexed) {
    rows.push_back(row);
    if (!isIndexed) return;
    for (auto& entry : index) {
      if (!(entry.first == row[0])) continue;
      entry.second = rows.size() - 1;
      return;
    }
    index.emplace_back(row[0], rows.size() - 1);
  }

  void Add(Row const& row) { Append(row, !row.empty()); }

  void Set(Row const& row) {
    bool const hasKey = !row.empty() && row[0].IsValid();
    std::size_t const place = hasKey ? Find(row[0]) : rows.size();
    if (place < rows.size()) {
      rows[place] = row;
    } else {
      Append(row, hasKey);
    }
  }
};

Row MakeRow(FuzzInput& input) {
  Row row;
  for (int columns = input.Number(kMaxColumns + 1); columns > 0; --columns) row.push_back(MakeValue(input));
  return row;
}

// The address of a column, null after the last one.
VRELValue const* At(Row const& row, std::size_t column) {
  return column < row.size() ? &row[column] : nullptr;
}

void RequireColumns(VRELValue const (&columns)[kMaxColumns], Row const& row, VRELValue const& untouched) {
  for (std::size_t i = 0; i < kMaxColumns; ++i) {
    Require(IsSame(columns[i], i < row.size() ? row[i] : untouched), "a row has the columns that were stored");
  }
}

void GetByKey(VRELTable const& table, Model const& model, VRELValue const& key) {
  VRELValue const untouched(-77);
  VRELValue columns[kMaxColumns] = {key, untouched, untouched, untouched};
  VRINResult const result = table.Get(&columns[0], &columns[1], &columns[2], &columns[3], nullptr);
  std::size_t const place = model.Find(key);
  Require(result.IsSuccess() == (place < model.rows.size()), "a key is found if the model finds it");
  if (result.IsFailure()) {
    RequireColumns(columns, Row{key}, untouched);
  } else {
    RequireColumns(columns, model.rows[place], untouched);
  }
}

void GetByRow(VRELTable const& table, Model const& model, int row) {
  VRELValue const untouched(-77);
  VRELValue columns[kMaxColumns] = {untouched, untouched, untouched, untouched};
  VRINResult const result = table.Get(row, &columns[0], &columns[1], &columns[2], &columns[3], nullptr);
  bool const isInside = row >= 0 && row < static_cast<int>(model.rows.size());
  Require(result == (isInside ? VREL_S_OK : VREL_E_INVALID_ARGUMENT), "a row number is checked");
  RequireColumns(columns, isInside ? model.rows[static_cast<std::size_t>(row)] : Row(), untouched);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  VRELTable table;
  Model model;
  while (!input.IsAtEnd()) {
    switch (input.Number(4)) {
      case 0: {
        Row const row = MakeRow(input);
        table.Add(At(row, 0), At(row, 1), At(row, 2), At(row, 3), nullptr);
        model.Add(row);
        break;
      }
      case 1: {
        Row const row = MakeRow(input);
        table.Set(At(row, 0), At(row, 1), At(row, 2), At(row, 3), nullptr);
        model.Set(row);
        break;
      }
      case 2:
        GetByKey(table, model, MakeValue(input));
        break;
      default:
        GetByRow(table, model, static_cast<int>(std::strtol(input.Piece(',').c_str(), nullptr, 10)));
        break;
    }
    Require(table.GetRowsCount() == static_cast<int>(model.rows.size()), "rows are counted");
  }
  return 0;
}
