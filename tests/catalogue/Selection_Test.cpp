#include "catalogue/Modifications.h"
#include "catalogue/Selection_For_Function.h"
#include "tests/catalogue/Catalogue_Fixture.h"

namespace {

using Indices = std::vector<int>;
constexpr std::uint32_t Hard = 0x100;
constexpr std::uint32_t Soft = 0x1000;

class Selecting : public Catalogue_Test {
protected:
    Selecting()
    {
        for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "d.jpg"}) Add(name);
    }
    void Select(std::initializer_list<int> keys)
    {
        for (const int key : keys) form.Set_Picture_Key_Selected(key, true);
    }
    Indices For_Function(Selection_Mode mode, Select_Access access = Select_Access::Shared, int minimum = 1,
                         bool grey = true)
    {
        return Pictures_For_Function(form.State(),
                                     {.minimum = minimum, .mode = mode, .access = access, .grey_allowed = grey});
    }
};

TEST_F(Selecting, Keeps_The_Order_Of_Selecting_And_Each_Picture_Once)
{
    Select({3, 1, 3, 4});
    EXPECT_EQ((Indices{3, 1, 4}), form.State().selection.Selected_Indices());
    EXPECT_EQ(2, form.State().selection.Position_Of_Key(1));
    form.Set_Picture_Key_Selected(1, false);
    EXPECT_EQ((Indices{3, 4}), form.State().selection.Selected_Indices());
    EXPECT_FALSE(form.Test_Picture_Selected(1));
    EXPECT_TRUE(form.Test_Picture_Key_Selected(4));
}

TEST_F(Selecting, Index_0_And_False_Clear_All_And_Remove_Each_Frame)
{
    Select({2, 4});
    view.frames.clear();
    form.Set_Picture_Selected(0, false);
    EXPECT_TRUE(form.State().selection.Is_Empty());
    EXPECT_EQ((QList<int>{-2, -4}), view.frames);
    form.Set_Picture_Selected(0, true);
    EXPECT_TRUE(form.State().selection.Is_Empty());
}

TEST_F(Selecting, After_A_Discard_The_Indices_Follow_Their_Pictures)
{
    Select({4, 2});
    form.State().selection.Forget_Key(1);
    form.Picking().Remove_Pictures(Indices{1, 2});
    EXPECT_EQ((Indices{2}), form.State().selection.Selected_Indices());
    EXPECT_TRUE(form.Test_Picture_Key_Selected(4));
}

TEST_F(Selecting, With_No_Pictures_There_Is_A_Message)
{
    form.Discard_All();
    EXPECT_EQ(Indices{}, For_Function(Selection_Mode::All_If_None));
    EXPECT_EQ("No pictures available.", Last_Message());
}

TEST_F(Selecting, With_No_Selection_And_Mode_1_A_Command_Runs_On_All_Free_Pictures_In_List_Order)
{
    Item(2).Lock_Flags = Hard;
    EXPECT_EQ((Indices{1, 3, 4}), For_Function(Selection_Mode::All_If_None));
    EXPECT_EQ("1 picture locked by another function.", Last_Message());
}

TEST_F(Selecting, With_A_Selection_Mode_1_Runs_On_It_In_Its_Order)
{
    Select({3, 1});
    EXPECT_EQ((Indices{3, 1}), For_Function(Selection_Mode::All_If_None));
    EXPECT_TRUE(platform.dialogs.asked.empty());
}

TEST_F(Selecting, For_A_Slide_Show_One_Selected_Picture_Is_No_Selection)
{
    Select({3});
    EXPECT_EQ((Indices{1, 2, 3, 4}), For_Function(Selection_Mode::All_If_None, Select_Access::Shared, 2));
    EXPECT_EQ((Indices{3}), For_Function(Selection_Mode::Selected_Silently, Select_Access::Shared, 2));
    Select({2});
    EXPECT_EQ((Indices{3, 2}), For_Function(Selection_Mode::All_If_None, Select_Access::Shared, 2)) << "two are one";
}

TEST_F(Selecting, With_Mode_0_Nothing_Selected_Is_A_Message_And_With_Mode_2_It_Is_Not)
{
    EXPECT_EQ(Indices{}, For_Function(Selection_Mode::Selected_Silently));
    EXPECT_TRUE(platform.dialogs.asked.empty());
    EXPECT_EQ(Indices{}, For_Function(Selection_Mode::Selected_With_Message));
    EXPECT_EQ("No pictures selected for function.", Last_Message());
}

TEST_F(Selecting, A_Soft_Lock_Stops_Only_Who_Wants_The_Picture_Alone)
{
    Select({1, 2});
    Item(1).Lock_Flags = Soft;
    EXPECT_EQ((Indices{1, 2}), For_Function(Selection_Mode::Selected_With_Message, Select_Access::Shared));
    EXPECT_EQ((Indices{2}), For_Function(Selection_Mode::Selected_With_Message, Select_Access::Exclusive));
    Item(2).Lock_Flags = Hard;
    EXPECT_EQ((Indices{}), For_Function(Selection_Mode::Selected_With_Message, Select_Access::Exclusive));
    EXPECT_EQ("2 pictures locked by another function.", Last_Message());
}

