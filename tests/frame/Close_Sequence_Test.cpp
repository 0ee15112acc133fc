#include "frame/Close_Sequence.h"
#include "frame/Settings_Store.h"
#include "tests/frame/Entry_Fixture.h"

#include <gtest/gtest.h>

namespace {

struct Form_At_Rest : Placed_Form {
    Form_Place Place() const override { return {100, 200, 12000, 9000}; }
    void Move_To(const Form_Place&) override {}
};

struct Window_Log : Closing_Window {
    explicit Window_Log(QStringList& log) : calls(log) {}
    bool Leave_Full_Views() override { return std::exchange(full_view, false); }
    bool Pick_In_Progress() const override { return picking; }
    bool Is_Busy() const override { return busy; }
    bool Confirm_Abandon_Slide_Show() override { return Confirm("show"); }
    bool Confirm_Abandon_Scripts() override { return Confirm("scripts"); }
    bool Confirm_Abandon_Descriptions() override { return Confirm("descriptions"); }
    bool Confirm_Close_Of_Other_Windows() override { return Confirm("others"); }
    QString Explorer_Path() const override { return "/now/"; }
    QString Pattern_Text() const override { return "*.tif"; }
    QString Alias_String() const override { return "tree"; }
    void Detach_Folder_Pane() override { calls << "detach"; }
    void Release_Pictures() override { calls << "release"; }
    bool Save_Configuration_On_Exit() const override { return save_configuration; }
    const Placed_Form& Form() const override { return form; }
    std::array<float, 2> Splitter_Positions() const override { return {0.25F, 0.5F}; }
    void Quit_Help() override { calls << "help"; }
    void Unload_Other_Windows() override { calls << "windows"; }

    bool Confirm(const char* what)
    {
        calls << what;
        return refuse != what;
    }

    QStringList& calls;
    Form_At_Rest form;
    QString refuse;
    bool full_view = false, picking = false, busy = false, save_configuration = true;
};

class Close : public testing::Test, public Entry_Fixture {
protected:
    bool Run() { return Close_Main_Window(window, state, ports); }
    QString Stored(const QString& name) { return scripted.settings.Read_Value(Settings_Key, name); }
    Window_Log window{calls};
};

TEST_F(Close, Comes_In_One_Fixed_Order)
{
    printer.device = "Laser";
    EXPECT_TRUE(Run());
    EXPECT_EQ("show|scripts|descriptions|others|detach|release|clear printer|help|windows",
              calls.join('|').toStdString());
    EXPECT_EQ("DIR:'/now/',PRN:'Laser',SDI:2.00,EXT:'*.tif'", Stored(Settings_Value).toStdString());
    EXPECT_EQ("tree", Stored(Alias_Value));
    EXPECT_EQ("WOR:100:200,WSZ:12000:9000,SPR:0.250,SPR:0.500", Stored(Main_Window_Placement).toStdString());
    EXPECT_EQ(0, scripted.shell.beeps);
}

TEST_F(Close, Without_Save_Configuration_The_Pattern_Is_Lost_And_The_Lists_Are_Kept)
{
    scripted.settings.user[Settings_Key][Settings_Value] = "EXT:'*.gif'";
    window.save_configuration = false;
    state.Rename_Patterns.Append({"a", "b"});
    EXPECT_TRUE(Run());
    EXPECT_EQ("DIR:'/now/',PRN:'',SDI:2.00,RNP:\"'a','b'\"", Stored(Settings_Value).toStdString());
    EXPECT_EQ("", Stored(Main_Window_Placement));
}

TEST_F(Close, During_The_Full_Window_View_Takes_Two)
{
    window.full_view = true;
    EXPECT_FALSE(Run());
    EXPECT_TRUE(calls.empty());
    EXPECT_TRUE(Run());
}

TEST_F(Close, During_A_Pick_Is_Refused_With_A_Message)
{
    window.picking = true;
    EXPECT_FALSE(Run());
    ASSERT_EQ(1U, scripted.dialogs.asked.size());
    EXPECT_EQ("Please stop the picture pick currently in progress before exiting.", scripted.dialogs.asked[0].text);
}

TEST_F(Close, While_Busy_Is_Refused_Silently)
{
    window.busy = true;
    EXPECT_FALSE(Run());
    EXPECT_TRUE(scripted.dialogs.asked.empty());
    EXPECT_TRUE(calls.empty());
}

TEST_F(Close, Each_Refusal_Keeps_The_Window_Open_And_Stores_Nothing)
{
    for (const char* question : {"show", "scripts", "descriptions", "others"}) {
        calls.clear();
        window.refuse = question;
        EXPECT_FALSE(Run()) << question;
        EXPECT_EQ(question, calls.last());
        EXPECT_EQ("", Stored(Settings_Value));
    }
}

TEST_F(Close, Bitmaps_That_Are_Left_Over_Sound_A_Beep)
{
    kernel.live = 1;
    EXPECT_TRUE(Run());
    EXPECT_EQ(1, scripted.shell.beeps);
}

} // namespace
