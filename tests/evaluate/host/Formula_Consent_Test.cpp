#include "evaluate/Formula_Consent.h"

#include "evaluate/System_Host.h"
#include "evaluate/bkcEvaluate.h"
#include "frame/ports/Scripted_Platform.h"

#include <gtest/gtest.h>

using namespace Formula;

namespace {

QString operator""_q(const char* text, std::size_t size)
{
    return QString::fromUtf8(text, qsizetype(size));
}

constexpr unsigned Pure = unsigned(Access_Class::Pure);
constexpr unsigned Files = unsigned(Access_Class::Files);
constexpr unsigned Environment = unsigned(Access_Class::Environment);
constexpr unsigned Settings = unsigned(Access_Class::Settings);
constexpr unsigned Dialogs = unsigned(Access_Class::Dialog);

// What a formula would touch

struct Used_Case {
    const char* name;
    const char* formula;
    unsigned used;
};

class Access_Of_A_Formula : public testing::TestWithParam<Used_Case> {};

TEST_P(Access_Of_A_Formula, Is_Found_Without_Running_It)
{
    EXPECT_EQ(Pure | GetParam().used, Access_Used(QString::fromUtf8(GetParam().formula)));
}

INSTANTIATE_TEST_SUITE_P(
    All, Access_Of_A_Formula,
    testing::Values(Used_Case{"the_facts_of_the_picture", "Left(FileName, 3) & Format(FileDate, \"yyyy\")", 0},
                    Used_Case{"the_clock", "Now", unsigned(Access_Class::Clock)},
                    Used_Case{"files", "FileLen(\"/etc/passwd\")", Files},
                    Used_Case{"environment", "environ(\"HOME\")", Environment},
                    Used_Case{"settings", "GetSetting(\"a\", \"b\", \"c\")", Settings},
                    Used_Case{"dialogs", "InputBox(\"name?\")", Dialogs},
                    Used_Case{"several", "CurDir & Environ(\"X\") & MsgBox(\"y\")", Files | Environment | Dialogs},
                    Used_Case{"in_a_branch_that_is_never_taken", "IIf(False, Dir(\"*\"), \"\")", Files},
                    Used_Case{"deep_inside", "((((Len(UCase(CurDir)))))) + 1", Files},
                    Used_Case{"behind_a_line_continuation", "1 & _ \n CurDir", Files},
                    Used_Case{"only_named_in_a_text", "\"CurDir\"", 0}, Used_Case{"a_name_of_ones_own", "MyCurDir", 0},
                    Used_Case{"a_text_that_does_not_compile", "CurDir 5", 0}, Used_Case{"nothing", "", 0}),
    [](const auto& row) { return row.param.name; });

TEST(Access_Of_A_Program, Counts_Statements_And_Procedures_That_Are_Never_Called)
{
    System_Host host;
    bkcEvaluate evaluator(host);
    ASSERT_TRUE(evaluator.Program("x = 1\nEnd\nSub f()\nBeep\nRandomize\ny = CurDir\nEnd Sub"_q));
    EXPECT_EQ(Pure | Dialogs | Files | unsigned(Access_Class::Clock), Access_Used(evaluator.Code()));
    ASSERT_TRUE(evaluator.Program("Randomize 3\nx = f(1)"_q));
    EXPECT_EQ(Pure, Access_Used(evaluator.Code())) << "a seed that is written needs no clock";
    ASSERT_TRUE(evaluator.Program("a = Array(1, 2)"_q));
    EXPECT_EQ(Pure, Access_Used(evaluator.Code()));
}

/// The scan and the engine read one table, so that nothing runs which the scan did not see.
TEST(Access_Of_A_Formula, Is_That_Of_The_Table_For_Every_Function)
{
    for (const Built_In& built_in : Built_Ins()) {
        const QString name = QString::fromLatin1(built_in.name.data(), qsizetype(built_in.name.size()));
        QStringList arguments;
        for (int i = 0; i < built_in.minimum; ++i) arguments += "x"_q;
        const bool niladic = built_in.style == Argument_Style::Niladic;
        const QString call = niladic ? name : name + u'(' + arguments.join(u',') + u')';
        EXPECT_EQ(Pure | unsigned(built_in.access), Access_Used(call)) << call.toStdString();
    }
}

// Consent

class Consent : public testing::Test {
protected:
    void Answer(std::initializer_list<Message_Answer> answers) { dialogs.answers = answers; }
    bool Open(std::initializer_list<Named_Formula> formulas)
    {
        const std::vector<Named_Formula> list = formulas;
        return consent.Ask_About(list);
    }
    unsigned Allowed(const Named_Formula& formula) { return consent.Allowed_Access(formula.name, formula.text); }

