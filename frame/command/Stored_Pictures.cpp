#include "frame/command/Stored_Pictures.h"

#include "catalogue/Recover_Folder.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Terminal.h"
#include "frame/text/Text_Utilities.h"

#include <QtCore/QDir>
#include <QtCore/QSet>

QString Absolute_Path(const QString& file)
{
    return file.startsWith(u'/') ? file : With_Trailing_Separator(QDir::currentPath()) + file;
}

void Recover_Folder_Of(const QString& file)
{
    static QSet<QString> recovered;
    const QString folder = Folder_Part(Absolute_Path(file));
    if (recovered.contains(folder)) return;
    recovered.insert(folder);
    Terminal_Platform platform(false);
    for (const QString& name : Recover_Folder(platform.platform, folder))
        Print_Message(name, QStringLiteral("was put back after an interrupted save"));
}

Result<Script_Item_Array> Stored_Items(const QString& file)
{
    const int type = File_Type_From_Signature(file);
    if (type == 0 || !Image_Script_Is_Readable(file, type)) return Image_Failure();
    Script_Item_Array items;
    const Script_Status status = Parse_Script_Items(Get_Image_Script(file, type), items);
    if (status != Script_Status::Complete) return Failure(Script_Status_Text(status).toStdString());
    return items;
}

Single_Picture::Single_Picture(const QString& file, bool overwrite) : platform_(overwrite)
{
    File_Dimensions facts;
    if (!Get_Dimensions(file, 0, facts)) return;
    key_ = form_.Return_Picture_Key(Absolute_Path(file), true);
    if (key_ != 0) form_.Set_Picture_Key_Selected(key_, true);
}

tl::unexpected<Error> Single_Picture::Refusal() const
{
    const QString& reason = platform_.dialogs.Reason();
    return reason.isEmpty() ? Image_Failure() : Failure(reason.toStdString());
}

Result<void> Change_Picture(const QString& file, bool overwrite, const std::function<bool(Single_Picture&)>& change)
{
    Recover_Folder_Of(file);
    Single_Picture picture(file, overwrite);
    if (!picture.Is_Picked() || !change(picture)) return picture.Refusal();
    return {};
}

Result<void> Store_Texts(const QString& file, const Stored_Texts& texts, bool overwrite)
{
    return Change_Picture(file, overwrite, [&](Single_Picture& picture) {
        if (texts.script && !picture.Form().Set_Picture_All_Script_Items(picture.Key(), *texts.script)) return false;
        if (texts.description) picture.Item().Description = *texts.description;
        return picture.Form().Saving().Save_Texts(picture.Key());
    });
}
