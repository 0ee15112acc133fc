#include "controls/Explorer_Model.h"
#include "controls/Folder_Tree.h"
#include "frame/text/Path_Utilities.h"
#include "tests/support/Test_Folder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QString Path_Of(const Test_Folder& folder)
{
    return Path_From_Bytes(QByteArray::fromStdString(folder.Path()));
}

void Make_Folder(const std::string& path)
{
    ASSERT_EQ(0, ::mkdir(path.c_str(), 0755)) << path;
}

std::vector<std::string> Names(const std::vector<Folder_Entry>& entries)
{
    std::vector<std::string> names;
    for (const auto& entry : entries) names.push_back(File_System_Bytes(entry.name));
    return names;
}

const QString Pictures = QStringLiteral("*.jpg;*.jif;*.tif");

TEST(Folder_Listing, Lists_What_Fits_The_Pattern_Without_Regard_To_Case)
{
    const Test_Folder folder;
    for (const auto* name : {"b.JPG", "a.jpg", "c.Tif", "notes.txt", ".hidden.jpg"})
        Put_File(folder.File(name), "12345");
    const auto listed = List_Folder({.folder = Path_Of(folder), .pattern = Pictures});
    ASSERT_TRUE(listed);
    EXPECT_EQ((std::vector<std::string>{"a.jpg", "b.JPG", "c.Tif"}), Names(*listed));
    EXPECT_EQ(5, (*listed)[0].bytes);
    EXPECT_TRUE((*listed)[0].modified.isValid());
}

TEST(Folder_Listing, Leaves_Out_Pipes_Folders_And_Broken_Or_Circular_Links)
{
    const Test_Folder folder;
    Put_File(folder.File("real.jpg"), "x");
    ASSERT_EQ(0, ::mkfifo(folder.File("pipe.jpg").c_str(), 0600));
    Make_Folder(folder.File("folder.jpg"));
    ASSERT_EQ(0, ::symlink("real.jpg", folder.File("link.jpg").c_str()));
    ASSERT_EQ(0, ::symlink("nowhere", folder.File("broken.jpg").c_str()));
    ASSERT_EQ(0, ::symlink("loop.jpg", folder.File("loop.jpg").c_str()));
    const auto listed = List_Folder({.folder = Path_Of(folder), .pattern = Pictures});
    ASSERT_TRUE(listed);
    EXPECT_EQ((std::vector<std::string>{"link.jpg", "real.jpg"}), Names(*listed));
}

TEST(Folder_Listing, Keeps_Names_That_Are_No_Valid_Text)
{
    const Test_Folder folder;
    const std::string name = "caf\xe9.jpg";
    Put_File(folder.File(name), "x");
    const auto listed = List_Folder({.folder = Path_Of(folder), .pattern = Pictures});
    ASSERT_TRUE(listed);
    EXPECT_EQ(std::vector<std::string>{name}, Names(*listed));
}

