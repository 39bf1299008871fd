// File header: properties of a source document.
#pragma once

#include <cstdint>

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELString.h"
#include "VRELTable.h"
#include "VRELValue.h"
#include "VRINResult.h"

class VRELStreamFormatter;

// Properties of a source document: author, system, units and so on. Values are stored under keys in insertion order,
// with section headings between them. A format module fills the header; VRELEndReadFileTaskEvent prints it to the log.
//
//   VRELFileHeader header;
//   header.Set(VRELFileHeader::AUTHOR, VRELString(L"Kim"));
//   header.AddSection(VRELString(L"Configurations"));
//   header.Set(VRELFileHeader::CONFIGURATIONS_COUNT, VRELValue(2));
//
// A document may contain several models, each with rows of its own. All operations use the current model. Any key is
// allowed; the constants below are the usual ones. No key has a default value.
//
// Ownership: a copy shares the models with its source, so that Set on one is visible in the other. Its current model is
// its own.
class VREL_EXPORT VRELFileHeader {
 public:
  static VRELString const MODIFICATION_DATE;     // "Modification Date"
  static VRELString const FILE_NAME;             // "File Name"
  static VRELString const AUTHOR;                // "Author"
  static VRELString const ORGANIZATION;          // "Organization"
  static VRELString const SOURCE_SYSTEM;         // "Source System"
  static VRELString const VERSION;               // "Version"
  static VRELString const UNITS;                 // "Units"
  static VRELString const COMMENT;               // "Comment"
  static VRELString const TOLERANCE;             // "Tolerance"
  static VRELString const DOCUMENT_TYPE;         // "Document Type"
  static VRELString const CONFIGURATIONS_COUNT;  // "Configurations Count"
  static VRELString const ACTIVE_CONFIGURATION;  // "Active Configuration"
  static VRELString const CONFIGURATIONS;        // "Configurations"

  // Creates one empty model and selects it.
  VRELFileHeader();
  VRELFileHeader(VRELFileHeader const&) = default;
  VRELFileHeader& operator=(VRELFileHeader const&) = default;

  virtual int GetModelsCount();
  // Selects a model. Creates it, and all models before it, if it does not exist.
  //
  // Errors: VREL_E_INVALID_ARGUMENT if `index` is negative or INT_MAX; the current model stays.
  virtual VRINResult SelectModel(int index);

  // Stores the value of a key in `value`.
  //
  // Errors: VREL_E_FAIL if there is no such key; `value` is unchanged.
  virtual VRINResult Get(VRELString const& key, VRELValue& value) const;
  // Stores the value of a key as a string.
  //
  // Errors: VREL_E_FAIL if there is no such key; `value` is unchanged.
  // Compatibility: a value of kind 0 returns VREL_S_OK and leaves `value` unchanged.
  virtual VRINResult Get(VRELString const& key, VRELString& value) const;
  // Replace the value of a key, or append a row.
  //
  // Errors: VREL_E_FAIL if the current model does not exist (see ResizeModels).
  virtual VRINResult Set(VRELString const& key, VRELValue const& value);
  virtual VRINResult Set(VRELString const& key, VRELString const& value);
  // Appends a section heading: a row with a key of kind 0. Every call appends a row.
  virtual VRINResult AddSection(VRELString const& title);
  // Returns the number of rows, headings included; 0 if the current model does not exist.
  virtual int GetCount() const;
  // Stores the key and the value of a row.
  //
  // Errors: VREL_E_INVALID_ARGUMENT if there is no such row.
  // Compatibility: a heading returns VREL_E_INVALID_ARGUMENT too, with an empty `key` and the title in `value`.
  // Printing recognizes headings by this.
  virtual VRINResult Get(int row, VRELString& key, VRELValue& value) const;
  virtual ~VRELFileHeader();

  // Store a string value.
  VRINResult Set(VRELString const& key, char const* value) { return Set(key, VRELString(value)); }
  VRINResult Set(VRELString const& key, wchar_t const* value) { return Set(key, VRELString(value)); }

  // Removes models at the end or appends empty ones. The index of the current model does not change; select a model if
  // the current one was removed.
  //
  // Errors: VREL_E_INVALID_ARGUMENT if `count` is negative.
  VRINResult ResizeModels(int count);

 private:
  VRELTable* CurrentModel();
  VRELTable const* CurrentModel() const;

  std::int32_t currentModel = 0;
  VRELDynamicArray<VRELTable> models;
};

// Writes the rows of the current model, one per line: the key padded to 24 bytes, " : " and the value; for a heading
// the title alone. Reads the rows through the virtual operations.
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELFileHeader const& header);
