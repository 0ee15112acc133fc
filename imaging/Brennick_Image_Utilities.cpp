#include "imaging/Brennick_Image_Utilities.h"

#include "frame/text/Text_Utilities.h"

#include <atomic>
#include <string>

namespace {

std::atomic<int> live_bitmaps = 0;
thread_local QString last_load_error;

// More than any text that is stored here may have: one that another program made longer is not cut in silence, the save
// that would lose it is refused.
constexpr int Text_Buffer_Bytes = 1 << 17;

/// The bytes that one of the library's text functions gives; empty when it fails.
template <class Byte, class Reader>
QByteArray Bytes_Of_File(Reader reader, const QString& path, int type)
{
    constexpr int size = Text_Buffer_Bytes;
    QByteArray buffer(size, '\0');
    std::int32_t length = 0;
    if (!reader(File_System_Bytes(path), type, reinterpret_cast<Byte*>(buffer.data()), size, &length)) return {};
    if (length >= 0) buffer.truncate(std::min(length, size)); // a negative length means that the whole buffer is filled
    return buffer;
}

} // namespace

int Bitmap_Count()
{
    return live_bitmaps;
}

Bitmap_Handle Count_Bitmap(Bitmap_Handle created)
{
    if (created != 0) ++live_bitmaps;
    return created;
}

void Delete_Bitmap(Bitmap_Handle bitmap)
{
    if (bitmap != 0 && Delete_Bitmap_CPP(bitmap)) --live_bitmaps;
}

Pixel_Size Size_Of_Bitmap(Bitmap_Handle bitmap)
{
    Bitmap_Facts facts;
    if (!Get_Bitmap_Facts_CPP(bitmap, &facts)) return {};
    return {facts.width, facts.height};
}

QString Last_Image_Error()
{
    char buffer[1024] = {};
    std::int32_t length = 0;
    Get_Last_Image_Error_String(buffer, sizeof buffer, &length);
    const auto used = length < 0 ? qsizetype(sizeof buffer) : std::min(qsizetype(length), qsizetype(sizeof buffer));
    return QString::fromUtf8(buffer, used);
}

const QString& Last_Load_Error()
{
    return last_load_error;
}

Bitmap_Handle Load_Bitmap(const QString& path, int type, int scale_divisor, int rotation)
{
    const Bitmap_Handle loaded =
        Count_Bitmap(Load_Bitmap_From_File(File_System_Bytes(path), type, scale_divisor, rotation));
    last_load_error = loaded == 0 ? Last_Image_Error() : QString();
    return loaded;
}

Bitmap_Handle Flip_Bitmap(Bitmap_Handle source, int mode)
{
    if (mode != 1 && mode != 2) return 0;
    return Count_Bitmap(Create_Flipped_Bitmap_CPP(source, mode == 1 ? Flag_True : Flag_False));
}

Bitmap_Handle Crop_Bitmap(Bitmap_Handle source, int left, int top, int width, int height)
{
    return Count_Bitmap(Create_Cropped_Bitmap_CPP(source, left + 1, top + 1, width, height));
}

Bitmap_Handle Copy_Bitmap(Bitmap_Handle source)
{
    return Count_Bitmap(Create_Bitmap_Copy_CPP(source));
}

Bitmap_Handle Rotate_Bitmap(Bitmap_Handle source, int degrees)
{
    const int normal = ((degrees % 360) + 360) % 360;
    if (normal == 0) return Copy_Bitmap(source);
    if (normal % 90 == 0) return Count_Bitmap(Create_Rectilinearly_Rotated_Bitmap_CPP(source, normal));
    return Count_Bitmap(Create_Arbitrarily_Rotated_Bitmap_CPP(source, float(normal)));
}

int File_Type_From_Signature(const QString& path)
{
    return Get_Image_File_Type_From_Signature(File_System_Bytes(path));
}

bool Get_Dimensions(const QString& path, int type, File_Dimensions& dimensions)
{
    return Get_File_Dimensions(File_System_Bytes(path), type, &dimensions.width, &dimensions.height,
                               &dimensions.pixel_depth, &dimensions.horizontal_dpi, &dimensions.vertical_dpi) != 0;
}

QString Get_Comment(const QString& path, int type)
{
    return QString::fromUtf8(Bytes_Of_File<char>(Get_File_Comment, path, type));
}

QString Get_Image_Script(const QString& path, int type)
{
    return QString::fromUtf8(Bytes_Of_File<char>(Get_File_Image_Script, path, type));
}

bool Image_Script_Is_Readable(const QString& path, int type)
{
    return Get_File_Image_Script(File_System_Bytes(path), type, nullptr, 0, nullptr) != 0;
}

QByteArray Get_EXIF_Data(const QString& path, int type)
{
    return Bytes_Of_File<unsigned char>(Get_File_EXIF_Data, path, type);
}

bool Save_Bitmap(Bitmap_Handle bitmap, const QString& path, int type, const File_Contents& contents)
{
    std::int32_t parent_quality = -1; // only the library's own decision
    return Save_Bitmap_To_File(bitmap, File_System_Bytes(path), type, contents.comment.toStdString(),
                               contents.script.toStdString(), File_System_Bytes(contents.parent), contents.quality,
                               contents.horizontal_dpi, contents.vertical_dpi, &parent_quality) != 0;
}

bool Save_Texts_Of_File(const QString& path, const File_Contents& contents)
{
    return Save_File_Texts(File_System_Bytes(path), 0, contents.comment.toStdString(), contents.script.toStdString(),
                           File_System_Bytes(contents.parent), contents.horizontal_dpi, contents.vertical_dpi) != 0;
}
