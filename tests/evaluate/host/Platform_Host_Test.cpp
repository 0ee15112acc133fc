#include "evaluate/Platform_Host.h"

#include "evaluate/bkcEvaluate.h"
#include "evaluate/variant/Conversions.h"
#include "frame/ports/Scripted_Platform.h"

#include <gtest/gtest.h>

using namespace Formula;

namespace {

using enum Message_Answer;

struct Box_Case {
    const char* name;
    const char* formula;
    Message_Buttons buttons;
    Message_Answer standard;
    Message_Icon icon;
    Message_Answer answer;
    const char* value;
};

class Message_Boxes : public testing::TestWithParam<Box_Case> {
protected:
    std::string Value(const char* formula)
    {
        const Variant value = evaluator.Value(QString::fromUtf8(formula));
        EXPECT_EQ(0, evaluator.Last_Error().Code) << evaluator.Last_Error().Description.toStdString();
        return To_Display_Text(value).value_or(QString()).toStdString();
    }

    Scripted_Platform scripted;
    Platform_Host host{scripted.platform};
    bkcEvaluate evaluator{host};
};

TEST_P(Message_Boxes, Show_Their_Style_And_Yield_The_Number_Of_The_Answer)
{
    scripted.dialogs.answers = {GetParam().answer};
    EXPECT_EQ(GetParam().value, Value(GetParam().formula));
    ASSERT_EQ(1U, scripted.dialogs.asked.size());
    const Message& asked = scripted.dialogs.asked.front();
    EXPECT_EQ("ready?", asked.text.toStdString());
    EXPECT_EQ(GetParam().buttons, asked.buttons);
    EXPECT_EQ(GetParam().standard, asked.standard);
    EXPECT_EQ(GetParam().icon, asked.icon);
}

using Buttons = Message_Buttons;
using Icon = Message_Icon;
INSTANTIATE_TEST_SUITE_P(
    All, Message_Boxes,
    testing::Values(
        Box_Case{"without_a_style", "MsgBox(\"ready?\")", Buttons::Ok, Ok, Icon::None, Ok, "1"},
        Box_Case{"ok_cancel", "MsgBox(\"ready?\", vbOKCancel)", Buttons::Ok_Cancel, Ok, Icon::None, Cancel, "2"},
        Box_Case{"abort", "MsgBox(\"ready?\", vbAbortRetryIgnore)", Buttons::Abort_Retry_Ignore, Abort, Icon::None,
                 Abort, "3"},
        Box_Case{"retry", "MsgBox(\"ready?\", vbRetryCancel + vbCritical)", Buttons::Retry_Cancel, Retry,
                 Icon::Critical, Retry, "4"},
        Box_Case{"ignore", "MsgBox(\"ready?\", vbAbortRetryIgnore + vbDefaultButton3)", Buttons::Abort_Retry_Ignore,
                 Ignore, Icon::None, Ignore, "5"},
        Box_Case{"yes", "MsgBox(\"ready?\", vbYesNoCancel + vbQuestion)", Buttons::Yes_No_Cancel, Yes, Icon::Question,
                 Yes, "6"},
        Box_Case{"no_as_default", "MsgBox(\"ready?\", vbYesNo + vbExclamation + vbDefaultButton2)", Buttons::Yes_No, No,
                 Icon::Exclamation, No, "7"},
        Box_Case{"information", "MsgBox(\"ready?\", vbInformation)", Buttons::Ok, Ok, Icon::Information, Ok, "1"},
        Box_Case{"a_default_that_the_style_has_not", "MsgBox(\"ready?\", vbYesNo + vbDefaultButton4)", Buttons::Yes_No,
                 Yes, Icon::None, Yes, "6"},
        Box_Case{"a_style_that_there_is_not", "MsgBox(\"ready?\", 15)", Buttons::Ok, Ok, Icon::None, Ok, "1"},
        Box_Case{"styles_that_say_nothing_here",
                 "MsgBox(\"ready?\", vbOKCancel + vbSystemModal + vbMsgBoxRight + vbMsgBoxSetForeground)",
                 Buttons::Ok_Cancel, Ok, Icon::None, Ok, "1"},
        Box_Case{"a_negative_style", "MsgBox(\"ready?\", -1)", Buttons::Ok, Ok, Icon::None, Ok, "1"}),
    [](const auto& row) { return row.param.name; });

using Platform_Hosts = Message_Boxes;

TEST_F(Platform_Hosts, A_Box_Without_A_Title_Carries_The_Programs_Name)
{
    EXPECT_EQ("1", Value("MsgBox(\"a\")"));
    EXPECT_EQ("Halvine", scripted.dialogs.asked.back().title.toStdString());
    EXPECT_EQ("1", Value("MsgBox(\"a\", 0, \"Trip\")"));
    EXPECT_EQ("Trip", scripted.dialogs.asked.back().title.toStdString());
    EXPECT_EQ("", Value("InputBox(\"a\")"));
    EXPECT_EQ("Halvine", scripted.dialogs.input_asked.back().title.toStdString());
}

TEST_F(Platform_Hosts, An_Input_Box_Hands_Its_Texts_Over_And_Yields_What_Was_Typed)
{
    scripted.dialogs.inputs = {QStringLiteral("sea"), std::nullopt};
    EXPECT_EQ("<sea>", Value("\"<\" & InputBox(\"Subject?\", \"Trip\", \"hill\") & \">\""));
    const Input_Question& asked = scripted.dialogs.input_asked.back();
    EXPECT_EQ("Subject?", asked.prompt.toStdString());
    EXPECT_EQ("Trip", asked.title.toStdString());
    EXPECT_EQ("hill", asked.text.toStdString());
    EXPECT_EQ("<>", Value("\"<\" & InputBox(\"Subject?\") & \">\"")) << "a cancelled box yields an empty text";
}

TEST_F(Platform_Hosts, An_Unknown_Variable_Is_Asked_For)
{
    scripted.dialogs.inputs = {QStringLiteral("4")};
    EXPECT_EQ("8", Value("Pages * 2"));
    EXPECT_EQ("Pages", scripted.dialogs.input_asked.back().prompt.toStdString());
    EXPECT_EQ("Supply Value For Pages", scripted.dialogs.input_asked.back().title.toStdString());
}

TEST_F(Platform_Hosts, Clock_Beep_And_Settings_Are_The_Programs)
{
    scripted.settings.user[QStringLiteral("Formulas/Trip/Names")][QStringLiteral("first")] = QStringLiteral("sea");
    EXPECT_EQ("2026-03-14 15:09:26", Value("Format(Now, \"yyyy-mm-dd hh:nn:ss\")"));
    EXPECT_EQ("sea", Value("GetSetting(\"Trip\", \"Names\", \"first\")"));
    EXPECT_TRUE(evaluator.Execute(QStringLiteral("Beep")));
    EXPECT_EQ(1, scripted.shell.beeps);
}

TEST_F(Platform_Hosts, Events_Are_Processed_In_A_Long_Run_And_May_End_It)
{
    evaluator.Set_ProcessEvents([&] { scripted.events.Process_Pending_Events(); });
    scripted.events.on_call = [&](int call) {
        if (call == 5) evaluator.ExecutionTerminate();
    };
    EXPECT_TRUE(evaluator.Execute(QStringLiteral("Do\nLoop")));
    EXPECT_EQ(5, scripted.events.calls);
}

} // namespace
