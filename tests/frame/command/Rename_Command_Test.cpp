// hv rename and hv describe as other programs call them.

#include "Project_Folders.h"
#include "frame/text/Text_Utilities.h"
#include "tests/support/Test_Folder.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

struct Answer {
    int status = -1;
    QByteArray out, messages;
};

class Hv_Rename : public testing::Test {
protected:
    void SetUp() override
    {
        for (const char* name : {"IMG_0012.jpg", "IMG_0013.jpg", "DSC_1.tif"}) Put(name);
    }
    void Put(const std::string& name)
    {
        Put_File(folder.File(name), "picture " + name);
        const timespec noon[2] = {{1773489600, 0}, {1773489600, 0}}; // 14 March 2026, 12:00 UTC
        utimensat(AT_FDCWD, folder.File(name).c_str(), noon, 0);
    }
    Answer Run(const QStringList& arguments, const QByteArray& input = {})
    {
        QProcess process;
        process.setWorkingDirectory(QString::fromStdString(folder.Path()));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(Q("XDG_STATE_HOME"), QString::fromStdString(state.Path()));
        environment.insert(Q("XDG_CONFIG_HOME"), QString::fromStdString(settings.Path()));
        environment.insert(Q("TZ"), Q("UTC"));
        process.setProcessEnvironment(environment);
        process.start(Q(HALVINE_BINARY_DIR "/bin/hv"), QStringList(Q("rename")) + arguments);
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(60'000));
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }
    std::string What(const std::string& name) const { return Contents_Of(folder.File(name)); }

    Test_Folder folder, state, settings;
    const QStringList both{Q("IMG_0012.jpg"), Q("IMG_0013.jpg")};
    const QStringList trip{Q("--from"), Q("IMG"), Q("--to"), Q("Trip")};
};

TEST_F(Hv_Rename, Prints_The_Names_And_Changes_Nothing)
{
    const auto before = folder.Names();
    const Answer answer = Run(trip + QStringList{Q("DSC_1.tif")} + both);
    EXPECT_EQ(answer.status, 0) << answer.messages.toStdString();
    EXPECT_EQ(answer.out, "DSC_1.tif\t\nIMG_0012.jpg\tTrip_0012.jpg\nIMG_0013.jpg\tTrip_0013.jpg\n");
    EXPECT_EQ(answer.messages, "");
    EXPECT_EQ(folder.Names(), before);
    EXPECT_TRUE(state.Names().empty());
}

TEST_F(Hv_Rename, Prints_Json)
{
    const Answer answer = Run(trip + QStringList{Q("--json"), Q("IMG_0012.jpg")});
    const QJsonObject object = QJsonDocument::fromJson(answer.out).object();
    EXPECT_EQ(object.value(Q("file")).toString(), "IMG_0012.jpg");
    EXPECT_EQ(object.value(Q("new_name")).toString(), "Trip_0012.jpg");
}

TEST_F(Hv_Rename, Renames_And_Takes_Back)
{
    Answer answer = Run(trip + QStringList{Q("--execute")} + both);
    EXPECT_EQ(answer.status, 0) << answer.messages.toStdString();
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"DSC_1.tif", "Trip_0012.jpg", "Trip_0013.jpg"}));
    EXPECT_EQ(What("Trip_0012.jpg"), "picture IMG_0012.jpg");
    answer = Run({Q("--take-back")});
    EXPECT_EQ(answer.status, 0) << answer.messages.toStdString();
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"DSC_1.tif", "IMG_0012.jpg", "IMG_0013.jpg"}));
    answer = Run({Q("--take-back")});
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.messages, "hv: there is no rename to take back\n");
}

TEST_F(Hv_Rename, Numbers_Anew_By_An_Interval)
{
    const Answer answer =
        Run(trip + QStringList{Q("--start"), Q("001"), Q("--reserialize"), Q("--interval"), Q("5")} + both);
    EXPECT_EQ(answer.out, "IMG_0012.jpg\tTrip_001.jpg\nIMG_0013.jpg\tTrip_006.jpg\n");
}

