#include "catalogue/Recover_Folder.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <filesystem>

namespace {

class Recovered_Folder : public Picture_Test {
protected:
    QStringList Recover() { return Recover_Folder(platform.platform, QString::fromStdString(folder.Path()) + "/"); }
};

TEST_F(Recovered_Folder, A_Picture_That_Lost_Its_Name_Can_Be_Picked_Again)
{
    std::filesystem::rename(Make("a.jpg").toStdString(), File("a.jpg~"));
    EXPECT_EQ(QStringList{Path("a.jpg")}, Recover());
    EXPECT_EQ(QStringList{"a.jpg"}, Names());
    EXPECT_NE(0, Pick(Path("a.jpg")));
}

TEST_F(Recovered_Folder, A_Torn_Picture_Gives_Way_To_The_Kept_One_And_Goes_To_The_Trash)
{
    std::filesystem::rename(Make("a.jpg").toStdString(), File("a.jpg~"));
    Put_File(File("a.jpg"), "\xFF\xD8 torn");
    EXPECT_EQ(QStringList{Path("a.jpg")}, Recover());
    EXPECT_EQ(QStringList{Path("a.jpg")}, platform.shell.trashed);
    EXPECT_NE(0, Pick(Path("a.jpg")));
}

TEST_F(Recovered_Folder, Without_A_Trash_Nothing_Is_Taken_Away)
{
    platform.shell.refuse_trash_with = "no trash";
    std::filesystem::rename(Make("a.jpg").toStdString(), File("a.jpg~"));
    Put_File(File("a.jpg"), "torn");
    EXPECT_EQ(QStringList{}, Recover());
    EXPECT_EQ((QStringList{"a.jpg", "a.jpg~"}), Names());
}

TEST_F(Recovered_Folder, Backups_That_Are_No_Pictures_Or_Not_Needed_Stay)
{
    Make("a.jpg");
    std::filesystem::rename(Make("b.jpg").toStdString(), File("a.jpg~"));
    Put_File(File("letter.txt~"), "text");
    EXPECT_EQ(QStringList{}, Recover());
    EXPECT_EQ((QStringList{"a.jpg", "a.jpg~", "letter.txt~"}), Names());
}

TEST_F(Recovered_Folder, A_Name_In_Any_Bytes_Comes_Back)
{
    std::filesystem::rename(Make("a.jpg").toStdString(), folder.File("\xE4 see.jpg~"));
    EXPECT_EQ(1, Recover().size());
    EXPECT_EQ(std::vector<std::string>{"\xE4 see.jpg"}, folder.Names());
}

TEST_F(Recovered_Folder, A_Missing_Folder_Gives_Nothing)
{
    EXPECT_EQ(QStringList{}, Recover_Folder(platform.platform, Path("nowhere")));
}

} // namespace
