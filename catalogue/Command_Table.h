#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <span>
#include <vector>

class Catalogue_Commands;

/// The commands of the main window as rows: menus, the filmstrip's popup, shortcuts and enable rules are built from here.

/// The menus; the order of the first level in the menu bar is Menu_Bar().
enum class Menu : int {
    File,
    Edit,
    Retouch,
    Adjust,
    Wand,
    Edit_Adjust,
    Zoom_View,
    Search,
    Rename,
    Select,
    Rotate,
    Script,
    Options,
    Slides,
    Thumbnail_Popup,
    None, ///< for commands that open no submenu
};

/// What must be there before a command can act.
enum class Needs {
    Nothing,
    Files,              ///< rows in the file grid
    Pictures,           ///< at least one picture
    Selection,          ///< at least one selected picture
    Current_Picture,    ///< a picture beside the filmstrip
    Selection_And_Copy, ///< a selection and a copied script
    Pictures_And_Copy,
    Selection_And_Prepared, ///< a selection and a prepared script in force
    Pictures_And_Prepared,
    Running_Show,
    Pictures_And_No_Show, ///< at least one picture, and no show is running
};

struct Command {
    Menu menu;
    int number; ///< group x 100 + position; a separator stands between groups
    const char* caption;
    Needs needs;
    void (Catalogue_Commands::*handler)() = nullptr; ///< null: see Commands_To_Come and Commands_Brought
    const char* shortcut = "";                       ///< portable text, "Ctrl+A"
    Menu submenu = Menu::None;                       ///< the row opens this menu
    bool is_check = false;
};

struct Command_Id {
    Menu menu = Menu::None;
    int number = 0;
    auto operator<=>(const Command_Id&) const = default;
};

/// What the enable rules look at.
struct Command_Facts {
    bool pick_in_progress = false;
    bool busy = false;
    int files = 0; ///< rows of the file grid
    int pictures = 0;
    int selected = 0;
    bool current_picture = false;
    bool copied_script = false;
    bool prepared_script = false;
    bool show_running = false;
};

std::span<const Command> Command_Table();        ///< sorted by menu and number
std::span<const Command> Commands_Of(Menu menu); ///< in order
const Command* Find_Command(Command_Id id);      ///< null when there is none
std::span<const Menu> Menu_Bar();                ///< the menus of the first level, left to right
QString Menu_Title(Menu menu);                   ///< with its mnemonic
bool Is_Enabled(const Command& command, const Command_Facts& facts);

/// The commands that are not there yet; they answer "Feature Not Implemented". A row without a handler stands here too.
std::span<const Command_Id> Commands_To_Come();

/// The commands whose handlers come from areas above the catalogue, through Catalogue_Commands::Set_Handler.
std::span<const Command_Id> Commands_Brought();

/// The captions with an "&" before a letter or digit that no other caption of the list has; the first letters of words
/// come first. A caption that finds none free stays without. "&" in a caption is doubled.
QStringList With_Mnemonics(const QStringList& captions);

/// A button of the panel across the window's top.
struct Panel_Entry {
    int id;
    const char* icon;
    const char* tooltip;
    Command_Id command; ///< Menu::None for a partner that has a meaning of its own
    int group;          ///< a spacer stands between groups
    int partner = 0;    ///< the button it exchanges places with; 0 none
    bool hidden = false;
};

constexpr int Pick_Button = 1;
constexpr int Pick_Append_Button = 2;
constexpr int Discard_Button = 3;
constexpr int Slide_Show_Button = 17;
constexpr int Stop_Pick_Button = 19;
constexpr int Stop_Slide_Show_Button = 20;

std::span<const Panel_Entry> Panel_Table();
const Panel_Entry* Find_Panel_Entry(int id);
