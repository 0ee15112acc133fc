#include "frame/text/Uri_List.h"

#include "frame/text/Path_Utilities.h"

#include <gtest/gtest.h>

namespace {

struct Name_Case {
    const char* name;
    const char* bytes;
    const char* url;
};

class Uri_Lists : public testing::TestWithParam<Name_Case> {};

INSTANTIATE_TEST_SUITE_P(All, Uri_Lists,
                         testing::Values(Name_Case{"plain", "/home/anna/sea.jpg", "file:///home/anna/sea.jpg\r\n"},
                                         Name_Case{"blanks_and_signs", "/a b/100%#?.jpg",
                                                   "file:///a%20b/100%25%23%3F.jpg\r\n"},
                                         Name_Case{"utf_8", "/B\xC3\xA4r.jpg", "file:///B%C3%A4r.jpg\r\n"},
                                         Name_Case{"no_valid_text", "/\xFF\xE4.jpg", "file:///%FF%E4.jpg\r\n"},
                                         Name_Case{"a_line_feed_in_a_name", "/a\nb.jpg", "file:///a%0Ab.jpg\r\n"}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Uri_Lists, Keep_The_Bytes_Of_A_Name)
{
    const QString path = Path_From_Bytes(GetParam().bytes);
    EXPECT_EQ(GetParam().url, Uri_List_Of({path}).toStdString());
    EXPECT_EQ(QStringList{path}, Paths_Of_Uri_List(GetParam().url));
    EXPECT_EQ(GetParam().bytes, File_System_Bytes(Paths_Of_Uri_List(GetParam().url).front()));
}

TEST(Uri_List, Keeps_The_Order_And_Passes_Over_What_Is_No_Local_File)
{
    const QByteArray list = "# a comment\r\nhttp://example.org/x.jpg\r\nfile://localhost/a.jpg\nFILE:/b.jpg\r\n"
                            "file://other/c.jpg\r\nfile://\r\nfile:\r\nfile:///d%00.jpg\r\nx\r\nfile:///e.jpg";
    EXPECT_EQ((QStringList{"/a.jpg", "/b.jpg", "/e.jpg"}), Paths_Of_Uri_List(list));
    EXPECT_TRUE(Paths_Of_Uri_List({}).isEmpty());
    EXPECT_TRUE(Uri_List_Of({}).isEmpty());
}

} // namespace