TEST_F(Hv_Rename, Numbers_Names_Without_A_Number_From_A_Given_Start_Alone)
{
    const QStringList sea{Q("--from"), Q("beach"), Q("--to"), Q("Sea"), Q("beach-a.jpg"), Q("beach-b.jpg")};
    for (const char* name : {"beach-a.jpg", "beach-b.jpg"}) Put(name);
    Answer answer = Run(sea + QStringList{Q("--reserialize"), Q("--execute")});
    EXPECT_EQ(answer.status, 2);
    EXPECT_EQ(answer.out, "");
    EXPECT_EQ(answer.messages, "hv: rename: --reserialize needs --start, for no name holds a number to begin with (see "
                               "hv rename --help)\n");
    EXPECT_EQ(What("beach-a.jpg"), "picture beach-a.jpg");
    answer = Run(sea + QStringList{Q("--reserialize"), Q("--start"), Q("01")});
    EXPECT_EQ(answer.out, "beach-a.jpg\tSea-a01.jpg\nbeach-b.jpg\tSea-b02.jpg\n");
    EXPECT_EQ(answer.messages, "");
    answer = Run(sea + QStringList{Q("--start"), Q("01")});
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.out, "beach-a.jpg\tSea-a.jpg\nbeach-b.jpg\tSea-b.jpg\n") << "the names keep their rest";
    EXPECT_EQ(answer.messages,
              "hv: rename: --start has no effect, for no name holds a number; --reserialize numbers all files\n");
}

TEST_F(Hv_Rename, A_Folder_In_A_New_Name_Is_Left_Out)
{
    const Answer answer = Run({Q("--from"), Q("IMG"), Q("--to"), Q("../Trip"), Q("--execute"), Q("IMG_0012.jpg")});
    EXPECT_EQ(answer.out, "IMG_0012.jpg\tTrip_0012.jpg\n");
    EXPECT_EQ(What("Trip_0012.jpg"), "picture IMG_0012.jpg");
}

TEST_F(Hv_Rename, A_Damaged_Journal_Is_Told_Once)
{
    EXPECT_EQ(Run(trip + QStringList{Q("--execute"), Q("IMG_0012.jpg")}).status, 0);
    Put_File(state.File("halvine/renames/rename-9.journal"), "B\nnames");
    Answer answer = Run(trip + QStringList{Q("--execute"), Q("IMG_0013.jpg")});
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.messages, "hv: The journal of a rename that may have been interrupted is damaged: line 1 breaks "
                               "off; it is kept as " +
                                   QByteArray::fromStdString(state.File("halvine/renames/set-aside-rename-9.journal")) +
                                   "\n");
    answer = Run({Q("--take-back")});
    EXPECT_EQ(answer.messages, "");
    EXPECT_EQ(What("IMG_0013.jpg"), "picture IMG_0013.jpg");
}

TEST_F(Hv_Rename, Takes_A_Pattern_And_A_Type)
{
    const Answer answer = Run({Q("--from"), Q("*_"), Q("--to"), Q("x"), Q("--pattern"), Q("--type"), Q("JPG"),
                               Q("IMG_0012.jpg"), Q("DSC_1.tif")});
    EXPECT_EQ(answer.out, "IMG_0012.jpg\tx12.JPG\nDSC_1.tif\tx01.JPG\n");
}

TEST_F(Hv_Rename, Takes_A_Formula_Or_The_Name_Of_One)
{
    Answer answer =
        Run(trip + QStringList{Q("--formula"), Q("ChangeTo & Format(FileDate, \"mm\") & FileSerial")} + both);
    EXPECT_EQ(answer.out, "IMG_0012.jpg\tTrip030012.jpg\nIMG_0013.jpg\tTrip030013.jpg\n");
    answer = Run(trip + QStringList{Q("--formula-name"), Q("subject-date-serial"), Q("--start"), Q("1")} + both);
    EXPECT_EQ(answer.out, "IMG_0012.jpg\tTrip-20260314-00.jpg\nIMG_0013.jpg\tTrip-20260314-01.jpg\n")
        << answer.messages.toStdString();
    answer = Run(trip + QStringList{Q("--formula-name"), Q("none such")} + both);
    EXPECT_EQ(answer.status, 2);
    EXPECT_EQ(answer.messages, "hv: rename: there is no rename formula \"none such\" (see hv rename --help)\n");
}

