#include "catalogue/Catalogue_Commands.h"

#include "catalogue/Camera_Information.h"
#include "catalogue/Modifications.h"
#include "catalogue/Picture_Flips.h"
#include "catalogue/Selection_For_Function.h"
#include "frame/text/Text_Utilities.h"

#include <QtCore/QFileInfo>
#include <algorithm>
#include <numeric>

namespace {

/// Busy as long as it lives, also when a command throws.
class Running_Command {
public:
    Running_Command(int& depth, Shell& shell) : depth_(depth), shell_(shell)
    {
        ++depth_;
        shell_.Show_Busy_Pointer(true);
    }
    ~Running_Command()
    {
        shell_.Show_Busy_Pointer(false);
        --depth_;
    }
    Running_Command(const Running_Command&) = delete;
    Running_Command& operator=(const Running_Command&) = delete;

private:
    int& depth_;
    Shell& shell_;
};

constexpr int Left_Button = 1;
constexpr int Shift_Key = 1;
constexpr Command_Id Exit_Command{Menu::File, 999};
constexpr Command_Id Save_On_Exit_Command{Menu::File, 903};

QString Plural(int count)
{
    return count > 1 ? QStringLiteral("s") : QString();
}

} // namespace

bool Catalogue_Commands::Is_Here(const Command& command) const
{
    return command.handler != nullptr || brought_.count({command.menu, command.number}) > 0;
}

bool Catalogue_Commands::Is_Checked(Command_Id id) const
{
    if (id == Save_On_Exit_Command) return Save_Configuration_On_Exit;
    const auto check = checks_.find(id);
    return check != checks_.end() && check->second();
}

Command_Facts Catalogue_Commands::Facts() const
{
    const Catalogue_State& state = form_.State();
    return {.pick_in_progress = form_.Picking().Pick_In_Progress(),
            .busy = running_ > 0,
            .files = host_.File_Row_Count(),
            .pictures = state.pictures.Count(),
            .selected = state.selection.Count(),
            .current_picture = state.current_picture_key != 0,
            .copied_script = !state.Copied_Script_Items.Is_Empty(),
            .prepared_script = state.Current_Prepared_Script != 0,
            .show_running = state.slide_show->Is_Running()};
}

bool Catalogue_Commands::Run(Command_Id id)
{
    const Command* command = Find_Command(id);
    if (command == nullptr || !Is_Enabled(*command, Facts())) return false;
    if (id == Exit_Command) {
        Exit();
        return true;
    }
    Carry_Out([&] {
        if (const auto brought = brought_.find(id); brought != brought_.end())
            brought->second();
        else if (command->handler != nullptr)
            (this->*command->handler)();
        else
            Dialogs().Refuse(QStringLiteral("Feature Not Implemented"));
    });
    return true;
}

bool Catalogue_Commands::Run_Unlisted(const std::function<void()>& work)
{
    const Command_Facts facts = Facts();
    if (facts.pick_in_progress || facts.busy) return false;
    Carry_Out(work);
    return true;
}

void Catalogue_Commands::Carry_Out(const std::function<void()>& work)
{
    host_.Leave_Full_Window_View();
    left_list_ = host_.Leave_Picture_List();
    const Running_Command running(running_, form_.State().platform.shell);
    form_.State().keeper->Keep_Now(); // what was done until now is safe, however long the command takes
    work();
}

void Catalogue_Commands::Press_Panel(int button_id, int button, int shift)
{
    if (form_.Picking().Pick_In_Progress() && (button_id == Pick_Button || button_id == Stop_Pick_Button)) {
        form_.Picking().Request_Stop();
        return;
    }
    const Panel_Entry* entry = Find_Panel_Entry(button_id);
    if (entry == nullptr || entry->command.menu == Menu::None) return;
    const bool shifted = button == Left_Button && (shift & Shift_Key) != 0;
    if (button_id == Discard_Button && shifted) {
        Run({Menu::File, 104});
    } else if (button_id == Pick_Append_Button && shifted) {
        if (Is_Enabled(*Find_Command(entry->command), Facts())) Carry_Out([this] { Pick(true, true); });
    } else {
        Run(entry->command);
    }
}

