#include "frame/Settings_Store.h"

#include "frame/ports/Scripted_Platform.h"
#include "tests/support/Test_Folder.h"

#include <QtCore/QFile>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

namespace {

Program_State State_From(const QString& line)
{
    Program_State state;
    Read_Settings_String(state, line);
    return state;
}

struct Interval_Case {
    const char* name;
    const char* line;
    float expected;
};

class Slide_Interval : public testing::TestWithParam<Interval_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Slide_Interval,
    testing::Values(Interval_Case{"too_long_keeps_the_default", "SDI:45", 2.0F},
                    Interval_Case{"longest", "SDI:30", 30.0F}, Interval_Case{"shortest", "SDI:0.001", 0.001F},
                    Interval_Case{"zero", "SDI:0", 2.0F}, Interval_Case{"negative", "SDI:-3", 2.0F},
                    Interval_Case{"no_number", "SDI:'5'", 2.0F}, Interval_Case{"two_points", "SDI:1.2.3", 2.0F},
                    Interval_Case{"text_behind_it", "SDI:5 seconds,DIR:'x'", 5.0F},
                    Interval_Case{"out_of_range_keeps_what_is_in_force", "SDI:7,SDI:99", 7.0F},
                    Interval_Case{"keyword_in_small_letters", "sdi:7", 7.0F}),
    [](const auto& row) { return row.param.name; });

TEST_P(Slide_Interval, Is_Read)
{
    EXPECT_EQ(GetParam().expected, State_From(GetParam().line).Slide_Display_Interval);
}

struct Path_Case {
    const char* name;
    const char* line;
    const char* expected;
};

class Start_Folder : public testing::TestWithParam<Path_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Start_Folder,
    testing::Values(Path_Case{"quoted", "DIR:'/a/b/'", "/a/b/"}, Path_Case{"semicolon", "PRN:'p';DIR:'/a'", "/a"},
                    Path_Case{"apostrophe_doubled", "DIR:'/it''s'", "/it's"},
                    Path_Case{"double_quotes", "DIR:\"/a\"", "/a"}, Path_Case{"angle_brackets", "DIR:</a>", "/a"},
                    Path_Case{"comment_changes_nothing", "~DIR:'x'", ""},
                    Path_Case{"record_behind_a_comment", "~DIR:'x',DIR:'y'", "y"},
                    Path_Case{"comma_in_a_comment_s_text", "~DIR:'x,DIR:z',DIR:'y'", "y"},
                    Path_Case{"old_record_is_read_past", "EAS:1:2:'a,b',DIR:'y'", "y"},
                    Path_Case{"unknown_record", "XYZ:'DIR:''q''',DIR:'y'", "y"},
                    Path_Case{"four_letters", "DIRS:'x',DIR:'y'", "y"},
                    Path_Case{"more_values_are_passed_over", "DIR:'y':'z':5,PRN:'p'", "y"},
                    Path_Case{"no_quote_keeps_what_stood_there", "DIR:'y',DIR:z", "y"},
                    Path_Case{"quote_that_never_closes", "DIR:'/a,PRN:b", "/a,PRN:b"},
                    Path_Case{"blanks_anywhere", "  DIR  :  'y'  ,  ", "y"}, Path_Case{"empty_line", "", ""}),
    [](const auto& row) { return row.param.name; });

TEST_P(Start_Folder, Is_Read)
{
    EXPECT_EQ(GetParam().expected, State_From(QString::fromUtf8(GetParam().line)).Default_Path.toStdString());
}

TEST(Settings_Line, An_Empty_One_Leaves_All_Defaults)
{
    const Program_State state = State_From(QString());
    EXPECT_EQ("", state.Default_Path);
    EXPECT_EQ("", state.Default_Printer_Name);
    EXPECT_EQ("*.jpg;*.jif;*.tif", state.Default_Extensions);
    EXPECT_EQ(2.0F, state.Slide_Display_Interval);
    EXPECT_EQ((Background_Color{255, 255, 255}), state.background);
    EXPECT_EQ((Name_Value_Pair{"(none)", ""}), state.Rename_Formulas[0]);
    EXPECT_EQ(0, state.Rename_Formulas.Count());
}

struct Pair_Case {
    const char* name;
    const char* text;
    Name_Value_Pair expected;
};

class Pair_Text : public testing::TestWithParam<Pair_Case> {};

