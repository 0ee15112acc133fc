#pragma once

#include <cstdint>

/// The limits that keep a damaged or hostile input from taking the machine. A value from a file is checked against them
/// before any arithmetic or allocation, in 64 bits.
struct Limits {
    std::int64_t bitmap_pixels = 700'000'000; ///< of one bitmap, results inside a script included
    std::int64_t live_bitmap_bytes = 0;       ///< of all live bitmaps; 0 means half of memory, at most 8 GiB
    int jpeg_scans = 500;
    int jpeg_warnings = 100;
    int tiff_directories = 8;
    int tiff_directory_entries = 1024;
    int tiff_strips = 1'000'000;
    int tiff_samples_per_pixel = 5;
    int comment_bytes = 1024;
    int script_bytes = 65535;
    int exif_bytes = 65535;
    int script_items = 1000;
    int text_objects = 200;
    std::int64_t document_bytes = 64 << 20; ///< a show, an album, a template, a configuration
    std::int64_t settings_file_bytes = 1 << 20;
    int rich_text_nesting = 256;
    int formula_nesting = 1000;
    int formula_calls = 10'000;
    int formula_names = 100'000;  ///< variables, and constants, of one procedure
    int formula_arguments = 1000; ///< of one procedure
    int formula_code = 1'000'000; ///< records of a program with defaults that its calls leave out
    std::int64_t formula_string_characters = 16 << 20;
    std::int64_t formula_array_elements = 16'000'000;
    std::int64_t formula_instructions = 50'000'000; ///< for one value
    std::int64_t formula_bytes = 1 << 30;           ///< of all values that a run holds
    int file_name_bytes = 255;
    int folder_depth = 64;
};

/// The limits in force. Read once from the environment at the first call: HALVINE_LIMIT_ followed by the field's name in
/// capitals, for example HALVINE_LIMIT_BITMAP_PIXELS=2000000000. A value that is no positive number is ignored.
const Limits& Current_Limits();

/// `live_bitmap_bytes` with its default resolved from the memory of this machine.
std::int64_t Live_Bitmap_Bytes_Limit();
