#include "catalogue/Configuration_Commands.h"

#include "evaluate/Formula_Consent.h"
#include "frame/Configuration_File.h"
#include "frame/ports/Scripted_Platform.h"
#include "tests/support/Test_Folder.h"

#include <gtest/gtest.h>

namespace {

TEST(Configuration_Commands, Ask_For_The_File_And_Remember_It)
{
    Test_Folder folder;
    const QString start = QString::fromStdString(folder.Path()) + u'/', path = start + QStringLiteral("mine.hvi");
    Scripted_Dialogs dialogs;
    Settings_In_Memory settings;
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
    ASSERT_TRUE(Read_Configuration_File(read, dialogs, settings, start));
    EXPECT_EQ(dialogs.pick_asked.back().caption, QStringLiteral("Halvine - Open Configuration File"));
    EXPECT_EQ(read.Default_Path, QStringLiteral("/photos/"));
    EXPECT_FALSE(Read_Configuration_File(read, dialogs, settings, start)) << "cancelled";
}

/// A file whose second rename formula and whose file data formula look around.
class Curious_Configuration : public testing::Test {
protected:
    Curious_Configuration()
    {
        Program_State curious;
        curious.Default_Path = QStringLiteral("/from the file/");
        curious.Rename_Formulas.Append({QStringLiteral("Plain"), QStringLiteral("FileName")});
        curious.Rename_Formulas.Append(where);
        curious.File_Data_Formulas.Append(who);
        EXPECT_TRUE(Store_Configuration_File(curious, path));
    }

    bool Open(std::initializer_list<Message_Answer> answers)
    {
        dialogs.answers = answers;
        dialogs.asked.clear();
        dialogs.picks = {{path}};
        return Read_Configuration_File(state, dialogs, settings, {});
    }

    unsigned Allowed(const Name_Value_Pair& formula)
    {
        return Formula::Formula_Consent(dialogs, settings).Allowed_Access(formula.Name, formula.Value);
    }

    Test_Folder folder;
    const QString path = QString::fromStdString(folder.Path()) + QStringLiteral("/curious.hvi");
    const Name_Value_Pair where{QStringLiteral("Where"), QStringLiteral("CurDir")};
    const Name_Value_Pair who{QStringLiteral("Who"), QStringLiteral("Environ(\"USER\")")};
    Scripted_Dialogs dialogs;
    Settings_In_Memory settings;
    Program_State state;
};

TEST_F(Curious_Configuration, Asks_Once_For_Each_Formula_That_Looks_Around)
{
    EXPECT_TRUE(Open({Message_Answer::Yes, Message_Answer::No}));
    ASSERT_EQ(2U, dialogs.asked.size());
    EXPECT_TRUE(dialogs.asked[0].text.contains(QStringLiteral("Name: Where")));
    EXPECT_TRUE(dialogs.asked[1].text.contains(QStringLiteral("Name: Who")));
    EXPECT_EQ(2, state.Rename_Formulas.Count()) << "the lists are taken whatever the answers";
    EXPECT_EQ(Formula::File_Access | unsigned(Formula::Access_Class::Files), Allowed(where));
    EXPECT_EQ(Formula::File_Access, Allowed(who));
    EXPECT_TRUE(Open({Message_Answer::No}));
    EXPECT_EQ(1U, dialogs.asked.size()) << "the Yes was remembered";
}

TEST_F(Curious_Configuration, Cancel_Takes_Nothing)
{
    const Program_State before = state;
    EXPECT_FALSE(Open({Message_Answer::Cancel}));
    EXPECT_EQ(1U, dialogs.asked.size());
    EXPECT_EQ(before.Default_Path, state.Default_Path);
    EXPECT_EQ(0, state.Rename_Formulas.Count());
    EXPECT_EQ(Formula::File_Access, Allowed(where));
}

TEST(Configuration_Commands, A_File_That_Is_None_Is_Told_And_One_That_Cannot_Be_Opened_Is_Not)
{
    const Test_Folder folder;
    const QString path = QString::fromStdString(folder.File("other.hvi"));
    Put_File(folder.File("other.hvi"), "<hvSlideShow></hvSlideShow>");
    Scripted_Dialogs dialogs;
    Settings_In_Memory settings;
    Program_State state;
    dialogs.picks = {{path}, {QString::fromStdString(folder.File("missing.hvi"))}};
    EXPECT_FALSE(Read_Configuration_File(state, dialogs, settings, {}));
    ASSERT_EQ(1U, dialogs.asked.size());
    EXPECT_TRUE(dialogs.asked[0].text.startsWith(path + ": is no configuration file"));
    EXPECT_FALSE(Read_Configuration_File(state, dialogs, settings, {}));
    EXPECT_EQ(1U, dialogs.asked.size());
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
