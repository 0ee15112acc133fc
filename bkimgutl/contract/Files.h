#pragma once

#include "bkimgutl/contract/Types.h"

#include <string_view>

/// Files and texts. Paths are native. `type` is an Image_File_Type as a number; 0 looks at the file's signature.
/// Texts come back in UTF-8 in the caller's buffer of `size` bytes, with a terminating zero where there is room; `length`
/// takes the number of bytes without it; a negative length means that the text filled the whole buffer.
/// A false flag or a 0 handle leaves its reason in Get_Last_Image_Error_String, want of memory included; nothing is thrown.

/// Text of the last failure of any function of the library.
void Get_Last_Image_Error_String(char* buffer, std::int32_t size, std::int32_t* length);

/// Type by the first bytes of the file, not by its name; 0 when unknown or unreadable.
std::int32_t Get_Image_File_Type_From_Signature(std::string_view path);

/// Reads only the header. Width and height are those of the upright picture, so 90 degree orientations swap them (and the
/// two resolutions). `pixel_depth` is bits per pixel as stored, all samples together. A file without resolution gives -1.
Flag Get_File_Dimensions(std::string_view path, std::int32_t type, std::int32_t* width, std::int32_t* height,
                         std::int32_t* pixel_depth, std::int32_t* horizontal_dpi, std::int32_t* vertical_dpi);

/// The comment of the file, which is the picture's description; decoded to UTF-8 from UTF-8 or Windows-1252.
Flag Get_File_Comment(std::string_view path, std::int32_t type, char* buffer, std::int32_t size, std::int32_t* length);

/// The image script stored in the file, empty when there is none.
Flag Get_File_Image_Script(std::string_view path, std::int32_t type, char* buffer, std::int32_t size,
                           std::int32_t* length);

/// The raw block: "Exif", 0, 0, then a TIFF structure. For TIFF files the block is put together from the file's camera
/// tags. Length 0 when there is none.
Flag Get_File_EXIF_Data(std::string_view path, std::int32_t type, unsigned char* buffer, std::int32_t size,
                        std::int32_t* length);

/// The upright picture, reduced by `scale_divisor` (1 and up) in each direction, sizes rounded up, then turned by
/// `rotation` (0, 90, 180, 270 degrees counterclockwise). 8 or 24 bits per pixel, whatever the file holds.
Bitmap_Handle Load_Bitmap_From_File(std::string_view path, std::int32_t type, std::int32_t scale_divisor,
                                    std::int32_t rotation);

/// Writes a file of `type` with the bitmap's pixels.
/// comment, script  UTF-8; empty stores none. Longer than 1024 and 65535 bytes is an error.
/// parent           path of the file whose camera block, profiles and foreign segments go along, empty for none
/// quality          0 to 100, -1 the library's own, -2 the parent's: its quantisation tables and sampling. The coded
///                  data of the parent is kept or transformed without loss where the bitmap still holds its pixels
///                  and the quality is -2
/// dpi              below 1 means none
/// parent_quality   takes the quality estimated from the parent's tables, -1 without one; may be null
/// The target holds the old or the new file, whole, at every instant.
Flag Save_Bitmap_To_File(Bitmap_Handle bitmap, std::string_view path, std::int32_t type, std::string_view comment,
                         std::string_view script, std::string_view parent, std::int32_t quality,
                         std::int32_t horizontal_dpi, std::int32_t vertical_dpi, std::int32_t* parent_quality);

/// Writes the picture of the file `parent` to `path`, which may be its own name, with other texts and resolution. The coded
/// data and everything else is copied as it stands, without decoding; only where the data seems to be cut off it is decoded
/// to see, and a picture that proves to be damaged is not saved over its own file. The new file has the parent's type;
/// limits, resolution and wholeness as for Save_Bitmap_To_File. Name the "~" file as parent while it keeps the original.
Flag Save_File_Texts(std::string_view path, std::int32_t type, std::string_view comment, std::string_view script,
                     std::string_view parent, std::int32_t horizontal_dpi, std::int32_t vertical_dpi);

/// Whether a save of the bitmap in `type`, with the file `parent` as its parent and quality -2, keeps all that the parent's
/// picture holds: more than 8 bits a sample, transparency, further pages. 1 while the bitmap still holds the parent's pixels,
/// turned by right angles or mirrored at most; 0 also when this cannot be told.
Flag Test_Save_Keeps_All_CPP(Bitmap_Handle bitmap, std::int32_t type, std::string_view parent);

/// How many times picture data was decoded since the start of the program: tells what a step costs.
std::int64_t Count_Of_Decoded_Pictures_CPP();

/// The colour (0 to 255 each) of corners that rotation leaves uncovered, and of what transparent samples are laid over.
void Set_All_Bitmaps_Background_Color_CPP(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

/// Parameters of the CMYK split; the library starts with 0.5, 0 and 765.
void Set_CMYK_Parameters_CPP(float black_gamma, std::int32_t black_start, std::int32_t ink_limit);
