#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// What a camera would write about a picture.
struct Camera_Facts {
    bool big_endian = false;
    std::string make = "Sample Works";
    std::string model = "Field Camera 2";
    std::string software = {};
    std::string taken = "2024:05:17 14:32:08";
    int orientation = 1;                     ///< 0 leaves the tag out
    std::optional<int> dpi = 300;            ///< per inch, both ways
    std::pair<int, int> exposure{1, 250};    ///< seconds
    std::pair<int, int> aperture{56, 10};    ///< f-number
    std::pair<int, int> focal_length{50, 1}; ///< millimetres
    int iso = 200;
    int flash = 0;
    int program = 3;
    int metering = 5;
    int width = 0; ///< 0 leaves both sizes out
    int height = 0;
    std::vector<std::uint8_t> maker_note = {};
    std::vector<std::uint8_t> thumbnail = {}; ///< a JPEG stream
};

/// "Exif", 0, 0 and a TIFF structure with two directories, and a third one for the thumbnail when there is one.
std::vector<std::uint8_t> Camera_Block(const Camera_Facts& facts);