TEST_F(Selecting, Windows_Are_Given_The_Keys_Of_What_Is_Free_For_Them)
{
    Select({3, 1});
    Item(1).Lock_Flags = Soft;
    std::vector<int> keys{77};
    EXPECT_EQ(2, form.Return_Selected_Picture_Keys(keys, Select_Access::Shared));
    EXPECT_EQ((std::vector<int>{3, 1}), keys);
    EXPECT_EQ(1, form.Return_Selected_Picture_Keys(keys, Select_Access::Exclusive));
    EXPECT_EQ((std::vector<int>{3}), keys);
    EXPECT_EQ("1 picture locked by another function.", Last_Message());
    form.Set_Picture_Selected(0, false);
    EXPECT_EQ(0, form.Return_Selected_Picture_Keys(keys, Select_Access::Shared));
    EXPECT_TRUE(keys.empty());
    EXPECT_EQ("No pictures selected for function.", Last_Message());
}

TEST_F(Selecting, By_Key_Redraws_The_Strip_And_The_Status_Line)
{
    const int drawn = view.all_drawn, updated = view.status_updates;
    form.Set_Picture_Key_Selected(2, true);
    EXPECT_EQ(drawn + 1, view.all_drawn);
    EXPECT_EQ(updated + 1, view.status_updates);
    EXPECT_EQ(QList<int>{2}, view.frames);
}

TEST_F(Selecting, The_Low_Bits_Are_No_Locks)
{
    Item(1).Lock_Flags = 0xFF;
    EXPECT_FALSE(form.Test_Picture_Key_Locked(1));
    Select({1});
    EXPECT_EQ((Indices{1}), For_Function(Selection_Mode::Selected_With_Message, Select_Access::Exclusive));
}

TEST_F(Selecting, Grey_Pictures_Are_Left_Out_Where_Color_Is_Needed)
{
    const int grey = Add("grey.jpg", {}, 8);
    const int least = Add("least.jpg", {}, 9);
    Select({grey, least});
    EXPECT_EQ((Indices{6}), For_Function(Selection_Mode::Selected_With_Message, Select_Access::Shared, 1, false));
    EXPECT_EQ((Indices{5, 6}), For_Function(Selection_Mode::Selected_With_Message));
}

TEST_F(Selecting, A_Window_Locks_And_Unlocks_Its_Own_Bit)
{
    const std::vector<int> keys{1, 3, 99};
    form.Set_Form_Enabled_Pictures_Locked(false, true, keys, Soft | Hard);
    EXPECT_TRUE(form.Test_Picture_Key_Locked(1));
    EXPECT_TRUE(form.Test_Picture_Locked(3));
    EXPECT_FALSE(form.Test_Picture_Locked(2));
    form.Set_Form_Enabled_Pictures_Locked(true, false, keys, Hard);
    EXPECT_EQ(Soft, Item(1).Lock_Flags);
}

TEST_F(Selecting, When_The_Last_Window_Ends_No_Lock_Outlives_It)
{
    Item(1).Lock_Flags = Soft | 0x21;
    form.Set_Form_Active(1, true);
    form.Set_Form_Active(4, true);
    form.Set_Form_Active(1, false);
    EXPECT_TRUE(form.Test_Picture_Locked(1));
    form.Set_Form_Active(4, false);
    EXPECT_EQ(0x21U, Item(1).Lock_Flags);
}

TEST_F(Selecting, Discard_Keeps_What_A_Window_Has_Locked)
{
    Select({1, 2});
    Item(2).Lock_Flags = Soft;
    form.Discard_Selected();
    EXPECT_EQ(3, form.State().pictures.Count());
    EXPECT_TRUE(form.Test_Picture_Key_Selected(2));
    EXPECT_EQ(-1, form.State().pictures.Index_From_Key(1));
}

TEST_F(Selecting, Unsaved_Scripts_Are_Given_Up_Only_On_Yes)
{
    Item(1).Script_Modified = Item(3).Script_Modified = true;
    platform.dialogs.answers = {Message_Answer::Cancel};
    form.Discard_All();
    EXPECT_EQ(4, form.State().pictures.Count());
    EXPECT_EQ("2 scripts modified, do you wish to abandon modifications?\r\nTo save, click 'No' or 'Cancel' then use "
              "Script menu to save modified scripts.",
              Last_Message());
    EXPECT_EQ(Message_Answer::No, platform.dialogs.asked.back().standard);
    platform.dialogs.answers = {Message_Answer::Yes};
    form.Discard_All();
    EXPECT_EQ(0, form.State().pictures.Count());
}

TEST_F(Selecting, Unsaved_Descriptions_Of_The_Selection_Alone_Are_Asked_For)
{
    Item(1).Description_Modified = true;
    Select({2});
    EXPECT_TRUE(Confirm_Abandon_Descriptions(form.State(), false));
    EXPECT_FALSE(Confirm_Abandon_Descriptions(form.State(), true));
    EXPECT_EQ("1 descriptions modified, do you wish to abandon modifications?\r\nTo save, click 'No' or 'Cancel' then "
              "use File menu, Save Selected As to save modified descriptions.",
              Last_Message());
}

TEST_F(Selecting, Erasing_A_Script_That_Was_Not_There_Leaves_The_Record_Clean)
{
    form.Set_Picture_All_Script_Items(1, "Blur(2,50,RGB)");
    Item(1).Script_Modified = false;
    Item(2).Script_Modified = true;
    Discard_Scripts(form.State(), true);
    EXPECT_TRUE(Item(1).Script_Modified);
    EXPECT_FALSE(Item(2).Script_Modified);
    EXPECT_EQ(QString(), form.Recall_Picture_All_Script_Items(1));
}

} // namespace
