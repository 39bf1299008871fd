// Table of values with access by row number and by key.
#pragma once

#include <cstdarg>
#include <cstdint>

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELHashMap.h"
#include "VRELReferenceCount.h"
#include "VRELValue.h"
#include "VRINResult.h"

// Rows of values in insertion order, indexed by their first column. Rows may differ in length. Use it for small tables
// that are looked up by a name or a number.
//
// Each operation takes a row as pointers to its columns, followed by a null pointer:
//
//   VRELValue const key(L"Author");
//   VRELValue const author(L"Kim");
//   table.Set(&key, &author, nullptr);
//   VRELValue found(key);
//   VRELValue name;
//   if (table.Get(&found, &name, nullptr).IsSuccess()) ...
//
// A value without a kind is never found by key. Keys compare as VRELValue does: 1 and 1.0 are two keys.
//
// Compatibility: a copy shares rows and index with its source, so that rows added through one are visible in both. The
// indexes separate when one of them grows; until then a key added through one is found through the other.
// Thread safety: none.
class VREL_EXPORT VRELTable : public VRELReferenceCount {
 public:
  // Appends a row and returns VREL_S_OK. Its key now refers to this row; an earlier row with the key stays in the
  // table.
  virtual VRINResult Add(VRELValue const* first, ...);
  // Replaces the row with the same key, or appends the row if there is none or its key has no kind. Returns VREL_S_OK.
  virtual VRINResult Set(VRELValue const* first, ...);

  // Finds the row whose key equals the first argument, and copies its columns, the key included, to the arguments until
  // either ends.
  // Errors: VREL_E_FAIL if there is no such row; the arguments are then unchanged.
  virtual VRINResult Get(VRELValue* first, ...) const;
  // Returns the number of rows.
  virtual int GetRowsCount() const;
  // Copies the columns of the row with that number, counted from 0.
  // Errors: VREL_E_INVALID_ARGUMENT if there is no such row.
  virtual VRINResult Get(int row, VRELValue* first, ...) const;

 private:
  using Row = VRELDynamicArray<VRELValue>;

  void Append(Row const& row, VRELValue const* key);
  static Row MakeRow(VRELValue const* first, va_list more);
  static void CopyRow(Row const& row, VRELValue* first, va_list more);
  VRELValue const* KeyOf(Row const& row) const;

  VRELDynamicArray<Row> rows;
  // Maps a key to the number of its row.
  VRELHashMap<VRELValue, int> index;
  std::int32_t keyColumn = 0;
};
