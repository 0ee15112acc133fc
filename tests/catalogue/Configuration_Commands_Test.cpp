#include "catalogue/Configuration_Commands.h"

#include "frame/ports/Scripted_Platform.h"
#include "tests/support/Test_Folder.h"

#include <gtest/gtest.h>

namespace {

TEST(Configuration_Commands, Ask_For_The_File_And_Remember_It)
{
    Test_Folder folder;
    const QString start = QString::fromStdString(folder.Path()) + u'/', path = start + QStringLiteral("mine.hvi");
    Scripted_Dialogs dialogs;
    Program_State state;
    EXPECT_FALSE(Write_Configuration_File(state, dialogs, start)) << "cancelled";
    dialogs.picks = {{start + QStringLiteral("mine")}, {path}, {path}};
    state.Default_Path = QStringLiteral("/photos/");
    ASSERT_TRUE(Write_Configuration_File(state, dialogs, start));
    EXPECT_EQ(dialogs.pick_asked.back().caption, QStringLiteral("Halvine - Save Configuration File"));
    EXPECT_EQ(state.Last_Configuration_File, path);
    ASSERT_TRUE(Write_Configuration_File(state, dialogs, start)) << "the last file is written over without a question";
    EXPECT_TRUE(dialogs.asked.empty());
    Program_State read;
    ASSERT_TRUE(Read_Configuration_File(read, dialogs, start));
    EXPECT_EQ(dialogs.pick_asked.back().caption, QStringLiteral("Halvine - Open Configuration File"));
    EXPECT_EQ(read.Default_Path, QStringLiteral("/photos/"));
    EXPECT_FALSE(Read_Configuration_File(read, dialogs, start)) << "cancelled";
}

TEST(Configuration_Commands, A_Failed_Write_Is_Told)
{
    Scripted_Dialogs dialogs;
    Program_State state;
    dialogs.picks = {{QStringLiteral("/no/such/folder/a.hvi")}};
    EXPECT_FALSE(Write_Configuration_File(state, dialogs, {}));
    ASSERT_EQ(dialogs.asked.size(), 1U);
    EXPECT_TRUE(dialogs.asked[0].text.contains(QStringLiteral("a.hvi"))) << dialogs.asked[0].text.toStdString();
}

} // namespace
