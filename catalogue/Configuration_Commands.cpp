#include "catalogue/Configuration_Commands.h"

#include "catalogue/File_Dialogs.h"
#include "evaluate/Formula_Consent.h"
#include "frame/Configuration_File.h"
#include "frame/files/Regular_File.h"
#include "frame/text/Path_Utilities.h"

namespace {

const QString Extension = QStringLiteral("hvi");

std::vector<Formula::Named_Formula> Formulas_Of(const Program_State& state)
{
    std::vector<Formula::Named_Formula> formulas;
    for (const Name_Value_List* list : {&state.Rename_Formulas, &state.File_Data_Formulas})
        for (int index = 1; index <= list->Count(); ++index)
            formulas.push_back({(*list)[index].Name, (*list)[index].Value});
    return formulas;
}

} // namespace

bool Read_Configuration_File(Program_State& state, User_Dialogs& dialogs, Settings_Map& settings, const QString& folder)
{
    QString file;
    if (!Open_File_Dialog(dialogs, folder, state.Last_Configuration_File, Extension,
                          QStringLiteral("Halvine - Open Configuration File"), file))
        return false;
    state.Last_Configuration_File = file;
    const QString path = Existing_Path(file);
    bool cancelled = false;
    Formula::Formula_Consent consent(dialogs, settings);
    const auto ask = [&](const Program_State& read) {
        cancelled = !consent.Ask_About(Formulas_Of(read));
        return !cancelled;
    };
    if (Load_Configuration_File(state, path, ask)) return true;
    // One that cannot be opened ends the command in silence; a wrong or damaged one would only seem to be in force.
    if (!cancelled && Regular_File::Open(File_System_Bytes(path)))
        dialogs.Refuse(file +
                       QStringLiteral(": is no configuration file, or is damaged. What could be read of it is in "
                                      "force."));
    return false;
}

bool Write_Configuration_File(Program_State& state, User_Dialogs& dialogs, const QString& folder)
{
    QString file;
    if (!Save_File_Dialog(dialogs, folder, state.Last_Configuration_File, Extension,
                          QStringLiteral("Halvine - Save Configuration File"), file))
        return false;
    state.Last_Configuration_File = file;
    const auto stored = Store_Configuration_File(state, file);
    if (!stored) dialogs.Refuse(QString::fromStdString(stored.error().text));
    return stored.has_value();
}