void Catalogue_Commands::Pick_Paths(const QStringList& paths, bool append, bool refresh_selection)
{
    // Dates and sizes come with the reading: asking each of a hundred thousand files for them takes a third of a second.
    std::vector<File_Entry> entries(std::size_t(paths.size()));
    std::transform(paths.begin(), paths.end(), entries.begin(), [](const QString& path) { return File_Entry{path}; });
    const bool picked = form_.Picking().Pick_Selected(entries, append, refresh_selection);
    if (picked && picked_from_) picked_from_(Folder_Part(paths.front()));
}

void Catalogue_Commands::Pick_Dropped(const QStringList& paths)
{
    Run_Unlisted([&] {
        if (paths.isEmpty())
            Dialogs().Refuse(QStringLiteral("No pictures available."));
        else
            Pick_Paths(paths, true, false);
    });
}

void Catalogue_Commands::Pick(bool append, bool refresh_selection)
{
    if (!append && !form_.Picking().May_Replace_All()) return;
    QStringList paths = host_.Selected_File_Paths();
    if (host_.Shows_Found_Files()) {
        // The folder's own rows replace the list of found files: the selected ones are asked for before.
        if (paths.isEmpty()) paths = host_.All_File_Paths();
        if (!paths.isEmpty()) host_.Go_To_Folder(Folder_Part(paths.front()));
    } else if (paths.isEmpty()) {
        paths = host_.All_File_Paths();
    }
    Pick_Paths(paths, append, refresh_selection);
}

/// What was found takes the place of the folder's files in the pane; a search that was given up changes nothing.
void Catalogue_Commands::Search(Search_Kind kind)
{
    Platform& platform = form_.State().platform;
    const QString folder = form_.State().view->Explorer_Path();
    const auto result = Ask_And_Search(platform, kind, folder, host_.File_Pattern());
    if (!result) return;
    QStringList paths;
    for (const File_Entry& entry : result->files) paths << entry.Path_Name;
    host_.List_Found_Files(paths);
    if (!result->unread.isEmpty())
        platform.dialogs.Show_File_List(QStringLiteral("Halvine read failure for"), result->unread);
}

void Catalogue_Commands::Discard_Selected()
{
    form_.Discard_Selected();
}

void Catalogue_Commands::Discard_All()
{
    form_.Discard_All();
}

void Catalogue_Commands::Save_Selected_As()
{
    if (form_.State().selection.Is_Empty()) return;
    if (const auto options = host_.Ask_Save_Options()) form_.Save_Selected_As(*options);
}

void Catalogue_Commands::Select_None()
{
    form_.Set_Picture_Selected(0, false);
    form_.State().view->Draw_All_Thumbnails();
    form_.State().view->Update_Status();
}

void Catalogue_Commands::Select_All()
{
    Catalogue_State& state = form_.State();
    for (int index = 1; index <= state.pictures.Count(); ++index) state.selection.Set_Index(index, true);
    state.view->Draw_All_Thumbnails();
    state.view->Update_Status();
}

void Catalogue_Commands::Invert_Selection()
{
    Catalogue_State& state = form_.State();
    for (int index = 1; index <= state.pictures.Count(); ++index)
        state.selection.Set_Index(index, !state.selection.Test_Index(index));
    state.view->Draw_All_Thumbnails();
    state.view->Update_Status();
}

std::vector<int> Catalogue_Commands::Turn_Candidates(int& locked) const
{
    const Catalogue_State& state = form_.State();
    if (state.pictures.Is_Empty()) Dialogs().Refuse(QStringLiteral("No pictures available."));
    std::vector<int> keys;
    locked = 0;
    for (const int index : All_Or_Selected(state, state.selection.Is_Empty())) {
        const Picture_Item& item = state.pictures.Item(index);
        if (Is_Locked(item.Lock_Flags))
            ++locked;
        else
            keys.push_back(item.Picture_Key);
    }
    return keys;
}

void Catalogue_Commands::Rotate_Selected(int degrees)
{
    int locked = 0;
    for (const int key : Turn_Candidates(locked)) form_.Rotate_Picture(key, degrees);
    form_.State().view->Update_Status();
    if (locked > 0)
        Dialogs().Refuse(QStringLiteral("%1 picture%2 could not be rotated, locked by another function.")
                             .arg(QString::number(locked), Plural(locked)));
}

