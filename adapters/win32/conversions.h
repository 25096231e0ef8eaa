// Between the library's values and automation's: texts (UTF-8 and UTF-16), values of any type, and the
// single-byte code page of the system.
#pragma once

#include <string>
#include <string_view>

#include "orve-mailserver/host/variant.h"
#include "win32/com_ptr.h"

namespace orve::adapters::win32 {

/// UTF-8 to UTF-16 and back. What is not valid text becomes U+FFFD; NUL characters stay.
[[nodiscard]] std::wstring ToWide(std::string_view testo);
[[nodiscard]] std::string ToUtf8(std::wstring_view testo);

/// Never null; raises std::bad_alloc.
[[nodiscard]] Bstr ToBstr(std::string_view testo);
/// Null reads as the empty text.
[[nodiscard]] std::string FromBstr(BSTR testo);

/// Text in the system's single-byte code page, with "?" for each character that it lacks, and back.
[[nodiscard]] std::string ToSingleByte(std::string_view testo);
[[nodiscard]] std::string FromSingleByte(std::string_view byte);

/// A value for automation. Arrays become arrays of values from index 0; an object becomes the COM object it
/// wraps. Raises 13 for an object that has none.
[[nodiscard]] VariantCom ToCom(const host::Variant& valore);

/// A value from automation, by value or by reference. Number types that the library does not have become the
/// smallest that holds them: a short or 32-bit integer, else a decimal number; currency becomes a decimal
/// number. Arrays of any kind and lower bound become arrays from 0; an array of several dimensions becomes an
/// array of arrays, with the first dimension outermost. An object becomes an OggettoIgnoto, "no object" an
/// absent one, an omitted argument an empty value. Raises 13 for what has no counterpart, such as an error
/// value.
[[nodiscard]] host::Variant FromCom(const VARIANT& valore);

}  // namespace orve::adapters::win32
