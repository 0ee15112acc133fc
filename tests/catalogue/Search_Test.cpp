#include "catalogue/Search.h"

#include "tests/catalogue/Picture_Fixture.h"

#include <filesystem>
#include <sys/stat.h>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

class Search_Test : public Picture_Test {
protected:
    Search_Test()
    {
        std::filesystem::create_directories(folder.File("b/c"));
        for (const char* name : {"One.JPG", "two.tif", "b/one-b.jpg", "b/c/One.txt", ".one.jpg"})
            Put_File(folder.File(name), "x");
    }
    QString Found(Search_Request request, const Search_Watcher& watcher = {})
    {
        request.folder = QString::fromStdString(folder.Path());
        const auto result = Search_Files(request, watcher);
        if (!result) return Q("failed");
        QStringList names;
        for (const File_Entry& entry : result->files) names << entry.Path_Name.mid(request.folder.size() + 1);
        return names.join(u' ') + (result->stopped ? Q(" stopped") : QString());
    }
};

TEST_F(Search_Test, An_Empty_Pattern_Searches_All_Files_Below_The_Folder)
{
    EXPECT_EQ(Found({.criteria = Q("one*")}), Q("One.JPG b/one-b.jpg b/c/One.txt"));
}

TEST_F(Search_Test, An_Empty_Part_Of_The_Pattern_Adds_Nothing)
{
    EXPECT_EQ(Found({.patterns = Q("*.tif;;*.jpg"), .criteria = Q("*")}), Q("two.tif One.JPG b/one-b.jpg"))
        << "pattern after pattern";
    EXPECT_EQ(Found({.patterns = Q(";"), .criteria = Q("*")}), QString());
    EXPECT_EQ(Found({.patterns = Q("*.jpg;one*"), .criteria = Q("*")}), Q("One.JPG b/one-b.jpg b/c/One.txt"))
        << "each file once";
}

TEST_F(Search_Test, Descriptions_Are_Read_From_The_Files)
{
    Make(Q("sea.jpg"), 16, 16, 1, {}, Q("The Sea at noon"));
    Make(Q("b/sea.tif"), 16, 16, 2, {}, Q("the sea"));
    EXPECT_EQ(Found({.kind = Search_Kind::Descriptions, .criteria = Q("*sea*")}), Q("sea.jpg b/sea.tif"));
    EXPECT_EQ(Found({.kind = Search_Kind::Descriptions, .criteria = Q("the sea")}), Q("b/sea.tif"));
}

TEST_F(Search_Test, Dates_Bound_What_Is_Found)
{
    const double now = Date_From_Date_Time(QDateTime::currentDateTime());
    EXPECT_EQ(Found({.criteria = Q("two*"), .from_date = now + 1}), QString());
    EXPECT_EQ(Found({.criteria = Q("two*"), .to_date = now - 1}), QString());
    EXPECT_EQ(Found({.criteria = Q("two*"), .from_date = now - 1, .to_date = now + 1}), Q("two.tif"));
}

TEST_F(Search_Test, Loops_Of_Links_Are_Walked_Once)
{
    std::filesystem::create_directory_symlink("..", folder.File("b/up"));
    std::filesystem::create_directory_symlink("b", folder.File("again"));
    std::filesystem::create_symlink("missing", folder.File("one-dangling.jpg"));
    EXPECT_EQ(Found({.criteria = Q("one*")}).count(Q("one-b.jpg")), 1);
}

TEST_F(Search_Test, Stops_At_The_Limit_Of_Depth)
{
    std::string path = folder.Path();
    for (int depth = 2; depth <= 70; ++depth) {
        path += "/d";
        std::filesystem::create_directory(path);
        Put_File(path + "/deep" + std::to_string(depth), "x");
    }
    const QString found = Found({.criteria = Q("deep*")});
    EXPECT_TRUE(found.endsWith(Q("/deep64"))) << found.right(20).toStdString();
}

TEST_F(Search_Test, Stop_Keeps_What_Was_Found)
{
    EXPECT_EQ(Found({.criteria = Q("*")}, [](const Search_Progress& progress) { return progress.files < 2; }),
              Q("One.JPG stopped"));
}

TEST_F(Search_Test, Special_Files_And_Bad_Criteria_Do_No_Harm)
{
    ASSERT_EQ(mkfifo(folder.File("one.fifo").c_str(), 0600), 0);
    EXPECT_EQ(Found({.kind = Search_Kind::Descriptions, .patterns = Q("*.fifo"), .criteria = Q("*")}), QString());
    EXPECT_EQ(Found({.criteria = Q("[a")}), Q("failed"));
    EXPECT_FALSE(Search_Files({.folder = Path(Q("none")), .criteria = Q("*")}));
}

TEST_F(Search_Test, Names_That_Are_No_Text_Are_Found)
{
    Put_File(folder.File("K\xF6ln.jpg"), "x");
    const auto result = Search_Files({.folder = QString::fromStdString(folder.Path()), .criteria = Q("K?ln*")});
    ASSERT_EQ(result->files.size(), 1U);
    EXPECT_EQ(result->files[0].File_Size_KB, 0);
}

TEST_F(Search_Test, The_Question_Comes_Back_After_A_Bad_Answer)
{
    const QString start = QString::fromStdString(folder.Path());
    platform.dialogs.inputs = {Q("[a"), QString(), Q("two*")};
    const auto result = Ask_And_Search(platform.platform, Search_Kind::Names, start, {});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->files.size(), 1U);
    const auto& asked = platform.dialogs.input_asked;
    ASSERT_EQ(asked.size(), 3U);
    EXPECT_EQ(asked[0].title, Q("Search Criteria"));
    EXPECT_EQ(asked[0].prompt, Q("Search for files in folder: ") + start +
                                   Q("\rand its subfolders.\rEnter search criteria, including wildcards."));
    EXPECT_EQ(asked[1].prompt, asked[0].prompt + Q("\rOr press [Esc] or click cancel."));
    EXPECT_EQ(asked[2].prompt, asked[1].prompt) << "added once";
    EXPECT_FALSE(Ask_And_Search(platform.platform, Search_Kind::Descriptions, start, {})) << "cancelled";
    EXPECT_TRUE(asked.back().prompt.startsWith(Q("Search for descriptions in folder: ")));
}

TEST_F(Search_Test, The_Progress_Window_Can_Stop_It)
{
    platform.dialogs.inputs = {Q("*")};
    platform.dialogs.stop_after_progress_steps = 1;
    const auto result =
        Ask_And_Search(platform.platform, Search_Kind::Names, QString::fromStdString(folder.Path()), {});
    ASSERT_TRUE(result);
    EXPECT_TRUE(result->stopped);
}

} // namespace
