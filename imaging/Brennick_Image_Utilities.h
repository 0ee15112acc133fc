#pragma once

#include "bkimgutl/bkimgutl.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <utility>

/// The application's side of the pixel library: paths and texts as QString, and a count of the live bitmaps. Every
/// creation and release of a bitmap goes through here; a count other than 0 at the end is a leak. Threads may work on
/// bitmaps of their own; each has its own last errors.

int Bitmap_Count();

/// Counts a bitmap that a kernel function created; passes 0 on.
Bitmap_Handle Count_Bitmap(Bitmap_Handle created);

/// Releases a bitmap; 0 is ignored.
void Delete_Bitmap(Bitmap_Handle bitmap);

/// A bitmap that is released when it goes out of scope.
class Owned_Bitmap {
public:
    Owned_Bitmap() = default;
    explicit Owned_Bitmap(Bitmap_Handle bitmap) : bitmap_(bitmap) {}
    Owned_Bitmap(Owned_Bitmap&& other) noexcept : bitmap_(other.Release()) {}
    Owned_Bitmap& operator=(Owned_Bitmap&& other) noexcept
    {
        Reset(other.Release());
        return *this;
    }
    ~Owned_Bitmap() { Delete_Bitmap(bitmap_); }

    Bitmap_Handle Get() const { return bitmap_; }
    explicit operator bool() const { return bitmap_ != 0; }
    Bitmap_Handle Release() { return std::exchange(bitmap_, 0); } ///< the caller owns it now
    void Reset(Bitmap_Handle bitmap = 0) { Delete_Bitmap(std::exchange(bitmap_, bitmap)); }

private:
    Bitmap_Handle bitmap_ = 0;
};

struct Pixel_Size {
    int width = 0;
    int height = 0;
    bool operator==(const Pixel_Size&) const = default;
};

/// 0 x 0 on a bad handle.
Pixel_Size Size_Of_Bitmap(Bitmap_Handle bitmap);

/// The reason of the last failure in the library.
QString Last_Image_Error();

/// The reason of the last failed Load_Bitmap, kept for the message whatever the library does since.
const QString& Last_Load_Error();

/// A new bitmap, or 0. Type 0 asks the signature; rotation in degrees counterclockwise.
Bitmap_Handle Load_Bitmap(const QString& path, int type, int scale_divisor, int rotation);

/// Mode 1 mirrors left to right, mode 2 top to bottom; any other gives 0 without asking the library.
Bitmap_Handle Flip_Bitmap(Bitmap_Handle source, int mode);

/// left and top are 0-based here, unlike in the library.
Bitmap_Handle Crop_Bitmap(Bitmap_Handle source, int left, int top, int width, int height);

Bitmap_Handle Copy_Bitmap(Bitmap_Handle source);

/// Degrees counterclockwise; multiples of 90 turn exactly, 0 copies.
Bitmap_Handle Rotate_Bitmap(Bitmap_Handle source, int degrees);

/// A file's facts; type 0 asks the signature.
struct File_Dimensions {
    int width = 0;
    int height = 0;
    int pixel_depth = 0;
    int horizontal_dpi = -1;
    int vertical_dpi = -1;
};
int File_Type_From_Signature(const QString& path);
bool Get_Dimensions(const QString& path, int type, File_Dimensions& dimensions);

/// Empty when the file has none, or cannot be read. An entry that fills the whole buffer is taken as it stands.
QString Get_Comment(const QString& path, int type);
QString Get_Image_Script(const QString& path, int type);

/// False when a script stands in the file and cannot be read, with the reason in Last_Image_Error.
bool Image_Script_Is_Readable(const QString& path, int type);
QByteArray Get_EXIF_Data(const QString& path, int type);

/// What a saved file holds besides the pixels.
struct File_Contents {
    QString comment;
    QString script;
    QString parent; ///< path of the file whose camera block and foreign data go along; may be empty
    int quality = Quality_Of_Parent;
    int horizontal_dpi = -1;
    int vertical_dpi = -1;
};

/// True when the file stands, whole; otherwise Last_Image_Error tells why.
bool Save_Bitmap(Bitmap_Handle bitmap, const QString& path, int type, const File_Contents& contents);

/// Writes the picture of contents.parent to `path` with the texts and the resolution of `contents`, without decoding;
/// the type stays. See Save_File_Texts.
bool Save_Texts_Of_File(const QString& path, const File_Contents& contents);
