// What the catalogue shows in the window.

#include "catalogue/Picture_Texts.h"
#include "catalogue/ui/Halvine_Window.h"
#include "imaging/Script_Interpreter.h"

void Halvine_Window::Draw_Thumbnail(int index)
{
    strip_->Draw_Thumbnail(index);
}

void Halvine_Window::Draw_All_Thumbnails()
{
    strip_->Draw_All_Thumbnails();
    Schedule_Actions();
}

void Halvine_Window::Update_Status()
{
    Show_Status();
}

void Halvine_Window::Show_Status()
{
    const Catalogue_State& state = parts_.form.State();
    const bool folders = explorer_->ExplorerGridMode() == Explorer_Grid_Mode::Folders;
    file_status_->setText(File_Status_Text(explorer_->ExplorerGrid().Content().Rows(),
                                           explorer_->ExplorerGrid().Content().SelectedRowsCount(), folders));
    picture_status_->setText(Picture_Status_Text(state.pictures.Count(), state.selection.Count()));
    current_label_->setText(Picture_Text(state, state.Current_Picture_Index()));
    const Picture_Item* current = state.pictures.Find(state.current_picture_key);
    setWindowTitle(Window_Caption(parts_.short_version, parts_.long_version, state.slide_show->File_Name(),
                                  current != nullptr ? current->File_Name : QString()));
    Schedule_Actions();
}

void Halvine_Window::Show_Current_Picture()
{
    Catalogue_State& state = parts_.form.State();
    const Picture_Item* item = state.pictures.Find(state.current_picture_key);
    if (item == nullptr || !state.Current_Picture_Bitmap) {
        magnify_->Set_Bitmap(0, item != nullptr ? item->File_Name : QString());
        if (item == nullptr && magnify_->Is_Full_Window()) Show_Full_Window(false);
    } else {
        const Bitmap_Handle own = state.Current_Picture_Bitmap.Get();
        Bitmap_Handle adjusted = parts_.form.Pictures().Take_Current_Adjusted();
        if (adjusted == 0)
            adjusted = Apply_Script_Items(own, state.Items_In_Force(*item), {.divisor = 1, .rotation = item->Rotate});
        magnify_->Set_Bitmap(adjusted, item->File_Name, adjusted != own);
    }
    if (item != nullptr) magnify_->show();
    Show_Status();
}

void Halvine_Window::Begin_Pick_Progress()
{
    panel_->Exchange(Pick_Button, Stop_Pick_Button);
    progress_bar_->setRange(0, 1);
    progress_bar_->setValue(0);
    progress_label_->clear();
    progress_shown_.invalidate();
    progress_frame_->show();
    Show_Actions();
}

/// Each new text lays the window out again, and small files come faster than anybody can read.
void Halvine_Window::Show_Pick_Progress(const QString& label, int done, int total)
{
    constexpr int Readable_Milliseconds = 30;
    if (done < total && progress_shown_.isValid() && progress_shown_.elapsed() < Readable_Milliseconds) return;
    progress_shown_.start();
    progress_bar_->setRange(0, total);
    progress_bar_->setValue(done);
    progress_label_->setText(label);
    const Catalogue_State& state = parts_.form.State();
    picture_status_->setText(Picture_Status_Text(state.pictures.Count(), state.selection.Count()));
}

void Halvine_Window::End_Pick_Progress()
{
    panel_->Exchange(Pick_Button, Stop_Pick_Button);
    progress_frame_->hide();
    Schedule_Actions();
}
