#include "catalogue/Command_Table.h"

#include "catalogue/Catalogue_Commands.h"

#include <QtCore/QCoreApplication>
#include <algorithm>
#include <map>
#include <set>

namespace {

using C = Catalogue_Commands;
using M = Menu;
using N = Needs;

// Sorted by menu and number. A row without a handler stands in To_Come below, or opens a submenu.
constexpr Command Rows[] = {
    {M::File, 101, "Pick Selected", N::Files, &C::Pick_Selected, "Ctrl+Return"},
    {M::File, 102, "Pick/Append Selected", N::Files, &C::Pick_Append_Selected, "Ctrl+Shift+Return"},
    {M::File, 103, "Discard Selected", N::Selection, &C::Discard_Selected, "Del"},
    {M::File, 104, "Discard All", N::Pictures, &C::Discard_All},
    {M::File, 201, "Copy/Rename Selected to Folder...", N::Pictures},
    {M::File, 202, "Copy Selected to Folder", N::Selection, &C::Copy_Selected},
    {M::File, 203, "Move Selected to Folder", N::Selection, &C::Move_Selected},
    {M::File, 204, "Delete Selected from Folder", N::Selection, &C::Delete_Selected},
    {M::File, 205, "Save Selected As...", N::Selection, &C::Save_Selected_As, "Ctrl+S"},
    {M::File, 301, "New Folder...", N::Nothing, &C::New_Folder},
    {M::File, 302, "Rename Folder...", N::Nothing, &C::Rename_Selected_Folder},
    {M::File, 303, "Copy Folders...", N::Nothing, &C::Copy_Selected_Folders},
    {M::File, 304, "Refresh Folders/Files", N::Nothing, &C::Refresh_Folders, "F5"},
    {M::File, 801, "Print Setup...", N::Nothing},
    {M::File, 802, "Preview/Print...", N::Pictures, nullptr, "Ctrl+P"},
    {M::File, 901, "Open Configuration File...", N::Nothing, &C::Open_Configuration_File},
    {M::File, 902, "Save Configuration File...", N::Nothing, &C::Save_Configuration_File},
    {.menu = M::File,
     .number = 903,
     .caption = "Save Configuration On Exit",
     .needs = N::Nothing,
     .handler = &C::Toggle_Save_On_Exit,
     .is_check = true},
    {M::File, 999, "Exit", N::Nothing, &C::Exit, "Ctrl+Q"},

    {.menu = M::Edit, .number = 101, .caption = "Retouch Selected", .needs = N::Nothing, .submenu = M::Retouch},
    {.menu = M::Edit, .number = 102, .caption = "Adjust Selected", .needs = N::Nothing, .submenu = M::Adjust},
    {.menu = M::Edit, .number = 103, .caption = "Wand Selected", .needs = N::Nothing, .submenu = M::Wand},
    {M::Edit, 104, "Text Selected...", N::Selection},
    {M::Edit, 201, "Analyze...", N::Selection},
    {M::Edit, 202, "Rotate Selected Arbitrarily...", N::Selection},
    {M::Edit, 203, "Perspective Correct Selected...", N::Selection},
    {M::Edit, 204, "Color Correct Selected...", N::Selection},
    {.menu = M::Edit, .number = 301, .caption = "Edit Adjust", .needs = N::Nothing, .submenu = M::Edit_Adjust},
    {.menu = M::Edit, .number = 302, .caption = "Zoom View", .needs = N::Nothing, .submenu = M::Zoom_View},

    {M::Retouch, 101, "Retouch...", N::Selection},
    {M::Retouch, 102, "Clone...", N::Selection},
    {M::Retouch, 103, "Stamp...", N::Selection},
    {M::Retouch, 104, "Redeye...", N::Selection},
    {M::Retouch, 105, "Blemish...", N::Selection},
    {M::Retouch, 106, "Noise Reduce...", N::Selection},
    {M::Retouch, 107, "Contrast...", N::Selection},
    {M::Retouch, 108, "Saturation...", N::Selection},
    {M::Retouch, 109, "Color Shift...", N::Selection},
    {M::Retouch, 110, "Color Mix...", N::Selection},
    {M::Retouch, 111, "Burn...", N::Selection},
    {M::Retouch, 112, "Dodge...", N::Selection},
    {M::Retouch, 113, "Blur...", N::Selection},
    {M::Retouch, 114, "Sharpen...", N::Selection},

    {M::Adjust, 101, "Contrast Optimize...", N::Selection},
    {M::Adjust, 102, "Gamma...", N::Selection},
    {M::Adjust, 103, "Crop...", N::Selection},
    {M::Adjust, 104, "Scale...", N::Selection},
    {M::Adjust, 105, "Saturation...", N::Selection},
    {M::Adjust, 106, "Color Balance...", N::Selection},
    {M::Adjust, 107, "Blur...", N::Selection},
    {M::Adjust, 108, "Sharpen...", N::Selection},

    {M::Wand, 101, "Masked Paint...", N::Selection},
    {M::Wand, 102, "Contrast...", N::Selection},
    {M::Wand, 103, "Saturation...", N::Selection},
    {M::Wand, 104, "Color Shift...", N::Selection},
    {M::Wand, 105, "Noise Reduce...", N::Selection},
    {M::Wand, 106, "Color Mix...", N::Selection},
    {M::Wand, 107, "Burn...", N::Selection},
    {M::Wand, 108, "Dodge...", N::Selection},
    {M::Wand, 109, "Blur...", N::Selection},
    {M::Wand, 110, "Sharpen...", N::Selection},

    {M::Edit_Adjust, 101, "Contrast Optimize Selected...", N::Selection},
    {M::Edit_Adjust, 102, "Saturation Adjust Selected...", N::Selection},
    {M::Edit_Adjust, 103, "Color Balance Selected...", N::Selection},
    {M::Edit_Adjust, 104, "Gamma Adjust Selected...", N::Selection},
    {M::Edit_Adjust, 105, "Crop Selected...", N::Selection},
    {M::Edit_Adjust, 106, "Blur Selected...", N::Selection},
    {M::Edit_Adjust, 107, "Unsharp Mask Selected...", N::Selection},

    {M::Zoom_View, 101, "Analyze...", N::Selection},
    {M::Zoom_View, 102, "Scale Selected...", N::Selection},
    {M::Zoom_View, 103, "Rotate Selected Arbitrarily...", N::Selection},
    {M::Zoom_View, 104, "Perspective Correct Selected...", N::Selection},
    {M::Zoom_View, 105, "Redeye/Blemish/Noise...", N::Selection},
    {M::Zoom_View, 106, "Color Correct Selected...", N::Selection},
    {M::Zoom_View, 107, "Masked Paint Selected...", N::Selection},
    {M::Zoom_View, 108, "Color Mix Selected...", N::Selection},

    {M::Search, 101, "File Names Like (subdirectories)...", N::Nothing, &C::Search_File_Names, "Ctrl+F"},
    {M::Search, 102, "Descriptions Like (subdirectories)...", N::Nothing, &C::Search_Descriptions},

    {M::Rename, 101, "Define Rename Pattern...", N::Nothing},
    {M::Rename, 102, "Define Rename Formula...", N::Nothing},
    {M::Rename, 201, "Copy/Rename Selected...", N::Pictures},
    {M::Rename, 202, "Rename Selected...", N::Pictures, nullptr, "F2"},
    {M::Rename, 203, "Take Back Last Rename", N::Nothing},
    {M::Rename, 301, "Describe Selected...", N::Pictures},

    {M::Select, 101, "Select None", N::Selection, &C::Select_None, "Ctrl+Shift+A"},
    {M::Select, 102, "Select All", N::Pictures, &C::Select_All, "Ctrl+A"},
    {M::Select, 103, "Invert Selection", N::Pictures, &C::Invert_Selection, "Ctrl+I"},

    {M::Rotate, 101, "Rotate Selected 90° Clockwise", N::Pictures, &C::Rotate_Clockwise, "Ctrl+R"},
    {M::Rotate, 102, "Rotate Selected 90° Counterclockwise", N::Pictures, &C::Rotate_Counterclockwise, "Ctrl+Shift+R"},
    {M::Rotate, 103, "Rotate Selected 180", N::Pictures, &C::Rotate_Half},
    {M::Rotate, 201, "Rotate Selected Arbitrarily...", N::Selection},
    {M::Rotate, 301, "Flip Selected Horizontal", N::Pictures, &C::Flip_Horizontal},
    {M::Rotate, 302, "Flip Selected Vertical", N::Pictures, &C::Flip_Vertical},
    {M::Rotate, 401, "Save Selected Rotations/Flips", N::Selection, &C::Save_Selected_Rotations},
    {M::Rotate, 402, "Save All Rotations/Flips", N::Pictures, &C::Save_All_Rotations},

    {M::Script, 101, "Clear Selected Scripts", N::Selection, &C::Clear_Selected_Scripts},
    {M::Script, 102, "Clear All Scripts", N::Pictures, &C::Clear_All_Scripts},
    {M::Script, 201, "Copy Selected Script", N::Selection, &C::Copy_Selected_Script, "Ctrl+Shift+C"},
    {M::Script, 202, "Paste Copied Script Into Selected", N::Selection_And_Copy, &C::Paste_Copied_Into_Selected,
     "Ctrl+Shift+V"},
    {M::Script, 203, "Paste Copied Script Into All", N::Pictures_And_Copy, &C::Paste_Copied_Into_All},
    {M::Script, 204, "Paste Prepared Script Into Selected", N::Selection_And_Prepared,
     &C::Paste_Prepared_Into_Selected},
    {M::Script, 205, "Paste Prepared Script Into All", N::Pictures_And_Prepared, &C::Paste_Prepared_Into_All},
    {M::Script, 301, "Delete Script Items From Selected...", N::Selection, &C::Delete_Script_Items},
    {M::Script, 401, "Save Selected Scripts", N::Selection, &C::Save_Selected_Scripts},
    {M::Script, 402, "Save All Scripts", N::Pictures, &C::Save_All_Scripts},

    {M::Options, 101, "Rotate Blowup 90° Clockwise", N::Current_Picture, &C::Rotate_Blowup_Clockwise},
    {M::Options, 102, "Rotate Blowup 90° Counterclockwise", N::Current_Picture, &C::Rotate_Blowup_Counterclockwise},
    {M::Options, 201, "Zoom View", N::Selection},
    {M::Options, 301, "Camera Information...", N::Pictures, &C::Camera_Information, "Alt+Return"},
    {M::Options, 302, "Picture Histogram...", N::Pictures},
    {M::Options, 303, "Picture Analysis...", N::Pictures},
    {M::Options, 401, "Thumbnail List...", N::Pictures, &C::Thumbnail_List, "Ctrl+L"},
    {M::Options, 501, "Save Clipboard Image To File...", N::Nothing, &C::Save_Clipboard_Image},
    {M::Options, 502, "Convert Grayscale Image To RGB File...", N::Selection, &C::Convert_Grayscale_Image},
    {M::Options, 503, "Create Empty Image File...", N::Nothing, &C::Create_Empty_Image},
    {M::Options, 601, "Load Snapshots Of Selected", N::Selection, &C::Load_Snapshots},
    {M::Options, 602, "Save Selected As Snapshots", N::Selection, &C::Save_Snapshots},
    {M::Options, 603, "Restore From Selected Snapshot", N::Selection, &C::Restore_Snapshot},
    {M::Options, 701, "Set Background Color...", N::Nothing, &C::Set_Background_Color},

    {M::Slides, 101, "Open Slide Show...", N::Nothing, nullptr, "Ctrl+O"},
    {M::Slides, 102, "Append Slide Show...", N::Nothing},
    {M::Slides, 103, "Set Slide Times...", N::Pictures},
    {M::Slides, 201, "Save Slide Show (all)...", N::Pictures},
    {M::Slides, 202, "Save Slide Show (selected)...", N::Selection},
    {M::Slides, 203, "Copy Slide Show (all)...", N::Pictures},
    {M::Slides, 204, "Copy Slide Show (selected)...", N::Selection},
    {M::Slides, 301, "Display Interval...", N::Nothing},
    {.menu = M::Slides, .number = 302, .caption = "Display Full Window", .needs = N::Nothing, .is_check = true},
    {.menu = M::Slides, .number = 303, .caption = "Continuous Display", .needs = N::Nothing, .is_check = true},
    {M::Slides, 401, "Start Slide Show", N::Pictures_And_No_Show, nullptr, "F11"},
    {M::Slides, 402, "Stop Slide Show", N::Running_Show},

    {M::Thumbnail_Popup, 101, "Discard", N::Selection, &C::Discard_Selected},
    {M::Thumbnail_Popup, 102, "Delete", N::Selection, &C::Delete_Selected},
    {M::Thumbnail_Popup, 201, "Retouch...", N::Selection},
    {M::Thumbnail_Popup, 202, "Adjust...", N::Selection},
    {M::Thumbnail_Popup, 203, "Wand...", N::Selection},
    {M::Thumbnail_Popup, 204, "Text...", N::Selection},
    {M::Thumbnail_Popup, 301, "Camera Information...", N::Pictures, &C::Camera_Information},
    {M::Thumbnail_Popup, 302, "Zoom View...", N::Selection},
    {M::Thumbnail_Popup, 303, "Histogram...", N::Pictures},
};

// What is left to do: take a command out of this list when its handler comes.
constexpr Command_Id To_Come[] = {
    {M::File, 801},
    {M::File, 802},
    {M::Edit, 104},
    {M::Edit, 201},
    {M::Edit, 202},
    {M::Edit, 203},
    {M::Edit, 204},
    {M::Retouch, 101},
    {M::Retouch, 102},
    {M::Retouch, 103},
    {M::Retouch, 104},
    {M::Retouch, 105},
    {M::Retouch, 106},
    {M::Retouch, 107},
    {M::Retouch, 108},
    {M::Retouch, 109},
    {M::Retouch, 110},
    {M::Retouch, 111},
    {M::Retouch, 112},
    {M::Retouch, 113},
    {M::Retouch, 114},
    {M::Adjust, 101},
    {M::Adjust, 102},
    {M::Adjust, 103},
    {M::Adjust, 104},
    {M::Adjust, 105},
    {M::Adjust, 106},
    {M::Adjust, 107},
    {M::Adjust, 108},
    {M::Wand, 101},
    {M::Wand, 102},
    {M::Wand, 103},
    {M::Wand, 104},
    {M::Wand, 105},
    {M::Wand, 106},
    {M::Wand, 107},
    {M::Wand, 108},
    {M::Wand, 109},
    {M::Wand, 110},
    {M::Edit_Adjust, 101},
    {M::Edit_Adjust, 102},
    {M::Edit_Adjust, 103},
    {M::Edit_Adjust, 104},
    {M::Edit_Adjust, 105},
    {M::Edit_Adjust, 106},
    {M::Edit_Adjust, 107},
    {M::Zoom_View, 101},
    {M::Zoom_View, 102},
    {M::Zoom_View, 103},
    {M::Zoom_View, 104},
    {M::Zoom_View, 105},
    {M::Zoom_View, 106},
    {M::Zoom_View, 107},
    {M::Zoom_View, 108},
    {M::Rotate, 201},
    {M::Options, 201},
    {M::Options, 302},
    {M::Options, 303},
    {M::Thumbnail_Popup, 201},
    {M::Thumbnail_Popup, 202},
    {M::Thumbnail_Popup, 203},
    {M::Thumbnail_Popup, 204},
    {M::Thumbnail_Popup, 302},
    {M::Thumbnail_Popup, 303},
};

// Commands without a handler here: areas above the catalogue bring theirs.
constexpr Command_Id Brought[] = {
    {M::File, 201},   {M::Rename, 101}, {M::Rename, 102}, {M::Rename, 201}, {M::Rename, 202},
    {M::Rename, 203}, {M::Rename, 301}, {M::Slides, 101}, {M::Slides, 102}, {M::Slides, 103},
    {M::Slides, 201}, {M::Slides, 202}, {M::Slides, 203}, {M::Slides, 204}, {M::Slides, 301},
    {M::Slides, 302}, {M::Slides, 303}, {M::Slides, 401}, {M::Slides, 402},
};

constexpr Menu Bar[] = {M::File, M::Edit, M::Search, M::Rename, M::Select, M::Rotate, M::Script, M::Options, M::Slides};

constexpr Panel_Entry Panel[] = {
    {1, "IDI_HALVINE_PICK", "Pick selected files", {M::File, 101}, 1, Stop_Pick_Button},
    {2, "IDI_HALVINE_PICK_APPEND", "Pick/Append selected files, shift-click to append as selected", {M::File, 102}, 1},
    {3, "IDI_HALVINE_DISCARD", "Discard selected, shift-left-click to discard all", {M::File, 103}, 1},
    {4, "IDI_HALVINE_SEARCH_FILES", "Search for files...", {M::Search, 101}, 2},
    {5, "IDI_HALVINE_SEARCH_DESCRIPTIONS", "Search for descriptions...", {M::Search, 102}, 2},
    {6, "IDI_HALVINE_NEW_FOLDER", "Create new folder...", {M::File, 301}, 3},
    {7, "IDI_HALVINE_COPY_RENAME", "Copy/rename selected...", {M::File, 201}, 3},
    {8, "IDI_HALVINE_COPY", "Copy selected", {M::File, 202}, 3},
    {9, "IDI_HALVINE_MOVE", "Move selected", {M::File, 203}, 3},
    {10, "IDI_HALVINE_DELETE", "Delete selected", {M::File, 204}, 3},
    {11, "IDI_HALVINE_RENAME", "Rename selected...", {M::Rename, 202}, 4},
    {12, "IDI_HALVINE_DESCRIBE", "Describe selected...", {M::Rename, 301}, 4},
    {13, "IDI_HALVINE_ROTATE_90CW", "Rotate selected 90 degrees clockwise", {M::Rotate, 101}, 5},
    {14, "IDI_HALVINE_ROTATE_90CCW", "Rotate selected 90 degrees counterclockwise", {M::Rotate, 102}, 5},
    {15, "IDI_HALVINE_ZOOM_VIEW", "Zoom view", {M::Options, 201}, 6},
    {16, "IDI_HALVINE_HISTOGRAM", "Picture analysis", {M::Options, 303}, 6},
    {17, "IDI_HALVINE_SLIDESHOW", "Start slide show", {M::Slides, 401}, 7, Stop_Slide_Show_Button},
    {18, "IDI_HALVINE_PRINT", "Print selected pictures...", {M::File, 802}, 8},
    {19, "IDI_HALVINE_PICK_STOP", "Stop pick", {}, 8, Pick_Button, true},
    {20, "IDI_SLIDE_SHOW_STOP", "Stop slide show", {M::Slides, 402}, 8, Slide_Show_Button, true},
};

constexpr Command_Id Id_Of(const Command& row)
{
    return {row.menu, row.number};
}

constexpr bool Sorted_And_Unique()
{
    for (std::size_t i = 1; i < std::size(Rows); ++i)
        if (!(Id_Of(Rows[i - 1]) < Id_Of(Rows[i]))) return false;
    return true;
}
static_assert(Sorted_And_Unique());

constexpr int Places_In(std::span<const Command_Id> list, Command_Id id)
{
    int places = 0;
    for (const Command_Id& row : list) places += row == id ? 1 : 0;
    return places;
}

constexpr bool Each_Row_Stands_In_One_Place()
{
    for (const Command& row : Rows) {
        const int handled = row.handler != nullptr || row.submenu != Menu::None ? 1 : 0;
        if (handled + Places_In(To_Come, Id_Of(row)) + Places_In(Brought, Id_Of(row)) != 1) return false;
    }
    return true;
}
#ifndef __SANITIZE_ADDRESS__ // under the sanitizers the address of a function is no constant
static_assert(Each_Row_Stands_In_One_Place());
#endif

bool Is_There(Needs needs, const Command_Facts& facts)
{
    switch (needs) {
    case Needs::Nothing: return true;
    case Needs::Files: return facts.files > 0;
    case Needs::Pictures: return facts.pictures > 0;
    case Needs::Selection: return facts.selected > 0;
    case Needs::Current_Picture: return facts.current_picture;
    case Needs::Selection_And_Copy: return facts.selected > 0 && facts.copied_script;
    case Needs::Pictures_And_Copy: return facts.pictures > 0 && facts.copied_script;
    case Needs::Selection_And_Prepared: return facts.selected > 0 && facts.prepared_script;
    case Needs::Pictures_And_Prepared: return facts.pictures > 0 && facts.prepared_script;
    case Needs::Running_Show: return facts.show_running;
    case Needs::Pictures_And_No_Show: return facts.pictures > 0 && !facts.show_running;
    }
    return false;
}

/// Where mnemonics may stand in a caption: the first letters of words before all others.
std::vector<qsizetype> Mnemonic_Places(const QString& caption)
{
    std::vector<qsizetype> first, others;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        const QChar letter = caption.at(i);
        if (!letter.isLetterOrNumber() || letter.unicode() >= 0x80) continue;
        const bool begins = i == 0 || !caption.at(i - 1).isLetterOrNumber();
        (begins ? first : others).push_back(i);
    }
    first.insert(first.end(), others.begin(), others.end());
    return first;
}

