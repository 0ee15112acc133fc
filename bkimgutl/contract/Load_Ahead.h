#pragma once

#include "bkimgutl/contract/Types.h"
#include "frame/files/Regular_File.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A file that is to be read for a list of pictures.
struct Picture_Request {
    std::string path{};
    std::int32_t rotation = 0; ///< degrees counterclockwise: 0, 90, 180, 270
    /// Pixels that the longer side of the bitmap has at least, where the picture has so many: of the reductions 8, 4, 2
    /// and 1 the strongest that gives them is taken. 0 reads no pixels.
    std::int32_t least_side = 0;
};

/// All that a list of pictures wants to know of a file, from one visit to it. Sizes, resolutions and texts are those of
/// Get_File_Dimensions, Get_File_Comment, Get_File_Image_Script and Get_File_EXIF_Data.
struct Picture_Contents {
    std::int32_t type = 0;    ///< Image_File_Type; 0 when the file is none of them or cannot be read
    Bitmap_Handle bitmap = 0; ///< belongs to whoever takes the contents
    std::int32_t scale_divisor = 8;
    std::int32_t width = 0; ///< 0 when the header cannot be read
    std::int32_t height = 0;
    std::int32_t pixel_depth = 0;
    std::int32_t horizontal_dpi = -1;
    std::int32_t vertical_dpi = -1;
    std::string comment{};
    std::string script{};
    std::vector<std::byte> exif{};
    std::string error{};        ///< why there are no sizes, or no bitmap though one was asked for; names the file
    std::string script_error{}; ///< why a script that stands in the file cannot be read; names the file
    File_Identity identity{};
};

/// The strongest reduction, of 8, 4, 2 and 1, at which a side that has `side_at_8` pixels when reduced by 8 has
/// `least_side`. Each step counts as exactly twice the pixels.
std::int32_t Divisor_That_Keeps(std::int32_t side_at_8, std::int32_t least_side);

/// Reads a list of files on threads of its own and gives them out in the order of the list, as if they were read one after
/// another. Whoever takes them stays on one thread and may do something else while the next one is not there yet.
///
///     Load_Ahead ahead(requests);
///     while (!ahead.Is_At_End()) {
///         while (!ahead.Wait(10ms)) Process_Events();
///         Use(ahead.Take());
///     }
///
/// Where processors are short its threads stand back behind the caller's.
/// Memory: at most Most_Ahead files are begun and not taken yet, and two very large pictures are never decoded side by
/// side.
/// Ending it early is safe at any time: decoders give up at their next row, and nothing stays behind.
class Load_Ahead {
public:
    static constexpr int Most_Threads = 8;
    static constexpr int Most_Ahead = 2 * Most_Threads;

    /// Decoders keep up to 6 bytes a pixel for some kinds of files.
    static constexpr std::int64_t Most_Pixels_Side_By_Side = 120'000'000;

    /// threads              1 to Most_Threads; 0 reads each file only when it is waited for, on the caller's thread
    /// pixels_side_by_side  of the stored picture; a larger one is decoded only when it is the next to be taken
    Load_Ahead(std::vector<Picture_Request> requests, int threads,
               std::int64_t pixels_side_by_side = Most_Pixels_Side_By_Side);

    /// A thread for each core, but no more than there are files; none when no pixels are wanted, since headers alone are
    /// read faster than threads start.
    explicit Load_Ahead(std::vector<Picture_Request> requests);

    Load_Ahead(const Load_Ahead&) = delete;
    Load_Ahead& operator=(const Load_Ahead&) = delete;
    ~Load_Ahead();

    bool Is_At_End() const;

    /// True when the next file is there, at the latest after `longest`; false when it is not, and at the end of the list.
    bool Wait(std::chrono::milliseconds longest);

    /// The next file, waiting for it as long as it takes; not to be called at the end of the list. When it has an error,
    /// that is what Get_Last_Image_Error_String tells afterwards, whatever was read on other threads meanwhile.
    Picture_Contents Take();

private:
    struct Work;
    std::unique_ptr<Work> work_;
};
