// Show files as they should not be. Each ends in what stands before the fault, or in a message that names the file.

#include "frame/Configuration_File.h"
#include "frame/text/Path_Utilities.h"
#include "slides/Slide_Shows.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <sys/stat.h>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

class Bad_Show : public Picture_Test {
protected:
    bool Open(const std::string& contents)
    {
        Put_File(folder.File("bad.hvs"), contents);
        return shows.Open_Slide_Show(Path(Q("bad.hvs")), false, true);
    }
    QStringList Picked() const
    {
        QStringList names;
        for (int index = 1; index <= form.State().pictures.Count(); ++index)
            names << form.State().pictures.Item(index).File_Name;
        return names;
    }
    Program_State program;
    Slide_Shows shows{form.State(), form.Picking(), program};
};

const std::string Whole_Markup = "<?xml version=\"1.0\"?>\r\n<hvSlideShow version='00.01' folder='' time='3.00'>\r\n"
                                 "<Slide file='.\\a.jpg' rotate='90'/>\r\n<Slide file='.\\b.jpg' time='1.50'/>\r\n"
                                 "</hvSlideShow>\r\n";
const std::string Whole_Keywords = "VER,00.01;\r\nDIR,'\\nowhere\\';\r\nPIC,'.\\a.jpg',ROT:90;\r\n"
                                   "PIC,'.\\b.jpg';\r\nTIM,3.00;\r\n";

TEST_F(Bad_Show, An_Empty_File_Is_An_Empty_Show)
{
    EXPECT_TRUE(Open(""));
    EXPECT_TRUE(Picked().isEmpty());
    EXPECT_TRUE(platform.dialogs.asked.empty());
    EXPECT_EQ(shows.Slide_Show_File_Name(), Path(Q("bad.hvs")));
    EXPECT_EQ(program.Slide_Display_Interval, 2);
}

TEST_F(Bad_Show, Blanks_And_Line_Ends_Alone_Are_An_Empty_Show)
{
    EXPECT_TRUE(Open(" \r\n\r\n\t\n"));
    EXPECT_TRUE(Picked().isEmpty());
}

/// Cut at every place, it gives the slides that stand whole before the cut and never more.
class Truncated_Show : public Bad_Show, public testing::WithParamInterface<const std::string*> {};
INSTANTIATE_TEST_SUITE_P(All, Truncated_Show, testing::Values(&Whole_Markup, &Whole_Keywords),
                         [](const auto& row) { return row.index == 0 ? "markup" : "keywords"; });

TEST_P(Truncated_Show, Keeps_The_Slides_Before_The_Cut)
{
    Make(Q("a.jpg"));
    Make(Q("b.jpg"));
    const std::string& whole = *GetParam();
    const std::size_t behind_first = whole.find('\n', whole.find("a.jpg"));
    const std::size_t behind_second = whole.find('\n', whole.find("b.jpg"));
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        platform.dialogs = {};
        ASSERT_TRUE(Open(whole.substr(0, length))) << length;
        const QStringList names = Picked();
        if (length >= behind_first) {
            EXPECT_EQ(names.value(0), Q("a.jpg")) << length;
        }
        if (length >= behind_second) {
            EXPECT_EQ(names, (QStringList{Q("a.jpg"), Q("b.jpg")})) << length;
        }
        EXPECT_LE(names.size(), 2) << length;
        form.Picking().Discard_All();
    }
}

TEST_F(Bad_Show, Files_Of_Other_Kinds_Open_Nothing_And_Change_Nothing)
{
    Make(Q("a.jpg"));
    const std::string others[] = {
        "<?xml version=\"1.0\"?>\r\n<hvAlbum folder=''><Picture file='.\\a.jpg'/></hvAlbum>\r\n",
        "<?xml version=\"1.0\"?>\r\n<hvConfigure version='00.01'><SDI>9.00</SDI></hvConfigure>\r\n",
        "DIR:'/home/',SDI:9.00",
        "ConOpt(0.005,0.005,LUM);Gamma(0,1.5,1)",
        "<html><body>PIC,'.\\a.jpg';</body></html>",
        "# a script\necho PIC\n",
        Contents_Of(File(Q("a.jpg"))),
        std::string(100000, '\0'),
    };
    for (const std::string& other : others) {
        EXPECT_TRUE(Open(other));
        EXPECT_TRUE(Picked().isEmpty()) << other.substr(0, 40);
        EXPECT_EQ(program.Slide_Display_Interval, 2) << other.substr(0, 40);
    }
    EXPECT_TRUE(platform.dialogs.pick_asked.empty());
}

