#pragma once

#include <string>
#include <string_view>

/// True when all bytes form valid UTF-8 (shortest forms, no surrogates, up to U+10FFFF).
bool Is_UTF8(std::string_view bytes);

/// The text of a file in UTF-8: bytes that are valid UTF-8 as they are, anything else taken as Windows-1252, whose five
/// unassigned codes become the control characters of the same number.
std::string UTF8_From_Stored(std::string_view bytes);
