#include "frame/Default_Printer.h"

#include "tests/support/Test_Folder.h"

#include <QtCore/QDir>
#include <gtest/gtest.h>

namespace {

struct Printer_Case {
    const char* name;
    const char* machine;
    const char* user;
    const char* named;
    const char* printer;
    Page_Orientation orientation = Page_Orientation::Portrait;
};

constexpr auto Landscape = Page_Orientation::Landscape;

class Default_Printer_Files : public testing::TestWithParam<Printer_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Default_Printer_Files,
    testing::Values(
        Printer_Case{"without_any_line", "", "", "", ""},
        Printer_Case{"of_the_machine", "Default Office orientation-requested=4", "", "", "Office", Landscape},
        Printer_Case{"of_the_user_before_that_of_the_machine", "Default Office orientation-requested=4",
                     "Default Attic media=A4", "", "Attic"},
        Printer_Case{"of_the_machine_with_the_users_options", "Default Office orientation-requested=3",
                     "Dest Office landscape=true", "", "Office", Landscape},
        Printer_Case{"of_the_machine_with_the_options_that_the_user_left", "Default Office landscape",
                     "Dest Office media=A4", "", "Office", Landscape},
        Printer_Case{"from_the_environment", "Default Office", "Dest Attic orientation-requested=5", "Attic", "Attic",
                     Landscape},
        Printer_Case{"that_only_the_environment_knows", "Default Office landscape", "", "Attic", "Attic"},
        Printer_Case{"among_others", "Dest Attic landscape\nDefault Office\nDest Cellar landscape", "", "", "Office"},
        Printer_Case{"in_any_case", "DEFAULT Office\ndest OFFICE Landscape=YES", "", "", "Office", Landscape},
        Printer_Case{"with_an_instance", "Default Office/draft landscape\nDest Office media=A4", "", "", "Office/draft",
                     Landscape},
        Printer_Case{"upside_down", "Default Office orientation-requested=6", "", "", "Office"},
        Printer_Case{"not_on_its_side", "Default Office landscape=false", "", "", "Office"},
        Printer_Case{"whose_last_option_counts", "Default Office orientation-requested=4 orientation-requested=3", "",
                     "", "Office"},
        Printer_Case{"with_words_in_quotes", "Default Office printer-info='the landscape one' media=A4", "", "",
                     "Office"},
        Printer_Case{"with_words_in_double_quotes", R"(Default Office info="it's a landscape one")", "", "", "Office"},
        Printer_Case{"with_blanks_behind_backslashes", R"(Default Office info=the\ landscape\ one landscape)", "", "",
                     "Office", Landscape},
        Printer_Case{"beside_damaged_lines", "Default\n\n# landscape\nOffice landscape\nDefault Office 'land\\", "", "",
                     "Office"}),
    [](const auto& row) { return row.param.name; });

TEST_P(Default_Printer_Files, Are_Read)
{
    const Default_Printer printer =
        Default_Printer_From(GetParam().machine, GetParam().user, QString::fromUtf8(GetParam().named));
    EXPECT_EQ(GetParam().printer, printer.name.toStdString());
    EXPECT_EQ(GetParam().orientation, printer.orientation);
}

/// A home of its own, and no printer in the environment.
class Default_Printer_Of_The_User : public testing::Test {
protected:
    Default_Printer_Of_The_User()
    {
        qputenv("HOME", folder.Path().c_str());
        qunsetenv("LPDEST");
        qunsetenv("PRINTER");
        QDir().mkpath(QString::fromStdString(folder.File(".cups")));
        Put_File(folder.File(".cups/lpoptions"), "Default Office landscape=true\nDest Attic\n");
    }
    ~Default_Printer_Of_The_User() override
    {
        qputenv("HOME", home);
        qunsetenv("LPDEST");
        qunsetenv("PRINTER");
    }
    const QByteArray home = qgetenv("HOME");
    const Test_Folder folder;
};

TEST_F(Default_Printer_Of_The_User, Is_Read_From_The_File_At_Home)
{
    EXPECT_EQ((Default_Printer{"Office", Landscape}), Read_Default_Printer());
}

TEST_F(Default_Printer_Of_The_User, Is_Named_By_The_Environment)
{
    qputenv("PRINTER", "Attic");
    EXPECT_EQ((Default_Printer{"Attic"}), Read_Default_Printer());
    qputenv("LPDEST", "Office");
    EXPECT_EQ((Default_Printer{"Office", Landscape}), Read_Default_Printer());
}

TEST_F(Default_Printer_Of_The_User, Is_Not_The_Name_That_Stands_For_Any_Printer)
{
    qputenv("PRINTER", "lp");
    EXPECT_EQ("Office", Read_Default_Printer().name);
    qputenv("LPDEST", "lp");
    EXPECT_EQ("lp", Read_Default_Printer().name) << "unless it is meant";
}

} // namespace