TEST(Folder_Listing, Fifty_Thousand_Files_Come_Sorted_Into_The_Grid)
{
    const Test_Folder folder;
    for (int i = 0; i < 50'000; ++i) Put_File(folder.File("IMG_" + std::to_string(100'000 + i) + ".JPG"), {});
    Grid_Model grid;
    Explorer_Model explorer(grid);
    explorer.Pattern = Pictures;
    explorer.Set_Path(Path_Of(folder));
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(explorer.Refresh());
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    RecordProperty("milliseconds", int(taken.count()));
    std::printf("50 000 files: %.0f ms\n", taken.count());
    EXPECT_EQ(50'000, grid.Rows());
    EXPECT_EQ("IMG_149999.JPG", explorer.Name_At(50'000).toStdString());
}

TEST(Folder_Listing, Tells_Why_A_Folder_Cannot_Be_Read)
{
    const Test_Folder folder;
    const auto listed = List_Folder({.folder = Path_Of(folder) + "/gone"});
    ASSERT_FALSE(listed);
    EXPECT_NE(std::string::npos, listed.error().text.find("gone"));
    EXPECT_FALSE(List_Folder({.folder = QString()}));
}

TEST(Folder_Listing, An_Unreadable_Folder_Is_An_Error)
{
    const Test_Folder folder;
    Make_Folder(folder.File("closed"));
    ASSERT_EQ(0, ::chmod(folder.File("closed").c_str(), 0));
    ASSERT_EQ(0, ::chmod(folder.Path().c_str(), 0755));
    const auto path = Path_Of(folder) + "/closed";
    EXPECT_EQ(1, As_Ordinary_User([&] { return List_Folder({.folder = path}) ? 0 : 1; }));
}

TEST(Folder_Listing, Found_Files_Keep_Their_Order_And_Lose_What_Is_Gone)
{
    const Test_Folder folder;
    Put_File(folder.File("b.jpg"), "x");
    Put_File(folder.File("a.jpg"), "x");
    const auto root = Path_Of(folder) + "/";
    EXPECT_EQ((std::vector<std::string>{folder.File("b.jpg"), folder.File("a.jpg")}),
              Names(List_Files({root + "b.jpg", root + "gone.jpg", root, root + "a.jpg"})));
}

TEST(Folder_Listing, Types_And_Sizes_Have_Their_Texts)
{
    EXPECT_EQ("JPG File", File_Type_Text("a.jpg").toStdString());
    EXPECT_EQ("File", File_Type_Text("README").toStdString());
    EXPECT_EQ(0, Kilobytes(0));
    EXPECT_EQ(1, Kilobytes(1));
    EXPECT_EQ(1, Kilobytes(1024));
    EXPECT_EQ(2, Kilobytes(1025));
}

TEST(Folder_Tree, Goes_Through_Home_Below_Home_And_Through_The_Root_Elsewhere)
{
    const Test_Folder folder;
    Make_Folder(folder.File("home"));
    Make_Folder(folder.File("home/pictures"));
    Make_Folder(folder.File("other"));
    Folder_Tree tree(Path_Of(folder) + "/home");
    const auto home_way = tree.Way_To(Path_Of(folder) + "/home/pictures/");
    ASSERT_EQ(2U, home_way.size());
    EXPECT_EQ(tree.Top().children[0].get(), home_way[0]);
    EXPECT_EQ("pictures", home_way[1]->name.toStdString());
    const auto other_way = tree.Way_To(Path_Of(folder) + "/other");
    ASSERT_FALSE(other_way.empty());
    EXPECT_EQ("/", other_way[0]->path.toStdString());
    EXPECT_TRUE(tree.Way_To(Path_Of(folder) + "/gone").empty());
    EXPECT_TRUE(tree.Way_To("relative").empty());
}

TEST(Folder_Tree, Hides_Dot_Folders_Unless_Asked_Or_On_The_Way)
{
    const Test_Folder folder;
    Make_Folder(folder.File(".secret"));
    Make_Folder(folder.File("plain"));
    Folder_Tree tree(Path_Of(folder));
    auto& home = *tree.Top().children[0];
    tree.Read(home);
    EXPECT_EQ(1U, home.children.size());
    EXPECT_EQ(2U, tree.Way_To(Path_Of(folder) + "/.secret").size());
    EXPECT_EQ(2U, home.children.size());
    tree.Hidden = false;
    tree.Read(home);
    EXPECT_EQ(1U, home.children.size());
    tree.Hidden = true;
    EXPECT_EQ(QStringList{".secret"}, tree.Read(home));
}

TEST(Folder_Tree, Reading_Again_Keeps_What_Stays)
{
    const Test_Folder folder;
    for (const auto* name : {"a", "b", "b/deep", "c"}) Make_Folder(folder.File(name));
    Folder_Tree tree(Path_Of(folder));
    auto& home = *tree.Top().children[0];
    const auto* deep = tree.Way_To(Path_Of(folder) + "/b/deep").back();
    ASSERT_EQ(0, ::rmdir(folder.File("a").c_str()));
    Make_Folder(folder.File("d"));
    EXPECT_EQ(QStringList{"d"}, tree.Read(home));
    ASSERT_EQ(3U, home.children.size());
    EXPECT_EQ(deep, tree.Known(Path_Of(folder) + "/b/deep"));
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(int(i), home.children[i]->row);
}

TEST(Files_In_Place_Of_Folders, Are_Its_Matching_Files_And_What_Cannot_Be_Read_Stays)
{
    const Test_Folder folder;
    Make_Folder(folder.File("sub"));
    for (const char* name : {"sub/b.jpg", "sub/A.JPG", "sub/c.txt", "sub/.hidden.jpg", "z.txt"})
        Put_File(folder.File(name), "x");
    const QString base = Path_Of(folder);
    EXPECT_EQ((QStringList{base + "/z.txt", base + "/sub/A.JPG", base + "/sub/b.jpg", base + "/none"}),
              Files_In_Place_Of_Folders({base + "/z.txt", base + "/sub", base + "/none"}, "*.jpg;*.tif"));
    EXPECT_EQ((QStringList{base + "/sub/A.JPG", base + "/sub/b.jpg"}),
              Files_In_Place_Of_Folders({base + "/sub/"}, "*.jpg"));
    EXPECT_TRUE(Files_In_Place_Of_Folders({base + "/sub"}, "*.tif").isEmpty());
}

TEST(Explorer_Model, Keeps_Selection_And_Order_Over_A_Refresh)
{
    const Test_Folder folder;
    for (const auto* name : {"a.jpg", "b.jpg", "c.jpg"}) Put_File(folder.File(name), "x");
    Grid_Model grid;
    grid.Set_SelectionMode(2);
    Explorer_Model explorer(grid);
    explorer.Pattern = Pictures;
    explorer.Set_Path(Path_Of(folder));
    ASSERT_TRUE(explorer.Refresh());
    EXPECT_EQ("1KB", grid.CellText(4, 1).toStdString());
    grid.SortColumn(1, -1);
    grid.Update();
    grid.SelectRow(3);
    EXPECT_FALSE(explorer.Is_Stale());
    ASSERT_EQ(0, ::unlink(folder.File("b.jpg").c_str()));
    EXPECT_TRUE(explorer.Is_Stale());
    explorer.Refresh();
    EXPECT_EQ("c.jpg", explorer.Name_At(1).toStdString());
    EXPECT_EQ(QStringList{Path_Of(folder) + "/a.jpg"}, explorer.Selected_Paths());
}

TEST(Explorer_Model, A_Vanished_Folder_Is_Empty_And_Says_So)
{
    Grid_Model grid;
    Explorer_Model explorer(grid);
    explorer.Set_Path("/no/such/folder");
    EXPECT_FALSE(explorer.Refresh());
    EXPECT_EQ(0, grid.Rows());
    EXPECT_FALSE(explorer.Error_Text().isEmpty());
}

TEST(Explorer_Model, Folder_Mode_And_Found_Files_Have_Their_Columns)
{
    const Test_Folder folder;
    Make_Folder(folder.File("sub"));
    Put_File(folder.File("a.jpg"), "x");
    Grid_Model grid;
    Explorer_Model explorer(grid);
    explorer.Set_Path(Path_Of(folder));
    explorer.Mode = Explorer_Grid_Mode::Folders;
    explorer.Refresh();
    const auto titles = [&] {
        QStringList texts;
        for (int column = 1; column <= grid.Columns(); ++column)
            texts << grid.ColumnHeaderText(column) + " " + grid.ColumnFormat(column, int(Grid_Data_Type::Any));
        return texts.join('|').toStdString();
    };
    EXPECT_EQ("Folder Name |Folder Created Short Date|Files Modified General Date", titles());
    EXPECT_EQ("sub", explorer.Name_At(1).toStdString());
    explorer.Show_Files({Path_Of(folder) + "/a.jpg"});
    EXPECT_EQ("Name |Type |Last Modified General Date|Size #,##0\"KB\"", titles());
    EXPECT_EQ(Path_Of(folder) + "/a.jpg", explorer.Path_At(1));
    EXPECT_FALSE(explorer.Is_Stale());
}

TEST(Explorer_Model, Another_Pattern_Separator_Is_Understood)
{
    const Test_Folder folder;
    Put_File(folder.File("a.jpg"), "x");
    Put_File(folder.File("b.tif"), "x");
    Grid_Model grid;
    Explorer_Model explorer(grid);
    explorer.PatternSeparator = "|";
    explorer.Pattern = "*.jpg|*.tif";
    explorer.Set_Path(Path_Of(folder));
    explorer.Refresh();
    EXPECT_EQ(2, grid.Rows());
}

} // namespace
