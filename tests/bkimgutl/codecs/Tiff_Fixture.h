#pragma once

#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/codecs/Tiff_Structure.h"
#include "dev/samples/Tiff_File.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

/// A folder of its own for each test, and short words for what tests of TIFF files do.
class Tiff_Folder : public testing::Test {
public:
    Tiff_Folder();
    ~Tiff_Folder() override;
    std::string Path(const std::string& name = "a.tif") const { return folder_ + "/" + name; }

private:
    std::string folder_;
};

Regular_File Open_File(const std::string& path);
std::vector<std::byte> File_Bytes(const std::string& path);
void Write_File(const std::string& path, const std::vector<std::byte>& bytes);

/// Loads through the codec; a failure is a failure of the test and ends it with an exception.
Bitmap Loaded(const std::string& path, int divisor = 1);
/// The text of the error, or "" when the load succeeds.
std::string Load_Error(const std::string& path, int divisor = 1);
Picture_Facts Facts(const std::string& path);
std::string Comment(const std::string& path);
std::string Script(const std::string& path);
std::vector<std::byte> EXIF(const std::string& path);

/// The value of a tag of the first directory; empty without one.
std::vector<std::byte> Tag_Value(const std::string& path, std::uint16_t tag);
/// The value of a tag of the EXIF directory, and where it stands in the file.
std::vector<std::byte> EXIF_Tag_Value(const std::string& path, std::uint16_t tag, std::uint64_t* position = nullptr);
std::uint64_t Tag_Number(const std::string& path, std::uint16_t tag, std::uint64_t otherwise = 0);

/// A bitmap of a sample picture as it is seen.
Bitmap Bitmap_Of(const Sample_Picture& picture);
std::string Text_Of(const std::vector<std::byte>& bytes);

/// Saves and fails the test with the error's text.
void Save(const Save_Request& request);

/// A TIFF file out of raw entries, for what no proper writer would write.
struct Raw_Entry {
    std::uint16_t tag;
    std::uint16_t type;
    std::uint32_t count;
    std::uint32_t value;
};
std::vector<std::byte> Raw_Tiff(const std::vector<Raw_Entry>& entries, std::uint32_t next = 0,
                                std::size_t tail_bytes = 0);
