// hv rename: prints the new names, renames, or copies under the new names. Rules, plan and journal are those of the window.

#include "evaluate/System_Host.h"
#include "frame/Qt_Settings.h"
#include "frame/Settings_Store.h"
#include "frame/command/Command_Line.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Stored_Pictures.h"
#include "frame/command/Terminal.h"
#include "frame/files/Copy_File.h"
#include "frame/text/Text_Utilities.h"
#include "rename/Rename_Journal_Folder.h"
#include "rename/Rename_Preview.h"
#include "rename/Rename_Rows.h"

#include <QtCore/QFileInfo>

namespace {

// The options.
const QString From = QStringLiteral("from");
const QString To = QStringLiteral("to");
const QString Pattern = QStringLiteral("pattern");
const QString Formula_Text = QStringLiteral("formula");
const QString Formula_Name = QStringLiteral("formula-name");
const QString Allow_Formula = QStringLiteral("allow-formula");
const QString Type = QStringLiteral("type");
const QString Start = QStringLiteral("start");
const QString Reserialize = QStringLiteral("reserialize");
const QString Interval = QStringLiteral("interval");
const QString Execute = QStringLiteral("execute");
const QString Copy_To = QStringLiteral("copy-to");
const QString Take_Back = QStringLiteral("take-back");

void Add_Options(Command_Line& line)
{
    line.Add_Value(From, QStringLiteral("What the names begin with."), QStringLiteral("TEXT"));
    line.Add_Value(To, QStringLiteral("What takes its place."), QStringLiteral("TEXT"));
    line.Add_Flag(Pattern, QStringLiteral("The text of --from is a pattern of * ? # [ ]."));
    line.Add_Value(Formula_Text, QStringLiteral("A formula gives the names."), QStringLiteral("TEXT"));
    line.Add_Value(Formula_Name, QStringLiteral("The rename formula of this name in the program's list gives them."),
                   QStringLiteral("NAME"));
    line.Add_Value(Allow_Formula, QStringLiteral("What the named formula may read: files,environment,settings."),
                   QStringLiteral("LIST"));
    line.Add_Value(Type, QStringLiteral("The extension of all new names."), QStringLiteral("EXT"));
    line.Add_Value(Start, QStringLiteral("The first number; 001 makes three digits."), QStringLiteral("N"));
    line.Add_Flag(Reserialize, QStringLiteral("Number all files anew, from the first number on."));
    line.Add_Value(Interval, QStringLiteral("From one number to the next, 1 without it."), QStringLiteral("N"));
    line.Add_Flag(Execute, QStringLiteral("Rename the files."));
    line.Add_Value(Copy_To, QStringLiteral("Copy the files into FOLDER under their new names."),
                   QStringLiteral("FOLDER"));
    line.Add_Flag(Take_Back, QStringLiteral("Give the files of the last rename their old names; alone."));
}

/// Names in it may be any bytes.
QString Text_Of(const std::string& bytes)
{
    return Path_From_Bytes(QByteArray::fromStdString(bytes));
}

/// The formula of the program's list, with the built-in ones where the user has none of his own.
std::optional<Chosen_Formula> Formula_From_List(const QString& name)
{
    Program_State state;
    Qt_Settings settings;
    Read_Settings_String(state, Read_Stored_Value(settings, Settings_Value));
    Complete_Empty_Lists(state);
    for (int i = 1; i <= state.Rename_Formulas.Count(); ++i)
        if (Equal_Without_Case(state.Rename_Formulas[i].Name, name))
            return Chosen_Formula{.name = state.Rename_Formulas[i].Name, .text = state.Rename_Formulas[i].Value};
    return {};
}

/// False, with a complaint, when the options contradict one another or hold no numbers.
bool Check_Options(const Command_Line& line)
{
    QString fault;
    for (const QString& name : {From, To})
        if (!line.Has(name)) fault = QStringLiteral("--%1 is missing").arg(name);
    for (const QString& name : {Start, Interval})
        if (line.Has(name) && !Long_From_Text(line.Value(name)))
            fault = QStringLiteral("--%1 takes a whole number").arg(name);
    if (line.Has(Formula_Text) && line.Has(Formula_Name))
        fault = QStringLiteral("--formula and --formula-name exclude each other");
    if (line.Has(Execute) && line.Has(Copy_To)) fault = QStringLiteral("--execute and --copy-to exclude each other");
    if (line.Has(Interval) && !line.Has(Reserialize)) fault = QStringLiteral("--interval goes with --reserialize");
    if (line.Has(Copy_To) && !QFileInfo(line.Value(Copy_To)).isDir())
        fault = QStringLiteral("%1 is no folder").arg(line.Value(Copy_To));
    if (!fault.isEmpty()) line.Complain(fault);
    return fault.isEmpty();
}

/// Nothing, with a complaint, when there is no such formula.
std::optional<Rename_Inputs> Inputs_Of(const Command_Line& line)
{
    Rename_Inputs inputs{.change_from = line.Value(From),
                         .change_to = line.Value(To),
                         .pattern_mode = line.Has(Pattern),
                         .file_type = line.Value(Type),
                         .reserialize = line.Has(Reserialize),
                         .reserialize_interval = line.Value(Interval)};
    const auto granted = Formula::Access_From_List(line.Value(Allow_Formula));
    if (line.Has(Allow_Formula) && !granted) {
        line.Complain(QStringLiteral("--allow-formula knows files, environment and settings"));
        return {};
    }
    if (line.Has(Formula_Text))
        inputs.formula = Chosen_Formula{
            .name = Formula_Text, .text = line.Value(Formula_Text), .allowed_access = Formula::Typed_Access};
    if (!line.Has(Formula_Name)) return inputs;
    inputs.formula = Formula_From_List(line.Value(Formula_Name));
    if (!inputs.formula) {
        line.Complain(QStringLiteral("there is no rename formula \"%1\"").arg(line.Value(Formula_Name)));
        return {};
    }
    if (line.Has(Allow_Formula)) inputs.formula->allowed_access |= *granted;
    return inputs;
}

/// The files that are there; the others are told.
struct Named_Files {
    QStringList given;
    std::vector<Rename_Row> rows;
    Exit_Status status = Exit_Status::All_Done;
};

Named_Files Read_Files(const QStringList& files, bool recover)
{
    Named_Files named;
    Progress_Line progress;
    for (const QString& file : files) {
        if (recover) Recover_Folder_Of(file);
        progress.Show(int(named.rows.size()) + 1, int(files.size()), file);
        if (System_Rename_Files().Find(File_System_Bytes(file))) {
            named.given << file;
            named.rows.push_back(Row_Of_File(Absolute_Path(file)));
        } else {
            Print_Message(file, QStringLiteral("there is no such file"));
            named.status = Exit_Status::Some_Failed;
        }
    }
    return named;
}

void Print_Names(const QStringList& given, const std::vector<Rename_Row>& rows, bool as_json)
{
    for (qsizetype i = 0; i < given.size(); ++i) {
        const Rename_Row& row = rows[std::size_t(i)];
        const QString name = row.Final_Name() == row.file_name ? QString() : row.Final_Name();
        if (as_json)
            Print_Json({{QStringLiteral("file"), given[i]}, {QStringLiteral("new_name"), name}});
        else
            Print_Line(given[i] + u'\t' + name);
    }
}

bool Print_Faults(const std::vector<Rename_Fault>& faults, const QStringList& given)
{
    for (const Rename_Fault& fault : faults) Print_Message(given[qsizetype(fault.move)], Text_Of(fault.reason));
    return !faults.empty();
}

Exit_Status Copy_Files(const Named_Files& named, const std::vector<Rename_Move>& moves, const std::string& folder)
{
    Progress_Line progress;
    Exit_Status status = named.status;
    for (std::size_t i = 0; i < moves.size() && !Is_Interrupted(); ++i) {
        progress.Show(int(i) + 1, int(moves.size()), named.given[qsizetype(i)]);
        const auto copied = Copy_Whole_File(moves[i].folder + moves[i].old_name, folder + moves[i].new_name,
                                            {.when_taken = When_Taken::Refuse});
        if (copied) continue;
        Print_Message(named.given[qsizetype(i)], Text_Of(copied.error().text));
        status = Exit_Status::Some_Failed;
    }
    if (!Is_Interrupted()) return status;
    Print_Message({}, QStringLiteral("interrupted"));
    return Exit_Status::Some_Failed;
}

Exit_Status Carry_Out(const Command_Line& line, const Named_Files& named, const std::vector<Rename_Row>& rows)
{
    System_Rename_Files files;
    const auto moves = Moves_Of(rows);
    if (line.Has(Copy_To)) {
        const std::string folder = File_System_Bytes(With_Trailing_Separator(Absolute_Path(line.Value(Copy_To))));
        if (Print_Faults(Check_Copies(files, moves, folder), named.given)) return Exit_Status::Some_Failed;
        return Copy_Files(named, moves, folder);
    }
    const Rename_Plan plan(files, moves);
    if (Print_Faults(plan.Faults(), named.given)) return Exit_Status::Some_Failed;
    if (!line.Has(Execute)) return named.status;
    Rename_Journal_Folder journal(Standard_Journal_Folder());
    const auto done = Run_Plan(plan, files, journal);
    if (!done) Print_Message({}, Text_Of(done.error().text));
    return done ? named.status : Exit_Status::Some_Failed;
}

/// False, with a complaint, when all files are to be numbered and nobody says from where on. Numbers that nothing gets are
/// told as well: without any in the names there are none to move to another start.
bool Check_Numbers(const Command_Line& line, const Rename_Job& job)
{
    if (job.Start_Numbering_Enabled() || !Preview_Of(job.Rows()).Has_New_Names()) return true;
    if (line.Has(Start) && !line.Has(Reserialize))
        Print_Message({},
                      QStringLiteral("rename: --start has no effect, for no name holds a number; --reserialize numbers "
                                     "all files"));
    if (!line.Has(Reserialize) || line.Has(Start)) return true;
    line.Complain(QStringLiteral("--reserialize needs --start, for no name holds a number to begin with"));
    return false;
}

void Put_Interrupted_Right()
{
    System_Rename_Files files;
    for (const std::string& text : Rename_Journal_Folder(Standard_Journal_Folder()).Put_Interrupted_Right(files))
        Print_Message({}, Text_Of(text));
}

Exit_Status Take_Last_Back(const QStringList& arguments)
{
    Command_Line line("rename", Command_Line::Takes::Nothing_More);
    line.Add_Flag(Take_Back, QStringLiteral("Give the files of the last rename their old names."));
    if (const auto end = line.Parse(arguments)) return *end;
    Put_Interrupted_Right();
    System_Rename_Files files;
    Rename_Journal_Folder journal(Standard_Journal_Folder());
    const auto back = Take_Back_Last_Rename(journal, files);
    if (!back) {
        Print_Message({}, Text_Of(back.error().text));
        return Exit_Status::Some_Failed;
    }
    if (*back == 0) Print_Message({}, QStringLiteral("there is no rename to take back"));
    return *back == 0 ? Exit_Status::Some_Failed : Exit_Status::All_Done;
}

} // namespace