TEST_F(Bad_Show, Forms_That_Are_Mixed_End_At_The_First_Line_Of_The_Other)
{
    Make(Q("a.jpg"));
    Make(Q("b.jpg"));
    EXPECT_TRUE(Open("<hvSlideShow><Slide file='.\\a.jpg'/>\r\nPIC,'.\\b.jpg';\r\n"));
    EXPECT_EQ(Picked(), QStringList{Q("a.jpg")});
    EXPECT_TRUE(Open("PIC,'.\\b.jpg';\r\n<Slide file='.\\a.jpg'/>\r\n"));
    EXPECT_EQ(Picked(), QStringList{Q("b.jpg")});
}

TEST_F(Bad_Show, A_Hundred_Megabytes_Are_Refused_By_Name)
{
    Pick_New(Q("a.jpg"));
    Put_File(folder.File("huge.hvs"), "PIC,'.\\a.jpg';\r\n");
    std::filesystem::resize_file(folder.File("huge.hvs"), 100'000'000);
    EXPECT_FALSE(shows.Open_Slide_Show(Path(Q("huge.hvs")), false, true));
    EXPECT_TRUE(Last_Message().contains(Q("huge.hvs")));
    EXPECT_EQ(Picked(), QStringList{Q("a.jpg")}) << "the list stays";
    EXPECT_TRUE(shows.Slide_Show_File_Name().isEmpty());
}

TEST_F(Bad_Show, Long_Lines_And_Long_Tags_Within_The_Limit_Are_Read)
{
    Make(Q("a.jpg"));
    const std::string filler(8 << 20, 'x');
    EXPECT_TRUE(Open("XYZ," + filler + "\nPIC,'.\\a.jpg';\n" + std::string(4 << 20, '\'')));
    EXPECT_EQ(Picked(), QStringList{Q("a.jpg")});
    EXPECT_TRUE(Open("<hvSlideShow other='" + filler + "'><Slide file='.\\a.jpg' x='" + filler + "'/>" +
                     std::string(4 << 20, '<')));
    EXPECT_EQ(Picked(), QStringList{Q("a.jpg")});
}

TEST_F(Bad_Show, Pipes_Folders_And_Devices_Are_Refused)
{
    ASSERT_EQ(mkfifo(folder.File("pipe.hvs").c_str(), 0600), 0);
    std::filesystem::create_directory(folder.File("folder.hvs"));
    for (const QString& name : {Path(Q("pipe.hvs")), Path(Q("folder.hvs")), Q("/dev/zero")}) {
        EXPECT_FALSE(shows.Open_Slide_Show(name, false, true)) << name.toStdString();
        EXPECT_TRUE(Last_Message().contains(Name_Part(name))) << Last_Message().toStdString();
    }
}

TEST_F(Bad_Show, Entries_That_Are_No_Pictures_Go_To_The_Failure_List)
{
    Make(Q("a.jpg"));
    Put_File(folder.File("text.jpg"), "no picture");
    Put_File(folder.File("empty.jpg"), "");
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(Open("PIC,'.\\text.jpg';\nPIC,'.\\a.jpg';\nPIC,'.\\empty.jpg';\n"));
    EXPECT_EQ(Picked(), QStringList{Q("a.jpg")});
    EXPECT_EQ(platform.dialogs.lists_shown.back().second, (QStringList{Path(Q("text.jpg")), Path(Q("empty.jpg"))}));
}

TEST_F(Bad_Show, A_Folder_Or_A_Pipe_As_A_Picture_Is_Missing)
{
    std::filesystem::create_directory(folder.File("sub"));
    ASSERT_EQ(mkfifo(folder.File("pipe.jpg").c_str(), 0600), 0);
    platform.dialogs.answers = {Message_Answer::Yes, Message_Answer::Yes};
    EXPECT_TRUE(Open("PIC,'.\\sub';\nPIC,'.\\pipe.jpg';\n"));
    EXPECT_TRUE(Picked().isEmpty());
    EXPECT_EQ(platform.dialogs.pick_asked.size(), 2U);
}

struct Name_Case {
    const char* name;
    const char* file; // on the disk, below the folder
    const char* written;
};

