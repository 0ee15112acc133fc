// Save Selected As: what each option does to the file, to the record and to the pictures that follow.

#include "dev/samples/Tiff_File.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <sys/stat.h>

namespace {

using Scripts = Save_Options::Scripts;
using Target = Save_Options::Target;

class Series : public Picture_Test {
protected:
    int Select_New(const QString& name)
    {
        const int key = Pick_New(name);
        form.Set_Picture_Key_Selected(key, true);
        return key;
    }
    void Answer(std::deque<Message_Answer> answers) { platform.dialogs.answers = std::move(answers); }
    Pixel_Size Size(const QString& name)
    {
        File_Dimensions facts;
        EXPECT_TRUE(Get_Dimensions(Path(name), 0, facts)) << name.toStdString();
        return {facts.width, facts.height};
    }
};

TEST_F(Series, Writes_The_Type_That_Was_Chosen_Though_No_Pixel_Changes)
{
    Select_New("a.jpg");
    ASSERT_EQ(1, form.Save_Selected_As({.Save_Option = Target::Auto_Copy, .Picture_Type = 2}));
    EXPECT_EQ(2, File_Type_From_Signature(Path("a-hv.tif")));
    form.Set_Picture_Selected(0, false);
    form.Set_Picture_Key_Selected(Pick(Path("a-hv.tif")), true);
    ASSERT_EQ(1, form.Save_Selected_As({.Save_Option = Target::Auto_Copy, .Picture_Type = 1}));
    EXPECT_EQ(1, File_Type_From_Signature(Path("a-hv-hv.jpg")));
}

TEST_F(Series, A_Name_Without_Extension_Stays_Without_One)
{
    Select_New("plain");
    ASSERT_EQ(1, form.Save_Selected_As({.Save_Option = Target::Auto_Copy}));
    EXPECT_EQ((QStringList{"plain", "plain-hv"}), Names());
}

TEST_F(Series, A_Copy_Stands_Upright_Only_When_Rotations_Are_Saved)
{
    const int key = Select_New("a.jpg");
    form.Rotate_Picture(key, 90);
    ASSERT_EQ(1, form.Save_Selected_As({.Save_Option = Target::Auto_Copy, .JPEG_Quality = 90}));
    EXPECT_EQ((Pixel_Size{160, 96}), Size("a-hv.jpg"));
    Answer({Message_Answer::Yes});
    ASSERT_EQ(1, form.Save_Selected_As({.Save_Rotations_Flips = true, .Save_Option = Target::Auto_Copy}));
    EXPECT_EQ((Pixel_Size{96, 160}), Size("a-hv.jpg"));
    EXPECT_EQ(90, form.Return_Picture_Rotate(key)) << "a copy leaves the record";
}

TEST_F(Series, Onto_The_Original_Clears_Rotation_And_Flips_And_The_Mark_Of_A_New_Description)
{
    const int key = Select_New("a.jpg");
    form.Rotate_Picture(key, 90);
    Item(key).Flip = Flip_Left_To_Right;
    Item(key).Description = "new";
    Item(key).Description_Modified = true;
    Answer({Message_Answer::Yes});
    ASSERT_EQ(1, form.Save_Selected_As({.Save_Rotations_Flips = true}));
    EXPECT_EQ("This will overwrite (modify) your original(s), are you sure?", platform.dialogs.asked.at(0).text);
    EXPECT_EQ(0, Item(key).Rotate);
    EXPECT_EQ(0, Item(key).Flip);
    EXPECT_FALSE(Item(key).Description_Modified);
    EXPECT_EQ("new", Get_Comment(Path("a.jpg"), 0));
    EXPECT_EQ(96, form.Return_Picture_Horz_Pixels(key));
}

TEST_F(Series, Of_Another_Type_Beside_The_Original_Leaves_The_Record_With_Its_Own_File)
{
    const int key = Select_New("a.jpg");
    const std::string before = Contents_Of(File("a.jpg"));
    form.Rotate_Picture(key, 90);
    Answer({Message_Answer::Yes});
    ASSERT_EQ(1, form.Save_Selected_As({.Save_Rotations_Flips = true, .Picture_Type = 2}));
    EXPECT_EQ((Pixel_Size{96, 160}), Size("a.tif"));
    EXPECT_EQ(before, Contents_Of(File("a.jpg")));
    EXPECT_EQ(90, form.Return_Picture_Rotate(key));
    EXPECT_EQ(160, form.Return_Picture_Horz_Pixels(key));
}

TEST_F(Series, A_Copy_Over_An_Existing_File_Is_Asked_For_Each_Time)
{
    const std::string other = Contents_Of(Make("b.jpg", 40, 40).toStdString());
    Select_New("a.jpg");
    platform.dialogs.picks = {{Path("b.jpg")}};
    EXPECT_EQ(0, form.Save_Selected_As({.Save_Option = Target::Prompted_Copy}));
    EXPECT_EQ(Path("b.jpg") + " already exists, do you wish to overwrite?", Last_Message());
    EXPECT_EQ(other, Contents_Of(File("b.jpg")));
    Make("a-hv.jpg", 40, 40);
    EXPECT_EQ(0, form.Save_Selected_As({.Save_Option = Target::Auto_Copy}));
    EXPECT_EQ(Path("a-hv.jpg") + " already exists, do you wish to overwrite?", Last_Message());
    EXPECT_EQ((Pixel_Size{40, 40}), Size("a-hv.jpg"));
}

TEST_F(Series, A_Prompted_Copy_Takes_Type_And_Quality_From_The_Qualifier)
{
    Select_New("a.jpg");
    platform.dialogs.picks = {{Path("b.jpg:TIF")}, {Path("c.jpg:5")}};
    EXPECT_EQ(1, form.Save_Selected_As({.Save_Option = Target::Prompted_Copy}));
    EXPECT_EQ(2, File_Type_From_Signature(Path("b.jpg")));
    EXPECT_EQ(1, form.Save_Selected_As({.Save_Option = Target::Prompted_Copy}));
    EXPECT_LT(Contents_Of(File("c.jpg")).size(), Contents_Of(File("a.jpg")).size());
}

TEST_F(Series, Anything_But_Yes_After_A_Cancelled_Prompt_Ends_It)
{
    Select_New("a.jpg");
    Select_New("b.jpg");
    Answer({Message_Answer::No});
    platform.dialogs.picks = {{}, {Path("c.jpg")}};
    EXPECT_EQ(0, form.Save_Selected_As({.Save_Option = Target::Prompted_Copy}));
    EXPECT_EQ(1U, platform.dialogs.pick_asked.size());
}

TEST_F(Series, A_Read_Only_Original_Is_Asked_For)
{
    Select_New("a.jpg");
    const std::string before = Contents_Of(File("a.jpg"));
    chmod(File("a.jpg").c_str(), 0444);
    Answer({Message_Answer::Yes, Message_Answer::No});
    const int answer = As_Ordinary_User([&] {
        if (form.Save_Selected_As({}) != 0) return 1;
        return Last_Message() == Path("a.jpg") + " is Read-only, do you wish to overwrite?" ? 0 : 2;
    });
    EXPECT_EQ(0, answer) << "1 saved, 2 another message";
    EXPECT_EQ(before, Contents_Of(File("a.jpg")));
}

TEST_F(Series, Wants_Originals_Alone_And_Shares_What_It_Copies)
{
    const int key = Select_New("a.jpg");
    Item(key).Lock_Flags = 0x1000;
    EXPECT_EQ(0, form.Save_Selected_As({}));
    EXPECT_EQ("1 picture locked by another function.", Last_Message());
    EXPECT_EQ(1, form.Save_Selected_As({.Save_Option = Target::Auto_Copy}));
}

TEST_F(Series, Lets_Events_Run_Between_Two_Pictures_And_Redraws_The_Strip_At_Its_End)
{
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) Select_New(name);
    const int calls = platform.events.calls, drawn = view.all_drawn;
    EXPECT_EQ(3, form.Save_Selected_As({.Save_Option = Target::Auto_Copy}));
    EXPECT_EQ(calls + 2, platform.events.calls);
    EXPECT_EQ(drawn + 1, view.all_drawn);
}

