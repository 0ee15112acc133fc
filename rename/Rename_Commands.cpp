#include "rename/Rename_Commands.h"

#include "catalogue/File_Confirmation.h"
#include "catalogue/Overwrite_Question.h"
#include "catalogue/Selection_For_Function.h"
#include "frame/files/Copy_File.h"
#include "frame/text/Text_Utilities.h"

#include <QtCore/QDir>
#include <QtCore/QSet>

namespace {

QString Text_Of(const std::string& bytes)
{
    return Path_From_Bytes(QByteArray::fromStdString(bytes));
}

QString Old_Path(const Rename_Move& move)
{
    return Text_Of(move.folder + move.old_name);
}

QString Take_Back_Question(const std::vector<Rename_Move>& moves, std::size_t renamed)
{
    return QStringLiteral("Do you wish to give the files of the last rename their old names, %1 of %2?\r\n%3 is to be "
                          "%4 again.")
        .arg(QString::number(moves.size()), QString::number(renamed), Old_Path(moves.front()),
             Text_Of(moves.front().new_name));
}

} // namespace

/// The files of one command, with what was decided about them.
struct Rename_Commands::Batch {
    std::vector<Rename_Move> moves;
    std::set<std::string> given_up; ///< targets whose present files the user gives up
};

void Rename_Commands::Bring_To(Catalogue_Commands& commands)
{
    commands.Set_Handler({Menu::File, 201}, [this] { Copy_Rename_Selected(); });
    commands.Set_Handler({Menu::Rename, 101}, [this] { parts_.dialogs.Rename_Pattern_Dialog(); });
    commands.Set_Handler({Menu::Rename, 102}, [this] { parts_.dialogs.Rename_Formula_Dialog(); });
    commands.Set_Handler({Menu::Rename, 201}, [this] { Copy_Rename_Selected(); });
    commands.Set_Handler({Menu::Rename, 202}, [this] { Rename_Selected(); });
    commands.Set_Handler({Menu::Rename, 203}, [this] { Take_Back(); });
    commands.Set_Handler({Menu::Rename, 301}, [this] { Describe_Selected(); });
}

/// A file that was picked twice is one file: its second record follows the first.
std::optional<Rename_Commands::Batch> Rename_Commands::Ask_Names(const QString& caption, Select_Access access)
{
    std::vector<int> indices;
    QSet<QString> files;
    for (const int index : Pictures_For_Function(State(), {.access = access})) {
        const QString file = State().pictures.Item(index).Full_Name();
        if (files.contains(file)) continue;
        files.insert(file);
        indices.push_back(index);
    }
    QStringList names;
    if (indices.empty() || !parts_.dialogs.Rename_Dialog(caption, indices, names)) return {};
    Batch batch;
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const Picture_Item& item = State().pictures.Item(indices[i]);
        batch.moves.push_back({.folder = File_System_Bytes(item.Path),
                               .old_name = File_System_Bytes(item.File_Name),
                               .new_name = File_System_Bytes(names[qsizetype(i)])});
    }
    return batch;
}

void Rename_Commands::Tell_Faults(const std::vector<Rename_Fault>& faults)
{
    QStringList lines;
    for (const Rename_Fault& fault : faults) lines << Text_Of(fault.Text());
    const QString text = QStringLiteral("Halvine was unable to use %1 of the new names. Nothing was changed.\r\n"
                                        "Do you wish to see a list of them?")
                             .arg(faults.size());
    const Message_Answer answer = Dialogs().Ask({.text = text,
                                                 .buttons = Message_Buttons::Yes_No,
                                                 .standard = Message_Answer::Yes,
                                                 .icon = Message_Icon::Exclamation});
    if (answer == Message_Answer::Yes) Dialogs().Show_File_List(QStringLiteral("Halvine rename failure for"), lines);
}

void Rename_Commands::Tell_Failure(const Error& error)
{
    Dialogs().Refuse(Text_Of(error.text));
}

