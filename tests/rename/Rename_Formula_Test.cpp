#include "rename/Rename_Rows.h"

#include "evaluate/System_Host.h"
#include "frame/Program_State.h"

#include <gtest/gtest.h>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

class Rename_Formula_Test : public testing::Test {
protected:
    std::optional<Formula_Fault> Check(const char* text, unsigned allowed = Formula::Typed_Access)
    {
        return Check_Rename_Formula(host, {.name = Q("f"), .text = Q(text), .allowed_access = allowed});
    }
    Caption Caption_With(const char* text)
    {
        return Caption_Of(
            host, {.name = Q("f"), .text = Q(text)},
            {.folder = Q("/home/anna/"), .root = Q("sea"), .extension = Q("jpg"), .date = 46095.5, .description = {}});
    }
    Formula::System_Host host;
};

TEST_F(Rename_Formula_Test, The_Built_In_Formulas_Have_No_Fault)
{
    Program_State state;
    Complete_Empty_Lists(state);
    ASSERT_EQ(state.Rename_Formulas.Count(), 2);
    for (int i = 1; i <= state.Rename_Formulas.Count(); ++i)
        EXPECT_FALSE(Check(state.Rename_Formulas[i].Value.toUtf8().constData())) << i;
}

TEST_F(Rename_Formula_Test, A_Variable_That_Does_Not_Exist_Is_A_Fault_And_Nobody_Is_Asked)
{
    EXPECT_FALSE(Check("FileHPix & \"\""));
    const auto fault = Check("FileVPix & \"\"");
    ASSERT_TRUE(fault);
    EXPECT_FALSE(fault->description.isEmpty());
}

/// Each divides by zero when, and only when, the check has other samples than it should.
TEST_F(Rename_Formula_Test, The_Check_Runs_With_Sample_Values)
{
    for (const char* text :
         {"1 / (FilePath = \" \")", "1 / (FileName = \" \")", "1 / (FileExt = \" \")", "1 / (ChangeTo = \" \")",
          "1 / (CDbl(FileDate) = 2)", "1 / (TypeName(FileDate) = \"Date\")", "1 / (FileHPix = 2)",
          "1 / (TypeName(FileHPix) = \"Integer\")", "1 / (FileSerial = 2)", "1 / (TypeName(FileSerial) = \"Integer\")"})
        EXPECT_FALSE(Check(text)) << text << ": " << Check(text)->description.toStdString();
    EXPECT_TRUE(Check("1 / (FileHPix - 2)"));
}

TEST_F(Rename_Formula_Test, The_Run_Has_The_Types_Of_The_Facts)
{
    const char* text = "TypeName(ChangeTo) & TypeName(FilePath) & TypeName(FileName) & TypeName(FileExt) & "
                       "TypeName(FileDate) & TypeName(FileHPix) & TypeName(FileSerial)";
    Rename_Formula formula(host, {.name = Q("f"), .text = Q(text)}, Q("Trip"));
    EXPECT_EQ(formula.New_Root({.folder = Q("/p/"), .root = Q("a"), .extension = Q(".jpg"), .serial = Q("07")}),
              "StringStringStringStringDateLongString");
}

TEST_F(Rename_Formula_Test, A_Fault_In_The_Syntax_Tells_Its_Position_From_1)
{
    const auto fault = Check("ChangeTo & & FileName");
    ASSERT_TRUE(fault);
    EXPECT_GE(fault->position, 12);
    EXPECT_LE(fault->position, 13);
    EXPECT_EQ(Formula_Fault_Line(*fault, "My Names"),
              fault->description + " (Formula My Names, Character Position " + QString::number(fault->position) + ")");
    EXPECT_EQ(Formula_Fault_Message(*fault),
              fault->description + "\n(At Character Position " + QString::number(fault->position) + ")");
}

TEST_F(Rename_Formula_Test, A_Typed_Formula_May_Not_Open_Dialogs_And_A_Foreign_One_May_Not_Read_Files)
{
    EXPECT_FALSE(Check("Environ(\"HOME\") & ChangeTo"));
    EXPECT_EQ(Check("InputBox(\"name\")").value_or(Formula_Fault{}).code, 70);
    EXPECT_EQ(Check("Environ(\"HOME\") & ChangeTo", Formula::File_Access).value_or(Formula_Fault{}).code, 70);
    EXPECT_FALSE(Check("Format(Now, \"yyyy\") & ChangeTo", Formula::File_Access));
}

TEST_F(Rename_Formula_Test, Captions_Come_From_The_Five_Facts)
{
    EXPECT_EQ(Caption_With("FilePath & FileName & FileExt").text, "/home/anna/seajpg");
    EXPECT_EQ(Caption_With("FileName & \" (\" & Format(FileDate, \"mmm d, yyyy\")  & \")\"").text,
              "sea (Mar 14, 2026)");
    EXPECT_EQ(Caption_With("1 + 1").text, "2");
}

TEST_F(Rename_Formula_Test, A_Caption_Has_The_Facts_Of_The_Record)
{
    Picture_Item item;
    item.Path = Q("/home/anna/");
    item.File_Name = Q("the.sea.jpg");
    item.File_Date = 46095.5;
    item.Description = Q("waves");
    const Caption_Facts facts = Caption_Facts_Of(item);
    const Chosen_Formula formula{
        .name = Q("f"),
        .text = Q(
            "FilePath & \"|\" & FileName & \"|\" & FileExt & \"|\" & Format(FileDate, \"yyyy\") & \"|\" & FileDescr")};
    EXPECT_EQ(Caption_Of(host, formula, facts).text, "/home/anna/|the.sea|jpg|2026|waves");
}

TEST_F(Rename_Formula_Test, A_Row_Has_The_Facts_Of_The_Record)
{
    Picture_Item item;
    item.Path = Q("/home/anna/");
    item.File_Name = Q("sea.jpg");
    item.File_Date = 46095.5;
    item.Horz_Pixels = 400;
    item.Vert_Pixels = 300;
    const Rename_Row row = Row_Of_Picture(item);
    EXPECT_EQ(row.folder, "/home/anna/");
    EXPECT_EQ(row.file_name, "sea.jpg");
    EXPECT_EQ(row.file_date, 46095.5);
    EXPECT_EQ(row.horz_pixels, 400);
    EXPECT_EQ(row.vert_pixels, 300);
}

TEST_F(Rename_Formula_Test, The_Description_Of_A_Picture_Without_One_Is_An_Empty_Caption)
{
    const Caption caption = Caption_With("FileDescr");
    EXPECT_EQ(caption.text, "");
    EXPECT_FALSE(caption.fault);
}

TEST_F(Rename_Formula_Test, No_Formula_Is_No_Caption)
{
    const Caption caption = Caption_With("");
    EXPECT_EQ(caption.text, "");
    EXPECT_FALSE(caption.fault);
}

TEST_F(Rename_Formula_Test, A_Caption_That_Fails_Tells_Why_And_Is_Empty)
{
    for (const char* text : {"1 / 0", "FileSerial", "1 +"}) {
        const Caption caption = Caption_With(text);
        EXPECT_EQ(caption.text, "") << text;
        ASSERT_TRUE(caption.fault) << text;
        EXPECT_FALSE(caption.fault->description.isEmpty()) << text;
    }
}

} // namespace
