// What a document says about itself.
#pragma once

#include <cstdint>

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELString.h"
#include "VRELTable.h"
#include "VRELValue.h"
#include "VRINResult.h"

class VRELStreamFormatter;

// Who made a document, with which system, in which units: values under keys, in the order in which the keys first came,
// with headings between them. A format module fills the header, the log prints it.
//
//   VRELFileHeader header;
//   header.Set(VRELFileHeader::AUTHOR, VRELString(L"Kim"));
//   header.AddSection(VRELString(L"Configurations"));
//   header.Set(VRELFileHeader::CONFIGURATIONS_COUNT, VRELValue(2));
//
// A document may hold several models; each has rows of its own, and all operations go to the current model. Any key
// may be used; those named here are the usual ones, and none has a value unless it was set. A copy shares the models
// with its source and has a current model of its own.
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

  // One model without rows, which is current.
  VRELFileHeader();
  VRELFileHeader(VRELFileHeader const&) = default;
  VRELFileHeader& operator=(VRELFileHeader const&) = default;

  virtual int GetModelsCount();
  // Makes a model current. One that is not there yet is made, with all those before it. VREL_E_INVALID_ARGUMENT if the
  // index is below 0; the current model then stays.
  virtual VRINResult SelectModel(int index);

  // The value of a key; VREL_E_FAIL if the key is not there, with `value` untouched.
  virtual VRINResult Get(VRELString const& key, VRELValue& value) const;
  // The same as text. That a value without a kind gives VREL_S_OK and leaves `value` untouched is promised.
  virtual VRINResult Get(VRELString const& key, VRELString& value) const;
  // Replaces the value of a key in its row, or appends a row. VREL_E_FAIL if the current model is not there.
  virtual VRINResult Set(VRELString const& key, VRELValue const& value);
  virtual VRINResult Set(VRELString const& key, VRELString const& value);
  // Appends a heading: a row whose key has no kind. Two of one title are two rows.
  virtual VRINResult AddSection(VRELString const& title);
  // The number of rows, headings included; 0 if the current model is not there.
  virtual int GetCount() const;
  // A row by its number, from 0 on; VREL_E_INVALID_ARGUMENT outside the model. That a heading gives
  // VREL_E_INVALID_ARGUMENT, with its title in `value` and an empty `key`, is promised: printing tells it by that.
  virtual VRINResult Get(int row, VRELString& key, VRELValue& value) const;
  virtual ~VRELFileHeader();

  // The same with plain text, which is kept as text.
  VRINResult Set(VRELString const& key, char const* value) { return Set(key, VRELString(value)); }
  VRINResult Set(VRELString const& key, wchar_t const* value) { return Set(key, VRELString(value)); }

  // Drops models at the end or makes new ones without rows. The current model's index stays, even if no such model is
  // left: select one then. VREL_E_INVALID_ARGUMENT for a count below 0.
  VRINResult ResizeModels(int count);

 private:
  VRELTable* CurrentModel();
  VRELTable const* CurrentModel() const;

  std::int32_t currentModel = 0;
  VRELDynamicArray<VRELTable> models;
};

// Writes the current model, a line a row: the key padded to 24 bytes, " : " and the value; of a heading the title
// alone. Rows come through the virtual operations.
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELFileHeader const& header);
