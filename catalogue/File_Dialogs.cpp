#include "catalogue/File_Dialogs.h"

#include "catalogue/File_Confirmation.h"
#include "frame/text/Path_Utilities.h"

namespace {

QString Asked_Name(User_Dialogs& dialogs, const QString& folder, const QString& standard, const QString& extension,
                   const QString& caption, Picker_Question::Kind kind)
{
    const QStringList picked = dialogs.Pick({.caption = caption,
                                             .folder = standard.isEmpty() ? folder : Folder_Part(standard),
                                             .name = Name_Part(standard),
                                             .pattern = QStringLiteral("*.") + extension,
                                             .kind = kind});
    if (picked.isEmpty() || picked.front().isEmpty()) return {};
    return With_Default_Extension(picked.front(), extension);
}

} // namespace

bool Open_File_Dialog(User_Dialogs& dialogs, const QString& folder, const QString& Default_Name,
                      const QString& Extension, const QString& Caption, QString& File_Name)
{
    const QString name =
        Asked_Name(dialogs, folder, Default_Name, Extension, Caption, Picker_Question::Kind::Open_File);
    if (name.isEmpty() || Test_File_Exists(name, /*raise_error=*/false).value_or(0) != 1) return false;
    File_Name = name;
    return true;
}

bool Save_File_Dialog(User_Dialogs& dialogs, const QString& folder, const QString& Default_Name,
                      const QString& Extension, const QString& Caption, QString& File_Name)
{
    const QString name =
        Asked_Name(dialogs, folder, Default_Name, Extension, Caption, Picker_Question::Kind::Save_File);
    if (name.isEmpty() || !Confirm_Writable(dialogs, name, QStringLiteral("overwrite"), true)) return false;
    if (name != Default_Name && !Confirm_Overwrite(dialogs, name)) return false;
    File_Name = name;
    return true;
}
