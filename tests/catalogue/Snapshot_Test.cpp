#include "catalogue/Snapshot_Names.h"
#include "frame/files/Replacement_File.h"
#include "tests/catalogue/Picture_Fixture.h"

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