TEST_F(Hv_Rename, A_Named_Formula_Reads_No_More_Than_It_Is_Allowed)
{
    std::filesystem::create_directory(settings.File("Brennick"));
    Put_File(settings.File("Brennick/Halvine.ini"),
             "[Brennick%255CHalvine]\nHalvine=\"RNF:\\\"'Home','Environ(\\\"\\\"TZ\\\"\\\") & FileSerial'\\\"\"\n");
    const QStringList named = trip + QStringList{Q("--formula-name"), Q("Home"), Q("IMG_0012.jpg")};
    Answer answer = Run(named);
    EXPECT_EQ(answer.status, 1);
    EXPECT_TRUE(answer.messages.startsWith("hv: error 70: Permission denied")) << answer.messages.toStdString();
    answer = Run(named + QStringList{Q("--allow-formula"), Q("environment")});
    EXPECT_EQ(answer.out, "IMG_0012.jpg\tUTC0012.jpg\n") << answer.messages.toStdString();
    EXPECT_EQ(Run(named + QStringList{Q("--allow-formula"), Q("everything")}).status, 2);
}

TEST_F(Hv_Rename, A_Formula_With_A_Fault_Renames_Nothing)
{
    const Answer answer = Run(trip + QStringList{Q("--formula"), Q("FileVPix"), Q("--execute")} + both);
    EXPECT_EQ(answer.status, 1);
    EXPECT_TRUE(answer.messages.startsWith("hv: error ")) << answer.messages.toStdString();
    EXPECT_TRUE(answer.messages.contains("(at character position ")) << answer.messages.toStdString();
    EXPECT_EQ(answer.out, "");
    EXPECT_EQ(What("IMG_0012.jpg"), "picture IMG_0012.jpg");
}

TEST_F(Hv_Rename, Collisions_Are_Refused_Before_Anything_Is_Touched)
{
    const auto before = folder.Names();
    Answer answer = Run({Q("--from"), Q("*"), Q("--to"), Q("x"), Q("--pattern"), Q("--formula"), Q("ChangeTo"),
                         Q("--execute"), Q("IMG_0012.jpg"), Q("IMG_0013.jpg")});
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.messages, "hv: IMG_0013.jpg: \"x.jpg\" is the new name of IMG_0012.jpg too\n");
    EXPECT_EQ(folder.Names(), before);
    Put("Trip_0013.jpg");
    answer = Run(trip + QStringList{Q("--execute")} + both);
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.messages, "hv: IMG_0013.jpg: the name \"Trip_0013.jpg\" is taken by another file\n");
    EXPECT_EQ(What("IMG_0012.jpg"), "picture IMG_0012.jpg");
    EXPECT_EQ(What("Trip_0013.jpg"), "picture Trip_0013.jpg");
}

TEST_F(Hv_Rename, A_Fault_Of_A_File_With_A_Colon_Names_It_Once)
{
    Put("Day: 1.jpg");
    Put("Trip: 1.jpg");
    const Answer answer = Run({Q("--from"), Q("Day"), Q("--to"), Q("Trip"), Q("Day: 1.jpg")});
    EXPECT_EQ(answer.messages, "hv: Day: 1.jpg: the name \"Trip: 1.jpg\" is taken by another file\n");
}

