#include "bkimgutl/contract/Files.h"

#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/codecs/Stored_Text.h"
#include "bkimgutl/contract/Guard.h"
#include "bkimgutl/contract/Opened_Picture.h"
#include "bkimgutl/contract/Text_Buffer.h"
#include "bkimgutl/core/Handle_Table.h"
#include "bkimgutl/core/Last_Error.h"

#include <optional>
#include <span>

namespace {

/// The body of a function for the file `path`.
template <class Body>
auto Guarded_For(std::string_view path, Body&& body)
{
    return Guarded(body, [&] { return Named(std::string(path), {"there is not enough memory"}); });
}

template <class Reader>
Flag Give_Text(std::string_view path, std::int32_t type, char* buffer, std::int32_t size, std::int32_t* length,
               Reader read)
{
    return Guarded_For(path, [&]() -> Flag {
        Put_In_Buffer({}, buffer, size, length);
        const auto opened = Open_Picture(path, type);
        if (!opened) return Fail_Flag(opened.error());
        const auto stored = read(*opened);
        if (!stored) return Fail_Flag(Named(opened->path, stored.error()));
        const std::string text = UTF8_From_Stored(*stored);
        Put_In_Buffer(std::as_bytes(std::span(text)), buffer, size, length);
        return Flag_True;
    });
}

template <class Number>
void Set(Number* target, Number value)
{
    if (target != nullptr) *target = value;
}

Result<void> Save(const Save_Request& request, std::int32_t type)
{
    if (type != std::int32_t(Image_File_Type::JPEG) && type != std::int32_t(Image_File_Type::TIFF))
        return Failure("the type of the new file is neither JPEG nor TIFF");
    const auto codec = Codec_Of(Image_File_Type(type));
    if (!codec) return tl::make_unexpected(codec.error());
    return (*codec)->Save(request);
}

} // namespace

void Get_Last_Image_Error_String(char* buffer, std::int32_t size, std::int32_t* length)
{
    Put_In_Buffer(std::as_bytes(std::span(Last_Error_Text())), buffer, size, length);
}

std::int32_t Get_Image_File_Type_From_Signature(std::string_view path)
{
    return Guarded_For(path, [&]() -> std::int32_t {
        const auto file = Regular_File::Open(std::string(path));
        if (!file) return Fail_Flag(file.error());
        const Image_File_Type type = Type_From_Signature(*file);
        if (type == Image_File_Type::Unknown)
            Fail_Flag(
                {std::string(path) + ": " + (file->Size() == 0 ? "is empty" : "is neither a JPEG nor a TIFF file")});
        return std::int32_t(type);
    });
}

Flag Get_File_Dimensions(std::string_view path, std::int32_t type, std::int32_t* width, std::int32_t* height,
                         std::int32_t* pixel_depth, std::int32_t* horizontal_dpi, std::int32_t* vertical_dpi)
{
    return Guarded_For(path, [&]() -> Flag {
        const auto opened = Open_Picture(path, type);
        if (!opened) return Fail_Flag(opened.error());
        const auto facts = opened->codec->Read_Facts(opened->file);
        if (!facts) return Fail_Flag(Named(opened->path, facts.error()));
        Set(width, facts->width);
        Set(height, facts->height);
        Set(pixel_depth, facts->pixel_depth);
        Set(horizontal_dpi, facts->horizontal_dpi);
        Set(vertical_dpi, facts->vertical_dpi);
        return Flag_True;
    });
}

Flag Get_File_Comment(std::string_view path, std::int32_t type, char* buffer, std::int32_t size, std::int32_t* length)
{
    return Give_Text(path, type, buffer, size, length,
                     [](const Opened_Picture& opened) { return opened.codec->Read_Comment(opened.file); });
}

Flag Get_File_Image_Script(std::string_view path, std::int32_t type, char* buffer, std::int32_t size,
                           std::int32_t* length)
{
    return Give_Text(path, type, buffer, size, length,
                     [](const Opened_Picture& opened) { return opened.codec->Read_Script(opened.file); });
}

