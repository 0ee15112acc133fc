#include "Project_Folders.h"
#include "catalogue/Command_Table.h"

#include "tests/support/Test_Folder.h"

#include <gtest/gtest.h>
#include <set>

namespace {

TEST(Command_Rows, Every_Menu_Has_Mnemonics_That_Are_Its_Own)
{
    for (int menu = 0; menu < int(Menu::None); ++menu) {
        QStringList captions;
        for (const Command& row : Commands_Of(Menu(menu))) captions << QString::fromUtf8(row.caption);
        ASSERT_FALSE(captions.isEmpty()) << menu;
        std::set<QChar> letters;
        for (const QString& caption : With_Mnemonics(captions)) {
            const qsizetype at = caption.indexOf(QLatin1Char('&'));
            ASSERT_GE(at, 0) << caption.toStdString();
            EXPECT_TRUE(letters.insert(caption.at(at + 1).toLower()).second) << caption.toStdString();
        }
    }
}

TEST(Command_Rows, The_Menu_Bar_Has_Mnemonics_That_Are_Its_Own)
{
    std::set<QChar> letters;
    for (const Menu menu : Menu_Bar()) {
        const QString title = Menu_Title(menu);
        EXPECT_TRUE(letters.insert(title.at(title.indexOf(QLatin1Char('&')) + 1).toLower()).second)
            << title.toStdString();
    }
    EXPECT_EQ(9U, letters.size());
}

TEST(Command_Rows, Shortcuts_Are_Unique)
{
    std::set<std::string> shortcuts;
    for (const Command& row : Command_Table()) {
        if (*row.shortcut == 0) continue;
        EXPECT_TRUE(shortcuts.insert(row.shortcut).second) << row.shortcut;
    }
    for (const char* expected : {"Del", "Ctrl+A", "Ctrl+Q", "F5"}) EXPECT_EQ(1U, shortcuts.count(expected)) << expected;
}

/// A second copy of all numbers, captions and tooltips, in commands.txt: people, help pages and the handlers of other areas
/// go by them, and none of them changes by accident.
TEST(Command_Rows, Are_Those_That_Everybody_Knows)
{
    constexpr const char* Menus[] = {"File",        "Edit",      "Retouch", "Adjust", "Wand",
                                     "Edit_Adjust", "Zoom_View", "Search",  "Rename", "Select",
                                     "Rotate",      "Script",    "Options", "Slides", "Thumbnail_Popup"};
    std::string list;
    for (const Command& row : Command_Table())
        list += std::string(Menus[int(row.menu)]) + ' ' + std::to_string(row.number) + ' ' + row.caption + '\n';
    for (const Panel_Entry& entry : Panel_Table())
        list += "Panel " + std::to_string(entry.id) + ' ' + entry.icon + ' ' + entry.tooltip + '\n';
    EXPECT_EQ(Contents_Of(HALVINE_SOURCE_DIR "/tests/catalogue/commands.txt"), list);
}

TEST(Command_Rows, Are_Found_By_Menu_And_Number)
{
    ASSERT_NE(nullptr, Find_Command({Menu::Rotate, 101}));
    EXPECT_STREQ("Rotate Selected 90° Clockwise", Find_Command({Menu::Rotate, 101})->caption);
    EXPECT_EQ(nullptr, Find_Command({Menu::Rotate, 104}));
    EXPECT_EQ(nullptr, Find_Command({Menu::None, 101}));
    EXPECT_EQ(19U, Commands_Of(Menu::File).size());
    EXPECT_EQ(14U, Commands_Of(Menu::Retouch).size());
    EXPECT_TRUE(Commands_Of(Menu::None).empty());
}

TEST(Command_Rows, Every_Panel_Button_Has_A_Command_Or_Is_A_Partner)
{
    std::set<int> ids;
    for (const Panel_Entry& entry : Panel_Table()) {
        EXPECT_TRUE(ids.insert(entry.id).second) << entry.id;
        if (entry.command.menu != Menu::None)
            EXPECT_NE(nullptr, Find_Command(entry.command)) << entry.icon;
        else
            EXPECT_EQ(Stop_Pick_Button, entry.id);
        const Panel_Entry* partner = Find_Panel_Entry(entry.partner);
        EXPECT_EQ(entry.partner != 0 ? entry.id : 0, partner != nullptr ? partner->partner : 0);
    }
    EXPECT_EQ(nullptr, Find_Panel_Entry(99));
}

TEST(Command_Rows, Mnemonics_Prefer_First_Letters_And_Double_Other_Ampersands)
{
    EXPECT_EQ((QStringList{"&Open", "&Print", "O&ut", "&Run && Save"}),
              With_Mnemonics({"Open", "Print", "Out", "Run & Save"}));
    EXPECT_EQ((QStringList{"&A", "A"}), With_Mnemonics({"A", "A"}));
}

struct Enable_Case {
    const char* name;
    Command_Id id;
    Command_Facts facts;
    bool enabled;
};

TEST(Command_Rows, Are_Enabled_When_They_Can_Act)
{
    const Enable_Case cases[] = {
        {"pick without files", {Menu::File, 101}, {.pictures = 3}, false},
        {"pick with files", {Menu::File, 101}, {.files = 1}, true},
        {"discard without a selection", {Menu::File, 103}, {.pictures = 3}, false},
        {"rotate works on all when none is selected", {Menu::Rotate, 101}, {.pictures = 3}, true},
        {"rotate without pictures", {Menu::Rotate, 101}, {.files = 3}, false},
        {"paste without a copy", {Menu::Script, 202}, {.pictures = 3, .selected = 1}, false},
        {"paste with one", {Menu::Script, 202}, {.pictures = 3, .selected = 1, .copied_script = true}, true},
        {"prepared without one in force", {Menu::Script, 205}, {.pictures = 3}, false},
        {"prepared", {Menu::Script, 205}, {.pictures = 3, .prepared_script = true}, true},
        {"the view turns a current picture", {Menu::Options, 101}, {.current_picture = true}, true},
        {"stop without a show", {Menu::Slides, 402}, {.pictures = 3}, false},
        {"everything waits for a pick", {Menu::Select, 102}, {.pick_in_progress = true, .pictures = 3}, false},
        {"everything waits for a busy command", {Menu::File, 304}, {.busy = true}, false},
        {"but exit, which asks for itself", {Menu::File, 999}, {.pick_in_progress = true, .busy = true}, true},
        {"a submenu opens", {Menu::Edit, 101}, {}, true},
    };
    for (const Enable_Case& row : cases)
        EXPECT_EQ(row.enabled, Is_Enabled(*Find_Command(row.id), row.facts)) << row.name;
}

} // namespace
