#include "bkimgutl/bkimgutl.h"
#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/core/Handle_Table.h"
#include "fuzz/Fuzz_File.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

// Facts, texts and pixels of a JPEG file, then a save of texts and a turn with the file as parent.

namespace {

void Read_Everything(const std::string& path)
{
    std::int32_t number = 0;
    std::vector<char> buffer(70'000);
    Get_File_Dimensions(path, 1, &number, &number, &number, &number, &number);
    Get_File_Comment(path, 1, buffer.data(), 1024, &number);
    Get_File_Image_Script(path, 1, buffer.data(), 65535, &number);
    Get_File_EXIF_Data(path, 1, reinterpret_cast<unsigned char*>(buffer.data()), 65535, &number);
    const auto file = Regular_File::Open(path);
    if (!file) return;
    (void)JPEG_Codec().Read_Profile(*file);
    (void)JPEG_Codec().Read_XMP(*file);
    (void)JPEG_Codec().Read_Resources(*file);
}

void Load_And_Release(const std::string& path, int divisor)
{
    if (const Bitmap_Handle bitmap = Load_Bitmap_From_File(path, 1, divisor, 0)) Release(bitmap);
}

/// The saved file must load and have the size that was saved.
void Save_Turned(const std::string& path, const std::string& target, int rotation)
{
    const Bitmap_Handle bitmap = Load_Bitmap_From_File(path, 1, 1, rotation);
    if (bitmap == 0) return;
    if (Save_Bitmap_To_File(bitmap, target, 1, "text", "script", path, Quality_Of_Parent, 0, 0, nullptr)) {
        const Bitmap_Handle again = Load_Bitmap_From_File(target, 1, 1, 0);
        if (again == 0 || (*Find_Bitmap(again))->Width() != (*Find_Bitmap(bitmap))->Width()) std::abort();
        Release(again);
    }
    Release(bitmap);
}

/// New texts leave what is shown, a damaged picture's remains included, as long as its end is there.
void Save_Texts(const std::string& path, const std::string& target)
{
    const auto file = Regular_File::Open(path);
    if (!file || !JPEG_Codec().Is_Complete(*file)) return;
    if (!Save_File_Texts(target, 1, "text", "script", path, 0, 0)) return;
    const Bitmap_Handle before = Load_Bitmap_From_File(path, 1, 1, 0);
    if (before == 0) return;
    const Bitmap_Handle after = Load_Bitmap_From_File(target, 1, 1, 0);
    if (after == 0) std::abort();
    const Bitmap_View old_pixels = (*Find_Bitmap(before))->View();
    const Bitmap_View new_pixels = (*Find_Bitmap(after))->View();
    if (old_pixels.width != new_pixels.width || old_pixels.height != new_pixels.height) std::abort();
    for (int y = 0; y < old_pixels.height; ++y)
        if (std::memcmp(old_pixels.Row(y), new_pixels.Row(y), old_pixels.Row_Bytes()) != 0) std::abort();
    Release(before);
    Release(after);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setenv("HALVINE_LIMIT_BITMAP_PIXELS", "1000000", 1);
    setenv("HALVINE_LIMIT_LIVE_BITMAP_BYTES", "100000000", 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const Fuzz_File file;
    static const std::string target = "/dev/shm/halvine-fuzz-" + std::to_string(getpid()) + ".jpg";
    const std::string path = file.Put(bytes, size);
    Read_Everything(path);
    Load_And_Release(path, 8);
    Load_And_Release(path, 3);
    const unsigned choice = size > 0 ? bytes[size - 1] : 0;
    Save_Turned(path, target, int(choice % 4) * 90);
    Save_Texts(path, target);
    std::error_code ignored;
    std::filesystem::remove(target, ignored);
    return 0;
}
