#include "evaluate/System_Host.h"

#include "evaluate/bkcEvaluate.h"
#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Variant_Array.h"
#include "frame/ports/Scripted_Platform.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace Formula;

namespace {

QString operator""_q(const char* text, std::size_t size)
{
    return QString::fromUtf8(text, qsizetype(size));
}

/// A folder with two pictures, one of which may only be read, a hidden file and a folder.
class Folder_Of_Pictures : public testing::Test {
protected:
    void SetUp() override
    {
        Write("Lake.jpg", "12345");
        Write("Sea.JPG", "1");
        Write(".hidden.jpg", "");
        ASSERT_TRUE(QDir(Path("")).mkdir("Trips"_q));
        QFile sea(Path("Sea.JPG"));
        ASSERT_TRUE(sea.open(QIODevice::ReadWrite));
        ASSERT_TRUE(sea.setFileTime(QDateTime(QDate(2003, 1, 2), QTime(15, 4, 5)), QFile::FileModificationTime));
        ASSERT_TRUE(sea.setPermissions(QFile::ReadOwner));
    }

    QString Path(const char* name) const { return folder_.filePath(QString::fromUtf8(name)); }

    /// What a formula gives in which "@" stands for the folder with its separator.
    std::string Value(const char* formula)
    {
        const Variant value = evaluator.Value(QString::fromUtf8(formula).replace(u'@', Path("") + u'/'));
        const Evaluation_Error& error = evaluator.Last_Error();
        if (error.Code != 0) return "error " + std::to_string(error.Code);
        return To_Display_Text(value).value_or(QString()).toStdString();
    }

    Settings_In_Memory settings;
    System_Host host{&settings};
    bkcEvaluate evaluator{host};

private:
    void Write(const char* name, const char* text)
    {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QTemporaryDir folder_;
};

TEST_F(Folder_Of_Pictures, Is_Listed_In_The_Order_Of_Names_Without_What_Was_Not_Asked_For)
{
    EXPECT_EQ("Lake.jpg", Value("Dir(\"@*\")"));
    EXPECT_EQ("Sea.JPG", Value("Dir"));
    EXPECT_EQ("", Value("Dir"));
    EXPECT_EQ("error 5", Value("Dir"));
    EXPECT_EQ(".hidden.jpg", Value("Dir(\"@*.jpg\", vbHidden)"));
    EXPECT_EQ("Trips", Value("Dir(\"@t*\", vbDirectory)"));
    EXPECT_EQ("", Value("Dir(\"@.*\", vbDirectory)")) << "neither the folder itself nor the one above";
    EXPECT_EQ("", Value("Dir(\"@None/*\")"));
}

TEST_F(Folder_Of_Pictures, Tells_Size_Date_And_Attributes_Of_A_File)
{
    EXPECT_EQ("5", Value("FileLen(\"@Lake.jpg\")"));
    EXPECT_EQ("1/2/2003 3:04:05 PM", Value("FileDateTime(\"@Sea.JPG\")"));
    EXPECT_EQ("0", Value("GetAttr(\"@Lake.jpg\")"));
    EXPECT_EQ(geteuid() == 0 ? "0" : "1", Value("GetAttr(\"@Sea.JPG\")")) << "the superuser may write it";
    EXPECT_EQ("2", Value("GetAttr(\"@.hidden.jpg\")"));
    EXPECT_EQ("16", Value("GetAttr(\"@Trips\")"));
    EXPECT_EQ("error 53", Value("FileLen(\"@None.jpg\")"));
    EXPECT_EQ("error 53", Value("FileLen(\"\")"));
}

TEST_F(Folder_Of_Pictures, Is_Found_By_Names_As_Other_Systems_Write_Them)
{
    EXPECT_EQ("5", Value("FileLen(Replace(\"@lake.JPG\", \"/\", \"\\\"))"));
    EXPECT_EQ("Lake.jpg", Value("Dir(Replace(\"@LAKE.*\", \"/\", \"\\\"))"));
    EXPECT_EQ("5", Value("FileLen(\"@lake.jpg\")"));
}

TEST_F(Folder_Of_Pictures, Lends_Its_Environment_And_Its_Own_Settings)
{
    qputenv("HALVINE_TEST_PLACE", "Harbour");
    EXPECT_EQ("Harbour", Value("Environ(\"HALVINE_TEST_PLACE\")"));
    qunsetenv("HALVINE_TEST_PLACE");
    EXPECT_EQ("", Value("Environ(\"HALVINE_TEST_PLACE\")"));
    EXPECT_EQ(QDir::currentPath().toStdString(), Value("CurDir"));
    ASSERT_EQ(0, settings.Write_Value("Formulas/Trips/Places"_q, "Home"_q, "Lake Side"_q));
    ASSERT_EQ(0, settings.Write_Value("Formulas/Trips/Places"_q, "Work"_q, QString()));
    EXPECT_EQ("Lake Side", Value("GetSetting(\"Trips\", \"Places\", \"Home\", \"none\")"));
    EXPECT_EQ("", Value("GetSetting(\"Trips\", \"Places\", \"Work\", \"none\")")) << "an empty value is one";
    EXPECT_EQ("none", Value("GetSetting(\"Trips\", \"Places\", \"Car\", \"none\")"));
    const Variant all = evaluator.Value("GetAllSettings(\"Trips\", \"Places\")"_q);
    ASSERT_TRUE(all.Is_Array());
    EXPECT_EQ(2U, all.Array().bounds.size());
    EXPECT_EQ(4U, all.Array().elements.size());
}

TEST(Host_Without_Anything, Answers_All_The_Same)
{
    System_Host host;
    EXPECT_EQ(std::nullopt, host.Setting("Trips"_q, "Places"_q, "Home"_q));
    EXPECT_TRUE(host.All_Settings("Trips"_q, "Places"_q).empty());
    EXPECT_EQ("", host.Input_Box({"Name?"_q, {}, "Anna"_q}).toStdString());
    EXPECT_EQ(1, host.Message_Box({"ready"_q, {}, 4}));
}

} // namespace