/// Gives each caption a letter of its own. One that finds none free takes another's, who looks for a new one.
class Mnemonic_Matching {
public:
    explicit Mnemonic_Matching(const QStringList& captions) : captions_(captions), places_(captions.size(), -1)
    {
        for (std::size_t i = 0; i < places_.size(); ++i) {
            std::set<QChar> tried;
            if (!Take_Free(i)) Take_Over(i, tried);
        }
    }
    qsizetype Place(std::size_t caption) const { return places_[caption]; } ///< -1 none

private:
    QChar Letter(std::size_t caption, qsizetype at) const { return captions_[qsizetype(caption)].at(at).toLower(); }
    void Give(std::size_t caption, qsizetype at)
    {
        places_[caption] = at;
        owners_[Letter(caption, at)] = caption;
    }
    bool Take_Free(std::size_t caption)
    {
        for (const qsizetype at : Mnemonic_Places(captions_[qsizetype(caption)])) {
            if (owners_.count(Letter(caption, at)) > 0) continue;
            Give(caption, at);
            return true;
        }
        return false;
    }
    bool Take_Over(std::size_t caption, std::set<QChar>& tried) // as deep as there are letters
    {
        for (const qsizetype at : Mnemonic_Places(captions_[qsizetype(caption)])) {
            const QChar letter = Letter(caption, at);
            if (!tried.insert(letter).second) continue;
            const std::size_t owner = owners_.at(letter);
            if (!Take_Free(owner) && !Take_Over(owner, tried)) continue;
            Give(caption, at);
            return true;
        }
        return false;
    }

