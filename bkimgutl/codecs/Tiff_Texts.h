#pragma once

#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/codecs/Tiff_Fields.h"

// What a TIFF file says beside its pixels: facts, comment, script, resolution; reading and writing stand together.

constexpr int Largest_Tiff_Resolution = 1'000'000; ///< pixels per inch that are believed

Result<Picture_Facts> Facts_Of_Tiff(const Tiff_Structure& structure, const Tiff_Directory& directory);
/// Both are empty when the file has none. They fail beyond Longest_Comment() and the limit of scripts.
Result<std::string> Comment_Of_Tiff(const Tiff_Structure& structure, const Tiff_Directory& directory);
Result<std::string> Script_Of_Tiff(const Tiff_Structure& structure, const Tiff_Directory& directory);

/// Puts comment and script into fields; empty ones go away. Two things that are not ours to remove stay: a comment that was
/// too long to be read, when the new one is empty, and somebody else's value under the number of our script, which
/// makes the storing of a script a failure.
Result<void> Set_Texts(Tiff_Fields& fields, const Tiff_Structure* parent, const Tiff_Directory* directory,
                       const std::string& comment, const std::string& script);

/// Replaces the resolution; two values below 1 remove it, and both are or none. `horizontal` belongs to the stored rows.
void Set_Resolution(Tiff_Fields& fields, const Tiff_Layout& layout, int horizontal, int vertical);
