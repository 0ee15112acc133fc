#pragma once

#include "bkimgutl/codecs/Codec.h"

#include <string>
#include <string_view>

// What the file functions of the contract share: a file, opened once, with the codec that reads it.

struct Opened_Picture {
    std::string path;
    Regular_File file;
    Image_File_Type type; ///< by its signature
    const Codec* codec;
};

/// The signature decides what a file is: a `type` that contradicts it would only lead to a stranger message. The reason
/// of a failure names the file.
Result<Opened_Picture> Open_Picture(std::string_view path, std::int32_t type);

Result<const Codec*> Codec_Of(Image_File_Type type);

/// As Load_Bitmap_From_File; the reason of a failure does not name the file.
Result<Bitmap> Load_Opened(const Opened_Picture& opened, std::int32_t scale_divisor, std::int32_t rotation);

/// Codecs name no file, the opening and writing of files does.
Error Named(const std::string& path, Error error);
