// The real program, as a terminal and a desktop start it.

#include "Project_Folders.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class Program : public testing::Test {
protected:
    Program()
    {
        environment.insert("XDG_CONFIG_HOME", folder.filePath("config"));
        environment.insert("XDG_CONFIG_DIRS", folder.filePath("machine"));
        environment.insert("HOME", folder.path());
        environment.insert("QT_QPA_PLATFORM", "offscreen");
    }
    void Start(const QStringList& arguments)
    {
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(HALVINE_BINARY_DIR "/bin/halvine"), arguments);
    }
    int Status(const QStringList& arguments)
    {
        Start(arguments);
        EXPECT_TRUE(process.waitForFinished(30'000));
        out = process.readAllStandardOutput().toStdString();
        messages = process.readAllStandardError().toStdString();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
    /// Whether a window came up and the program still lives after a while.
    bool Stays_Open(const QStringList& arguments)
    {
        Start(arguments);
        const bool ended = process.waitForFinished(1500);
        process.kill();
        process.waitForFinished(30'000);
        return !ended;
    }
    void Put_Settings(const QByteArray& text)
    {
        ASSERT_TRUE(QDir(folder.path()).mkpath("config/Brennick"));
        QFile file(folder.filePath("config/Brennick/Halvine.ini"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QProcess process;
    std::string out, messages;
};

TEST_F(Program, Answers_Help_And_Version_Also_Without_A_Display)
{
    environment.remove("QT_QPA_PLATFORM");
    environment.remove("DISPLAY");
    environment.remove("WAYLAND_DISPLAY");
    EXPECT_EQ(0, Status({"--help"}));
    EXPECT_EQ(0U, out.find("Usage: halvine"));
    EXPECT_EQ(0, Status({"--version"}));
    EXPECT_EQ(0U, out.find("halvine "));
}

TEST_F(Program, Says_When_There_Is_No_Display)
{
    environment.remove("QT_QPA_PLATFORM");
    environment.remove("DISPLAY");
    environment.remove("WAYLAND_DISPLAY");
    EXPECT_EQ(1, Status({}));
    EXPECT_EQ("halvine: there is no display to open a window on; hv works without one\n", messages);
}

TEST_F(Program, Refuses_What_It_Does_Not_Understand)
{
    EXPECT_EQ(2, Status({"--fast"}));
    EXPECT_NE(std::string::npos, messages.find("halvine: --fast: no such option"));
    EXPECT_EQ(2, Status({"a.hvs", "b.hvs"}));
    EXPECT_NE(std::string::npos, messages.find("halvine: b.hvs: one slide show at most"));
}

TEST_F(Program, Opens_Its_Window_And_Stays)
{
    EXPECT_TRUE(Stays_Open({}));
}

TEST_F(Program, A_Damaged_Settings_File_Does_Not_Keep_It_From_Starting)
{
    Put_Settings("\x01\x02[%%%\nHalvine=DIR:'\xFF,SDI:9e999,RNF:\"',INI:'/dev/zero'\n[Brennick\\Halvine\nx");
    EXPECT_TRUE(Stays_Open({}));
}

TEST_F(Program, Two_Run_Beside_Each_Other)
{
    QProcess other;
    other.setProcessEnvironment(environment);
    other.start(QStringLiteral(HALVINE_BINARY_DIR "/bin/halvine"), {});
    EXPECT_TRUE(Stays_Open({}));
    EXPECT_TRUE(other.waitForStarted(1000) || other.state() == QProcess::Running);
    EXPECT_EQ(QProcess::Running, other.state());
    other.kill();
    other.waitForFinished(30'000);
}

} // namespace
