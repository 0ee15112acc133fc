// Start, placement and close of the main window.

#include "catalogue/Modifications.h"
#include "catalogue/ui/Halvine_Window.h"

namespace {

constexpr int Twips_Per_Pixel = 15;

} // namespace

void Halvine_Window::Load()
{
    const Program_State& state = parts_.state;
    setMinimumSize(state.Design_Width / Twips_Per_Pixel, state.Design_Height / Twips_Per_Pixel);
    resize(std::max(width(), 1100), std::max(height(), 720));
    Set_Pattern_String(state.Default_Extensions);
    if (state.Default_Path.isEmpty() || !explorer_->Set_Path(state.Default_Path)) explorer_->Set_Path(QDir::homePath());
    explorer_->InitializeTree();
    explorer_->InitializeGrid();
    const std::vector<float> splitters = Restore_Form_Placement(parts_.ports.platform, *this, Main_Window_Placement,
                                                                state.Design_Width, state.Design_Height);
    if (!splitters.empty()) picture_split_->Set_SplitRatio(double(splitters[0]));
    if (splitters.size() > 1) file_split_->Set_SplitRatio(double(splitters[1]));
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

void Halvine_Window::Enlarge_To_Design_Size()
{
    resize(size().expandedTo(minimumSize()));
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
    magnify_->Set_Bitmap(0, {});
    parts_.form.Pictures().Drop_Current_Picture();
    parts_.form.State().selection.Clear();
    parts_.form.State().pictures.Clear();
    strip_->Draw_All_Thumbnails(); // it keeps bitmaps of its own
}

std::array<float, 2> Halvine_Window::Splitter_Positions() const
{
    return {float(picture_split_->SplitRatio()), float(file_split_->SplitRatio())};
}

void Halvine_Window::Unload_Other_Windows()
{
    // The list of windows has them in the order of opening.
    QWidgetList windows = QApplication::topLevelWidgets();
    std::reverse(windows.begin(), windows.end());
    for (QWidget* window : windows)
        if (window != this && window->isWindow() && window->isVisible()) window->close();
}

Form_Place Halvine_Window::Place() const
{
    return {x() * Twips_Per_Pixel, y() * Twips_Per_Pixel, width() * Twips_Per_Pixel, height() * Twips_Per_Pixel};
}

void Halvine_Window::Move_To(const Form_Place& place)
{
    move(place.left / Twips_Per_Pixel, place.top / Twips_Per_Pixel);
    resize(place.width / Twips_Per_Pixel, place.height / Twips_Per_Pixel);
}

bool Halvine_Window::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == design_size_ && event->type() == QEvent::MouseButtonDblClick && !isMaximized() && !isMinimized())
        resize(minimumSize());
    // In the file grid Ctrl+A selects files.
    if (event->type() == QEvent::ShortcutOverride && watched == &explorer_->ExplorerGrid() &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::SelectAll)) {
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
