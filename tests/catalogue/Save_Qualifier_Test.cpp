#include "catalogue/Save_Qualifier.h"

#include "catalogue/Save_Selected_As.h"

#include <gtest/gtest.h>

namespace {

TEST(Save_Qualifier, Is_Split_Off_But_Folders_Are_Not)
{
    EXPECT_EQ("/tmp/a.jpg", Split_Qualifier("/tmp/a.jpg:tif:80").name);
    EXPECT_EQ("tif:80", Split_Qualifier("/tmp/a.jpg:tif:80").qualifier);
    EXPECT_EQ("/tmp/a.jpg", Split_Qualifier("/tmp/a.jpg/80").name);
    EXPECT_EQ("/tmp/80", Split_Qualifier("/tmp/80").name) << "a file of that name";
    EXPECT_EQ("/tmp/a.jpg:101", Split_Qualifier("/tmp/a.jpg:101").name) << "no quality";
    EXPECT_EQ("/80", Split_Qualifier("/80").name) << "no name would be left";
}

TEST(Save_Qualifier, Is_A_List_Parted_By_Any_Separator)
{
    for (const char* text : {"TIF:80", "80/tif", "\\tif\\80\\", " Tif : 80 ", "JPG:TIF:5:80", "100x:TIF:80:101"}) {
        int type = 1, quality = -2;
        Parse_Save_Qualifier("/tmp/a.jpg", text, type, quality);
        EXPECT_EQ(2, type) << text;
        EXPECT_EQ(80, quality) << text;
    }
    int type = 2, quality = -2;
    Parse_Save_Qualifier("/tmp/a.JPG", {}, type, quality);
    EXPECT_EQ(1, type) << "the extension";
    EXPECT_EQ(-2, quality);
    Parse_Save_Qualifier("/tmp/a.jpeg", {}, type = 2, quality);
    EXPECT_EQ(2, type) << "jpg and tif alone decide";
}

TEST(Save_Options, A_Blank_Quality_Is_The_Parents)
{
    EXPECT_EQ(80, Save_Options_Quality(" 80 "));
    EXPECT_EQ(-2, Save_Options_Quality(""));
    EXPECT_EQ(-2, Save_Options_Quality("8x"));
    EXPECT_EQ(-2, Save_Options_Quality("101"));
}

} // namespace
