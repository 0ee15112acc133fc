#include "bkimgutl/contract/Opened_Picture.h"

#include "bkimgutl/contract/Files.h"
#include "bkimgutl/geometry/Turn.h"

#include <atomic>

namespace {

std::atomic<std::int64_t> decoded_pictures = 0;

} // namespace

Error Named(const std::string& path, Error error)
{
    if (error.text.compare(0, path.size() + 1, path + ":") != 0) error.text = path + ": " + error.text;
    return error;
}

Result<const Codec*> Codec_Of(Image_File_Type type)
{
    switch (type) {
    case Image_File_Type::JPEG: return &JPEG_Codec();
    case Image_File_Type::TIFF: return &TIFF_Codec();
    case Image_File_Type::Unknown: break;
    }
    return Failure("is neither a JPEG nor a TIFF file");
}

Result<Opened_Picture> Open_Picture(std::string_view path, std::int32_t type)
{
    const std::string name(path);
    if (type < 0 || type > std::int32_t(Image_File_Type::TIFF)) return Failure(name + ": unknown file type");
    auto file = Regular_File::Open(name);
    if (!file) return tl::make_unexpected(file.error());
    if (file->Size() == 0) return Failure(name + ": is empty");
    const Image_File_Type found = Type_From_Signature(*file);
    const auto codec = Codec_Of(found);
    if (!codec) return Failure(name + ": " + codec.error().text);
    return Opened_Picture{name, std::move(*file), found, *codec};
}

Result<Bitmap> Load_Opened(const Opened_Picture& opened, std::int32_t scale_divisor, std::int32_t rotation)
{
    if (scale_divisor < 1) return Failure("the scale divisor is below 1");
    if (rotation < 0 || rotation > 270 || rotation % 90 != 0)
        return Failure("the rotation is not 0, 90, 180 or 270 degrees");
    ++decoded_pictures;
    auto bitmap = opened.codec->Load(opened.file, scale_divisor);
    if (!bitmap) return bitmap;
    if (bitmap->Origin()) {
        Pixel_Origin origin = *bitmap->Origin();
        origin.path = opened.path;
        bitmap->Set_Origin(std::make_shared<const Pixel_Origin>(std::move(origin)));
    }
    if (rotation == 0) return bitmap;
    return Turned(*bitmap, {.quarter_turns = rotation / 90, .mirrored = false});
}

std::int64_t Count_Of_Decoded_Pictures_CPP()
{
    return decoded_pictures;
}
