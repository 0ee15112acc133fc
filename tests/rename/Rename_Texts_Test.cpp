#include "rename/Name_Value_Rows.h"
#include "rename/Rename_Preview.h"
#include "rename/Typed_Values.h"

#include <gtest/gtest.h>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

std::vector<Rename_Row> Rows(const std::vector<std::pair<const char*, const char*>>& names)
{
    std::vector<Rename_Row> rows;
    for (const auto& [name, new_name] : names)
        rows.push_back({.folder = Q("/p/"), .file_name = Q(name), .new_name = Q(new_name)});
    return rows;
}

TEST(Rename_Preview, Counts_What_The_User_Should_Know)
{
    using Mark = Rename_Preview::Mark;
    const Rename_Preview preview = Preview_Of(
        Rows({{"a.jpg", "x.jpg"}, {"b.jpg", "X.jpg"}, {"c.jpg", ""}, {"d.jpg", "y/z.jpg"}, {"e.jpg", "e.jpg"}}));
    EXPECT_EQ(preview.marks, (std::vector<Mark>{Mark::Twice, Mark::Twice, Mark::None, Mark::Unusable, Mark::None}));
    EXPECT_EQ(preview.Status(), "5 files, 3 new names, 1 name stands twice, 1 name cannot be used");
    EXPECT_EQ(Preview_Of(Rows({{"a.jpg", "x.jpg"}})).Status(), "1 file, 1 new name");
    EXPECT_FALSE(Preview_Of(Rows({{"a.jpg", ""}})).Has_New_Names());
}

TEST(Rename_Preview, Proposes_What_All_Names_Begin_With)
{
    EXPECT_EQ(Common_Beginning(Rows({{"IMG_0012.jpg", ""}, {"img_0013.jpg", ""}})), "IMG_");
    EXPECT_EQ(Common_Beginning(Rows({{"IMG_0012.jpg", ""}})), "IMG_");
    EXPECT_EQ(Common_Beginning(Rows({{"a.jpg", ""}, {"b.jpg", ""}})), "");
    EXPECT_EQ(Common_Beginning({}), "");
    EXPECT_EQ(Common_Beginning(Rows({{"20260711_101500.jpg", ""}, {"20260803_090000.jpg", ""}})), "20260")
        << "digits alone are better than nothing";
}

TEST(Rename_Preview, Without_A_New_Name_The_User_Is_Told_What_To_Do)
{
    const Rename_Preview nothing = Preview_Of(Rows({{"a.jpg", ""}}));
    const auto hint = [&](const char* from, const char* to, bool pattern_mode) {
        return nothing.Hint({.change_from = Q(from), .change_to = Q(to), .pattern_mode = pattern_mode});
    };
    EXPECT_EQ(hint("", "x", false), "Type into Change From what the names begin with, or define a pattern such as *_");
    EXPECT_EQ(hint("a", "", false), "Type into Change To what takes its place");
    EXPECT_EQ(hint("a", "", true), "Type into Change To what takes its place");
    EXPECT_EQ(hint("b", "x", false), "A name is to begin with the text in Change From");
    EXPECT_EQ(hint("b*", "x", true), "The beginning of a name is to fit the pattern in Change From");
    EXPECT_EQ(hint("", "x", true), "The pattern in Change From is empty");
    EXPECT_EQ(Preview_Of(Rows({{"a.jpg", "x.jpg"}})).Hint({}), "");
}

TEST(Name_Value_Rows, Rows_Without_A_Text_Are_Left_Out_And_A_Text_Names_Itself)
{
    const Name_Value_List list =
        List_From_Rows({{Q(""), Q("")}, {Q("a"), Q("A*")}, {Q(" "), Q("B*")}, {Q("c"), Q("")}});
    ASSERT_EQ(list.Count(), 3);
    EXPECT_EQ(list[0].Name, "(none)");
    EXPECT_EQ(list[1].Value, "A*");
    EXPECT_EQ(list[2].Name, "B*");
    EXPECT_EQ(list[3].Name, "c");
}

TEST(Name_Value_Rows, New_Rows_Are_Those_That_The_User_Wrote_Or_Changed)
{
    const Name_Value_List before = List_From_Rows({{Q("a"), Q("1")}, {Q("b"), Q("2")}});
    const Name_Value_List now = List_From_Rows({{Q("b"), Q("2")}, {Q("a"), Q("3")}, {Q("c"), Q("1")}});
    EXPECT_EQ(New_Rows(before, now), (std::vector<Name_Value_Pair>{{Q("a"), Q("3")}, {Q("c"), Q("1")}}));
}

TEST(Typed_Values, A_Blank_Slide_Time_Is_The_Default)
{
    EXPECT_EQ(Slide_Time_From_Text(Q("")), 0.0F);
    EXPECT_EQ(Slide_Time_From_Text(Q(" 2.5 ")), 2.5F);
    EXPECT_EQ(Text_Of_Slide_Time(0), "");
    EXPECT_EQ(Text_Of_Slide_Time(2.5F), "2.5");
    EXPECT_EQ(Slide_Time_Refusal(Q("")), "");
    EXPECT_EQ(Slide_Time_Refusal(Q("0.01")), "");
    for (const char* text : {"x", "-1", "1e3", "3601"}) EXPECT_NE(Slide_Time_Refusal(Q(text)), "") << text;
}

TEST(Typed_Values, A_Description_Has_To_Fit_Into_A_File)
{
    EXPECT_EQ(Description_Refusal(QString(1024, u'x')), "");
    EXPECT_EQ(Description_Refusal(QString(513, u'ö')), "The description has 1026 bytes; a file takes 1024.");
}

} // namespace
