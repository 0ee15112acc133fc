#include "frame/text/Path_Utilities.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

struct Split_Case {
    const char* name;
    const char* path;
    const char* folder;
    const char* base;
    const char* extension;
};

class Split : public testing::TestWithParam<Split_Case> {};

TEST_P(Split, Gives_Folder_Base_And_Extension)
{
    const auto& row = GetParam();
    const QString path = Q(row.path);
    EXPECT_EQ(Folder_Part(path), Q(row.folder));
    EXPECT_EQ(Base_Name_Part(path), Q(row.base));
    EXPECT_EQ(Extension_Part(path), Q(row.extension));
    EXPECT_EQ(Folder_Part(path) + Name_Part(path), path);
    EXPECT_EQ(Path_Without_Extension(path), Folder_Part(path) + Base_Name_Part(path));
}

INSTANTIATE_TEST_SUITE_P(
    All, Split,
    testing::Values(Split_Case{"native", "/home/a/b.jpg", "/home/a/", "b", "jpg"},
                    Split_Case{"document", "C:\\a\\b.c.jpg", "C:\\a\\", "b.c", "jpg"},
                    Split_Case{"drive_alone", "C:b.jpg", "C:", "b", "jpg"}, Split_Case{"name_alone", "b", "", "b", ""},
                    Split_Case{"folder_alone", "/a/", "/a/", "", ""},
                    Split_Case{"point_in_the_folder", "/a.b/c", "/a.b/", "c", ""},
                    Split_Case{"ends_in_a_point", "/a/b.", "/a/", "b", ""},
                    Split_Case{"backslash_in_a_native_name", "/a/b\\c:d.jpg", "/a/", "b\\c:d", "jpg"},
                    Split_Case{"empty", "", "", "", ""}),
    [](const auto& row) { return row.param.name; });

TEST(Separators, Come_And_Go)
{
    EXPECT_EQ(With_Trailing_Separator(Q("/a")), Q("/a/"));
    EXPECT_EQ(With_Trailing_Separator(Q("/a/")), Q("/a/"));
    EXPECT_EQ(With_Trailing_Separator(Q("C:\\a")), Q("C:\\a\\"));
    EXPECT_EQ(With_Trailing_Separator(Q("C:")), Q("C:"));
    EXPECT_EQ(With_Trailing_Separator(Q("a")), Q("a/"));
    EXPECT_EQ(With_Trailing_Separator(QString()), QString());
    EXPECT_EQ(Without_Trailing_Separator(Q("/a/")), Q("/a"));
    EXPECT_EQ(Without_Trailing_Separator(Q("a\\")), Q("a"));
    EXPECT_EQ(Without_Trailing_Separator(Q("/")), Q("/"));
    EXPECT_EQ(Without_Trailing_Separator(Q("/a")), Q("/a"));
    EXPECT_EQ(Without_Trailing_Separator(Q("C:")), Q("C:")) << "a drive is no drive without its colon";
}

TEST(Separators, Are_Found_In_Qualifiers)
{
    EXPECT_EQ(Find_Separator(Q("a.jpg/80")), 6);
    EXPECT_EQ(Find_Separator(Q("a\\b:c")), 2);
    EXPECT_EQ(Find_Separator(Q("a\\b:c"), 3), 4);
    EXPECT_EQ(Find_Separator(Q("abc")), 0);
}

TEST(Extension, Is_Added_Only_Where_None_Is)
{
    EXPECT_EQ(With_Default_Extension(Q("/a/b"), Q("hvs")), Q("/a/b.hvs"));
    EXPECT_EQ(With_Default_Extension(Q("/a/b.x"), Q("hvs")), Q("/a/b.x"));
    EXPECT_EQ(With_Default_Extension(Q("/a/b."), Q("hvs")), Q("/a/b."));
    EXPECT_EQ(With_Default_Extension(Q("/a.x/b"), Q("hvs")), Q("/a.x/b.hvs"));
    EXPECT_EQ(With_Default_Extension(Q("/a/"), Q("hvs")), Q("/a/")) << "a folder has no name to extend";
}