Exit_Status Run_Rename_Command(const QStringList& arguments)
{
    if (arguments.contains(QStringLiteral("--") + Take_Back)) return Take_Last_Back(arguments);
    Command_Line line("rename", Command_Line::Takes::Files);
    Add_Options(line);
    if (const auto end = line.Parse(arguments)) return *end;
    if (!Check_Options(line)) return Exit_Status::Wrong_Usage;
    const auto inputs = Inputs_Of(line);
    if (!inputs) return Exit_Status::Wrong_Usage;
    if (line.Has(Execute)) Put_Interrupted_Right();

    const Named_Files named = Read_Files(line.Files(), line.Has(Execute));
    Qt_Settings settings;
    Formula::System_Host host(&settings);
    Rename_Job job(host, named.rows);
    job.Set_Inputs(*inputs);
    if (line.Has(Start)) {
        Rename_Inputs typed = job.Inputs();
        typed.start_numbering = line.Value(Start);
        job.Set_Inputs(typed);
    }
    if (const auto& fault = job.Fault()) {
        Print_Message({}, QStringLiteral("error %1: %2 (at character position %3)")
                              .arg(QString::number(fault->code), fault->description, QString::number(fault->position)));
        return Exit_Status::Some_Failed;
    }
    if (!Check_Numbers(line, job)) return Exit_Status::Wrong_Usage;
    Print_Names(named.given, job.Rows(), line.Wants_Json());
    return Carry_Out(line, named, job.Rows());
}
