// The commands that make picture files out of nothing, the clipboard, or a grey picture.

#include "catalogue/Catalogue_Commands.h"
#include "catalogue/File_Confirmation.h"
#include "catalogue/New_Image_Size.h"
#include "catalogue/Save_Qualifier.h"
#include "frame/text/Text_Utilities.h"

namespace {

QString Extension_Of_Type(int type)
{
    return type == int(Image_File_Type::TIFF) ? QStringLiteral("tif") : QStringLiteral("jpg");
}

} // namespace

void Catalogue_Commands::Save_New_Image(Bitmap_Handle bitmap, const QString& caption, const QString& folder,
                                        const QString& name)
{
    const QStringList picked = Dialogs().Pick(
        {.caption = caption, .folder = folder, .name = name, .pattern = form_.State().Default_Extensions});
    if (picked.isEmpty() || picked.front().isEmpty()) return;
    const Qualified_Name target = Split_Qualifier(picked.front());
    File_Contents contents;
    int type = int(Image_File_Type::JPEG);
    Parse_Save_Qualifier(target.name, target.qualifier, type, contents.quality);
    const QString path = With_Default_Extension(target.name, Extension_Of_Type(type));
    if (!Confirm_Writable(Dialogs(), path, QStringLiteral("overwrite"), true) || !Confirm_Overwrite(Dialogs(), path))
        return;
    if (!Save_Bitmap(bitmap, path, type, contents))
        Dialogs().Refuse(QStringLiteral("Error saving picture to %1\r\n%2").arg(path, Last_Image_Error()));
}

void Catalogue_Commands::Create_Empty_Image()
{
    const auto answer =
        Dialogs().Input({.prompt = QStringLiteral("Enter image width and height in pixels, spearated by a comma."),
                         .title = QStringLiteral("Halvine Create Empty Image File"),
                         .text = {}});
    if (!answer || answer->trimmed().isEmpty()) return;
    const auto size = New_Image_Size(*answer);
    if (!size) {
        Dialogs().Refuse(QStringLiteral("Image width and height must be whole numbers of at least 1."));
        return;
    }
    const Owned_Bitmap bitmap(New_White_Bitmap(*size));
    if (!bitmap) {
        Dialogs().Refuse(Last_Image_Error());
        return;
    }
    Save_New_Image(bitmap.Get(), QStringLiteral("Halvine - Save Empty Image As"), form_.Return_Explorer_Path(), {});
}

void Catalogue_Commands::Save_Clipboard_Image()
{
    const Owned_Bitmap bitmap(host_.Clipboard_Bitmap());
    if (!bitmap) {
        Dialogs().Refuse(QStringLiteral("The clipboard holds no image."));
        return;
    }
    Save_New_Image(bitmap.Get(), QStringLiteral("Halvine - Save Image As"), form_.Return_Explorer_Path(), {});
}

void Catalogue_Commands::Convert_Grayscale_Image()
{
    for (const int key : Keys_For(false, Select_Access::Shared)) {
        const Picture_Item* item = form_.State().pictures.Find(key);
        if (item == nullptr) continue; // a question lets events run
        const Owned_Bitmap grey(form_.Return_Picture(key, 0, 1));
        const Owned_Bitmap color(grey ? Count_Bitmap(Create_RGB_From_Grayscale_Bitmap_CPP(grey.Get())) : 0);
        if (!color) {
            Dialogs().Refuse(QStringLiteral("%1 can't be converted, %2.")
                                 .arg(item->File_Name, grey ? Last_Image_Error() : Last_Load_Error()));
            continue;
        }
        const QString name =
            Base_Name_Part(item->File_Name) + QStringLiteral("-.") + Extension_Of_Type(item->File_Type);
        Save_New_Image(color.Get(), QStringLiteral("Halvine - Save RGB Image As"), item->Path, name);
    }
}
