// Menus from the table of commands, and what the commands ask of the window.

#include "catalogue/ui/Halvine_Window.h"
#include "catalogue/ui/Save_Options_Dialog.h"
#include "catalogue/ui/Script_Item_Dialog.h"

namespace {

QStringList Captions_Of(std::span<const Command> rows)
{
    QStringList captions;
    for (const Command& row : rows) captions << QCoreApplication::translate("Command_Table", row.caption);
    return captions;
}

QString Without_Mnemonic(QString caption)
{
    return caption.remove(u'&');
}

} // namespace

void Halvine_Window::Make_Menus()
{
    menuBar()->setNativeMenuBar(false);
    menuBar()->setAccessibleName(tr("Menus"));
    for (const Menu menu : Menu_Bar()) {
        QMenu* made = Make_Menu(menu);
        made->setTitle(Menu_Title(menu));
        made->setAccessibleName(Without_Mnemonic(Menu_Title(menu)));
        menuBar()->addMenu(made);
        menus_.insert(menu, made);
        connect(made, &QMenu::aboutToShow, this, &Halvine_Window::Show_Actions);
        if (menu == Menu::Script) Add_Prepared_Scripts(*made);
    }
    popup_ = Make_Menu(Menu::Thumbnail_Popup);
    popup_->setObjectName(QStringLiteral("ThumbnailPopup_Menu"));
    popup_->setAccessibleName(tr("Picture"));
}

QMenu* Halvine_Window::Make_Menu(Menu menu)
{
    auto* made = new QMenu(this);
    const auto rows = Commands_Of(menu);
    const QStringList captions = With_Mnemonics(Captions_Of(rows));
    int group = rows.empty() ? 0 : rows.front().number / 100;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Command& row = rows[i];
        if (row.number / 100 != group) made->addSeparator();
        group = row.number / 100;
        if (row.submenu != Menu::None) {
            QMenu* submenu = Make_Menu(row.submenu);
            submenu->setTitle(captions[qsizetype(i)]);
            submenu->setAccessibleName(Without_Mnemonic(captions[qsizetype(i)]));
            made->addMenu(submenu);
            continue;
        }
        QAction* action = made->addAction(captions[qsizetype(i)]);
        const Command_Id id{row.menu, row.number};
        action->setCheckable(row.is_check);
        action->setShortcut(QKeySequence::fromString(QLatin1String(row.shortcut), QKeySequence::PortableText));
        connect(action, &QAction::triggered, this, [this, id] { Run(id); });
        if (menu == Menu::Thumbnail_Popup)
            popup_actions_.append({id, action});
        else
            actions_.insert(id, action);
        if (menu != Menu::Thumbnail_Popup) addAction(action); // shortcuts go on while the menu bar is hidden
    }
    return made;
}

void Halvine_Window::Add_Prepared_Scripts(QMenu& menu)
{
    menu.addSeparator();
    QStringList names;
    for (const Script_Set& script : Prepared_Script_Sets()) names << script.name;
    const QStringList captions =
        With_Mnemonics(Captions_Of(Commands_Of(Menu::Script)) + names).mid(qsizetype(Commands_Of(Menu::Script).size()));
    for (int number = 1; number <= names.size(); ++number) {
        QAction* action = menu.addAction(captions[number - 1]);
        action->setObjectName(QStringLiteral("Prepared_Script_Menu_Item_%1").arg(number));
        action->setCheckable(true);
        prepared_ << action;
        connect(action, &QAction::triggered, this, [this, number] {
            commands_.Choose_Prepared_Script(number);
            Show_Actions();
        });
    }
}

void Halvine_Window::Run(Command_Id id)
{
    commands_.Run(id);
    Show_Actions();
}

void Halvine_Window::Help()
{
    Leave_Full_Views();
    parts_.ports.platform.shell.Open_Help({});
}

void Halvine_Window::Schedule_Actions()
{
    if (!actions_later_.isActive()) actions_later_.start(0);
}

