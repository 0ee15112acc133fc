#pragma once

#include "frame/files/Regular_File.h"

#include <string>

/// One of the eight symmetries of a rectangle: first mirrored left to right if `mirrored`, then turned counterclockwise
/// by `quarter_turns` times 90 degrees.
struct Pixel_Symmetry {
    int quarter_turns = 0; ///< 0 to 3
    bool mirrored = false;
    bool operator==(const Pixel_Symmetry&) const = default;
    bool Is_Identity() const { return quarter_turns == 0 && !mirrored; }
    bool Swaps_Sides() const { return (quarter_turns & 1) != 0; }
};

/// `first`, then `second`, as one symmetry.
Pixel_Symmetry Then(Pixel_Symmetry first, Pixel_Symmetry second);

/// The symmetry that turns stored pixels upright, for an EXIF or TIFF orientation of 1 to 8; the identity for others.
Pixel_Symmetry Symmetry_Of_Orientation(int orientation);

/// The orientation, 1 to 8, that turns stored pixels upright by this symmetry.
int Orientation_Of_Symmetry(Pixel_Symmetry symmetry);

/// Says that a bitmap holds the pixels of a file, all of them at full size, after `symmetry` of the pixels as stored (the
/// orientation tag's own turn included). With it a save can keep the coded data instead of encoding again.
struct Pixel_Origin {
    std::string path;       ///< as it was named at the load; may have moved since
    File_Identity identity; ///< of the file at the load
    Pixel_Symmetry symmetry;
    bool damaged = false; ///< decoded with errors: may be shown, must not replace its file
    bool reduced = false; ///< the file holds more than the bitmap (more than 8 bits, several pages, alpha)
};
