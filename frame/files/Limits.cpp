#include "frame/files/Limits.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>

namespace {

template <class Number>
void Take_From_Environment(const char* field, Number& limit)
{
    std::string name = std::string("HALVINE_LIMIT_") + field;
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return char(std::toupper(c)); });
    const char* text = std::getenv(name.c_str());
    if (text == nullptr) return;
    Number value = 0;
    const char* end = text + std::strlen(text);
    const auto [stopped, error] = std::from_chars(text, end, value);
    if (error == std::errc() && stopped == end && value > 0) limit = value;
}

Limits Read_Limits()
{
    Limits limits;
#define TAKE(field) Take_From_Environment(#field, limits.field)
    TAKE(bitmap_pixels);
    TAKE(live_bitmap_bytes);
    TAKE(jpeg_scans);
    TAKE(jpeg_warnings);
    TAKE(tiff_directories);
    TAKE(tiff_directory_entries);
    TAKE(tiff_strips);
    TAKE(tiff_samples_per_pixel);
    TAKE(comment_bytes);
    TAKE(script_bytes);
    TAKE(exif_bytes);
    TAKE(script_items);
    TAKE(text_objects);
    TAKE(document_bytes);
    TAKE(settings_file_bytes);
    TAKE(rich_text_nesting);
    TAKE(formula_nesting);
    TAKE(formula_calls);
    TAKE(formula_names);
    TAKE(formula_arguments);
    TAKE(formula_code);
    TAKE(formula_string_characters);
    TAKE(formula_array_elements);
    TAKE(formula_instructions);
    TAKE(formula_bytes);
    TAKE(file_name_bytes);
    TAKE(folder_depth);
#undef TAKE
    return limits;
}

} // namespace

const Limits& Current_Limits()
{
    static const Limits limits = Read_Limits();
    return limits;
}

std::int64_t Live_Bitmap_Bytes_Limit()
{
    const std::int64_t set = Current_Limits().live_bitmap_bytes;
    if (set > 0) return set;
    const std::int64_t memory = std::int64_t(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGESIZE);
    return std::min<std::int64_t>(memory / 2, std::int64_t(8) << 30);
}