void Halvine_Window::Show_Actions()
{
    const Command_Facts facts = commands_.Facts();
    for (auto action = actions_.begin(); action != actions_.end(); ++action) {
        action.value()->setEnabled(Is_Enabled(*Find_Command(action.key()), facts));
        if (action.value()->isCheckable()) action.value()->setChecked(commands_.Is_Checked(action.key()));
    }
    for (const auto& [id, action] : popup_actions_) action->setEnabled(Is_Enabled(*Find_Command(id), facts));
    for (int number = 1; number <= prepared_.size(); ++number) {
        prepared_[number - 1]->setChecked(parts_.form.State().Current_Prepared_Script == number);
        prepared_[number - 1]->setEnabled(!facts.pick_in_progress && !facts.busy);
    }
    for (const Panel_Entry& entry : Panel_Table())
        if (entry.command.menu != Menu::None)
            panel_->Set_Enabled(entry.id, Is_Enabled(*Find_Command(entry.command), facts) ||
                                              (entry.id == Pick_Button && facts.pick_in_progress)); // stops it
    pattern_text_->setEnabled(!facts.pick_in_progress);
}

int Halvine_Window::File_Row_Count() const
{
    const bool lists_files =
        explorer_->Model().Shows_File_List() || explorer_->ExplorerGridMode() == Explorer_Grid_Mode::Files;
    return lists_files ? explorer_->ExplorerGrid().Content().Rows() : 0;
}

QStringList Halvine_Window::All_File_Paths() const
{
    QStringList paths;
    for (int row = 1; row <= File_Row_Count(); ++row) paths << explorer_->Model().Path_At(row);
    return paths;
}

void Halvine_Window::Refresh_Folders()
{
    explorer_->RefreshTree();
    explorer_->Refresh();
    Show_Status();
}

void Halvine_Window::List_Found_Files(const QStringList& paths)
{
    explorer_->InitializeGridExplicit(paths);
    Show_Status();
}

std::optional<Save_Options> Halvine_Window::Ask_Save_Options()
{
    Save_Options_Dialog dialog(last_save_options_, this);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    last_save_options_ = dialog.Options();
    return last_save_options_;
}

std::optional<std::array<int, 3>> Halvine_Window::Ask_Color(std::array<int, 3> red_green_blue)
{
    const QColor present(red_green_blue[0], red_green_blue[1], red_green_blue[2]);
    const QColor chosen = QColorDialog::getColor(present, this, tr("Halvine - Background Color"));
    if (!chosen.isValid()) return std::nullopt;
    return std::array<int, 3>{chosen.red(), chosen.green(), chosen.blue()};
}

void Halvine_Window::Edit_Script_Items(std::span<const int> keys)
{
    Script_Item_Deletion model(parts_.form.State(), keys);
    Script_Item_Dialog(model, &parts_.ports.platform, this).exec();
}

Bitmap_Handle Halvine_Window::Clipboard_Bitmap()
{
    return Count_Bitmap(Get_Bitmap_From_Clipboard(std::intptr_t(winId())));
}

bool Halvine_Window::Leave_Full_Window_View()
{
    if (!magnify_->Is_Full_Window()) return false;
    if (isFullScreen()) parts_.form.State().slide_show->Stop(); // a show over the whole screen ends with its view
    Show_Full_Window(false);
    return true;
}

bool Halvine_Window::Leave_Picture_List()
{
    if (!Shows_Picture_List()) return false;
    pages_->setCurrentIndex(0);
    strip_->setFocus();
    strip_->Draw_All_Thumbnails();
    return true;
}

void Halvine_Window::Show_Picture_List()
{
    list_->Fill();
    pages_->setCurrentIndex(1);
    list_->setFocus();
}

void Halvine_Window::Show_Full_Window(bool on)
{
    if (!on || parts_.form.State().current_picture_key != 0) Set_Full_Window_View(on);
}

void Halvine_Window::Set_Full_Window_View(bool on)
{
    if (on == magnify_->Is_Full_Window()) return;
    for (QWidget* part : {static_cast<QWidget*>(panel_), file_frame_, static_cast<QWidget*>(strip_), status_frame_,
                          static_cast<QWidget*>(menuBar())})
        part->setVisible(!on);
    magnify_->Set_Full_Window(on);
    magnify_->show();
    if (on)
        magnify_->setFocus();
    else
        strip_->setFocus();
}

void Halvine_Window::Set_Slide_Show_Look(bool running)
{
    if (running == panel_looks_running_) return;
    panel_looks_running_ = running;
    panel_->Exchange(Slide_Show_Button, Stop_Slide_Show_Button);
    magnify_->Set_Back_Color(running ? QColor(Qt::black) : QColor());
    if (running) magnify_->show();
    Schedule_Actions();
}
