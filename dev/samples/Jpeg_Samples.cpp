#include "dev/samples/Camera_Block.h"
#include "dev/samples/Jpeg_File.h"
#include "dev/samples/Picture.h"
#include "dev/samples/Sample_Set.h"

#include <string_view>

namespace {

using Bytes = std::vector<std::uint8_t>;
using Segment = Jpeg_File_Options::Segment;
using Colors = Jpeg_File_Options::Colors;

Segment Camera(Camera_Facts facts, const Sample_Picture& seen)
{
    facts.width = seen.width;
    facts.height = seen.height;
    return {0xE1, Camera_Block(facts)};
}

Segment Text(int marker, std::string_view text)
{
    return {marker, Bytes(text.begin(), text.end())};
}

/// A small upright picture for the camera block.
Bytes Thumbnail(const Sample_Picture& small)
{
    return Jpeg_File(small, {.quality = 75, .jfif = false});
}

void Make_Photographs(const std::string& folder)
{
    const Sample_Picture meadow = Meadow(1200, 800, 1);
    Camera_Facts facts;
    facts.thumbnail = Thumbnail(Meadow(160, 107, 1));
    Write_Sample(folder + "/meadow.jpg",
                 Jpeg_File(meadow, {.quality = 92,
                                    .dpi = 300,
                                    .segments = {Camera(facts, meadow), Text(0xFE, "A meadow below a summer sky")}}));

    const Sample_Picture portrait = Portrait(800, 1200, 2);
    facts = {.big_endian = true,
             .taken = "2024:06:02 10:05:41",
             .orientation = 6,
             .exposure = {1, 125},
             .aperture = {28, 10},
             .focal_length = {85, 1},
             .flash = 1,
             .maker_note = {},
             .thumbnail = {}};
    facts.thumbnail = Thumbnail(Stored_With_Orientation(Portrait(107, 160, 2), 6));
    Write_Sample(folder + "/portrait.jpg",
                 Jpeg_File(Stored_With_Orientation(portrait, 6),
                           {.quality = 88, .jfif = false, .segments = {Camera(facts, portrait)}}));

    const Sample_Picture town = Night_Town(1200, 800, 3);
    facts = {.taken = "2024:12:24 21:14:00",
             .exposure = {2, 1},
             .aperture = {8, 1},
             .iso = 1600,
             .maker_note = {},
             .thumbnail = {}};
    Write_Sample(folder + "/night.jpg", Jpeg_File(town, {.quality = 85,
                                                         .horizontal_sampling = 2,
                                                         .vertical_sampling = 1,
                                                         .progressive = true,
                                                         .segments = {Camera(facts, town)}}));
}

void Make_Kinds(const std::string& folder)
{
    const Sample_Picture grey = To_Grey(Meadow(900, 600, 4));
    Write_Sample(folder + "/grey.jpg", Jpeg_File(grey, {.quality = 90, .dpi = 150}));

    const Sample_Picture print = Portrait(600, 800, 5);
    Write_Sample(
        folder + "/print_cmyk.jpg",
        Jpeg_File(print, {.quality = 90, .horizontal_sampling = 1, .vertical_sampling = 1, .colors = Colors::CMYK}));

    // 37 pixels are left of the last whole unit, and restart markers divide the data.
    const Sample_Picture odd = Meadow(1037, 701, 6);
    Write_Sample(folder + "/odd_size.jpg", Jpeg_File(odd, {.quality = 80,
                                                           .restart_rows = 4,
                                                           .segments = {Text(0xFE, "Sides that are no "
                                                                                   "multiple of sixteen")}}));
    Write_Sample(folder + "/full_color.jpg",
                 Jpeg_File(Night_Town(960, 640, 7), {.quality = 95, .horizontal_sampling = 1, .vertical_sampling = 1}));
}

const Sample_Set photographs(Make_Photographs);
const Sample_Set kinds(Make_Kinds);

} // namespace
