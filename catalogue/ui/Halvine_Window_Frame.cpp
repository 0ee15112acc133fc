// Start, placement and close of the main window.

#include "catalogue/Modifications.h"
#include "catalogue/ui/Halvine_Window.h"
#include "frame/ui/Framed_Form.h"

namespace {

/// Those that are open, the last opened first.
template <class Form>
QList<QPointer<Form>> Open_Windows_Of_Kind()
{
    QList<QPointer<Form>> forms;
    for (QWidget* form : Form_Frame::Open_Forms())
        if (auto* other = qobject_cast<Form*>(form)) forms.prepend(other);
    return forms;
}

} // namespace

void Halvine_Window::Load()
{
    const Program_State& state = parts_.state;
    frame_.Set_Form_Design_Size(state);
    resize(std::max(width(), 1100), std::max(height(), 720));
    Set_Pattern_String(state.Default_Extensions);
    if (state.Default_Path.isEmpty() || !explorer_->Set_Path(state.Default_Path)) explorer_->Set_Path(QDir::homePath());
    explorer_->InitializeTree();
    explorer_->InitializeGrid();
    frame_.Restore();
    Show_Status();
    Show_Actions();
    strip_->setFocus();
}

void Halvine_Window::Open_Slide_Show(const QString& path)
{
    if (open_show_)
        open_show_(path);
    else
        parts_.ports.platform.dialogs.Refuse(QStringLiteral("Feature Not Implemented"));
}

void Halvine_Window::Set_Splitter_Positions(const std::vector<float>& positions)
{
    if (!positions.empty()) picture_split_->Set_SplitRatio(double(positions[0]));
    if (positions.size() > 1) file_split_->Set_SplitRatio(double(positions[1]));
}

void Halvine_Window::Start_Drawing()
{
    strip_->Set_Ready();
    Show_Status();
}

bool Halvine_Window::Has_Pictures() const
{
    return !parts_.form.State().pictures.Is_Empty();
}

void Halvine_Window::Start_Slide_Show()
{
    Run({Menu::Slides, 401});
}

void Halvine_Window::Set_Alias_String(const QString& alias)
{
    explorer_->ExplorerTree().Set_Alias(alias);
}

void Halvine_Window::Set_Pattern_String(const QString& pattern)
{
    pattern_text_->setText(pattern);
    explorer_->ExplorerTree().Set_Pattern(pattern);
    parts_.form.State().Default_Extensions = pattern;
    if (explorer_->ExplorerPattern() != pattern) explorer_->Set_ExplorerPattern(pattern);
    Show_Status();
}

void Halvine_Window::closeEvent(QCloseEvent* event)
{
    if (!Is_In_Full_Window_View()) parts_.form.State().slide_show->Stop(); // leaving a full-window show stops it
    event->setAccepted(Close_Main_Window(*this, parts_.state, parts_.ports));
}

bool Halvine_Window::Confirm_Abandon_Scripts()
{
    return ::Confirm_Abandon_Scripts(parts_.form.State(), true);
}

bool Halvine_Window::Confirm_Abandon_Descriptions()
{
    return ::Confirm_Abandon_Descriptions(parts_.form.State(), true);
}

void Halvine_Window::Release_Pictures()
{
    hide(); // a hundred thousand pictures take a moment to let go
    Catalogue_State& state = parts_.form.State();
    magnify_->Set_Bitmap(0, {});
    parts_.form.Pictures().Next().End();
    parts_.form.Pictures().Drop_Current_Picture();
    state.selection.Clear();
    for (int index = 1; index <= state.pictures.Count(); ++index) state.pictures.Item(index).Thumbnail_Bitmap.Reset();
    state.pictures.Remove_All();   // their texts are freed with the list, when nobody waits any more
    strip_->Draw_All_Thumbnails(); // it keeps bitmaps of its own
}

std::array<float, 2> Halvine_Window::Splitter_Positions() const
{
    return {float(picture_split_->SplitRatio()), float(file_split_->SplitRatio())};
}

bool Halvine_Window::Confirm_Close_Of_Other_Windows()
{
    const auto others = Open_Windows_Of_Kind<Framed_Form>();
    for (Framed_Form* other : others) {
        if (other == nullptr || other->Agree_To_Close()) continue; // a question may have ended another window
        for (Framed_Form* agreed : others)
            if (agreed != nullptr) agreed->Withdraw_Agreement();
        return false;
    }
    return true;
}

void Halvine_Window::Unload_Other_Windows()
{
    // One that closes may close others with it.
    for (QWidget* other : Open_Windows_Of_Kind<QWidget>())
        if (other != nullptr && other != this) other->close();
}

bool Halvine_Window::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == design_size_ && event->type() == QEvent::MouseButtonDblClick) frame_.Return_To_Design_Size();
    if (event->type() == QEvent::ShortcutOverride && watched->isWidgetType() &&
        Keeps_Key(*static_cast<QWidget*>(watched), *static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void Halvine_Window::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        if (Leave_Full_Views()) return;
        parts_.form.State().slide_show->Stop();
    }
    QMainWindow::keyPressEvent(event);
}

void Halvine_Window::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    design_size_->setText(QStringLiteral("%1 x %2").arg(width()).arg(height()));
}
