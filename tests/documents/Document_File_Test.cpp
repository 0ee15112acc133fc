#include "documents/Document_File.h"

#include "tests/support/Test_Folder.h"

#include <QtCore/QRegularExpression>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class Document_File : public testing::Test {
protected:
    QString Path(const char* name) const { return QString::fromStdString(folder.File(name)); }
    Test_Folder folder;
};

TEST_F(Document_File, Is_Read_As_Utf_8_Or_Else_As_Windows_1252)
{
    Put_File(folder.File("utf8"), "K\xC3\xB6ln \xE2\x82\xAC");
    Put_File(folder.File("ansi"), "K\xF6ln \x80");
    EXPECT_EQ(Read_Document(Path("utf8")).value(), QString::fromUtf8("K\xC3\xB6ln \xE2\x82\xAC"));
    EXPECT_EQ(Read_Document(Path("ansi")).value(), QString::fromUtf8("K\xC3\xB6ln \xE2\x82\xAC"));
}

TEST_F(Document_File, Reads_Back_What_Was_Written)
{
    const QString text = QString::fromUtf8("<a>\r\n\xC3\xA4</a>\r\n");
    ASSERT_TRUE(Write_Document(Path("a.hvs"), text));
    EXPECT_EQ(Read_Document(Path("a.hvs")).value(), text);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.hvs"});
    ASSERT_TRUE(Write_Document(Path("a.hvs"), {}));
    EXPECT_EQ(Read_Document(Path("a.hvs")).value(), QString());
}

TEST_F(Document_File, Names_The_File_That_It_Refuses)
{
    Put_File(folder.File("huge.hvs"), {});
    std::filesystem::resize_file(folder.File("huge.hvs"), 100 << 20);
    ASSERT_EQ(mkfifo(folder.File("pipe.hvs").c_str(), 0600), 0);
    for (const char* name : {"missing.hvs", "huge.hvs", "pipe.hvs"}) {
        const auto text = Read_Document(Path(name));
        ASSERT_FALSE(text) << name;
        EXPECT_NE(text.error().text.find(name), std::string::npos) << text.error().text;
    }
    EXPECT_FALSE(Read_Document(QString::fromStdString(folder.Path())));
    EXPECT_FALSE(Write_Document(Path("no/such.hvs"), QStringLiteral("x")));
}

TEST(Document_Version, Has_Two_Digits_Each)
{
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d\\d\\.\\d\\d$")).match(Document_Version()).hasMatch());
}

} // namespace
