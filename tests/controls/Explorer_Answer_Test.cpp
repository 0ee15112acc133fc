#include "controls/Explorer_Answer.h"
#include "frame/text/Path_Utilities.h"
#include "tests/support/Test_Folder.h"

#include <QtCore/QDir>
#include <gtest/gtest.h>

namespace {

using enum Explorer_Function;
using Kind = Explorer_Answer::Kind;

/// ROOT stands for the folder that the picker shows; it holds show.hvs, sea.jpg and the folders Summer and "no end.d".
struct Answer_Case {
    const char* name;
    Explorer_Function function;
    const char* typed;
    Kind kind;
    const char* text;
};

class Explorer_Answers : public testing::TestWithParam<Answer_Case> {
protected:
    Explorer_Answers()
    {
        for (const char* name : {"Summer", "no end.d"}) QDir(root).mkdir(QLatin1String(name));
        for (const char* name : {"show.hvs", "sea.jpg", "Summer/beach.jpg"}) Put_File(folder.File(name), "x");
    }
    QString Filled(const char* text) const { return QString::fromUtf8(text).replace(QLatin1String("ROOT"), root); }
    Explorer_Answer Answer_To(const QString& typed) const
    {
        return Answer_Of_Explorer(GetParam().function, root, QStringLiteral("*.hvs;*.jpg"), typed);
    }
    Test_Folder folder;
    QString root = QString::fromStdString(folder.Path());
};

INSTANTIATE_TEST_SUITE_P(
    Open, Explorer_Answers,
    testing::Values(Answer_Case{"name", Open_File, "show.hvs", Kind::Taken, "ROOT/show.hvs"},
                    Answer_Case{"other_case", Open_File, "SHOW.hvs", Kind::Taken, "ROOT/show.hvs"},
                    Answer_Case{"without_its_extension", Open_File, "show", Kind::Taken, "ROOT/show.hvs"},
                    Answer_Case{"with_the_second_extension", Open_File, "sea", Kind::Taken, "ROOT/sea.jpg"},
                    Answer_Case{"below", Open_File, "Summer/beach.jpg", Kind::Taken, "ROOT/Summer/beach.jpg"},
                    Answer_Case{"below_with_backslash", Open_File, "Summer\\beach.jpg", Kind::Taken,
                                "ROOT/Summer/beach.jpg"},
                    Answer_Case{"roundabout", Open_File, "Summer/../sea.jpg", Kind::Taken, "ROOT/sea.jpg"},
                    Answer_Case{"whole_path", Open_File, "ROOT/sea.jpg", Kind::Taken, "ROOT/sea.jpg"},
                    Answer_Case{"folder_is_shown", Open_File, "Summer", Kind::Folder, "ROOT/Summer"},
                    Answer_Case{"folder_above", Open_File, "Summer/..", Kind::Folder, "ROOT"},
                    Answer_Case{"root", Open_File, "/", Kind::Folder, "/"},
                    Answer_Case{"nothing", Open_File, "  ", Kind::Folder, "ROOT"},
                    Answer_Case{"pattern", Open_File, "*.tif", Kind::Pattern, "*.tif"},
                    Answer_Case{"missing", Open_File, "gone.hvs", Kind::Refused, "There is no file \"ROOT/gone.hvs\"."},
                    Answer_Case{"device", Open_File, "/dev/null", Kind::Refused, "There is no file \"/dev/null\"."},
                    Answer_Case{"percent_in_the_name", Open_File, "100%1.hvs", Kind::Refused,
                                "There is no file \"ROOT/100%1.hvs\"."}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Save, Explorer_Answers,
    testing::Values(
        Answer_Case{"new_name", Save_File, "new.jpg", Kind::Taken, "ROOT/new.jpg"},
        Answer_Case{"name_that_is_there", Save_File, "sea.jpg", Kind::Taken, "ROOT/sea.jpg"},
        Answer_Case{"other_case_is_another_file", Save_File, "SEA.jpg", Kind::Taken, "ROOT/SEA.jpg"},
        Answer_Case{"with_a_qualifier", Save_File, "sea.jpg:80", Kind::Taken, "ROOT/sea.jpg:80"},
        Answer_Case{"without_an_extension", Save_File, "new", Kind::Taken, "ROOT/new"},
        Answer_Case{"below", Save_File, "Summer/new.jpg", Kind::Taken, "ROOT/Summer/new.jpg"},
        Answer_Case{"roundabout", Save_File, "Summer/../new.jpg", Kind::Taken, "ROOT/new.jpg"},
        Answer_Case{"folder_is_shown", Save_File, "Summer", Kind::Folder, "ROOT/Summer"},
        Answer_Case{"pattern", Save_File, "b*.jpg", Kind::Pattern, "b*.jpg"},
        Answer_Case{"no_such_folder", Save_File, "gone/new.jpg", Kind::Refused, "There is no folder \"ROOT/gone\"."},
        Answer_Case{"folder_that_is_a_file", Save_File, "sea.jpg/x.jpg", Kind::Refused,
                    "There is no folder \"ROOT/sea.jpg\"."},
        Answer_Case{"what_can_only_be_a_folder", Save_File, "new/", Kind::Refused, "There is no folder \"ROOT/new\"."}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Folder, Explorer_Answers,
    testing::Values(Answer_Case{"itself", Pick_Folder, "", Kind::Taken, "ROOT"},
                    Answer_Case{"below", Pick_Folder, "Summer/", Kind::Taken, "ROOT/Summer"},
                    Answer_Case{"with_a_point", Pick_Folder, "no end.d", Kind::Taken, "ROOT/no end.d"},
                    Answer_Case{"root", Pick_Folder, "/", Kind::Taken, "/"},
                    Answer_Case{"file", Pick_Folder, "sea.jpg", Kind::Refused, "There is no folder \"ROOT/sea.jpg\"."},
                    Answer_Case{"missing", Pick_Folder, "*", Kind::Refused, "There is no folder \"ROOT/*\"."}),
    [](const auto& row) { return row.param.name; });

TEST_P(Explorer_Answers, Say_What_The_Name_Means)
{
    const auto answer = Answer_To(Filled(GetParam().typed));
    EXPECT_EQ(int(GetParam().kind), int(answer.kind));
    EXPECT_EQ(Filled(GetParam().text).toStdString(), answer.text.toStdString());
}

TEST(Explorer_Answer_Test, Home_Has_Its_Sign)
{
    const auto answer = Answer_Of_Explorer(Pick_Folder, QStringLiteral("/"), {}, QStringLiteral("~"));
    EXPECT_EQ(QDir::cleanPath(QDir::homePath()).toStdString(), answer.text.toStdString());
}

TEST(Explorer_Answer_Test, A_Name_That_No_File_Can_Have_Is_Refused)
{
    const Test_Folder folder;
    const auto answer =
        Answer_Of_Explorer(Save_File, QString::fromStdString(folder.Path()), {}, QString(300, QLatin1Char('x')));
    EXPECT_EQ(int(Kind::Refused), int(answer.kind));
    EXPECT_TRUE(answer.text.startsWith(QLatin1String("A file cannot be named")));
}

TEST(Explorer_Answer_Test, Names_Of_Bytes_Come_Back)
{
    const Test_Folder folder;
    const QString name = Path_From_Bytes("caf\xe9.hvs");
    Put_File(folder.Path() + "/caf\xe9.hvs", "x");
    const auto answer = Answer_Of_Explorer(Open_File, QString::fromStdString(folder.Path()), {}, name);
    EXPECT_EQ(int(Kind::Taken), int(answer.kind));
    EXPECT_EQ(folder.Path() + "/caf\xe9.hvs", File_System_Bytes(answer.text));
}

} // namespace
