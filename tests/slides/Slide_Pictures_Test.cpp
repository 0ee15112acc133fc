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
    Scripted_Timer& Ahead_Timer() const { return *platform.timers.at(1); }
    void Read_Ahead() const
    {
        ASSERT_TRUE(Ahead_Timer().on);
        for (int tries = 0; tries < 1000 && Ahead_Timer().on; ++tries) {
            Ahead_Timer().Fire();
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        ASSERT_FALSE(Ahead_Timer().on) << "once for each slide";
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

TEST_F(Slide_Pictures_Test, A_Picture_That_Is_Gone_Does_Not_End_The_Show)
{
    Pick_New(Q("a.jpg"));
    Pick_New(Q("b.jpg"));
    Pick_New(Q("c.jpg"));
    std::filesystem::remove(File(Q("b.jpg")));
    player.Start_Slide_Show(true);
    Read_Ahead();
    platform.timers[0]->Fire();
    EXPECT_EQ(form.State().Current_Picture_Index(), 2);
    EXPECT_FALSE(form.State().Current_Picture_Bitmap);
    platform.timers[0]->Fire();
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
