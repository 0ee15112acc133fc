#include "frame/Settings_Store.h"
#include "tests/frame/Entry_Fixture.h"

#include <gtest/gtest.h>

namespace {

struct Window_Log : Starting_Window {
    explicit Window_Log(QStringList& log) : calls(log) {}
    void Load() override { calls << "load"; }
    void Open_Slide_Show(const QString& path) override
    {
        calls << "open " + path;
        pictures = shows.contains(path);
    }
    void Show() override { calls << "show"; }
    void Enlarge_To_Design_Size() override { calls << "enlarge"; }
    void Start_Drawing() override { calls << "draw"; }
    bool Has_Pictures() const override { return pictures; }
    void Start_Slide_Show() override { calls << "slides"; }
    void Set_Alias_String(const QString& alias) override { calls << "alias " + alias; }
    void Set_Pattern_String(const QString& pattern) override { calls << "pattern " + pattern; }
    QStringList& calls;
    QStringList shows;
    bool pictures = false;
};

class Start : public testing::Test, public Entry_Fixture {
protected:
    void Store(const QString& line) { scripted.settings.user[Settings_Key][Settings_Value] = line; }
    std::string Run(const QString& arguments)
    {
        const auto make_window = [this]() -> Starting_Window& {
            calls << "window";
            return window;
        };
        Run_Entry(state, ports, make_window, arguments);
        return calls.join('|').toStdString();
    }
    Window_Log window{calls};
};

TEST_F(Start, Comes_In_One_Fixed_Order)
{
    Store("PRN:'Laser',EXT:'*.tif'");
    scripted.settings.user[Settings_Key][Alias_Value] = "tree";
    printer.known << "Laser";
    EXPECT_EQ("clear printer|cmyk 0.5 0 765|background 255 255 255|orientation|printer Laser|window|load|show|enlarge|"
              "draw|alias tree|pattern *.tif",
              Run(QString()));
    EXPECT_EQ(Page_Orientation::Landscape, state.Default_Page_Orientation);
}

TEST_F(Start, Without_Settings_Has_The_Defaults_And_The_First_Formulas)
{
    Run(QString());
    EXPECT_EQ(12000, state.Design_Width);
    EXPECT_EQ(9000, state.Design_Height);
    EXPECT_EQ(12, state.Design_Twips_Per_Pixel);
    EXPECT_EQ(2.0F, state.Slide_Display_Interval);
    EXPECT_EQ(2, state.Rename_Formulas.Count());
    EXPECT_EQ(3, state.File_Data_Formulas.Count());
}

TEST_F(Start, Forgets_The_State_Of_Before)
{
    state.Default_Path = "/old";
    state.Rename_Patterns.Append({"old", "old"});
    Run(QString());
    EXPECT_EQ("", state.Default_Path);
    EXPECT_EQ(0, state.Rename_Patterns.Count());
}

TEST_F(Start, A_Printer_That_Is_Gone_Leads_To_The_Default_Printer)
{
    Store("PRN:'Gone'");
    EXPECT_NE(std::string::npos, Run(QString()).find("printer Gone|default printer|window"));
}

TEST_F(Start, Without_A_Printer_Name_The_Default_Printer_Is_Bound)
{
    EXPECT_NE(std::string::npos, Run(QString()).find("orientation|default printer|window"));
}

TEST_F(Start, Opens_A_Slide_Show_Before_The_Window_Is_Shown_And_Plays_It)
{
    window.shows << "my show.hvs";
    EXPECT_NE(std::string::npos, Run("  my show.hvs").find("load|open my show.hvs|show|enlarge|draw|slides|alias"));
}

TEST_F(Start, A_Missing_Slide_Show_Goes_On_To_The_Empty_Window)
{
    EXPECT_NE(std::string::npos, Run("gone.hvs").find("load|open gone.hvs|show|enlarge|draw|alias"));
}

TEST_F(Start, Blanks_Alone_Are_No_Argument)
{
    EXPECT_NE(std::string::npos, Run("   \t ").find("load|show|enlarge|draw|alias"));
}

TEST_F(Start, A_Damaged_Settings_Line_Never_Fails_It)
{
    Store("DIR:'/a,SDI:x;;RNF:\"'\",~~:WSZ");
    Run(QString());
    EXPECT_EQ(2.0F, state.Slide_Display_Interval);
}

} // namespace
