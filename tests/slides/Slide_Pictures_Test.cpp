#include "slides/Slide_Player.h"

#include "slides/Slide_Show_Forwarder.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <filesystem>
#include <fstream>
#include <thread>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

/// A show of real files, whose next picture is read ahead.
class Slide_Pictures_Test : public Picture_Test {
protected:
    Slide_Pictures_Test() { form.Set_Slide_Show(&link); }
    ~Slide_Pictures_Test() override { form.Set_Slide_Show(nullptr); }
    Scripted_Timer& Timer() const { return *platform.timers.at(0); }
    Scripted_Timer& Ahead_Timer() const { return *platform.timers.at(1); }
    bool Is_Made_Aside()
    {
        bool is_made = false;
        for (int slide = 1; slide <= player.Slide_Show_Count(); ++slide)
            is_made |= form.Pictures().Next().Is_Being_Made(player.Picture_Key_Of_Slide(slide));
        return is_made;
    }
    void Wait_For_Next()
    {
        for (int tries = 0; tries < 2000 && Is_Made_Aside(); ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        ASSERT_FALSE(Is_Made_Aside());
    }
    void Read_Ahead()
    {
        ASSERT_TRUE(Ahead_Timer().on);
        Ahead_Timer().Fire();
        ASSERT_FALSE(Ahead_Timer().on) << "once for each slide";
        Wait_For_Next();
    }
    /// Takes seconds, item by item.
    static void Give_Slow_Script(Picture_Item& item)
    {
        QStringList items;
        for (int i = 0; i < 200; ++i) items << Q("Blur(25,100,7)");
        Parse_Script_Items(items.join(u';'), item.Script_Items);
    }
    int Pick_Slow(const QString& name)
    {
        const int key = Pick(Make(name, 1200, 900));
        Give_Slow_Script(*form.State().pictures.Find(key));
        return key;
    }
    std::vector<std::uint8_t> Current_Pixels() const { return Pixels_Of(form.State().Current_Picture_Bitmap.Get()); }

    Program_State program;
    Slide_Shows shows{form.State(), form.Picking(), program};
    Slide_Player player{form.State(), form.Pictures(), shows, program};
    Slide_Show_Forwarder link{shows, player};
};

TEST_F(Slide_Pictures_Test, The_Next_Slide_Is_Loaded_In_The_Quiet_And_Is_The_Same_Picture)
{
    Pick(Make(Q("a.jpg")));
    const int second = Pick(Make(Q("b.jpg"), 160, 96, 1, Q("Gamma(0,1.5,1,0,1.5,1,0,1.5,1)"), {}, 2));
    form.State().pictures.Find(second)->Rotate = 90;
    const auto expected = Pixels_Of(Owned_Bitmap(form.Return_Picture(second, 0, 1)).Get());
    const int before = Bitmap_Count();
    player.Start_Slide_Show(false);
    Read_Ahead();
    EXPECT_GT(Bitmap_Count(), before + 1);
    // Other bytes that look like the same file: a picture that is read only now would show them.
    const auto written = std::filesystem::last_write_time(File(Q("b.jpg")));
    std::fstream(File(Q("b.jpg")), std::ios::in | std::ios::out | std::ios::binary).write("no jpeg", 7);
    std::filesystem::last_write_time(File(Q("b.jpg")), written);
    player.Slide_Show_Control(int(Slide_Control_Code::Next), 1);
    EXPECT_EQ(Current_Pixels(), expected);
    player.Stop_Slide_Show();
}

/// Takes what was run ahead, as a window does.
struct Taking_View : Recording_View {
    explicit Taking_View(Halvine_Form& of) : form(of) { form.Set_View(this); }
    ~Taking_View() override { form.Set_View(nullptr); }
    void Show_Current_Picture() override { adjusted.Reset(form.Pictures().Take_Current_Adjusted()); }
    Halvine_Form& form;
    Owned_Bitmap adjusted;
};

TEST_F(Slide_Pictures_Test, The_Next_Slides_Script_Has_Run_When_It_Comes_Up)
{
    Pick_New(Q("a.jpg"));
    const int second = Pick(Make(Q("b.jpg"), 160, 96, 1, Q("Unsharp(0.75,0.25,1.5,2,5,K);Crop(10,20,30,40)"), {}, 2));
    form.State().pictures.Find(second)->Rotate = 90;
    form.State().pictures.Find(second)->Flip = Flip_Top_To_Bottom;
    const auto expected = Pixels_Of(Owned_Bitmap(form.Return_Picture_Adjusted(second, 0, 1)).Get());
    Taking_View taking(form);
    player.Start_Slide_Show(false);
    EXPECT_FALSE(taking.adjusted) << "the first slide was not made ahead";
    Read_Ahead();
    player.Slide_Show_Control(int(Slide_Control_Code::Next), 1);
    EXPECT_EQ(Pixels_Of(taking.adjusted.Get()), expected);
    player.Stop_Slide_Show();
}

TEST_F(Slide_Pictures_Test, A_Script_With_Text_Is_Left_To_The_Window)
{
    Pick_New(Q("a.jpg"));
    Pick(Make(Q("b.jpg"), 160, 96, 1, Q("Text(\"sea\");Crop(10,20,30,40)"), {}, 2));
    Taking_View taking(form);
    player.Start_Slide_Show(false);
    Read_Ahead();
    player.Slide_Show_Control(int(Slide_Control_Code::Next), 1);
    EXPECT_FALSE(taking.adjusted);
    EXPECT_TRUE(form.State().Current_Picture_Bitmap);
    player.Stop_Slide_Show();
}

TEST_F(Slide_Pictures_Test, A_Slide_Stays_Until_The_Next_One_Is_Made)
{
    Pick_New(Q("a.jpg"));
    Pick_Slow(Q("b.jpg"));
    Pick_New(Q("c.jpg"));
    player.Start_Slide_Show(true);
    Timer().Fire(); // before the quiet was over
    EXPECT_EQ(player.Slide_Index(), 1) << "the window would stand still while the script runs";
    EXPECT_TRUE(Timer().on);
    EXPECT_LE(Timer().interval, 50) << "looks again soon";
    Timer().Fire();
    EXPECT_EQ(player.Slide_Index(), 1);
    Wait_For_Next();
    Timer().Fire();
    EXPECT_EQ(player.Slide_Index(), 2);
    EXPECT_EQ(Timer().interval, 2000) << "its own time begins when it is shown";
    player.Stop_Slide_Show();
}

TEST_F(Slide_Pictures_Test, A_File_That_Changes_All_The_Time_Does_Not_Hold_Up_The_Show)
{
    Pick_New(Q("a.jpg"));
    Pick_Slow(Q("b.jpg"));
    player.Start_Slide_Show(true);
    for (int seed = 2; seed < 500 && player.Slide_Index() == 1; ++seed) {
        Timer().Fire();
        Make(Q("b.jpg"), 1200, 900, 1, {}, {}, seed); // another file each time it is looked for
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(player.Slide_Index(), 2);
    player.Stop_Slide_Show();
}

TEST_F(Slide_Pictures_Test, What_Is_Being_Made_Is_Given_Up_At_A_Stop_And_At_The_End)
{
    const int before = Bitmap_Count();
    {
        Halvine_Form other(platform.platform);
        Slide_Shows other_shows(other.State(), other.Picking(), program);
        Slide_Player other_player(other.State(), other.Pictures(), other_shows, program);
        const File_Entry entries[] = {Entry_Of_File(Make(Q("a.jpg"))), Entry_Of_File(Make(Q("b.jpg"), 1200, 900))};
        other.Pick_Files(entries, true, false);
        Give_Slow_Script(other.State().pictures.Item(2));
        other_player.Start_Slide_Show(false);
        platform.timers.back()->Fire();
        const int second = other_player.Picture_Key_Of_Slide(2);
        ASSERT_TRUE(other.Pictures().Next().Is_Being_Made(second));
        other_player.Stop_Slide_Show();
        EXPECT_FALSE(other.Pictures().Next().Is_Being_Made(second));
        other_player.Start_Slide_Show(false);
        platform.timers.back()->Fire();
        EXPECT_TRUE(other.Pictures().Next().Is_Being_Made(second)) << "made anew beside the one that was given up";
    }
    EXPECT_EQ(Bitmap_Count(), before) << "the program ended in the middle of a script";
}

TEST_F(Slide_Pictures_Test, While_Playing_The_Slide_Of_The_Next_Tick_Is_Made_Whatever_Way_The_User_Went)
{
    Pick_New(Q("a.jpg"));
    Pick_New(Q("b.jpg"));
    const int third = Pick_Slow(Q("c.jpg"));
    player.Start_Slide_Show(true);
    player.Slide_Show_Control(int(Slide_Control_Code::Previous), 1);
    player.Slide_Show_Control(int(Slide_Control_Code::Previous), 3);
    ASSERT_EQ(player.Slide_Index(), 2);
    Ahead_Timer().Fire();
    EXPECT_TRUE(form.Pictures().Next().Is_Being_Made(third));
    player.Stop_Slide_Show();
}

TEST_F(Slide_Pictures_Test, What_Changed_Since_It_Was_Loaded_Is_Loaded_Again)
{
    Pick(Make(Q("a.jpg")));
    const int second = Pick(Make(Q("b.jpg"), 160, 96, 1, {}, {}, 2));
    player.Start_Slide_Show(false);
    Read_Ahead();
    form.Rotate_Picture(second, 90);
    player.Slide_Show_Control(int(Slide_Control_Code::Next), 1);
    EXPECT_EQ(Size_Of_Bitmap(form.State().Current_Picture_Bitmap.Get()), (Pixel_Size{96, 160}));
    player.Slide_Show_Control(int(Slide_Control_Code::Previous), 1);
    player.Slide_Show_Control(int(Slide_Control_Code::Next), 1);
    player.Slide_Show_Control(int(Slide_Control_Code::Previous), 1);
    Read_Ahead(); // reads the second again, going back round
    Make(Q("b.jpg"), 80, 40, 1, {}, {}, 3);
    player.Slide_Show_Control(int(Slide_Control_Code::Previous), 1);
    EXPECT_EQ(Size_Of_Bitmap(form.State().Current_Picture_Bitmap.Get()), (Pixel_Size{40, 80})) << "another file";
    player.Stop_Slide_Show();
}

TEST_F(Slide_Pictures_Test, A_Stop_Lets_The_Loaded_Picture_Go)
{
    Pick_New(Q("a.jpg"));
    Pick_New(Q("b.jpg"));
    const int before = Bitmap_Count();
    player.Start_Slide_Show(false);
    Read_Ahead();
    player.Stop_Slide_Show();
    EXPECT_EQ(Bitmap_Count(), before + 1) << "the current picture alone";
}

TEST_F(Slide_Pictures_Test, A_Stop_While_The_Next_Is_Made_Lets_It_Go_In_A_Moment)
{
    Pick_New(Q("a.jpg"));
    const int second = Pick_Slow(Q("b.jpg"));
    const int before = Bitmap_Count();
    player.Start_Slide_Show(false);
    Ahead_Timer().Fire();
    for (int tries = 0; tries < 2000 && Bitmap_Count() < before + 2; ++tries) // until it is read, and the script runs
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    player.Stop_Slide_Show();
    EXPECT_FALSE(form.Pictures().Next().Is_Being_Made(second));
    for (int tries = 0; tries < 2000 && Bitmap_Count() > before + 1; ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_EQ(Bitmap_Count(), before + 1) << "the current picture alone";
}

TEST_F(Slide_Pictures_Test, A_Picture_That_Is_Gone_Does_Not_End_The_Show)
{
    Pick_New(Q("a.jpg"));
    Pick_New(Q("b.jpg"));
    Pick_New(Q("c.jpg"));
    std::filesystem::remove(File(Q("b.jpg")));
    player.Start_Slide_Show(true);
    Read_Ahead();
    Timer().Fire();
    EXPECT_EQ(form.State().Current_Picture_Index(), 2);
    EXPECT_FALSE(form.State().Current_Picture_Bitmap);
    Read_Ahead();
    Timer().Fire();
    EXPECT_EQ(form.State().Current_Picture_Index(), 3);
    player.Stop_Slide_Show();
}

TEST_F(Slide_Pictures_Test, Sounds_Are_Counted_Once_A_Start)
{
    Pick_New(Q("a.jpg"));
    player.Start_Slide_Show(true);
    EXPECT_EQ(player.Slide_Sound_Index(), 1) << "no sounds";
    player.Stop_Slide_Show();
    Put_File(folder.File("x.wav"), "sound");
    Put_File(folder.File("s.hvs"), "SND,'.\\x.wav';\r\nPIC,'.\\a.jpg';\r\n");
    ASSERT_TRUE(shows.Open_Slide_Show(Path(Q("s.hvs")), false, true));
    player.Start_Slide_Show(true);
    EXPECT_EQ(player.Slide_Sound_Index(), 2);
    player.Stop_Slide_Show();
    player.Start_Slide_Show(true);
    EXPECT_EQ(player.Slide_Sound_Index(), 2) << "each start begins anew";
    player.Stop_Slide_Show();
}

} // namespace
