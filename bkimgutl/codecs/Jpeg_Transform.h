#pragma once

#include "bkimgutl/codecs/Jpeg_Load.h"
#include "bkimgutl/core/Pixel_Origin.h"
#include "frame/files/Replacement_File.h"

// Turns and mirrors a coded picture without decoding it. A picture is coded in blocks of 8 x 8 frequencies: mirroring a
// block changes the sign of its odd frequencies in that direction, and transposing it transposes its table; then whole
// blocks change places. Where a side that changes its end is no multiple of the coded unit, the incomplete units would come
// to lie at the wrong end, so such a picture cannot be turned in this way.

bool Can_Turn_Without_Loss(const Jpeg_Coding& coding, int width, int height, Pixel_Symmetry symmetry);

/// Appends tables and picture data to a file that holds the start marker and the segments in front.
Result<void> Write_Turned(Replacement_File& target, const Regular_File& parent, Pixel_Symmetry symmetry);