void Catalogue_Commands::Flip_Selected(int flip)
{
    int locked = 0;
    for (const int key : Turn_Candidates(locked)) Flip_Picture(form_.State(), form_.Pictures(), key, flip);
    form_.State().view->Update_Status();
    if (locked > 0)
        Dialogs().Refuse(QStringLiteral("%1 picture%2 could not be flipped, locked by another function.")
                             .arg(QString::number(locked), Plural(locked)));
}

std::vector<int> Catalogue_Commands::Keys_For(bool all, Select_Access access) const
{
    const Catalogue_State& state = form_.State();
    Selection_Request request{.mode = Selection_Mode::Selected_With_Message, .access = access};
    // No selection is large enough then, and all pictures are taken.
    if (all) request = {.minimum = state.pictures.Count() + 1, .mode = Selection_Mode::All_If_None, .access = access};
    std::vector<int> keys;
    for (const int index : Pictures_For_Function(state, request))
        keys.push_back(state.pictures.Item(index).Picture_Key);
    return keys;
}

void Catalogue_Commands::Save_Series(const QString& caption, const std::vector<int>& keys,
                                     const std::function<bool(int key)>& save)
{
    if (keys.empty()) return;
    const int total = int(keys.size());
    const auto progress =
        Dialogs().Operation_Progress_Cancel_Dialog(caption, QStringLiteral("Saving 0 of %1").arg(total));
    for (int i = 0; i < total; ++i) {
        const auto code = progress->Operation_Progress_Cancel_Dialog_Update(
            QStringLiteral("Saving %1 of %2").arg(i + 1).arg(total), i + 1, total);
        if (code == Response_Code::Cancel) break;
        save(keys[std::size_t(i)]);
    }
    form_.State().view->Draw_All_Thumbnails();
    form_.State().view->Update_Status();
}

void Catalogue_Commands::Save_Rotations(bool all)
{
    std::vector<int> keys = Keys_For(all, Select_Access::Exclusive);
    std::erase_if(keys, [this](int key) {
        const Picture_Item* item = form_.State().pictures.Find(key);
        return item->Rotate == 0 && item->Flip == 0;
    });
    Save_Series(QStringLiteral("Halvine - Save Rotations/Flips"), keys,
                [this](int key) { return form_.Saving().Save_Rotation_And_Flips(key); });
}

void Catalogue_Commands::Camera_Information()
{
    const Catalogue_State& state = form_.State();
    int key = state.current_picture_key;
    if (key == 0) {
        const std::vector<int> keys = Keys_For(state.selection.Is_Empty(), Select_Access::Shared);
        if (keys.empty()) return;
        key = keys.front();
    }
    const Picture_Item* item = state.pictures.Find(key);
    if (item == nullptr) return;
    const auto record = Camera_Record_Of_File(item->Full_Name(), item->File_Type);
    const QString report = record ? Camera_Report(*record) : QString();
    if (report.isEmpty())
        Dialogs().Ask(
            {.text = No_Camera_Information, .icon = Message_Icon::Information, .title = Camera_Information_Caption});
    else
        Dialogs().Show_Text(Camera_Information_Caption, report);
}

void Catalogue_Commands::Thumbnail_List()
{
    if (!left_list_) host_.Show_Picture_List(); // the command on the list's own display puts it away
}

void Catalogue_Commands::Load_Snapshots()
{
    form_.Snapshots().Load_Snapshots_Of_Selected();
}

void Catalogue_Commands::Save_Snapshots()
{
    form_.Snapshots().Save_Selected_As_Snapshots();
}

void Catalogue_Commands::Restore_Snapshot()
{
    form_.Snapshots().Restore_From_Selected_Snapshot();
}

void Catalogue_Commands::Set_Background_Color()
{
    std::array<int, 3> color{};
    form_.Recall_Background_Color(color[0], color[1], color[2]);
    const auto chosen = host_.Ask_Color(color);
    if (!chosen) return;
    form_.Set_Background_Color((*chosen)[0], (*chosen)[1], (*chosen)[2]);
    form_.State().view->Show_Current_Picture();
}