TEST_F(Series, Is_Not_Begun_By_An_Event_Of_A_Pick)
{
    Make("~a-20260101-000000.jpg");
    form.Set_Picture_Key_Selected(Pick(Path("~a-20260101-000000.jpg")), true);
    const QStringList before = Names();
    int tries = 0;
    platform.events.on_call = [&](int) {
        ++tries;
        EXPECT_EQ(0, form.Save_Selected_As({.Save_Option = Target::Auto_Copy}));
        EXPECT_EQ(0, form.Snapshots().Save_Selected_As_Snapshots());
        EXPECT_FALSE(form.Snapshots().Restore_From_Selected_Snapshot());
        form.Snapshots().Load_Snapshots_Of_Selected();
    };
    QStringList many;
    for (int i = 0; i < 8; ++i) many << Make(QString("b%1.jpg").arg(i), 40, 40);
    Pick_List(many, true);
    platform.events.on_call = nullptr;
    EXPECT_GT(tries, 0) << "the pick let no event run";
    EXPECT_EQ(9, form.State().pictures.Count());
    EXPECT_EQ(before.size() + 8, Names().size());
}

TEST_F(Series, Of_A_Chosen_Quality_Asks_Before_A_Deep_Original_Though_It_Is_Only_Turned)
{
    Write_Tiff_File(File("deep.tif"), Meadow(160, 96, 1), {.bits = 16});
    const std::string before = Contents_Of(File("deep.tif"));
    const int key = Pick(Path("deep.tif"));
    form.Set_Picture_Key_Selected(key, true);
    form.Rotate_Picture(key, 90);
    Answer({Message_Answer::Yes, Message_Answer::Cancel});
    EXPECT_EQ(0, form.Save_Selected_As({.Save_Rotations_Flips = true, .JPEG_Quality = 80}));
    EXPECT_TRUE(Last_Message().contains("holds more than is kept by a save")) << Last_Message().toStdString();
    EXPECT_EQ(before, Contents_Of(File("deep.tif")));
}

TEST_F(Series, That_Wrote_A_Deep_Original_In_8_Bits_Asks_No_More)
{
    Write_Tiff_File(File("deep.tif"), Meadow(160, 96, 1), {.bits = 16});
    const int key = Pick(Path("deep.tif"));
    form.Set_Picture_All_Script_Items(key, "ColBal(1,1,0.5)");
    form.Set_Picture_Key_Selected(key, true);
    Answer({Message_Answer::Yes, Message_Answer::Yes, Message_Answer::Yes});
    for (int round = 0; round < 2; ++round) EXPECT_EQ(1, form.Save_Selected_As({.Script_Option = Scripts::Run}));
    EXPECT_EQ(3U, platform.dialogs.asked.size()) << "twice for the originals, once for their depth";
}

} // namespace
