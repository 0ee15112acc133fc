#include "catalogue/Pick_Loop.h"

#include "catalogue/Modifications.h"
#include "catalogue/Picture_Locks.h"
#include "frame/text/Text_Utilities.h"

#include <algorithm>

namespace {
constexpr qint64 Longest_Silence_Milliseconds = 50;
constexpr std::chrono::milliseconds Longest_Wait(10); // for a file, before the clock is looked at
} // namespace

struct Pick_Loop::Run {
    std::span<const File_Entry> entries;
    bool append = false;
    bool refresh_selection = false;
    bool shows_progress = false;
    int done = 0;          // entries that were tried
    qint64 last_yield = 0; // milliseconds
    std::vector<int> added_keys{};
    QStringList failed{};
};

void Pick_Loop::Pick_Files(std::span<const File_Entry> File_Entries, bool Append, bool Refresh_Selection)
{
    if (in_progress_) return;
    in_progress_ = true;
    stop_requested_ = false;
    Run run{.entries = File_Entries, .append = Append, .refresh_selection = Refresh_Selection};
    Begin(run);
    Read_Entries(run);
    Finish(run);
}

void Pick_Loop::Add_Picture_By_File_Name(const QString& File_Name)
{
    const File_Entry entry[] = {Entry_Of_File(File_Name)};
    Pick_Files(entry, true, false);
}

bool Pick_Loop::May_Replace_All() const
{
    for (int index = 1; index <= state_.pictures.Count(); ++index) {
        if (!Is_Locked(state_.pictures.Item(index).Lock_Flags)) continue;
        state_.platform.dialogs.Refuse(
            QStringLiteral("Some or all of the pictures that would be discarded are in use.\r\n"
                           "Use Pick/Append Selected to add selected pictures to thumbnail."));
        return false;
    }
    return true;
}

bool Pick_Loop::Pick_Selected(std::span<const File_Entry> File_Entries, bool Append, bool Refresh_Selection)
{
    if (in_progress_ || (!Append && !May_Replace_All())) return false;
    if (File_Entries.empty()) return false;
    if (!Append && (!state_.slide_show->Confirm_Abandon() || !Confirm_Abandon_Scripts(state_, true) ||
                    !Confirm_Abandon_Descriptions(state_, true)))
        return false;
    if (!Append) state_.slide_show->Forget_File();
    Pick_Files(File_Entries, Append, Refresh_Selection);
    return true;
}

void Pick_Loop::Begin(Run& run)
{
    state_.slide_show->Stop();
    run.last_yield = state_.platform.clock.Now().toMSecsSinceEpoch();
    state_.platform.shell.Show_Busy_Pointer(true);
    run.shows_progress = int(run.entries.size()) >= state_.view->Thumbnails_Per_Row();
    if (run.shows_progress) state_.view->Begin_Pick_Progress();
    pictures_.Drop_Current_Picture();
    state_.view->Show_Current_Picture();
    if (!run.append) {
        state_.selection.Clear();
        state_.pictures.Remove_All();
        Free_Removed_Records();
        state_.view->Set_Top_Row(0);
    }
    state_.pictures.Reserve(int(run.entries.size()));
    if (state_.pictures.Is_Empty()) state_.view->Clear_Strip();
}

std::optional<Picture_Item> Pick_Loop::Record_Of(const File_Entry& entry, Picture_Contents contents) const
{
    Picture_Item item;
    item.Path = Folder_Part(entry.Path_Name);
    item.File_Name = Name_Part(entry.Path_Name);
    item.Rotate = entry.Rotate;
    item.Interval_In_Seconds = entry.Interval;
    if (!pictures_.Take_Contents(item, std::move(contents))) return std::nullopt;
    if (entry.File_Date != 0) {
        item.File_Date = Normalize_Date(entry.File_Date, true);
        item.File_Size_KB = entry.File_Size_KB;
    }
    return item;
}

/// False when Stop was pressed before the next file was there.
bool Pick_Loop::Await(Load_Ahead& ahead, Run& run)
{
    while (!stop_requested_ && !ahead.Wait(Longest_Wait))
        if (Is_Late(run)) Yield(run);
    return !stop_requested_;
}

void Pick_Loop::Read_Entries(Run& run)
{
    std::vector<Picture_Request> requests;
    requests.reserve(run.entries.size());
    for (const File_Entry& entry : run.entries) requests.push_back(pictures_.Request_For(entry));
    Load_Ahead ahead(std::move(requests));
    for (const File_Entry& entry : run.entries) {
        if (!Await(ahead, run)) return;
        ++run.done;
        auto item = Record_Of(entry, ahead.Take());
        if (item) {
            item->Picture_Key = state_.pictures.Take_Next_Key();
            run.added_keys.push_back(item->Picture_Key);
            state_.view->Draw_Thumbnail(state_.pictures.Append(std::move(*item)));
        } else {
            run.failed << entry.Path_Name;
        }
        if (run.shows_progress) Show_Progress(run);
        Yield_After(run, bool(item));
    }
}

