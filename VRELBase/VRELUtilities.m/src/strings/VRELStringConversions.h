// Conversions between strings, numbers and booleans; trimming, case and quotation marks.
#pragma once

#include <string_view>

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Convert a number to a string.
// Compatibility: the bad conversion flag of the result is set, because the digits are decoded from the default code
// page.
//
// Formats with six decimals and no exponent, as by "%f", with the decimal mark of the C library's locale. Truncates
// after 254 characters.
VREL_EXPORT VRELString VRELStringFromDouble(double value);
VREL_EXPORT VRELString VRELStringFromULong(unsigned long value);
VREL_EXPORT VRELString VRELStringFromInteger(int value);
// Returns "true" or "false".
VREL_EXPORT VRELString VRELStringFromBool(bool value);
// Converts UTF-32 in wide characters; null is the empty string.
VREL_EXPORT VRELString VRELStringFromUnicodeWChars(wchar_t const* text);

// Returns whether compareToIgnoreCase of the two would return 0. Allocates nothing.
VREL_EXPORT bool VRELStringEqualsIgnoreCase(std::u16string_view a, std::u16string_view b) noexcept;
// Does the same for a string. False for an uninitialized string.
VREL_EXPORT bool VRELStringIsWord(VRELString const& text, std::u16string_view word);

// Convert a string to a boolean or a number.
// Errors: VREL_E_FAIL if the string is not one; `value` is then unchanged.
//
// Accepts Yes, True and On, No, False and Off, in any case.
VREL_EXPORT VRINResult VRELStringToBool(VRELString const& text, bool& value);
// Read the number at the beginning of the string, as atof and atoi do in the C library's locale. Other characters may
// follow.
// Compatibility: a zero is accepted only if the string begins with the digit 0; "-0", ".0" and " 0" fail.
VREL_EXPORT VRINResult VRELStringToDouble(VRELString const& text, double& value);
// Compatibility: a number outside the range of long becomes the nearest long; the low 32 bits of the long are returned.
VREL_EXPORT VRINResult VRELStringToInteger(VRELString const& text, int& value);

// Returns the string without white space (iswspace) at its start and end. Empty if the string has unpaired surrogates.
// Compatibility: the end is counted in characters but applied to UTF-16 code units, so that one more unit is lost for
// each character above U+FFFF.
VREL_EXPORT VRELString VRELStringGetTrimmedString(VRELString const& text);
// Returns whether the trimmed string is empty.
VREL_EXPORT bool VRELStringCheckIfWhiteSpace(VRELString const& text);

// Convert each character by towlower or towupper in the C library's locale. Empty if the string has unpaired
// surrogates.
VREL_EXPORT VRELString VRELStringConvertToLowerCase(VRELString const& text);
VREL_EXPORT VRELString VRELStringConvertToUpperCase(VRELString const& text);

// Compatibility: returns a copy and replaces nothing. Empty if the string is uninitialized.
VREL_EXPORT VRELString VRELStringReplaceNonASCIICharsWith(VRELString const& text, wchar_t replacement);

// Removes all quotation marks (U+0022) at the start and at the end of the string, and returns VREL_S_OK. `out` may be
// the same object as `in`.
// Compatibility: positions at the end are counted in characters, not in UTF-16 code units. With characters above
// U+FFFF, marks at the end are not found, and removing a mark at the start can remove units at the end; with unpaired
// surrogates it removes the rest.
VREL_EXPORT VRINResult RemoveDoubleQuotesAtStartAndEndOf(VRELString const& in, VRELString& out);