INSTANTIATE_TEST_SUITE_P(All, Pair_Text,
                         testing::Values(Pair_Case{"name_and_value", "'a','b'", {"a", "b"}},
                                         Pair_Case{"apostrophe", "'it''s','b'", {"it's", "b"}},
                                         Pair_Case{"separator_inside", "'a','b'',''c'", {"a", "b','c"}},
                                         Pair_Case{"no_quote_is_both", "plain, text", {"plain, text", "plain, text"}},
                                         Pair_Case{"name_alone", "'a'", {"a", "a"}},
                                         Pair_Case{"no_comma_behind_the_name", "'a' 'b'", {"a", "a"}},
                                         Pair_Case{"blank_first_opens_no_quote", " 'a','b'", {" 'a','b'", " 'a','b'"}},
                                         Pair_Case{"empty_value", "'a',''", {"a", ""}}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Pair_Text, Is_Read)
{
    const auto pair = Pair_From_Text(QString::fromUtf8(GetParam().text));
    ASSERT_TRUE(pair);
    EXPECT_EQ(GetParam().expected.Name.toStdString(), pair->Name.toStdString());
    EXPECT_EQ(GetParam().expected.Value.toStdString(), pair->Value.toStdString());
}

TEST(Pair_Text, An_Empty_Text_Adds_Nothing)
{
    EXPECT_FALSE(Pair_From_Text(QString()));
    EXPECT_EQ(0, State_From("RNF:\"\",RNP:''").Rename_Formulas.Count());
}

TEST(Settings_Line, Is_Written_In_Its_Order)
{
    Program_State state;
    state.Default_Path = "/it's/";
    state.Default_Printer_Name = "Laser";
    state.Rename_Patterns.Append({"p", "*"});
    state.Rename_Formulas.Append({"f", "\"x\""});
    state.File_Data_Formulas.Append({"d", "'"});
    EXPECT_EQ("DIR:'/it''s/',PRN:'Laser',SDI:2.00,EXT:'*.jpg;*.jif;*.tif',RNP:\"'p','*'\",RNF:\"'f','\"\"x\"\"'\","
              "FDF:\"'d',''''\"",
              Settings_String_Of(state, true).toStdString());
    EXPECT_EQ(-1, Settings_String_Of(state, false).indexOf("EXT"));
}

TEST(Settings_Line, Names_With_Any_Quotes_Survive)
{
    std::mt19937 random(11);
    const QString alphabet = QStringLiteral("a'\"<>,;:~ \u00e9&");
    const auto any_text = [&] {
        QString text(1, u'n');
        for (unsigned left = random() % 12; left > 0; --left)
            text += alphabet[qsizetype(random() % unsigned(alphabet.size()))];
        return text;
    };
    for (int turn = 0; turn < 500; ++turn) {
        Program_State state;
        state.Default_Path = any_text();
        state.Default_Extensions = any_text();
        state.Rename_Patterns.Append({any_text(), any_text()});
        state.Rename_Formulas.Append({any_text(), any_text()});
        state.Rename_Formulas.Append({any_text(), QString()});
        const QString line = Settings_String_Of(state, true);
        const Program_State back = State_From(line);
        EXPECT_EQ(state.Default_Path, back.Default_Path) << line.toStdString();
        EXPECT_EQ(state.Default_Extensions, back.Default_Extensions) << line.toStdString();
        EXPECT_EQ(state.Rename_Patterns, back.Rename_Patterns) << line.toStdString();
        EXPECT_EQ(state.Rename_Formulas, back.Rename_Formulas) << line.toStdString();
    }
}

TEST(Settings_Line, Any_Text_Is_Read_To_Its_End)
{
    std::mt19937 random(5);
    const QString alphabet = QStringLiteral("DIRSNFPXETA:,;'\"<>~-+.0123456789 &\u00e9\n");
    for (int turn = 0; turn < 5000; ++turn) {
        QString line;
        for (unsigned left = random() % 80; left > 0; --left)
            line += alphabet[qsizetype(random() % unsigned(alphabet.size()))];
        const float interval = State_From(line).Slide_Display_Interval;
        EXPECT_TRUE(interval >= 0.001F && interval <= 30.0F) << line.toStdString();
    }
}

TEST(Empty_Lists, Are_Completed_With_The_First_Entries)
{
    Program_State state;
    Complete_Empty_Lists(state);
    ASSERT_EQ(2, state.Rename_Formulas.Count());
    ASSERT_EQ(3, state.File_Data_Formulas.Count());
    EXPECT_EQ(0, state.Rename_Patterns.Count());
    EXPECT_EQ("ChangeTo & \"-\" & Format(FileDate, \"yyyymmdd\")  & \"-\" & FileSerial",
              state.Rename_Formulas[1].Value);
    EXPECT_EQ("FileName & \" (\" & Format(FileDate, \"mmm d, yyyy\")  & \")\"", state.File_Data_Formulas[2].Value);
    EXPECT_EQ("FileDescr", state.File_Data_Formulas[3].Value);
}

TEST(Empty_Lists, A_List_With_One_Entry_Of_The_Users_Is_Left_Alone)
{
    Program_State state = State_From("RNF:\"'mine','1'\"");
    Complete_Empty_Lists(state);
    EXPECT_EQ(1, state.Rename_Formulas.Count());
    EXPECT_EQ(3, state.File_Data_Formulas.Count());
}

class Settings_Files : public testing::Test {
protected:
    QString Write(const char* name, const QByteArray& text)
    {
        const QString path = Path(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path;
    }
    QString Path(const char* name) const { return QString::fromStdString(folder_.File(name)); }
    Test_Folder folder_;
};

TEST_F(Settings_Files, Are_Read_At_Once_And_The_Line_Goes_On)
{
    const QString path = Write("a.ini", "\r\n  SDI:5  \r\n~SDI:9\r\nDIR:'/in'\r\n");
    const Program_State state = State_From("DIR:'/out',INI:'" + path + "',PRN:'p'");
    EXPECT_EQ(5.0F, state.Slide_Display_Interval);
    EXPECT_EQ("/in", state.Default_Path);
    EXPECT_EQ("p", state.Default_Printer_Name);
}

TEST_F(Settings_Files, One_That_Includes_Itself_Stops_After_Four_Levels)
{
    const QString path = Path("a.ini");
    Write("a.ini", ("RNP:'x'\nINI:'" + path + "'\n").toUtf8());
    EXPECT_EQ(3, State_From("INI:'" + path + "'").Rename_Patterns.Count()); // the line itself is the first level
}

TEST_F(Settings_Files, Nested_Four_Deep_Are_Not_Read)
{
    const QString path = Write("a.ini", "SDI:5");
    Program_State state;
    Read_Settings_File(state, path, 4);
    EXPECT_EQ(2.0F, state.Slide_Display_Interval);
    Read_Settings_File(state, "  " + path + " ", 3);
    EXPECT_EQ(5.0F, state.Slide_Display_Interval);
}

TEST_F(Settings_Files, That_Include_One_Another_A_Thousand_Times_Come_To_An_End)
{
    const QString path = Path("a.ini");
    QByteArray text = "RNP:'x'\n";
    for (int line = 0; line < 1000; ++line) text += "INI:'" + path.toUtf8() + "'\n";
    Write("a.ini", text);
    EXPECT_EQ(Settings_Includes_Limit, State_From("INI:'" + path + "'").Rename_Patterns.Count());
}

TEST_F(Settings_Files, That_Are_Missing_Or_No_Files_Are_Passed_Over)
{
    ASSERT_EQ(0, mkfifo(folder_.File("fifo").c_str(), 0600));
    for (const QString& path : {Path("missing"), Path("fifo"), Path("."), QString(), QStringLiteral("/dev/zero")}) {
        const Program_State state = State_From("INI:'" + path + "',SDI:4");
        EXPECT_EQ(4.0F, state.Slide_Display_Interval) << path.toStdString();
    }
}

TEST_F(Settings_Files, Above_The_Limit_Are_Passed_Over)
{
    const QString path = Write("a.ini", "SDI:5\n" + QByteArray(2 << 20, ' '));
    EXPECT_EQ(2.0F, State_From("INI:'" + path + "'").Slide_Display_Interval);
}

TEST(Stored_Settings, Are_The_Line_And_The_Alias)
{
    Settings_In_Memory settings;
    Write_Settings_String(Program_State(), settings, "tree alias", true);
    EXPECT_EQ("tree alias", Read_Stored_Value(settings, Alias_Value));
    EXPECT_EQ("DIR:'',PRN:'',SDI:2.00,EXT:'*.jpg;*.jif;*.tif'", Read_Stored_Value(settings, Settings_Value));
}

TEST(Stored_Settings, Are_Read_From_The_Machine_Where_The_User_Has_None)
{
    Settings_In_Memory settings;
    settings.machine[Settings_Key][Settings_Value] = "SDI:9";
    EXPECT_EQ("SDI:9", Read_Stored_Value(settings, Settings_Value));
    Write_Settings_String(Program_State(), settings, QString(), false);
    EXPECT_EQ("DIR:'',PRN:'',SDI:2.00", Read_Stored_Value(settings, Settings_Value));
    EXPECT_EQ("SDI:9", settings.machine[Settings_Key][Settings_Value]);
}

TEST(Stored_Settings, Are_Read_Up_To_Their_Longest)
{
    Settings_In_Memory settings;
    settings.user[Settings_Key][Settings_Value] = QString(70000, u'x');
    EXPECT_EQ(65536, Read_Stored_Value(settings, Settings_Value).size());
}

TEST(Stored_Settings, A_Failed_Write_Is_Dropped)
{
    Settings_In_Memory settings;
    settings.refuse_writes = true;
    Write_Settings_String(Program_State(), settings, "a", true);
    EXPECT_EQ("", Read_Stored_Value(settings, Settings_Value));
}

} // namespace