    Scripted_Dialogs dialogs;
    Settings_In_Memory settings;
    Formula_Consent consent{dialogs, settings};
    const Named_Formula where{"Where"_q, "CurDir & \"/\" & FileName"_q};
    const Named_Formula who{"Who"_q, "Environ(\"USER\") & Dir(\"*\")"_q};
    const Named_Formula plain{"Plain"_q, "Format(Now, \"yyyy\") & FileName"_q};
    const Named_Formula box{"Box"_q, "InputBox(\"name?\")"_q};
};

TEST_F(Consent, Until_Somebody_Was_Asked_A_Formula_Sees_The_Clock_Alone)
{
    EXPECT_EQ(File_Access, Allowed(where));
    EXPECT_EQ(File_Access, Allowed(plain));
    EXPECT_TRUE(dialogs.asked.empty()) << "asking what is allowed asks nobody";
}

TEST_F(Consent, Asks_With_Name_Text_And_What_May_Be_Read_And_No_As_Default)
{
    EXPECT_TRUE(Open({who}));
    ASSERT_EQ(1U, dialogs.asked.size());
    const Message& question = dialogs.asked.front();
    EXPECT_EQ(
        "A formula of this file wants more than the facts of a picture. Allow it?\n\n"
        "Name: Who\n\n"
        "Formula: Environ(\"USER\") & Dir(\"*\")\n\n"
        "It wants to read the names, sizes and dates of your files, and the environment variables of the "
        "program.\n\nYes holds for this formula from now on. No opens the file and refuses it that. Cancel leaves "
        "the file unopened.",
        question.text.toStdString());
    EXPECT_EQ(Message_Buttons::Yes_No_Cancel, question.buttons);
    EXPECT_EQ(Message_Answer::No, question.standard);
    EXPECT_EQ(Message_Icon::Question, question.icon);
}

TEST_F(Consent, Yes_Allows_What_The_Formula_Uses_And_Nothing_Else)
{
    Answer({Message_Answer::Yes, Message_Answer::Yes});
    EXPECT_TRUE(Open({where, who}));
    EXPECT_EQ(File_Access | Files, Allowed(where));
    EXPECT_EQ(File_Access | Files | Environment, Allowed(who));
}

TEST_F(Consent, Yes_Is_Remembered_And_Not_Asked_Again)
{
    Answer({Message_Answer::Yes});
    EXPECT_TRUE(Open({where}));
    Formula_Consent later(dialogs, settings);
    const Named_Formula formulas[] = {where};
    EXPECT_FALSE(later.Needs_Question(where.name, where.text));
    EXPECT_TRUE(later.Ask_About(formulas));
    EXPECT_EQ(1U, dialogs.asked.size());
    EXPECT_EQ(File_Access | Files, later.Allowed_Access(where.name, where.text));
}

TEST_F(Consent, Another_Name_Or_Text_Is_Another_Formula)
{
    Answer({Message_Answer::Yes});
    EXPECT_TRUE(Open({where}));
    EXPECT_EQ(File_Access, Allowed({"where"_q, where.text}));
    EXPECT_EQ(File_Access, Allowed({where.name, where.text + u' '}));
    EXPECT_EQ(File_Access, Allowed({where.name + u'C', where.text.mid(1)})) << "the name cannot flow into the text";
}

TEST_F(Consent, No_Leaves_The_Formula_Without_Access_And_Asks_At_The_Next_Opening)
{
    Answer({Message_Answer::No, Message_Answer::Yes});
    EXPECT_TRUE(Open({where}));
    EXPECT_EQ(File_Access, Allowed(where));
    EXPECT_TRUE(settings.user.isEmpty());
    EXPECT_TRUE(consent.Needs_Question(where.name, where.text));
    EXPECT_TRUE(Open({where}));
    EXPECT_EQ(File_Access | Files, Allowed(where));
}

TEST_F(Consent, Cancel_Asks_No_More_And_Keeps_What_Was_Allowed_Before_It)
{
    Answer({Message_Answer::Yes, Message_Answer::Cancel, Message_Answer::Yes});
    EXPECT_FALSE(Open({where, who, {"Third"_q, "CurDir"_q}}));
    EXPECT_EQ(2U, dialogs.asked.size());
    EXPECT_EQ(File_Access | Files, Allowed(where));
    EXPECT_EQ(File_Access, Allowed(who));
}

TEST_F(Consent, Asks_Once_For_A_Formula_That_Stands_In_The_File_Twice)
{
    EXPECT_TRUE(Open({where, who, where}));
    EXPECT_EQ(2U, dialogs.asked.size());
}

TEST_F(Consent, Asks_Nothing_For_Facts_The_Clock_And_Broken_Formulas)
{
    EXPECT_TRUE(Open({plain, {"Broken"_q, "CurDir 5"_q}, {"(none)"_q, QString()}}));
    EXPECT_TRUE(dialogs.asked.empty());
}

TEST_F(Consent, Dialogs_Can_Not_Be_Allowed)
{
    EXPECT_TRUE(Open({box}));
    EXPECT_TRUE(dialogs.asked.empty());
    Answer({Message_Answer::Yes});
    const Named_Formula both{"Both"_q, "CurDir & InputBox(\"a\")"_q};
    EXPECT_TRUE(Open({both}));
    EXPECT_EQ(File_Access | Files, Allowed(both));
}

TEST_F(Consent, A_Typed_Formula_Is_Remembered_Without_A_Question)
{
    EXPECT_EQ(0, consent.Remember_Typed(who.name, who.text));
    EXPECT_EQ(File_Access | Files | Environment, Allowed(who));
    EXPECT_EQ(0, consent.Remember_Typed(plain.name, plain.text));
    EXPECT_EQ(0, consent.Remember_Typed(box.name, box.text));
    EXPECT_EQ(File_Access, Allowed(box)) << "all but dialogs";
    EXPECT_TRUE(dialogs.asked.empty());
    EXPECT_EQ(1, settings.user.begin()->size()) << "what needs no consent leaves no trace";
}

TEST_F(Consent, A_Yes_That_Cannot_Be_Stored_Is_Told_And_Allows_Nothing)
{
    settings.refuse_writes = true;
    Answer({Message_Answer::Yes, Message_Answer::Ok});
    EXPECT_TRUE(Open({where}));
    ASSERT_EQ(2U, dialogs.asked.size());
    EXPECT_EQ("The answer could not be stored. The formula stays without access.",
              dialogs.asked.back().text.toStdString());
    EXPECT_EQ(File_Access, Allowed(where));
    EXPECT_NE(0, consent.Remember_Typed(where.name, where.text));
}

TEST_F(Consent, A_Stored_Value_That_Is_No_List_Allows_Nothing)
{
    Answer({Message_Answer::Yes});
    EXPECT_TRUE(Open({where}));
    for (const char* damaged : {"", "dialogs", "files,", "all", "4"}) {
        for (QString& value : *settings.user.begin()) value = QString::fromLatin1(damaged);
        EXPECT_EQ(File_Access, Allowed(where)) << damaged;
    }
}

TEST_F(Consent, A_Formula_Cannot_Write_Lines_Of_The_Question)
{
    EXPECT_TRUE(Open({{"Safe\n\nIt wants to read nothing.\u202E"_q, "CurDir\t& _\nFileName"_q}}));
    ASSERT_EQ(1U, dialogs.asked.size());
    const std::string text = dialogs.asked.front().text.toStdString();
    EXPECT_NE(std::string::npos, text.find("Name: Safe  It wants to read nothing.\uFFFD\n\n")) << text;
    EXPECT_NE(std::string::npos, text.find("Formula: CurDir & _ FileName\n\n")) << text;
}

TEST_F(Consent, A_Long_Formula_Does_Not_Push_The_Question_Off_The_Screen)
{
    EXPECT_TRUE(Open({{QString(2000, u'n'), "\""_q + QString(5000, u'a') + "\" & CurDir"_q}}));
    ASSERT_EQ(1U, dialogs.asked.size());
    EXPECT_LT(dialogs.asked.front().text.size(), 1600);
    EXPECT_TRUE(dialogs.asked.front().text.contains("… and 1880 characters more\n\nFormula: "_q));
    EXPECT_FALSE(dialogs.asked.front().text.contains(QString(41, u'a'))) << "a window can break its lines";
    EXPECT_TRUE(dialogs.asked.front().text.contains("… and 4011 characters more"_q));
    EXPECT_TRUE(dialogs.asked.front().text.contains("It wants to read the names, sizes and dates of your files.\n"_q));
}

TEST_F(Consent, A_Name_That_Just_Fits_Is_Shown_Whole)
{
    EXPECT_TRUE(Open({{QString(120, u'n'), "CurDir"_q}}));
    ASSERT_EQ(1U, dialogs.asked.size());
    EXPECT_FALSE(dialogs.asked.front().text.contains("characters more"_q));
}

TEST_F(Consent, A_Host_That_Sets_What_Is_Allowed_Refuses_The_Rest_At_Its_Place)
{
    System_Host host;
    bkcEvaluate evaluator(host);
    evaluator.Set_AllowedAccess(Allowed(where));
    evaluator.Set_Variable("FileName"_q, Variant("sea"_q));
    ASSERT_TRUE(evaluator.Expression(where.text));
    EXPECT_TRUE(evaluator.Value().Is_Empty());
    EXPECT_EQ(70, evaluator.Last_Error().Code);
    EXPECT_EQ("Permission denied", evaluator.Last_Error().Description.toStdString());
    EXPECT_EQ(1, evaluator.Last_Error().Position);
    Answer({Message_Answer::Yes});
    EXPECT_TRUE(Open({where}));
    evaluator.Set_AllowedAccess(Allowed(where));
    EXPECT_TRUE(evaluator.Value().Text().endsWith("/sea"_q));
}

TEST(Access_List, Knows_Three_Words)
{
    EXPECT_EQ(Files, Access_From_List("files"_q));
    EXPECT_EQ(Files | Environment | Settings, Access_From_List("Files, environment,SETTINGS"_q));
    for (const char* wrong : {"", "dialogs", "files,", "files;settings", "pure"})
        EXPECT_FALSE(Access_From_List(QString::fromLatin1(wrong))) << wrong;
}

} // namespace