Flag Get_File_EXIF_Data(std::string_view path, std::int32_t type, unsigned char* buffer, std::int32_t size,
                        std::int32_t* length)
{
    return Guarded_For(path, [&]() -> Flag {
        Put_In_Buffer({}, buffer, size, length);
        const auto opened = Open_Picture(path, type);
        if (!opened) return Fail_Flag(opened.error());
        const auto block = opened->codec->Read_EXIF(opened->file);
        if (!block) return Fail_Flag(Named(opened->path, block.error()));
        Put_In_Buffer(*block, buffer, size, length);
        return Flag_True;
    });
}

Bitmap_Handle Load_Bitmap_From_File(std::string_view path, std::int32_t type, std::int32_t scale_divisor,
                                    std::int32_t rotation)
{
    return Guarded_For(path, [&]() -> Bitmap_Handle {
        const auto opened = Open_Picture(path, type);
        if (!opened) return Fail(opened.error());
        auto bitmap = Load_Opened(*opened, scale_divisor, rotation);
        return bitmap ? Adopt(std::move(*bitmap)) : Fail(Named(opened->path, bitmap.error()));
    });
}

Flag Save_Bitmap_To_File(Bitmap_Handle bitmap, std::string_view path, std::int32_t type, std::string_view comment,
                         std::string_view script, std::string_view parent, std::int32_t quality,
                         std::int32_t horizontal_dpi, std::int32_t vertical_dpi, std::int32_t* parent_quality)
{
    return Guarded_For(path, [&]() -> Flag {
        Set(parent_quality, std::int32_t(-1));
        const auto found = Find_Bitmap(bitmap);
        if (!found) return Fail_Flag(found.error());
        Save_Request request{.bitmap = *found,
                             .target = std::string(path),
                             .comment = std::string(comment),
                             .script = std::string(script),
                             .parent = std::string(parent),
                             .parent_type = Image_File_Type::Unknown,
                             .quality = quality,
                             .horizontal_dpi = horizontal_dpi,
                             .vertical_dpi = vertical_dpi};
        if (!parent.empty()) {
            const auto opened = Open_Picture(parent, 0);
            if (!opened) return Fail_Flag(opened.error());
            request.parent_type = Type_From_Signature(opened->file);
            Set(parent_quality, std::int32_t(Estimated_Quality(opened->file)));
        }
        const auto saved = Save(request, type);
        return saved ? Flag_True : Fail_Flag(Named(request.target, saved.error()));
    });
}

Flag Save_File_Texts(std::string_view path, std::int32_t type, std::string_view comment, std::string_view script,
                     std::string_view parent, std::int32_t horizontal_dpi, std::int32_t vertical_dpi)
{
    return Guarded_For(path, [&]() -> Flag {
        const auto opened = Open_Picture(parent, type);
        if (!opened) return Fail_Flag(opened.error());
        Save_Request request{.target = std::string(path),
                             .comment = std::string(comment),
                             .script = std::string(script),
                             .parent = opened->path,
                             .parent_type = Type_From_Signature(opened->file),
                             .quality = Quality_Of_Parent,
                             .horizontal_dpi = horizontal_dpi,
                             .vertical_dpi = vertical_dpi};
        std::optional<Bitmap> pixels;
        if (!opened->codec->Is_Complete(opened->file)) { // whether that is harmless shows when it is decoded
            auto loaded = Load_Opened(*opened, 1, 0);
            if (!loaded) return Fail_Flag(Named(opened->path, loaded.error()));
            request.bitmap = &pixels.emplace(std::move(*loaded));
        }
        const auto saved = opened->codec->Save(request);
        return saved ? Flag_True : Fail_Flag(Named(request.target, saved.error()));
    });
}

Flag Test_Save_Keeps_All_CPP(Bitmap_Handle bitmap, std::int32_t type, std::string_view parent)
{
    return Guarded_For(parent, [&]() -> Flag {
        const auto found = Find_Bitmap(bitmap);
        if (!found) return Fail_Flag(found.error());
        const auto opened = Open_Picture(parent, 0);
        if (!opened) return Fail_Flag(opened.error());
        const auto codec = Codec_Of(Image_File_Type(type));
        if (!codec) return Fail_Flag(codec.error());
        return (*codec)->Keeps_All(**found, opened->file) ? Flag_True : Flag_False;
    });
}