class Show_Name : public Bad_Show, public testing::WithParamInterface<Name_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Show_Name,
    testing::Values(
        Name_Case{"entities_in_markup", "it's <a> & \"b\".jpg",
                  "<hvSlideShow><Slide file='.\\it&apos;s &lt;a&gt; &amp; &quot;b&quot;.jpg'/></hvSlideShow>"},
        Name_Case{"a_bare_ampersand", "a & b.jpg", "<hvSlideShow><Slide file='.\\a & b.jpg'/></hvSlideShow>"},
        Name_Case{"a_numeric_reference_is_a_name", "&#65;.jpg",
                  "<hvSlideShow><Slide file='.\\&#65;.jpg'/></hvSlideShow>"},
        Name_Case{"doubled_quotes_in_keywords", "it's.jpg", "PIC,'.\\it''s.jpg';"},
        Name_Case{"double_quotes_in_keywords", "say \"x\", 'y'.jpg", "PIC,\".\\say \"\"x\"\", 'y'.jpg\";"},
        Name_Case{"utf_8_in_markup", "K\xC3\xB6ln \xE2\x82\xAC \xE6\x97\xA5.jpg",
                  "<hvSlideShow><Slide file='.\\K\xC3\xB6ln \xE2\x82\xAC \xE6\x97\xA5.jpg'/></hvSlideShow>"},
        Name_Case{"utf_8_in_keywords", "K\xC3\xB6ln.jpg", "PIC,'.\\K\xC3\xB6ln.jpg';"},
        Name_Case{"windows_1252_in_markup", "K\xC3\xB6ln \xE2\x82\xAC.jpg",
                  "<hvSlideShow><Slide file='.\\K\xF6ln \x80.jpg'/></hvSlideShow>"},
        Name_Case{"windows_1252_in_keywords", "K\xC3\xB6ln \xE2\x82\xAC.jpg", "PIC,'.\\K\xF6ln \x80.jpg';"},
        Name_Case{"other_case", "Photo.JPG", "PIC,'.\\PHOTO.jpg';"},
        Name_Case{"in_a_subfolder", "sub/a.jpg", "PIC,'.\\sub\\a.jpg';"},
        Name_Case{"outside_the_folder", "../outside/a.jpg",
                  "<hvSlideShow><Slide file='..\\outside\\a.jpg'/></hvSlideShow>"}),
    [](const auto& row) { return row.param.name; });

TEST_P(Show_Name, Is_Found)
{
    Test_Folder inner;
    const std::string own = folder.File("own");
    const std::filesystem::path target = std::filesystem::path(own) / GetParam().file;
    std::filesystem::create_directories(own);
    std::filesystem::create_directories(target.parent_path());
    Make(Q("source.jpg"));
    std::filesystem::rename(folder.File("source.jpg"), target);
    Put_File(own + "/show.hvs", GetParam().written);
    ASSERT_TRUE(shows.Open_Slide_Show(QString::fromStdString(own + "/show.hvs"), false, true));
    EXPECT_EQ(Picked().size(), 1) << GetParam().written;
    EXPECT_TRUE(platform.dialogs.pick_asked.empty());
}

TEST_F(Bad_Show, A_Copy_Of_Pictures_From_Outside_Stays_In_Its_Folder)
{
    std::filesystem::create_directories(folder.File("own/deep"));
    Make(Q("a.jpg"));
    Put_File(folder.File("own/deep/s.hvs"), "<hvSlideShow><Slide file='..\\..\\a.jpg'/></hvSlideShow>");
    ASSERT_TRUE(shows.Open_Slide_Show(Path(Q("own/deep/s.hvs")), false, true));
    std::filesystem::create_directory(folder.File("copy"));
    platform.dialogs.picks = {{Path(Q("copy/c.hvs"))}};
    ASSERT_TRUE(shows.Copy_Slide_Show_As(false));
    EXPECT_TRUE(std::filesystem::exists(folder.File("copy/ss001-a.jpg")));
    EXPECT_EQ(Names().filter(Q("ss")), QStringList());
}

TEST_F(Bad_Show, A_Name_With_A_Nul_Is_No_Shorter_Name)
{
    Make(Q("a.jpg"));
    EXPECT_TRUE(Open(std::string("PIC,'.\\a.jpg\0.exe';\n", 20)));
    EXPECT_TRUE(Picked().isEmpty());
}

TEST_F(Bad_Show, A_Name_Of_Megabytes_Is_Asked_For_In_Short)
{
    EXPECT_TRUE(Open("PIC,'.\\" + std::string(1 << 20, 'x') + "';\nPIC,'/" + std::string(1 << 20, 'y') + "';\n"));
    ASSERT_EQ(platform.dialogs.pick_asked.size(), 1U);
    EXPECT_LT(platform.dialogs.pick_asked[0].caption.size(), 400);
    EXPECT_TRUE(platform.dialogs.pick_asked[0].caption.startsWith(Q("Halvine - Find Folder Containing: xxx")));
}

