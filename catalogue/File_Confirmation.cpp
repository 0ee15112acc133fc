#include "catalogue/File_Confirmation.h"

#include "frame/text/Path_Utilities.h"

#include "frame/files/Regular_File.h"

#include <QtCore/QFileInfo>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Empty when it worked, else the system's error text.
QString Clear_Read_Only(const QString& path)
{
    const std::string name = File_System_Bytes(path);
    struct stat facts {};
    if (stat(name.c_str(), &facts) != 0 || chmod(name.c_str(), (facts.st_mode & 07777) | S_IWUSR) != 0)
        return QString::fromStdString(System_Error_Text(errno));
    if (access(name.c_str(), W_OK) != 0) return QString::fromStdString(System_Error_Text(errno));
    return {};
}

} // namespace

bool Confirm_Writable(User_Dialogs& dialogs, const QString& path, const QString& verb, bool ask)
{
    const QFileInfo facts(path);
    if (!facts.exists()) return true;
    if (facts.isDir()) {
        dialogs.Refuse(path + QStringLiteral(" is a directory."));
        return false;
    }
    if (access(File_System_Bytes(path).c_str(), W_OK) == 0) return true;
    if (!ask) return false;
    const Message question{.text = path + QStringLiteral(" is Read-only, do you wish to ") + verb + QLatin1Char('?'),
                           .buttons = Message_Buttons::Yes_No,
                           .standard = Message_Answer::No,
                           .icon = Message_Icon::Question};
    if (dialogs.Ask(question) != Message_Answer::Yes) return false;
    const QString failure = Clear_Read_Only(path);
    if (!failure.isEmpty()) dialogs.Refuse(failure);
    return failure.isEmpty();
}

bool Confirm_Overwrite(User_Dialogs& dialogs, const QString& path)
{
    if (!QFileInfo::exists(path)) return true;
    return dialogs.Confirm(path + QStringLiteral(" already exists, do you wish to overwrite?"));
}

bool Confirm_Overwrite_Originals(User_Dialogs& dialogs)
{
    return dialogs.Confirm(QStringLiteral("This will overwrite (modify) your original(s), are you sure?"));
}

bool Is_Same_File(const QString& left, const QString& right)
{
    if (left == right) return true;
    const auto a = Identity_Of(File_System_Bytes(left));
    const auto b = Identity_Of(File_System_Bytes(right));
    return a && b && a->device == b->device && a->inode == b->inode;
}
