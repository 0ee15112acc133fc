#include "frame/ui/Qt_Platform.h"

#include "frame/Settings_Store.h"
#include "tests/support/Test_Folder.h"

#include <QtCore/QDir>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace {

class Settings_On_Disk : public testing::Test {
protected:
    Settings_On_Disk()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, Folder("user"));
        QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, Folder("machine"));
    }
    QString Folder(const char* name) const { return QString::fromStdString(folder_.File(name)); }
    void Put(const char* scope, const std::string& text)
    {
        QDir().mkpath(Folder(scope) + "/Brennick");
        Put_File(folder_.File(std::string(scope) + "/Brennick/Halvine.ini"), text);
    }
    Test_Folder folder_;
};

TEST_F(Settings_On_Disk, Come_Back_In_The_Next_Run_Whatever_They_Hold)
{
    const QStringList texts{
        "DIR:'/it''s',RNF:\"'a','\"\"b\"\"'\"", "@Point(1 2)",       " blanks ", "\\x41;=%20", "a\nb",
        QStringLiteral("\u00e9\u4e2d"),         QString(60000, u'x')};
    for (const QString& text : texts) {
        EXPECT_EQ(0, Qt_Settings().Write_Value(Settings_Key, Settings_Value, text));
        EXPECT_EQ(text, Qt_Settings().Read_Value(Settings_Key, Settings_Value));
    }
}

TEST_F(Settings_On_Disk, Names_And_Keys_May_Hold_Separators)
{
    Qt_Settings settings;
    settings.Write_Value("Formulas/a/b", "c\\d/e", "x");
    settings.Write_Value("Formulas/a", "b", "y");
    EXPECT_EQ(QStringList{"c\\d/e"}, settings.Value_Names("Formulas/a/b"));
    EXPECT_EQ("x", settings.Read_Value("Formulas/a/b", "c\\d/e"));
    EXPECT_EQ("", settings.Read_Value("Formulas", "a"));
}

TEST_F(Settings_On_Disk, Are_The_Machines_Until_The_User_Has_Some)
{
    Put("machine", "[Brennick%255CHalvine]\nHalvine=SDI:9\n");
    Qt_Settings settings;
    const QString seeded = settings.Read_Value(Settings_Key, Settings_Value);
    EXPECT_EQ("SDI:9", seeded.toStdString());
    settings.Write_Value(Settings_Key, Alias_Value, "tree");
    EXPECT_EQ("", settings.Read_Value(Settings_Key, Settings_Value));
    EXPECT_NE(std::string::npos, Contents_Of(folder_.File("machine/Brennick/Halvine.ini")).find("SDI:9"));
}

TEST_F(Settings_On_Disk, A_Damaged_File_Reads_As_Empty_And_Can_Be_Written)
{
    Put("user", std::string("\0\xff[[[]]\n=\n%%%\"", 15));
    Qt_Settings settings;
    EXPECT_EQ("", settings.Read_Value(Settings_Key, Settings_Value));
    EXPECT_EQ(0, settings.Write_Value(Settings_Key, Settings_Value, "SDI:3"));
    EXPECT_EQ("SDI:3", Qt_Settings().Read_Value(Settings_Key, Settings_Value));
}

TEST_F(Settings_On_Disk, A_Folder_That_Takes_No_File_Is_A_Failure)
{
    Put_File(folder_.File("user"), "a file where the folder should be");
    EXPECT_EQ(5, Qt_Settings().Write_Value(Settings_Key, Settings_Value, "x"));
}

TEST(Qt_Shell, The_Busy_Pointer_Nests)
{
    Qt_Shell shell;
    shell.Show_Busy_Pointer(true);
    shell.Show_Busy_Pointer(true);
    shell.Show_Busy_Pointer(false);
    ASSERT_NE(nullptr, QGuiApplication::overrideCursor());
    EXPECT_EQ(Qt::WaitCursor, QGuiApplication::overrideCursor()->shape());
    shell.Show_Busy_Pointer(false);
    EXPECT_EQ(nullptr, QGuiApplication::overrideCursor());
}

TEST(Qt_Shell, A_File_That_Is_Gone_Cannot_Be_Put_Into_The_Trash)
{
    QString reason;
    EXPECT_FALSE(Qt_Shell().Move_To_Trash("/nowhere/at all.jpg", &reason));
    EXPECT_FALSE(reason.isEmpty());
}

TEST(Qt_Shell, The_Screen_Is_Told_In_Twips)
{
    const QSize screen = Qt_Shell().Screen_Size_Twips();
    EXPECT_GT(screen.width(), 640 * 15);
    EXPECT_EQ(0, screen.width() % 15);
}

TEST(Qt_Timer, Fires_Again_And_Again_Until_It_Is_Stopped)
{
    int fired = 0;
    Qt_Timer timer([&] { ++fired; });
    timer.Start(1);
    EXPECT_TRUE(timer.Is_On());
    EXPECT_TRUE(QTest::qWaitFor([&] { return fired >= 3; }));
    timer.Stop();
    const int before = fired;
    QTest::qWait(20);
    EXPECT_EQ(before, fired);
    EXPECT_FALSE(timer.Is_On());
}

} // namespace
