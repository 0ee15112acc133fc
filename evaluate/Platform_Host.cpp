#include "evaluate/Platform_Host.h"

#include <algorithm>

namespace Formula {

namespace {

using enum Message_Answer;

/// Row i is the style number i of the low four bits, with its buttons from left to right.
struct Style_Row {
    Message_Buttons buttons;
    std::array<Message_Answer, 3> answers;
    int count;
};

constexpr Style_Row Styles[] = {
    {Message_Buttons::Ok, {Ok}, 1},
    {Message_Buttons::Ok_Cancel, {Ok, Cancel}, 2},
    {Message_Buttons::Abort_Retry_Ignore, {Abort, Retry, Ignore}, 3},
    {Message_Buttons::Yes_No_Cancel, {Yes, No, Cancel}, 3},
    {Message_Buttons::Yes_No, {Yes, No}, 2},
    {Message_Buttons::Retry_Cancel, {Retry, Cancel}, 2},
};

constexpr int Style_Bits = 15, Icon_Bits = 0x70, Default_Bits = 0x300, Default_Step = 0x100;

const Style_Row& Style_Of(int buttons)
{
    const auto style = std::size_t(buttons & Style_Bits);
    return style < std::size(Styles) ? Styles[style] : Styles[0];
}

Message_Icon Icon_Of(int buttons)
{
    switch (buttons & Icon_Bits) {
    case 16: return Message_Icon::Critical;
    case 32: return Message_Icon::Question;
    case 48: return Message_Icon::Exclamation;
    case 64: return Message_Icon::Information;
    default: return Message_Icon::None;
    }
}

/// The first button where the style has no button of that place.
Message_Answer Standard_Of(int buttons)
{
    const Style_Row& style = Style_Of(buttons);
    const int place = (buttons & Default_Bits) / Default_Step;
    return style.answers[place < style.count ? std::size_t(place) : 0];
}

/// The numbers that formulas compare with: never renumber.
int Number_Of(Message_Answer answer)
{
    switch (answer) {
    case Ok: return 1;
    case Cancel: return 2;
    case Abort: return 3;
    case Retry: return 4;
    case Ignore: return 5;
    case Yes: return 6;
    case No: return 7;
    }
    return 1;
}

QString Title_Of(const QString& title)
{
    return title.isEmpty() ? QStringLiteral("Halvine") : title;
}

} // namespace

QString Platform_Host::Input_Box(const Host_Input_Question& question)
{
    return platform_.dialogs
        .Input({.prompt = question.prompt, .title = Title_Of(question.title), .text = question.text})
        .value_or(QString());
}

int Platform_Host::Message_Box(const Host_Message& message)
{
    return Number_Of(platform_.dialogs.Ask({.text = message.prompt,
                                            .buttons = Style_Of(message.buttons).buttons,
                                            .standard = Standard_Of(message.buttons),
                                            .icon = Icon_Of(message.buttons),
                                            .title = Title_Of(message.title)}));
}

} // namespace Formula
