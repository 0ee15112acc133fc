#pragma once

#include "bkimgutl/contract/Types.h"
#include "bkimgutl/tone/Clip_Table.h"

#include <array>
#include <cstdint>

/// Builders of 256-entry tone tables: input level to output level, both 0 to 255. Rounding is half to even.

using Tone_Table = std::array<std::int32_t, 256>;
using Histogram_Counts = std::array<std::int32_t, 256>;

/// level x scale, in single precision, limited.
void Build_Scale_Table(float scale, Tone_Table& table);

/// (level / 255) ^ (1 / gamma) x 255 in double precision. False, and no table, when gamma is 0.
bool Build_Gamma_Table(double gamma, Tone_Table& table);

/// The same between two levels: at and below `black` 0, else at and above `white` 255. Any black and white do, a damaged
/// item's as well. False, and no table, when gamma is 0.
bool Build_Black_Gamma_White_Table(int black, double gamma, int white, Tone_Table& table);

/// Where the two sides of a stretch lie. sample_count is what the clips are fractions of.
Clip_Range Search_Clip_Range(const Histogram_Counts& histogram, int sample_count, float shadow_clip,
                             float highlight_clip);

/// Contrast stretch of one channel: up to the given fraction of samples may be lost at each end, a negative one switches
/// that side off. Levels below the low end keep 0. False, and no table, when both ends fall on one level.
bool Build_Clip_Table(const Histogram_Counts& histogram, int sample_count, float shadow_clip, float highlight_clip,
                      Tone_Table& table);

/// The levels where the fractions run out; with a negative fraction the first and last occupied ones.
void Find_Clip_Points(const Histogram_Counts& histogram, int sample_count, float shadow_clip, float highlight_clip,
                      int& low, int& high);

void Build_Identity_Table(Tone_Table& table);

/// A new 1-byte bitmap of one component (one bit of the mask), owned by the caller, or 0: bad handle, no single bit, or a
/// pixel whose ink plane leaves 0 to 255.
Bitmap_Handle Extract_Color_Component(Bitmap_Handle source, int component);