TEST_F(Hv_Rename, Shifts_Numbers_Along_A_Row_Of_Files)
{
    Put("IMG_0014.jpg");
    const Answer answer = Run({Q("--from"), Q("IMG"), Q("--to"), Q("IMG"), Q("--start"), Q("0015"), Q("--execute"),
                               Q("IMG_0012.jpg"), Q("IMG_0013.jpg"), Q("IMG_0014.jpg")});
    EXPECT_EQ(answer.status, 0) << answer.messages.toStdString();
    EXPECT_EQ(What("IMG_0013.jpg"), "picture IMG_0012.jpg");
    EXPECT_EQ(What("IMG_0014.jpg"), "picture IMG_0013.jpg");
    EXPECT_EQ(What("IMG_0015.jpg"), "picture IMG_0014.jpg");
}

TEST_F(Hv_Rename, Copies_Under_The_New_Names)
{
    std::filesystem::create_directory(folder.File("out"));
    const QStringList copy = trip + QStringList{Q("--copy-to"), Q("out"), Q("DSC_1.tif")} + both;
    Answer answer = Run(copy);
    EXPECT_EQ(answer.status, 0) << answer.messages.toStdString();
    EXPECT_EQ(What("out/Trip_0012.jpg"), "picture IMG_0012.jpg");
    EXPECT_EQ(What("out/DSC_1.tif"), "picture DSC_1.tif");
    EXPECT_EQ(What("IMG_0012.jpg"), "picture IMG_0012.jpg");
    answer = Run(copy);
    EXPECT_EQ(answer.status, 1) << "nothing is written over";
    EXPECT_EQ(answer.messages.count('\n'), 3);
}

TEST_F(Hv_Rename, A_Missing_File_Is_Told_And_The_Others_Are_Done)
{
    const Answer answer = Run(trip + QStringList{Q("--execute"), Q("IMG_0099.jpg"), Q("IMG_0012.jpg")});
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.messages, "hv: IMG_0099.jpg: there is no such file\n");
    EXPECT_EQ(answer.out, "IMG_0012.jpg\tTrip_0012.jpg\n");
    EXPECT_EQ(What("Trip_0012.jpg"), "picture IMG_0012.jpg");
}

TEST_F(Hv_Rename, Names_That_Are_No_Utf_8_Survive)
{
    Put("IMG_\xf6_7.jpg");
    const Answer answer = Run(trip + QStringList{Q("--execute"), Q("--files-from"), Q("-"), Q("-0")},
                              QByteArray("IMG_\xf6_7.jpg") + '\0');
    EXPECT_EQ(answer.status, 0) << answer.messages.toStdString();
    EXPECT_EQ(answer.out, "IMG_\xf6_7.jpg\tTrip_\xf6_7.jpg\n");
    EXPECT_EQ(What("Trip_\xf6_7.jpg"), "picture IMG_\xf6_7.jpg");
}

TEST_F(Hv_Rename, Wrong_Usage_Does_Nothing)
{
    const QStringList wrong[] = {
        {Q("--from"), Q("IMG"), Q("IMG_0012.jpg")},
        trip,
        trip + QStringList{Q("--start"), Q("x"), Q("IMG_0012.jpg")},
        trip + QStringList{Q("--interval"), Q("2"), Q("IMG_0012.jpg")},
        trip + QStringList{Q("--reserialize"), Q("--interval"), Q("two"), Q("IMG_0012.jpg")},
        trip + QStringList{Q("--formula"), Q("1"), Q("--formula-name"), Q("x"), Q("IMG_0012.jpg")},
        trip + QStringList{Q("--execute"), Q("--copy-to"), Q("."), Q("IMG_0012.jpg")},
        trip + QStringList{Q("--copy-to"), Q("nowhere"), Q("IMG_0012.jpg")},
        {Q("--take-back"), Q("IMG_0012.jpg")},
    };
    for (const QStringList& arguments : wrong)
        EXPECT_EQ(Run(arguments).status, 2) << arguments.join(u' ').toStdString();
    EXPECT_EQ(folder.Names().size(), 3U);
    EXPECT_EQ(Run({Q("--help")}).status, 0);
}

} // namespace