TEST(Common, Is_What_Both_Begin_With)
{
    EXPECT_EQ(Common_Path(Q("/a/bc/x"), Q("/a/bd/x")), Q("/a/b"));
    EXPECT_EQ(Folder_Part(Common_Path(Q("/a/bc/x"), Q("/A/bd/x"))), Q("/a/"));
    EXPECT_EQ(Common_Path(Q("/a"), Q("b")), QString());
}

TEST(Document_Paths, Go_Both_Ways)
{
    EXPECT_EQ(Document_Path(Q("/a/b")), Q("\\a\\b"));
    EXPECT_EQ(Native_Path(Q("\\a\\b")), Q("/a/b"));
}

class Files : public testing::Test {
protected:
    QString Make(const char* name)
    {
        const QString path = folder_.filePath(Q(name));
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name;
        return path;
    }
    QTemporaryDir folder_;
};

TEST_F(Files, Literal_Name_Comes_First)
{
    const QString literal = Make("a\\b.jpg");
    Make("a/b.jpg");
    EXPECT_EQ(Existing_Path(literal), literal);
}

TEST_F(Files, Converted_Name_Comes_Second)
{
    const QString path = Make("a/b.jpg");
    EXPECT_EQ(Existing_Path(Document_Path(path)), path);
}

TEST_F(Files, Folded_Name_Comes_Last)
{
    const QString path = Make("Ordner/Bild.JPG");
    EXPECT_EQ(Existing_Path(folder_.filePath(Q("ordner/bild.jpg"))), path);
    const QString exact = Make("ordner/bild.jpg");
    EXPECT_EQ(Existing_Path(folder_.filePath(Q("ordner/bild.jpg"))), exact);
}

TEST_F(Files, Missing_Name_Is_Native)
{
    EXPECT_EQ(Existing_Path(Q("\\no\\such.jpg")), Q("/no/such.jpg"));
}

TEST_F(Files, Existence_Is_One_Or_Nothing_And_An_Empty_Name_An_Error)
{
    const QString path = Make("x.jpg");
    EXPECT_EQ(Test_File_Exists(path, true).value(), 1);
    EXPECT_EQ(Test_File_Exists(path + u'x', true).value(), 0);
    EXPECT_EQ(Test_File_Exists(folder_.path(), true).value(), 0) << "a folder is no file";
    EXPECT_FALSE(Test_File_Exists(QString(), true).has_value());
    EXPECT_EQ(Test_File_Exists(QString(), false).value(), 0);
}

TEST(File_Names, Are_Checked)
{
    EXPECT_TRUE(Is_Valid_File_Name(Q("a\\b:c.jpg")));
    for (const QString& name :
         {QString(), Q("."), Q(".."), Q("a/b"), QString(1, QChar(0)), QString(256, u'a'), QString(128, u'ä')})
        EXPECT_FALSE(Is_Valid_File_Name(name)) << name.toStdString();
}

TEST(File_System_Names, Come_Back_Byte_By_Byte)
{
    for (const char* name :
         {"plain", "Bild \xC3\xA4", "Bild \xE4", "\xC3", "a\xF0\x9F\x98\x80z\xFF", "\xED\xB2\x80", "\xEF\xBB\xBFx"})
        EXPECT_EQ(File_System_Bytes(Path_From_Bytes(name)), name);
    EXPECT_EQ(Path_From_Bytes("Bild \xC3\xA4"), Q("Bild ä"));
}

TEST(File_Patterns, Match_Without_Case)
{
    const QString pictures = Q("*.jpg;*.jif;*.tif");
    EXPECT_TRUE(Fits_File_Pattern(Q("IMG_1.JPG"), pictures));
    EXPECT_TRUE(Fits_File_Pattern(Q("a.tif"), pictures));
    EXPECT_TRUE(Fits_File_Pattern(Q("a.tif"), Q("*.jpg ; *.tif"))) << "blanks around the parts";
    EXPECT_FALSE(Fits_File_Pattern(Q("a.png"), pictures));
    EXPECT_TRUE(Fits_File_Pattern(Q("no_extension"), Q("*.*")));
    EXPECT_FALSE(Fits_File_Pattern(Q("a"), Q(";;"))) << "an empty part fits nothing";
}

} // namespace
