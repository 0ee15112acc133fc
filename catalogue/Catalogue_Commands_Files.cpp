// The commands on the files of pictures and on folders, from the menus and from the folder pane.

#include "catalogue/Catalogue_Commands.h"
#include "frame/text/Path_Utilities.h"

#include <QtCore/QFileInfo>

void Catalogue_Commands::Delete_Selected()
{
    files_.Delete_Selected();
    host_.Show_File_Changes();
}

void Catalogue_Commands::Copy_Selected()
{
    files_.Copy_Selected(form_.Return_Explorer_Path());
    host_.Show_File_Changes();
}

void Catalogue_Commands::Move_Selected()
{
    files_.Move_Selected(form_.Return_Explorer_Path());
    host_.Show_File_Changes();
}

void Catalogue_Commands::Make_Folder(const QString& parent)
{
    if (folders_.New_Folder(parent)) form_.Refresh_Folder_Tree(parent);
    host_.Show_File_Changes();
}

void Catalogue_Commands::Rename_Pane_Folder(const QString& folder)
{
    const QString pane = With_Trailing_Separator(form_.Return_Explorer_Path());
    const auto renamed = folders_.Rename_Folder(folder);
    if (!renamed) return;
    form_.Refresh_Folder_Tree(Folder_Part(*renamed));
    const QString old_path = With_Trailing_Separator(folder);
    if (pane.startsWith(old_path))
        host_.Go_To_Folder(Without_Trailing_Separator(With_Trailing_Separator(*renamed) + pane.mid(old_path.size())));
    host_.Show_File_Changes();
}

void Catalogue_Commands::Rename_Selected_Folder()
{
    const QStringList folders = host_.Selected_Folders();
    if (!folders.isEmpty()) Rename_Pane_Folder(folders.front());
}

void Catalogue_Commands::Copy_Selected_Folders()
{
    if (folders_.Copy_Folders(host_.Selected_Folders())) host_.Refresh_Folders();
}

void Catalogue_Commands::New_Folder_In(const QString& parent)
{
    Run_Unlisted([&] { Make_Folder(parent); });
}

void Catalogue_Commands::Rename_Folder(const QString& folder)
{
    Run_Unlisted([&] { Rename_Pane_Folder(folder); });
}

void Catalogue_Commands::Copy_Folder(const QString& folder)
{
    Run_Unlisted([&] {
        if (folders_.Copy_Folders({folder})) host_.Refresh_Folders();
    });
}

void Catalogue_Commands::Delete_Folder(const QString& folder)
{
    Run_Unlisted([&] {
        if (folders_.Delete_Folder(folder)) host_.Refresh_Folders();
    });
}

void Catalogue_Commands::Delete_Files(const QStringList& files)
{
    Run_Unlisted([&] {
        files_.Delete_Files(files);
        host_.Show_File_Changes();
    });
}

void Catalogue_Commands::Drop_Files(const QStringList& paths, const QString& folder, bool copy)
{
    Run_Unlisted([&] {
        QStringList files;
        for (const QString& path : paths) {
            if (QFileInfo(path).isDir())
                folders_.Drop_Folder(path, folder, copy);
            else
                files << path;
        }
        if (copy)
            files_.Copy_Files(files, folder);
        else
            files_.Move_Files(files, folder);
        if (files.size() < paths.size()) host_.Refresh_Folders();
        host_.Show_File_Changes();
    });
}

void Catalogue_Commands::Drop_Folder(const QString& source, const QString& target, bool copy)
{
    Run_Unlisted([&] {
        if (folders_.Drop_Folder(source, target, copy)) host_.Refresh_Folders();
    });
}
