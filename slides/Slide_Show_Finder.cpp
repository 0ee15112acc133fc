#include "slides/Slide_Show_Finder.h"

#include "frame/text/Path_Utilities.h"

namespace {

bool Exists(const QString& path)
{
    return Test_File_Exists(path, /*raise_error=*/false).value_or(0) == 1;
}

QString Joined(const QString& folder, const QString& name)
{
    return With_Trailing_Separator(folder) + name;
}

bool Is_Relative(const QString& name)
{
    return !name.startsWith(u'/') && !name.startsWith(u'\\') && !name.mid(1, 1).startsWith(u':');
}

} // namespace

Slide_Show_Finder::Slide_Show_Finder(const QString& show_file) : own_folder_(Folder_Part(show_file)) {}

void Slide_Show_Finder::Set_Folder(const QString& folder)
{
    named_folder_ = folder;
}

bool Slide_Show_Finder::Is_Below_Folder(const QString& name)
{
    return name.startsWith(QLatin1String(".\\")) || name.startsWith(QLatin1String("./"));
}

QString Slide_Show_Finder::Bare_Name(const QString& name)
{
    return Is_Below_Folder(name) ? name.mid(2) : name;
}

QString Slide_Show_Finder::Find_In(const QString& folder, const QString& name)
{
    if (folder.isEmpty()) return {};
    const QString path = Joined(folder, Bare_Name(name));
    if (!Exists(path)) return {};
    last_folder_ = folder;
    return Existing_Path(path);
}

QString Slide_Show_Finder::Find(const QString& name)
{
    if (!Is_Below_Folder(name) && !Is_Relative(name)) return Exists(name) ? Existing_Path(name) : QString();
    for (const QString& folder : {last_folder_, own_folder_, named_folder_})
        if (const QString found = Find_In(folder, name); !found.isEmpty()) return found;
    return {};
}

void Slide_Show_Finder::Remember(const QString& found)
{
    last_folder_ = Folder_Part(found);
}
