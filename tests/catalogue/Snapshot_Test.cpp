#include "catalogue/Snapshot_Names.h"
#include "frame/files/Replacement_File.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <filesystem>

namespace {

const QDateTime Now(QDate(2026, 3, 14), QTime(15, 9, 26));

TEST(Snapshot_Names, A_Snapshot_Of_A_Snapshot_Is_Named_After_The_Original)
{
    EXPECT_EQ("/p/~sea-20260314-150926.jpg", Snapshot_Name("/p/sea.jpg", Now));
    EXPECT_EQ("/p/~sea-20260314-150926.jpg", Snapshot_Name("/p/~sea-20010101-000000.jpg", Now));
    EXPECT_EQ("/p/sea.jpg", Snapshot_Base_Name("/p/~sea-20010101-000000.jpg"));
    EXPECT_EQ("/p/sea.jpg", Snapshot_Base_Name("/p/sea.jpg"));
    EXPECT_EQ("/p/~sea-*.jpg", Snapshot_Pattern("/p/~sea-20010101-000000.jpg"));
}

TEST(Snapshot_Names, Need_The_Tilde_And_The_Whole_Stamp)
{
    EXPECT_TRUE(Test_Snapshot_Name("/p/~sea-20010101-000000.jpg"));
    EXPECT_FALSE(Test_Snapshot_Name("/p/sea-20010101-000000.jpg"));
    EXPECT_FALSE(Test_Snapshot_Name("/p/~sea-2001010-000000.jpg"));
    EXPECT_FALSE(Test_Snapshot_Name("/p/~sea.jpg"));
    EXPECT_FALSE(Test_Snapshot_Name("/p/~sea-20010101-00000x.jpg"));
    EXPECT_FALSE(Test_Snapshot_Name("/p/~sea-20010101-000000-2.jpg"));
}

TEST(Snapshot_Names, Of_A_Name_Without_Extension_Have_None)
{
    EXPECT_EQ("/p/~sea-20260314-150926", Snapshot_Name("/p/sea", Now));
    EXPECT_EQ("/p/sea", Snapshot_Base_Name("/p/~sea-20260314-150926"));
    EXPECT_EQ("/p/~sea-*", Snapshot_Pattern("/p/sea"));
}

class Snapshots : public Picture_Test {};

TEST_F(Snapshots, Keep_The_Date_And_The_Texts_Of_What_They_Hold)
{
    const int key = Pick(Make("sea.jpg", 160, 96, 1, "Crop(1,2,3,4)", "waves"));
    ASSERT_TRUE(Set_Times(File("sea.jpg"), {{1000, 0}, {2000, 0}}));
    form.Set_Picture_Key_Selected(key, true);
    EXPECT_EQ(1, form.Snapshots().Save_Selected_As_Snapshots());
    const QString name = Path("~sea-20260314-150926.jpg");
    EXPECT_EQ("Crop(1,2,3,4)", Get_Image_Script(name, 0));
    EXPECT_EQ("waves", Get_Comment(name, 0));
    EXPECT_EQ(2000, Times_Of(name.toStdString())->modified.tv_sec);
}

TEST_F(Snapshots, Hold_The_Picture_As_It_Is_Turned_And_Leave_The_Record)
{
    const int key = Pick(Make("sea.jpg", 160, 96, 1, "Crop(1,2,3,4)"));
    form.Rotate_Picture(key, 90);
    form.Set_Picture_Key_Selected(key, true);
    EXPECT_EQ(1, form.Snapshots().Save_Selected_As_Snapshots()) << Last_Message().toStdString();
    const QString name = Path("~sea-20260314-150926.jpg");
    File_Dimensions facts;
    ASSERT_TRUE(Get_Dimensions(name, 0, facts));
    EXPECT_EQ(96, facts.width);
    EXPECT_EQ("Crop(2,3,4,1)", Get_Image_Script(name, 0));
    EXPECT_EQ("Crop(1,2,3,4)", form.Recall_Picture_All_Script_Items(key));
    EXPECT_EQ(90, form.Return_Picture_Rotate(key));
    EXPECT_EQ((QStringList{"Halvine - Save Selected As Snapshots", "Saving 0 of 1", "Saving 1 of 1"}),
              platform.dialogs.progress_shown);
}

TEST_F(Snapshots, End_With_The_Users_Stop)
{
    for (const char* name : {"a.jpg", "b.jpg"}) {
        Make(QString("~%1-20260101-000000.jpg").arg(name[0]));
        form.Set_Picture_Key_Selected(Pick_New(name), true);
    }
    platform.dialogs.stop_after_progress_steps = 2;
    form.Snapshots().Load_Snapshots_Of_Selected();
    EXPECT_EQ(3, form.State().pictures.Count()) << "those of the first picture";
    EXPECT_EQ(
        (QStringList{"Halvine - Load Snapshots Of Selected", "Loading 0 of 2", "Loading 1 of 2", "Loading 2 of 2"}),
        platform.dialogs.progress_shown);
    platform.dialogs.progress_shown.clear();
    EXPECT_EQ(1, form.Snapshots().Save_Selected_As_Snapshots());
    EXPECT_TRUE(Names().contains("~a-20260314-150926.jpg"));
    EXPECT_FALSE(Names().contains("~b-20260314-150926.jpg"));
}

TEST_F(Snapshots, That_Cannot_Be_Written_Tell_Why)
{
    const int key = Pick_New("sea.jpg");
    form.Set_Picture_Key_Selected(key, true);
    std::filesystem::create_directory(File("~sea-20260314-150926.jpg"));
    EXPECT_EQ(0, form.Snapshots().Save_Selected_As_Snapshots());
    EXPECT_EQ(Path("~sea-20260314-150926.jpg") + " is a directory.", Last_Message());
    std::filesystem::remove(File("~sea-20260314-150926.jpg"));
    std::filesystem::remove(File("sea.jpg"));
    EXPECT_EQ(0, form.Snapshots().Save_Selected_As_Snapshots());
    EXPECT_TRUE(Last_Message().startsWith("Error saving picture to " + Path("~sea-20260314-150926.jpg") + "\r\n"))
        << Last_Message().toStdString();
}

TEST_F(Snapshots, Of_A_File_Are_Those_With_A_Stamp_And_The_Original_Where_There_Is_One)
{
    for (const char* name : {"~sea.jpg", "~sea-1.jpg", "~sea-20260101-000000.jpg", "~sea-20260101-000000.tif",
                             "~sea-2-20260101-000000.jpg"})
        Make(name, 40, 40);
    EXPECT_EQ(QStringList{Path("~sea-20260101-000000.jpg")}, Snapshots_Of_File(Path("sea.jpg")));
    EXPECT_EQ(QStringList{Path("~sea-20260101-000000.jpg")}, Snapshots_Of_File(Path("~sea-20260101-000000.jpg")))
        << "the original is gone";
    EXPECT_EQ(QStringList{}, Snapshots_Of_File(Path("~sea.jpg"))) << "a file is no snapshot of itself";
    Make("sea.jpg", 40, 40);
    EXPECT_EQ((QStringList{Path("~sea-20260101-000000.jpg"), Path("sea.jpg")}),
              Snapshots_Of_File(Path("~sea-20260101-000000.jpg")));
}

TEST_F(Snapshots, A_Restore_Whose_Copy_Fails_Puts_The_Original_Back)
{
    const std::string before = Contents_Of(Make("sea.jpg").toStdString());
    QString kept_as = "x", reason;
    EXPECT_FALSE(Restore_Snapshot_File(Path("~sea-20260101-000000.jpg"), Now, kept_as, reason)) << "it is not there";
    EXPECT_FALSE(reason.isEmpty());
    EXPECT_EQ(QString(), kept_as);
    EXPECT_EQ(before, Contents_Of(File("sea.jpg")));
    EXPECT_EQ(QStringList{"sea.jpg"}, Names());
}

TEST_F(Snapshots, Of_The_Selected_Are_Loaded_As_An_Append_And_The_Original_Of_A_Snapshot_Too)
{
    Make("sea.jpg");
    Make("~sea-20260101-000000.jpg");
    Make("~other-20260101-000000.jpg");
    form.Set_Picture_Key_Selected(Pick(Path("~sea-20260101-000000.jpg")), true);
    form.Snapshots().Load_Snapshots_Of_Selected();
    EXPECT_EQ(3, form.State().pictures.Count());
    EXPECT_NE(0, form.Return_Picture_Key(Path("sea.jpg"), false));
    EXPECT_EQ(0, form.Return_Picture_Key(Path("~other-20260101-000000.jpg"), false));
}

TEST_F(Snapshots, A_Restore_Loses_Nothing_And_Records_Follow_Their_File)
{
    const int original = Pick(Make("sea.jpg", 160, 96, 1, {}, "new"));
    const int snapshot = Pick(Make("~sea-20260101-000000.jpg", 160, 96, 1, {}, "old"));
    form.Set_Picture_Key_Selected(snapshot, true);
    EXPECT_TRUE(form.Snapshots().Restore_From_Selected_Snapshot());
    EXPECT_EQ("old", Get_Comment(Path("sea.jpg"), 0));
    EXPECT_EQ("new", Get_Comment(Path("~sea-20260314-150926.jpg"), 0));
    EXPECT_EQ(Path("~sea-20260314-150926.jpg"), form.Return_Picture_Path(original));
    EXPECT_EQ(3, form.Return_Picture_Key(Path("sea.jpg"), false));
}

TEST_F(Snapshots, What_Is_No_Snapshot_Restores_Nothing_And_Says_So)
{
    form.Set_Picture_Key_Selected(Pick_New("sea.jpg"), true);
    EXPECT_FALSE(form.Snapshots().Restore_From_Selected_Snapshot());
    EXPECT_EQ(QStringList{"sea.jpg"}, Names());
    EXPECT_EQ("sea.jpg is no snapshot, nothing was restored.", Last_Message());
}

} // namespace