void Pick_Loop::Show_Progress(const Run& run)
{
    const int total = int(run.entries.size());
    const auto percent = (std::int64_t(run.done) * 100 + total / 2) / total;
    state_.view->Show_Pick_Progress(QStringLiteral("%1 of %2 (%3%)").arg(run.done).arg(total).arg(percent), run.done,
                                    total);
}

void Pick_Loop::Yield_After(Run& run, bool read)
{
    const int columns = std::max(state_.view->Thumbnails_Per_Row(), 1);
    const int count = state_.pictures.Count();
    if (read && count % columns == 1 % columns && count > columns * state_.view->Thumbnail_Rows()) {
        state_.view->Update_Scroll_Range();
        state_.view->Repaint_Pick_Progress();
    }
    // A long run of unreadable files fills no row, and a row of large files takes its time; neither must hold off the
    // Stop button.
    const bool full_row = read && count % columns == 0 && count > 1;
    const bool row_of_failures = !read && run.failed.size() % columns == 0;
    if (full_row || row_of_failures || Is_Late(run)) Yield(run);
}

bool Pick_Loop::Is_Late(const Run& run) const
{
    const qint64 now = state_.platform.clock.Now().toMSecsSinceEpoch();
    return std::abs(now - run.last_yield) >= Longest_Silence_Milliseconds;
}

void Pick_Loop::Yield(Run& run)
{
    state_.platform.events.Process_Pending_Events();
    run.last_yield = state_.platform.clock.Now().toMSecsSinceEpoch();
}

void Pick_Loop::Select_Added(const Run& run)
{
    state_.selection.Clear();
    for (const int key : run.added_keys) state_.selection.Set_Key(key, true);
    state_.view->Draw_All_Thumbnails();
}

void Pick_Loop::Finish(Run& run)
{
    state_.pictures.Shrink();
    if (run.refresh_selection) Select_Added(run);
    state_.view->Update_Scroll_Range();
    state_.view->Update_Status();
    if (!run.failed.isEmpty()) {
        const QString question = QStringLiteral("Halvine was unable to read %1 of the selected pictures.\r\n"
                                                "Do you wish to see a list of failed files?")
                                     .arg(run.failed.size());
        if (state_.platform.dialogs.Confirm(question))
            state_.platform.dialogs.Show_File_List(QStringLiteral("Halvine read failure for"), run.failed);
    }
    if (run.shows_progress) state_.view->End_Pick_Progress();
    state_.platform.shell.Show_Busy_Pointer(false);
    in_progress_ = false;
    stop_requested_ = false;
}

void Pick_Loop::Discard_Selected()
{
    Discard(false);
}

void Pick_Loop::Discard_All()
{
    Discard(true);
}

void Pick_Loop::Discard(bool all)
{
    if (in_progress_ || !Confirm_Abandon_Scripts(state_, all) || !Confirm_Abandon_Descriptions(state_, all)) return;
    std::vector<int> indices = All_Or_Selected(state_, all);
    std::erase_if(indices, [this](int index) { return Is_Locked(state_.pictures.Item(index).Lock_Flags); });
    Remove_Pictures(indices);
}

void Pick_Loop::Remove_Pictures(std::span<const int> indices)
{
    std::vector<int> keys;
    keys.reserve(indices.size());
    for (const int index : indices)
        if (state_.pictures.Is_Index(index)) keys.push_back(state_.pictures.Item(index).Picture_Key);
    state_.pictures.Remove(indices);
    if (state_.pictures.Is_Empty())
        state_.selection.Clear(); // at once: a hundred thousand take their time one by one
    else
        for (const int key : keys) state_.selection.Forget_Key(key);
    Free_Removed_Records();
    if (state_.current_picture_key != 0 && state_.pictures.Find(state_.current_picture_key) == nullptr) {
        pictures_.Drop_Current_Picture();
        state_.view->Show_Current_Picture();
    }
    state_.slide_show->Pictures_Removed();
    state_.view->Draw_All_Thumbnails();
    state_.view->Update_Scroll_Range();
    state_.view->Update_Status();
}

/// A large number of them a little at a time, between events.
void Pick_Loop::Free_Removed_Records()
{
    if (!state_.pictures.Has_Removed_Records()) return;
    if (!state_.platform.make_timer) {
        while (state_.pictures.Has_Removed_Records()) state_.pictures.Free_Some();
        return;
    }
    if (!freeing_)
        freeing_ = state_.platform.make_timer([this] {
            state_.pictures.Free_Some();
            if (!state_.pictures.Has_Removed_Records()) freeing_->Stop();
        });
    freeing_->Start(0);
}
