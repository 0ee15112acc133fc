#include "frame/Program_State.h"

void Name_Value_List::Reset()
{
    entries_.assign(1, {QStringLiteral("(none)"), QString()});
}

const Name_Value_Pair& Name_Value_List::operator[](int index) const
{
    return entries_[index >= 0 && index <= Count() ? std::size_t(index) : 0];
}

void Reset_Formula_Lists(Program_State& state)
{
    state.Rename_Patterns.Reset();
    state.Rename_Formulas.Reset();
    state.File_Data_Formulas.Reset();
}

void Complete_Empty_Lists(Program_State& state)
{
    if (state.Rename_Formulas.Count() == 0) {
        state.Rename_Formulas.Append(
            {QStringLiteral("Subject-Date-Serial"),
             QStringLiteral("ChangeTo & \"-\" & Format(FileDate, \"yyyymmdd\")  & \"-\" & FileSerial")});
        state.Rename_Formulas.Append(
            {QStringLiteral("Strip Suffix"), QStringLiteral("Left(FileName, IIf((InStrRev(FileName, \"-\") > 0), "
                                                            "(InStrRev(FileName, \"-\") - 1), Len(FileName)))")});
    }
    if (state.File_Data_Formulas.Count() == 0) {
        state.File_Data_Formulas.Append({QStringLiteral("FileName"), QStringLiteral("FileName")});
        state.File_Data_Formulas.Append(
            {QStringLiteral("FileName (FileDate)"),
             QStringLiteral("FileName & \" (\" & Format(FileDate, \"mmm d, yyyy\")  & \")\"")});
        state.File_Data_Formulas.Append({QStringLiteral("FileDescription"), QStringLiteral("FileDescr")});
    }
}
