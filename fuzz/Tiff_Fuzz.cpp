#include "bkimgutl/codecs/Codec.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

// Everything that can be asked of a TIFF file, and for some inputs the ways to save it again: what was loaded must be what
// the saved file shows.

namespace {

/// A file without a name, of which every input becomes the contents.
int Contents()
{
    static const int descriptor = memfd_create("picture", 0);
    return descriptor;
}

void Must(bool condition)
{
    if (!condition) std::abort();
}

/// The saved file shows what `bitmap` does, whether its pixels are `saved_pixels` or, without them, the parent's.
void Save_And_Compare(const Bitmap& bitmap, const std::string& parent, const Bitmap* saved_pixels)
{
    static const std::string target = "/dev/shm/halvine-fuzz-" + std::to_string(getpid()) + ".tif";
    const auto saved = TIFF_Codec().Save({.bitmap = saved_pixels,
                                          .target = target,
                                          .comment = "c",
                                          .script = "s",
                                          .parent = parent,
                                          .parent_type = Image_File_Type::TIFF});
    if (!saved) return;
    const auto file = Regular_File::Open(target);
    Must(file.has_value());
    const auto again = TIFF_Codec().Load(*file, 1);
    Must(again.has_value() && again->Width() == bitmap.Width() && again->Height() == bitmap.Height());
    for (int y = 0; y < bitmap.Height(); ++y)
        Must(std::equal(bitmap.View().Row(y), bitmap.View().Row(y) + bitmap.View().Row_Bytes(), again->View().Row(y)));
    unlink(target.c_str());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setenv("HALVINE_LIMIT_BITMAP_PIXELS", "300000", 1);
    setenv("HALVINE_LIMIT_LIVE_BITMAP_BYTES", "100000000", 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string path = "/proc/self/fd/" + std::to_string(Contents());
    if (ftruncate(Contents(), 0) != 0 || pwrite(Contents(), data, size, 0) != ssize_t(size)) return 0;
    const auto file = Regular_File::Open(path);
    if (!file) return 0;
    const Codec& codec = TIFF_Codec();
    (void)codec.Read_Facts(*file);
    (void)codec.Read_Comment(*file);
    (void)codec.Read_Script(*file);
    (void)codec.Read_EXIF(*file);
    (void)codec.Read_Profile(*file);
    (void)codec.Read_XMP(*file);
    (void)codec.Read_Resources(*file);
    (void)codec.Load(*file, 2 + int(size % 7));
    auto bitmap = codec.Load(*file, 1);
    if (bitmap && codec.Is_Complete(*file)) Save_And_Compare(*bitmap, path, nullptr);
    if (!bitmap || bitmap->Origin()->damaged || size % 4 != 0) return 0;
    if (size % 8 == 0) bitmap->Change();
    Save_And_Compare(*bitmap, path, &*bitmap);
    return 0;
}
