#include "catalogue/Picture_Texts.h"
#include "catalogue/Script_Item_Deletion.h"
#include "frame/text/Date_Utilities.h"
#include "tests/catalogue/Picture_Fixture.h"

namespace {

TEST(Window_Texts, Status_Lines_Count_And_Agree_In_Number)
{
    EXPECT_EQ("0 pictures", Picture_Status_Text(0, 0));
    EXPECT_EQ("1 picture", Picture_Status_Text(1, 0));
    EXPECT_EQ("3 pictures, 2 selected", Picture_Status_Text(3, 2));
    EXPECT_EQ("1 folder, 1 selected", File_Status_Text(1, 1, true));
    EXPECT_EQ("2 files", File_Status_Text(2, 0, false));
}

TEST(Window_Texts, The_Caption_Names_Show_And_Picture_When_There_Are_Any)
{
    EXPECT_EQ("Halvine v0.1 (0.1.0)", Window_Caption("0.1", "0.1.0", {}, {}));
    EXPECT_EQ("Halvine v0.1 (0.1.0) - trip - a.jpg", Window_Caption("0.1", "0.1.0", "/home/me/trip.hvs", "a.jpg"));
    EXPECT_EQ("Halvine v0.1 (0.1.0) - a.jpg", Window_Caption("0.1", "0.1.0", {}, "a.jpg"));
}

class Texts_Of_Pictures : public Catalogue_Test {};

TEST_F(Texts_Of_Pictures, Name_The_Place_In_The_Selection_And_A_Pending_Rotation)
{
    const int a = Add("a.jpg"), b = Add("b.jpg");
    for (const int key : {a, b}) {
        Item(key).File_Date = Date_From_Date_Time(QDateTime(QDate(2026, 3, 14), QTime(15, 9)));
        Item(key).File_Size_KB = 812;
    }
    EXPECT_EQ("a.jpg (14-Mar-26 03:09 PM, 812KB)", Picture_Text(form.State(), 1));
    form.Set_Picture_Selected(2, true);
    form.Set_Picture_Selected(1, true);
    EXPECT_EQ("(2) a.jpg (14-Mar-26 03:09 PM, 812KB)", Picture_Text(form.State(), 1));
    Item(a).Rotate = 90;
    EXPECT_EQ("(2*) a.jpg (14-Mar-26 03:09 PM, 812KB)", Picture_Text(form.State(), 1));
    form.Set_Picture_Selected(1, false);
    EXPECT_EQ("(*) a.jpg (14-Mar-26 03:09 PM, 812KB)", Picture_Text(form.State(), 1));
    EXPECT_EQ("", Picture_Text(form.State(), 0));
    EXPECT_EQ("", Picture_Text(form.State(), 3));
}

class Script_Deletion : public Catalogue_Test {
protected:
    int first = Add("a.jpg", "ConOpt(0.005,0.005,LUM);Crop(1,2,3,4);Blur(1,50,7)");
    int second = Add("b.jpg", "Crop(5,6,7,8)");
    std::vector<int> keys{first, 99, second};
    Script_Item_Deletion model{form.State(), keys};
};

TEST_F(Script_Deletion, Steps_Through_The_Pictures_With_Their_Items)
{
    EXPECT_EQ("Halvine - Script Items For a.jpg (1 of 2)", model.Caption());
    ASSERT_EQ(3U, model.Rows().size());
    EXPECT_EQ("Crop", model.Rows()[1].type);
    EXPECT_EQ("Crop(1,2,3,4)", model.Rows()[1].script);
    EXPECT_FALSE(model.Step(-1));
    EXPECT_TRUE(model.Step(1));
    EXPECT_EQ("Halvine - Script Items For b.jpg (2 of 2)", model.Caption());
    EXPECT_FALSE(model.Step(1));
}

TEST_F(Script_Deletion, A_Name_With_A_Percent_Sign_Stands_In_The_Caption_As_It_Is)
{
    const int odd[] = {Add("100%2 sea %3.jpg", "Crop(5,6,7,8)")};
    EXPECT_EQ("Halvine - Script Items For 100%2 sea %3.jpg (1 of 1)",
              Script_Item_Deletion(form.State(), odd).Caption());
}

TEST_F(Script_Deletion, Deletes_Marked_Items_Of_One_Picture)
{
    model.Mark(1, true);
    model.Mark(3, true);
    model.Mark(3, false);
    model.Mark(9, true);
    model.Commit();
    EXPECT_EQ("Crop(1,2,3,4);Blur(1,50,7)", form.Recall_Picture_All_Script_Items(first));
    EXPECT_TRUE(Item(first).Script_Modified);
    EXPECT_FALSE(Item(second).Script_Modified);
    EXPECT_TRUE(model.May_Leave());
    EXPECT_TRUE(platform.dialogs.asked.empty());
}

TEST_F(Script_Deletion, Asks_Before_Marks_Are_Abandoned)
{
    model.Mark(1, true);
    EXPECT_FALSE(model.Step(1));
    EXPECT_EQ("There have been uncommitted deletions, do you wish to abandon?", Last_Message());
    EXPECT_EQ(Message_Answer::No, platform.dialogs.asked.back().standard);
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(model.Step(1));
    EXPECT_FALSE(model.Has_Marks());
    EXPECT_EQ(3, Item(first).Script_Items.Count());
}

TEST_F(Script_Deletion, Without_Pictures_There_Is_Nothing_To_Show)
{
    Script_Item_Deletion empty(form.State(), {});
    EXPECT_EQ(0, empty.Position());
    EXPECT_TRUE(empty.Rows().empty());
    empty.Mark(1, true);
    empty.Commit();
    EXPECT_FALSE(empty.Step(1));
}

} // namespace
