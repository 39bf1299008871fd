// Rows of values, found by number or by key.
#pragma once

#include <cstdarg>
#include <cstdint>

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELHashMap.h"
#include "VRELReferenceCount.h"
#include "VRELValue.h"
#include "VRINResult.h"

// A store of rows in the order of coming, with the first column for the key. Rows may differ in length.
//
// Each operation takes a row as pointers to its columns, the first to the last, and a null pointer behind them:
//
//   VRELValue const key(VRELString(L"Author"));
//   VRELValue const author(VRELString(L"Kim"));
//   table.Set(&key, &author, nullptr);
//   VRELValue found(key);
//   VRELValue name;
//   if (table.Get(&found, &name, nullptr).IsSuccess()) ...
//
// A value without a kind is never found by key. A copy shares the rows and the places of the index with its source:
// rows that are added through one show in both. Their indexes part as soon as one grows, and until then a key that
// comes through one is found through the other.
class VREL_EXPORT VRELTable : public VRELReferenceCount {
 public:
  // Appends a row; its key now finds this row, and no more an earlier one of that key, which stays. Always VREL_S_OK.
  virtual VRINResult Add(VRELValue const* first, ...);
  // Puts the row in the place of the one with its key, or appends it, also where its key has no kind. Always VREL_S_OK.
  virtual VRINResult Set(VRELValue const* first, ...);

  // Takes the first argument for the key, and copies the columns of that row to the arguments, the key's too, until
  // either end. VREL_E_FAIL if there is no such row, with the arguments untouched.
  virtual VRINResult Get(VRELValue* first, ...) const;
  virtual int GetRowsCount() const;
  // The same by the number of the row, from 0 on. VREL_E_INVALID_ARGUMENT outside the table.
  virtual VRINResult Get(int row, VRELValue* first, ...) const;

 private:
  using Row = VRELDynamicArray<VRELValue>;

  void Append(Row const& row, VRELValue const* key);
  static Row MakeRow(VRELValue const* first, va_list more);
  static void CopyRow(Row const& row, VRELValue* first, va_list more);
  VRELValue const* KeyOf(Row const& row) const;

  VRELDynamicArray<Row> rows;
  // From a key to the number of its row.
  VRELHashMap<VRELValue, int> index;
  std::int32_t keyColumn = 0;
};
