#include "VRELTable.h"

VRINResult VRELTable::Add(VRELValue const* first, ...) {
  va_list more;
  va_start(more, first);
  Row const row = MakeRow(first, more);
  va_end(more);
  Append(row, KeyOf(row));
  return VREL_S_OK;
}

VRINResult VRELTable::Set(VRELValue const* first, ...) {
  va_list more;
  va_start(more, first);
  Row const row = MakeRow(first, more);
  va_end(more);
  VRELValue const* const key = KeyOf(row);
  bool const hasKey = key != nullptr && key->IsValid();
  int number = -1;
  if (hasKey && index.Get(*key, number) && number < rows.size()) {
    rows[number] = row;
    return VREL_S_OK;
  }
  Append(row, hasKey ? key : nullptr);
  return VREL_S_OK;
}

VRINResult VRELTable::Get(VRELValue* first, ...) const {
  va_list more;
  va_start(more, first);
  VRELValue const* key = first;
  for (int column = 0; column < keyColumn && key != nullptr; ++column) key = va_arg(more, VRELValue*);
  va_end(more);
  int number = -1;
  if (key == nullptr || !index.Get(*key, number) || number >= rows.size()) return VREL_E_FAIL;
  va_start(more, first);
  CopyRow(rows[number], first, more);
  va_end(more);
  return VREL_S_OK;
}

int VRELTable::GetRowsCount() const {
  return rows.size();
}

VRINResult VRELTable::Get(int row, VRELValue* first, ...) const {
  if (row < 0 || row >= GetRowsCount()) return VREL_E_INVALID_ARGUMENT;
  va_list more;
  va_start(more, first);
  CopyRow(rows[row], first, more);
  va_end(more);
  return VREL_S_OK;
}

// `key` is null for a row that is not indexed. If indexing fails the row is removed again.
void VRELTable::Append(Row const& row, VRELValue const* key) {
  int const number = GetRowsCount();
  rows.add(row);
  if (key == nullptr) return;
  try {
    index.Put(*key, number);
  } catch (...) {
    rows.endShrink(1);
    throw;
  }
}

VRELTable::Row VRELTable::MakeRow(VRELValue const* first, va_list more) {
  Row row;
  for (VRELValue const* value = first; value != nullptr; value = va_arg(more, VRELValue const*)) row.add(*value);
  return row;
}

void VRELTable::CopyRow(Row const& row, VRELValue* first, va_list more) {
  VRELValue* value = first;
  for (int column = 0; column < row.size() && value != nullptr; ++column, value = va_arg(more, VRELValue*)) {
    *value = row[column];
  }
}

// Returns null if the row does not have the key column.
VRELValue const* VRELTable::KeyOf(Row const& row) const {
  return keyColumn < row.size() ? &row[keyColumn] : nullptr;
}
