#pragma once

#include "bkimgutl/bkimgutl.h"
#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/core/Handle_Table.h"
#include "dev/samples/Camera_Block.h"
#include "dev/samples/Jpeg_File.h"
#include "dev/samples/Picture.h"
#include "tests/bkimgutl/Reference_Pictures.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

using File_Bytes = std::vector<std::uint8_t>;
using File_Segment = Jpeg_File_Options::Segment;

/// A handle that is released with its scope.
class Held_Bitmap {
public:
    explicit Held_Bitmap(Bitmap_Handle handle) : handle_(handle) {}
    Held_Bitmap(Held_Bitmap&& other) noexcept : handle_(std::exchange(other.handle_, 0)) {}
    Held_Bitmap(const Held_Bitmap&) = delete;
    Held_Bitmap& operator=(const Held_Bitmap&) = delete;
    ~Held_Bitmap()
    {
        if (handle_ != 0) Release(handle_);
    }
    Bitmap_Handle Handle() const { return handle_; }
    explicit operator bool() const { return handle_ != 0; }
    Bitmap& operator*() const { return **Find_Bitmap_To_Change(handle_); }
    Bitmap* operator->() const { return *Find_Bitmap_To_Change(handle_); }

private:
    Bitmap_Handle handle_;
};

struct Save_Arguments {
    std::string comment = {};
    std::string script = {};
    std::string parent = {};
    int quality = Quality_Of_Parent;
    int horizontal_dpi = -1;
    int vertical_dpi = -1;
};

/// A folder of its own for each test, and the contract's functions in a shape that reads well.
class Jpeg_Fixture : public testing::Test {
protected:
    Jpeg_Fixture();
    ~Jpeg_Fixture() override;

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    std::string Put(const std::string& name, const File_Bytes& bytes) const;
    static File_Bytes Get(const std::string& path);

    static Held_Bitmap Load(const std::string& path, int divisor = 1, int rotation = 0);
    static bool Save(const Held_Bitmap& bitmap, const std::string& path, const Save_Arguments& arguments);
    static std::string Error_Text();
    static std::string Comment(const std::string& path);
    static std::string Script(const std::string& path);
    static File_Bytes EXIF(const std::string& path);
    static Picture_Facts Facts(const std::string& path);

    std::filesystem::path folder_;
};

/// What plain use of the codec makes of a file: rows from the top, 1 byte, 3 bytes (B,G,R) or 4 (C,M,Y,K as stored).
struct Plain_Decode {
    int width = 0;
    int height = 0;
    int channels = 0;
    std::vector<std::uint8_t> bytes = {};
    std::vector<std::vector<int>> tables = {}; ///< of each channel
    std::vector<int> sampling = {};            ///< horizontal and vertical of each channel in turn
    bool progressive = false;
};
Plain_Decode Decode_Plainly(const File_Bytes& file, int divisor = 1);

testing::AssertionResult Shows(const Plain_Decode& expected, const Bitmap& actual);

/// The application and comment segments of a file, read in the simplest way.
std::vector<File_Segment> Outer_Segments(const File_Bytes& file);

/// From the first scan to the end.
File_Bytes Coded_Data(const File_Bytes& file);

/// A segment's data from a text; zeros inside are kept.
File_Segment Segment(int marker, std::string_view text, std::size_t more_bytes = 0);

/// A profile that is long enough to have a head with the given colour model.
File_Segment Profile_Segment(std::string_view model, int part = 1, int parts = 1, std::size_t bytes = 300);
