// Texts to numbers and booleans and back; trimming, case, quotation marks.
#pragma once

#include <string_view>

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"

// Text of a number. The bad conversion flag of the result is promised to be set, because the text goes through the
// process's default codepage.
//
// Six decimals, no exponent, the decimal mark of the C library's locale; the text is cut behind 254 characters.
VREL_EXPORT VRELString VRELStringFromDouble(double value);
VREL_EXPORT VRELString VRELStringFromULong(unsigned long value);
VREL_EXPORT VRELString VRELStringFromInteger(int value);
// "true" or "false".
VREL_EXPORT VRELString VRELStringFromBool(bool value);
// The text of UTF-32 in wide characters; empty for null.
VREL_EXPORT VRELString VRELStringFromUnicodeWChars(wchar_t const* text);

// Whether compareToIgnoreCase of the two would give 0. Builds no text.
VREL_EXPORT bool VRELStringEqualsIgnoreCase(std::u16string_view a, std::u16string_view b) noexcept;
// The same for a text, which may be uninitialized and is then no word.
VREL_EXPORT bool VRELStringIsWord(VRELString const& text, std::u16string_view word);

// Numbers and booleans from text. VREL_E_FAIL leaves `value` as it is.
//
// True for Yes, True and On, false for No, False and Off, in any case; nothing else is a boolean.
VREL_EXPORT VRINResult VRELStringToBool(VRELString const& text, bool& value);
// The number that the text begins with, as atof and atoi read it in the C library's locale; what follows it is passed
// over. A zero counts only in a text that begins with the digit 0: "-0", ".0" and " 0" fail, and that is promised.
VREL_EXPORT VRINResult VRELStringToDouble(VRELString const& text, double& value);
// A number beyond long becomes the nearest long; of the long, the low 32 bits count.
VREL_EXPORT VRINResult VRELStringToInteger(VRELString const& text, int& value);

// The text without the white space (iswspace) at its start and end. Where it cuts is counted in characters but cut in
// UTF-16 units, so that with characters above U+FFFF the cut comes early by one unit for each of them; that is
// promised. A text with unpaired surrogates has no characters to count, and gives the empty text.
VREL_EXPORT VRELString VRELStringGetTrimmedString(VRELString const& text);
// Whether nothing is left of the text when it is trimmed.
VREL_EXPORT bool VRELStringCheckIfWhiteSpace(VRELString const& text);

// Each character through towlower or towupper, by the C library's locale. A text with unpaired surrogates gives the
// empty text.
VREL_EXPORT VRELString VRELStringConvertToLowerCase(VRELString const& text);
VREL_EXPORT VRELString VRELStringConvertToUpperCase(VRELString const& text);

// A text of the same characters: it is promised that nothing is replaced. Empty if uninitialized.
VREL_EXPORT VRELString VRELStringReplaceNonASCIICharsWith(VRELString const& text, wchar_t replacement);

// Drops all quotation marks (U+0022) at the start and at the end; those in the middle stay. `out` may be `in`. Always
// VREL_S_OK. The end is sought by a count of characters, not of UTF-16 units: in a text with characters above U+FFFF
// marks at the end are missed, and a mark at the start may take units at the end with it (all the rest, where unpaired
// surrogates leave nothing to count). That is promised.
VREL_EXPORT VRINResult RemoveDoubleQuotesAtStartAndEndOf(VRELString const& in, VRELString& out);
