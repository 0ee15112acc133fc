#include "catalogue/Recover_Folder.h"

#include "frame/files/Folder_Recovery.h"
#include "frame/text/Path_Utilities.h"
#include "imaging/Brennick_Image_Utilities.h"

namespace {

QString Name_Of(const std::string& path)
{
    return Path_From_Bytes(QByteArray::fromStdString(path));
}

bool Holds_A_Picture(const std::string& path)
{
    File_Dimensions facts;
    return Get_Dimensions(Name_Of(path), 0, facts);
}

} // namespace

QStringList Recover_Folder(Platform& platform, const QString& folder)
{
    const Folder_Recovery recovery{
        .is_whole = Holds_A_Picture,
        .to_trash = [&](const std::string& path) { return platform.shell.Move_To_Trash(Name_Of(path), nullptr); },
        .now = platform.clock.Now().toSecsSinceEpoch()};
    QStringList names;
    for (const std::string& path : recovery.Run(File_System_Bytes(folder))) names << Name_Of(path);
    return names;
}