    QStringList captions_;
    std::vector<qsizetype> places_;
    std::map<QChar, std::size_t> owners_;
};

} // namespace

std::span<const Command> Command_Table()
{
    return Rows;
}

std::span<const Command> Commands_Of(Menu menu)
{
    const auto [first, last] = std::equal_range(std::begin(Rows), std::end(Rows), Command{menu, 0, "", Needs::Nothing},
                                                [](const Command& a, const Command& b) { return a.menu < b.menu; });
    return {first, last};
}

const Command* Find_Command(Command_Id id)
{
    const auto found = std::lower_bound(std::begin(Rows), std::end(Rows), id,
                                        [](const Command& row, const Command_Id& key) { return Id_Of(row) < key; });
    return found != std::end(Rows) && Id_Of(*found) == id ? found : nullptr;
}

std::span<const Menu> Menu_Bar()
{
    return Bar;
}

QString Menu_Title(Menu menu)
{
    const char* title = "";
    switch (menu) {
    case Menu::File: title = QT_TRANSLATE_NOOP("Command_Table", "&File"); break;
    case Menu::Edit: title = QT_TRANSLATE_NOOP("Command_Table", "&Edit"); break;
    case Menu::Search: title = QT_TRANSLATE_NOOP("Command_Table", "Searc&h"); break;
    case Menu::Rename: title = QT_TRANSLATE_NOOP("Command_Table", "&Rename"); break;
    case Menu::Select: title = QT_TRANSLATE_NOOP("Command_Table", "&Select"); break;
    case Menu::Rotate: title = QT_TRANSLATE_NOOP("Command_Table", "Ro&tate"); break;
    case Menu::Script: title = QT_TRANSLATE_NOOP("Command_Table", "S&cript"); break;
    case Menu::Options: title = QT_TRANSLATE_NOOP("Command_Table", "&Options"); break;
    case Menu::Slides: title = QT_TRANSLATE_NOOP("Command_Table", "S&lides"); break;
    case Menu::Retouch:
    case Menu::Adjust:
    case Menu::Wand:
    case Menu::Edit_Adjust:
    case Menu::Zoom_View:
    case Menu::Thumbnail_Popup:
    case Menu::None: return {};
    }
    return QCoreApplication::translate("Command_Table", title);
}