/// Faults that a person cannot decide about end the command, and so does Cancel. A No lets the file keep its name.
Rename_Commands::Consent Rename_Commands::Ask_About_Taken(Batch& batch, const std::vector<Rename_Fault>& faults,
                                                          const QString& overwrite_caption,
                                                          const std::string& target_folder)
{
    const bool all_may_be_asked =
        std::all_of(faults.begin(), faults.end(), [](const Rename_Fault& fault) { return fault.target_is_taken; });
    if (!all_may_be_asked) {
        Tell_Faults(faults);
        return Consent::Refused;
    }
    Overwrite_Question question(Dialogs(), overwrite_caption);
    for (const Rename_Fault& fault : faults) {
        Rename_Move& move = batch.moves[fault.move];
        const std::string target = (target_folder.empty() ? move.folder : target_folder) + move.new_name;
        switch (question.Ask(Text_Of(target), Old_Path(move))) {
        case Overwrite_Question::Answer::Overwrite: batch.given_up.insert(target); break;
        case Overwrite_Question::Answer::Leave: move.new_name = move.old_name; break;
        case Overwrite_Question::Answer::End: return Consent::Refused;
        }
    }
    return Consent::Given;
}

/// The files that are given up go to the trash, where the user finds them again; no step writes over one.
bool Rename_Commands::Make_Room(const Batch& batch)
{
    File_Following following(State(), parts_.form.Picking(), parts_.form.Pictures());
    for (const std::string& target : batch.given_up)
        if (following.Is_In_Use(Text_Of(target))) {
            Dialogs().Refuse(Text_Of(target) + QStringLiteral(": locked by another function. Nothing was changed."));
            return false;
        }
    for (const std::string& target : batch.given_up) {
        QString reason;
        if (!State().platform.shell.Move_To_Trash(Text_Of(target), &reason)) {
            Dialogs().Refuse(Text_Of(target) + QStringLiteral(": ") + reason +
                             QStringLiteral(". No picture was renamed."));
            return false;
        }
        following.File_Removed(Text_Of(target));
    }
    return true;
}

void Rename_Commands::Files_Renamed(const std::vector<Rename_Move>& moves)
{
    std::vector<std::pair<QString, QString>> names;
    for (const Rename_Move& move : moves) names.emplace_back(Old_Path(move), Text_Of(move.folder + move.new_name));
    File_Following following(State(), parts_.form.Picking(), parts_.form.Pictures());
    following.Files_Renamed(names);
    following.Show_All();
    parts_.show_file_changes();
}

void Rename_Commands::Rename_Selected()
{
    auto batch = Ask_Names(QStringLiteral("Halvine - Rename Selected"), Select_Access::Exclusive);
    if (!batch) return;
    // Each answer may bring up the next question: a file that keeps its name keeps another one from getting it.
    for (;;) {
        const Rename_Plan plan(parts_.files, batch->moves, batch->given_up);
        if (plan.Faults().empty()) return Run_Renames(*batch, plan);
        if (Ask_About_Taken(*batch, plan.Faults(), QStringLiteral("Halvine - Rename File Overwrite"), {}) ==
            Consent::Refused)
            return;
    }
}

void Rename_Commands::Run_Renames(const Batch& batch, const Rename_Plan& plan)
{
    if (!Make_Room(batch)) return parts_.show_file_changes();
    const auto done = Run_Plan(plan, parts_.files, parts_.journal);
    if (!done) Tell_Failure(done.error());
    Files_Renamed(done ? plan.Moves() : std::vector<Rename_Move>());
}