TEST_F(Bad_Show, Numbers_Beyond_All_Bounds_Do_No_Harm)
{
    Make(Q("a.jpg"));
    EXPECT_TRUE(Open("<hvSlideShow time='99999999999999999999999999999999999999999999'>"
                     "<Slide file='.\\a.jpg' rotate='99999999999999999999' time='-1'/></hvSlideShow>"));
    EXPECT_EQ(Picked(), QStringList{Q("a.jpg")});
    EXPECT_EQ(form.State().pictures.Item(1).Rotate, 0);
    EXPECT_EQ(form.State().pictures.Item(1).Interval_In_Seconds, -1);
    EXPECT_EQ(program.Slide_Display_Interval, 2);
}

/// Bytes of a good show with a few of them changed: it may say anything, but it ends and crashes nothing.
TEST_F(Bad_Show, Damaged_Bytes_End_Somehow)
{
    const unsigned seed = 20261121;
    std::mt19937 random(seed);
    Make(Q("a.jpg"));
    Make(Q("b.jpg"));
    for (int run = 0; run < 300; ++run) {
        std::string text = run % 2 == 0 ? Whole_Markup : Whole_Keywords;
        for (auto changes = random() % 4 + 1; changes > 0; --changes)
            text[random() % text.size()] = char(random() % 256);
        platform.dialogs = {};
        ASSERT_TRUE(Open(text)) << "seed " << seed << ", run " << run;
        EXPECT_LE(Picked().size(), 2) << "seed " << seed << ", run " << run;
        form.Picking().Discard_All();
    }
}

// ---- configuration files ----

class Bad_Configuration : public testing::Test {
protected:
    bool Load(const std::string& contents)
    {
        Put_File(folder.File("bad.hvi"), contents);
        return Load_Configuration_File(state, QString::fromStdString(folder.File("bad.hvi")));
    }
    Test_Folder folder;
    Program_State state;
};

TEST_F(Bad_Configuration, Empty_Other_And_Huge_Files_Change_Nothing)
{
    state.Rename_Formulas.Append({Q("mine"), Q("1")});
    std::string huge = "<hvConfigure><DIR>/x/</DIR></hvConfigure>";
    huge.resize(100'000'000, ' ');
    for (const std::string& other : {std::string(), Whole_Markup, Whole_Keywords, std::string("DIR:'/x/'"), huge}) {
        EXPECT_FALSE(Load(other)) << other.substr(0, 30);
        EXPECT_EQ(state.Rename_Formulas.Count(), 1);
        EXPECT_TRUE(state.Default_Path.isEmpty());
    }
}

TEST_F(Bad_Configuration, Cut_Anywhere_It_Keeps_What_Stands_Before_The_Cut)
{
    Program_State whole_state;
    whole_state.Default_Path = Q("/K\xC3\xB6ln's <x> & \"y\"/");
    whole_state.Rename_Formulas.Append({Q("a','b"), Q("'")});
    const std::string whole = Configuration_Text(whole_state).toStdString();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        state = {};
        const bool complete = Load(whole.substr(0, length));
        const bool has_end = length >= whole.find("</hvConfigure>") + 14;
        EXPECT_EQ(complete, has_end) << length;
        if (length >= whole.find("</DIR>") + 6) {
            EXPECT_EQ(state.Default_Path, whole_state.Default_Path) << length;
        }
        if (length >= whole.find("</RNF>") + 6) {
            EXPECT_EQ(state.Rename_Formulas, whole_state.Rename_Formulas) << length;
        }
    }
}

TEST_F(Bad_Configuration, Windows_1252_Is_Read)
{
    EXPECT_TRUE(Load("<hvConfigure><DIR>\\K\xF6ln \x80\\</DIR></hvConfigure>"));
    EXPECT_EQ(state.Default_Path, Q("\\K\xC3\xB6ln \xE2\x82\xAC\\"));
}

TEST_F(Bad_Configuration, Deep_Nesting_And_Doubled_Elements_End_Or_Are_Taken)
{
    std::string deep = "<hvConfigure>";
    for (int i = 0; i < 200'000; ++i) deep += "<RNF>";
    EXPECT_FALSE(Load(deep));
    EXPECT_TRUE(Load("<hvConfigure><DIR>/a/</DIR><DIR>/b/</DIR><RNF>x</RNF><RNF>x</RNF></hvConfigure>"));
    EXPECT_EQ(state.Default_Path, Q("/b/"));
    EXPECT_EQ(state.Rename_Formulas.Count(), 2);
}

} // namespace
