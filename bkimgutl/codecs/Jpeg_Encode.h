#pragma once

#include "bkimgutl/codecs/Jpeg_Load.h"
#include "bkimgutl/core/Bitmap_View.h"
#include "frame/files/Replacement_File.h"

/// How to code new pixels. Without a parent's coding: usual tables of `quality` (0 to 100), colours at full resolution
/// from 90 on and at half of it in both directions below.
struct Encode_Settings {
    int quality = 90;
    const Jpeg_Coding* like = nullptr; ///< take tables, sampling and order of scans from here
};

constexpr int Usual_Quality = 90;
constexpr int Full_Color_Quality = 90;

/// The colours in which the encoder will store a picture.
Jpeg_Coding::Colors Colors_To_Store(const Bitmap_View& pixels, const Encode_Settings& settings);

/// Appends tables and picture data to a file that holds the start marker and the segments in front.
Result<void> Encode_Jpeg(Replacement_File& target, const Bitmap_View& pixels, const Encode_Settings& settings);