bool Is_Enabled(const Command& command, const Command_Facts& facts)
{
    if (command.submenu != Menu::None) return true;
    const bool is_exit = command.menu == Menu::File && command.number == 999;
    if (is_exit) return true;
    return !facts.pick_in_progress && !facts.busy && Is_There(command.needs, facts);
}

std::span<const Command_Id> Commands_To_Come()
{
    return To_Come;
}

std::span<const Command_Id> Commands_Brought()
{
    return Brought;
}

QStringList With_Mnemonics(const QStringList& captions)
{
    const Mnemonic_Matching matching(captions);
    const auto doubled = [](QString text) { return text.replace(QLatin1Char('&'), QStringLiteral("&&")); };
    QStringList marked;
    for (const QString& caption : captions) {
        const qsizetype at = matching.Place(std::size_t(marked.size()));
        marked << (at < 0 ? doubled(caption) : doubled(caption.left(at)) + QLatin1Char('&') + doubled(caption.mid(at)));
    }
    return marked;
}

std::span<const Panel_Entry> Panel_Table()
{
    return Panel;
}

const Panel_Entry* Find_Panel_Entry(int id)
{
    const auto found = std::find_if(std::begin(Panel), std::end(Panel), [id](const auto& row) { return row.id == id; });
    return found != std::end(Panel) ? found : nullptr;
}
