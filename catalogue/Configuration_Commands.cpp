#include "catalogue/Configuration_Commands.h"

#include "catalogue/File_Dialogs.h"
#include "evaluate/Formula_Consent.h"
#include "frame/Configuration_File.h"
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
    Formula::Formula_Consent consent(dialogs, settings);
    return Load_Configuration_File(state, Existing_Path(file),
                                   [&](const Program_State& read) { return consent.Ask_About(Formulas_Of(read)); });
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
