#include "frame/Configuration_File.h"

#include "tests/support/Test_Folder.h"

#include <gtest/gtest.h>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

struct Reading {
    Program_State state;
    bool complete = false;
};

Reading Reading_Of(const char* text)
{
    Reading reading;
    reading.state.Default_Path = Q("/before/");
    reading.state.Rename_Formulas.Append({Q("old"), Q("1")});
    reading.complete = Read_Configuration_Text(reading.state, Q(text));
    return reading;
}

TEST(Configuration_File, Another_First_Tag_Changes_Nothing)
{
    for (const char* text : {"", "words", "<hvSlideShow><DIR>x</DIR></hvSlideShow>", "<DIR>x</DIR>", "DIR:'x'"}) {
        const Reading reading = Reading_Of(text);
        EXPECT_FALSE(reading.complete) << text;
        EXPECT_EQ(reading.state.Default_Path, Q("/before/"));
        EXPECT_EQ(reading.state.Rename_Formulas.Count(), 1);
    }
}

TEST(Configuration_File, An_Interval_That_Is_No_Number_Leaves_It_Unchanged)
{
    EXPECT_EQ(Reading_Of("<hvConfigure><SDI>abc</SDI></hvConfigure>").state.Slide_Display_Interval, 2.0F);
    EXPECT_EQ(Reading_Of("<hvConfigure><SDI>45.5</SDI></hvConfigure>").state.Slide_Display_Interval, 45.5F);
}

TEST(Configuration_File, Without_Formulas_The_List_Is_Emptied)
{
    const Reading reading = Reading_Of("<hvConfigure version='1'><EAS>7</EAS><EXT>*.tif</EXT></hvConfigure>");
    EXPECT_TRUE(reading.complete);
    EXPECT_EQ(reading.state.Rename_Formulas.Count(), 0);
    EXPECT_EQ(reading.state.Default_Extensions, Q("*.tif"));
    EXPECT_EQ(reading.state.Default_Path, Q("/before/")) << "what is not named stays";
}

TEST(Configuration_File, A_Fault_Keeps_What_Came_Before_It)
{
    const Reading reading =
        Reading_Of("<hvConfigure><DIR/><RNF>a</RNF><RNF></RNF><XYZ>1</XYZ><EXT>x</EXT></hvConfigure>");
    EXPECT_FALSE(reading.complete);
    EXPECT_EQ(reading.state.Default_Path, QString()) << "an empty value is taken";
    EXPECT_EQ(reading.state.Rename_Formulas.Count(), 1) << "an empty pair is skipped";
    EXPECT_EQ(reading.state.Rename_Formulas[1], (Name_Value_Pair{Q("a"), Q("a")}));
    EXPECT_EQ(reading.state.Default_Extensions, Q("*.jpg;*.jif;*.tif"));
    EXPECT_FALSE(Reading_Of("<hvConfigure><EXT>x</EXT>").complete) << "the end is missing";
}

TEST(Configuration_File, Asks_Before_Anything_Is_Taken)
{
    const QString text = Q("<hvConfigure><DIR>/new/</DIR><RNF>'n','2'</RNF></hvConfigure>");
    Program_State state;
    EXPECT_FALSE(Read_Configuration_Text(state, text, [&](const Program_State& read) {
        EXPECT_EQ(read.Rename_Formulas[1].Value, Q("2"));
        EXPECT_EQ(state.Rename_Formulas.Count(), 0);
        return false;
    }));
    EXPECT_EQ(state.Default_Path, QString());
    EXPECT_TRUE(Read_Configuration_Text(state, text, [](const Program_State&) { return true; }));
    EXPECT_EQ(state.Default_Path, Q("/new/"));
    EXPECT_FALSE(Read_Configuration_Text(state, Q("words"), [](const Program_State&) {
        ADD_FAILURE() << "a text that is no configuration asks nothing";
        return true;
    }));
}

TEST(Configuration_File, Reads_Back_What_It_Wrote)
{
    Test_Folder folder;
    const QString path = QString::fromStdString(folder.File("a.hvi"));
    Program_State state;
    state.Default_Path = Q("/it's <\xC3\xA4>&/");
    state.Default_Printer_Name = Q("P");
    state.Slide_Display_Interval = 3.25F;
    state.Rename_Patterns.Append({Q("a','b"), Q("x','y")});
    state.File_Data_Formulas.Append({Q("f"), Q("=\"<\" & 1")});
    ASSERT_TRUE(Store_Configuration_File(state, path));
    Program_State read;
    ASSERT_TRUE(Load_Configuration_File(read, path));
    EXPECT_EQ(read.Default_Path, state.Default_Path);
    EXPECT_EQ(read.Default_Printer_Name, state.Default_Printer_Name);
    EXPECT_EQ(read.Slide_Display_Interval, 3.25F);
    EXPECT_EQ(read.Rename_Patterns, state.Rename_Patterns);
    EXPECT_EQ(read.File_Data_Formulas, state.File_Data_Formulas);
    EXPECT_TRUE(
        Configuration_Text(state).contains(Q("<EXT>*.jpg;*.jif;*.tif</EXT>\r\n<PRN>P</PRN>\r\n<SDI>3.25</SDI>")));
    EXPECT_FALSE(Load_Configuration_File(read, path + Q(".none")));
}

} // namespace
