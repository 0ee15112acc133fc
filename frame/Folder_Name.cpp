#include "frame/Folder_Name.h"

#include "frame/files/Regular_File.h"
#include "frame/text/Path_Utilities.h"

#include <cerrno>
#include <sys/stat.h>

bool Is_Good_Folder_Name(const QString& name)
{
    const QString barred = QStringLiteral("\\/:*?\"<>|");
    return Is_Valid_File_Name(name) && !name.trimmed().isEmpty() &&
           std::none_of(name.begin(), name.end(), [&](QChar letter) { return barred.contains(letter); });
}

QString Folder_Name_Refusal(const QString& what, int number)
{
    QString text = what + QLatin1Char('\r');
    const bool told = number == 0 || number == EEXIST || number == EINVAL; // by the usual text
    if (!told) text += QString::fromStdString(System_Error_Text(number)) + QLatin1Char('\r');
    return text + QStringLiteral("A folder name can contain up to 255 characters,\r"
                                 "including spaces. It cannot contain the following\r"
                                 "characters: \\ / : * ? \" < > |");
}

std::optional<QString> Ask_For_Folder_Name(User_Dialogs& dialogs, const Input_Question& first,
                                           const std::function<QString(const QString& name)>& refusal)
{
    Input_Question question = first;
    for (;;) {
        const auto name = dialogs.Input(question);
        if (!name) return std::nullopt;
        const QString reason = refusal(*name);
        if (reason.isEmpty()) return *name;
        question.prompt =
            first.prompt + QLatin1Char('\r') + reason + QStringLiteral("\rOr press [Esc] or click cancel.");
        question.text = *name;
    }
}

std::optional<QString> Make_New_Folder(User_Dialogs& dialogs, const QString& parent)
{
    const auto make = [&](const QString& name) -> QString {
        const QString path = With_Trailing_Separator(parent) + name;
        int number = EINVAL;
        if (Is_Good_Folder_Name(name)) number = mkdir(File_System_Bytes(path).c_str(), 0777) == 0 ? 0 : errno;
        if (number == 0) return {};
        return Folder_Name_Refusal(QStringLiteral("Folder already exists or error in folder name."), number);
    };
    const auto name = Ask_For_Folder_Name(
        dialogs,
        {.prompt = QStringLiteral("Create new folder in folder:\r") + Without_Trailing_Separator(parent),
         .title = QStringLiteral("Halvine - Create New Folder")},
        make);
    if (!name) return std::nullopt;
    return With_Trailing_Separator(parent) + *name;
}