void Rename_Commands::Copy_Rename_Selected()
{
    const QString folder = With_Trailing_Separator(parts_.form.Return_Explorer_Path());
    if (!QDir(folder).exists() || folder.isEmpty())
        return Dialogs().Refuse(QStringLiteral("There is no folder to copy to."));
    auto batch = Ask_Names(QStringLiteral("Halvine - Copy/Rename Selected to Folder"), Select_Access::Shared);
    if (!batch) return;
    const std::string target = File_System_Bytes(folder);
    // A file that would be copied onto itself stands where it should.
    std::erase_if(batch->moves, [&](const Rename_Move& move) {
        return move.new_name == move.old_name && Is_Same_File(Old_Path(move), folder + Text_Of(move.new_name));
    });
    const auto faults = Check_Copies(parts_.files, batch->moves, target);
    const auto moves = batch->moves;
    if (!faults.empty() && Ask_About_Taken(*batch, faults, QStringLiteral("Halvine - Rename/Copy File Overwrite"),
                                           target) == Consent::Refused)
        return;
    // A No leaves the file uncopied.
    for (const Rename_Fault& fault : faults)
        if (batch->given_up.count(target + moves[fault.move].new_name) == 0) batch->moves[fault.move].new_name.clear();
    std::erase_if(batch->moves, [](const Rename_Move& move) { return move.new_name.empty(); });
    Run_Copies(*batch, target);
}

void Rename_Commands::Run_Copies(const Batch& batch, const std::string& folder)
{
    if (!Make_Room(batch)) return parts_.show_file_changes();
    const int total = int(batch.moves.size());
    const QString doing = QStringLiteral("Copying %1 of %2");
    const auto progress = Dialogs().Operation_Progress_Cancel_Dialog(
        QStringLiteral("Halvine - Copy/Rename Selected to Folder"), doing.arg(0).arg(total));
    File_Failures failures;
    for (int i = 0; i < total; ++i) {
        const Rename_Move& move = batch.moves[std::size_t(i)];
        const auto code = progress->Operation_Progress_Cancel_Dialog_Update(doing.arg(i + 1).arg(total), i + 1, total);
        if (code == Response_Code::Cancel) break;
        const auto copied =
            Copy_Whole_File(move.folder + move.old_name, folder + move.new_name, {.when_taken = When_Taken::Refuse});
        if (!copied) failures.Add(Old_Path(move), copied.error());
    }
    parts_.show_file_changes();
    failures.Tell(Dialogs(), QStringLiteral("copy"), QStringLiteral("copies"));
}

void Rename_Commands::Take_Back()
{
    const auto kept = parts_.journal.Last_Done();
    if (!kept) return Tell_Failure(kept.error());
    if (!*kept) return Dialogs().Refuse(QStringLiteral("There is no rename to take back."));
    const Rename_Record& last = (*kept)->record;
    const auto moves = Moves_Back(last, parts_.files);
    File_Following following(State(), parts_.form.Picking(), parts_.form.Pictures());
    for (const Rename_Move& move : moves)
        if (following.Is_In_Use(Old_Path(move)))
            return Dialogs().Refuse(Old_Path(move) + QStringLiteral(": locked by another function."));
    if (!moves.empty() && !Dialogs().Confirm(Take_Back_Question(moves, last.moves.size()))) return;
    const auto back = Take_Back_Last_Rename(parts_.journal, parts_.files);
    if (!back) Tell_Failure(back.error());
    Files_Renamed(back ? moves : std::vector<Rename_Move>());
}

void Rename_Commands::Describe_Selected()
{
    const std::vector<int> indices = Pictures_For_Function(State(), {.access = Select_Access::Exclusive});
    if (indices.empty()) return;
    QStringList descriptions;
    for (const int index : indices) descriptions << State().pictures.Item(index).Description;
    if (!parts_.dialogs.Describe_Dialog(indices, descriptions)) return;
    for (std::size_t i = 0; i < indices.size(); ++i) {
        Picture_Item& item = State().pictures.Item(indices[i]);
        const QString& description = descriptions[qsizetype(i)];
        if (item.Description == description) continue;
        item.Description = description;
        item.Description_Modified = true;
    }
    State().view->Draw_All_Thumbnails();
    State().view->Update_Status();
}

void Rename_Commands::Put_Interrupted_Right()
{
    for (const std::string& text : parts_.journal.Put_Interrupted_Right(parts_.files)) Dialogs().Refuse(Text_Of(text));
}
