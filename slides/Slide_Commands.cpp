#include "slides/Slide_Commands.h"

#include "catalogue/Modifications.h"
#include "frame/text/Text_Utilities.h"

#include <algorithm>

namespace {

constexpr float Too_Long_Seconds = 30; // settings take 30 itself as well, the box does not

std::optional<float> Interval_From(const QString& text)
{
    if (!Is_Signed_Decimal(text)) return std::nullopt;
    const auto seconds = Single_From_Text(text);
    return seconds && *seconds > 0 && *seconds < Too_Long_Seconds ? seconds : std::nullopt;
}

} // namespace

void Slide_Commands::Bring_To(Catalogue_Commands& commands)
{
    const auto bring = [&commands](int number, std::function<void()> handler) {
        commands.Set_Handler({Menu::Slides, number}, std::move(handler));
    };
    bring(101, [this] { Open({}, false); });
    bring(102, [this] { Open({}, true); });
    bring(103, [this] { Set_Slide_Times(); });
    bring(201, [this] { Save(false); });
    bring(202, [this] { Save(true); });
    bring(203, [this] { shows_.Copy_Slide_Show_As(false); });
    bring(204, [this] { shows_.Copy_Slide_Show_As(true); });
    bring(301, [this] { Ask_Display_Interval(); });
    bring(302, [this] { player_.Display_Full_Window = !player_.Display_Full_Window; });
    bring(303, [this] { player_.Slide_Continuous = !player_.Slide_Continuous; });
    bring(401, [this] { player_.Start_Slide_Show(true); });
    bring(402, [this] { player_.Stop_Slide_Show(); });
    commands.Set_Check({Menu::Slides, 302}, [this] { return player_.Display_Full_Window; });
    commands.Set_Check({Menu::Slides, 303}, [this] { return player_.Slide_Continuous; });
}

void Slide_Commands::Open(const QString& file, bool append)
{
    if (shows_.Open_Slide_Show(file, append, /*Pick_Pictures=*/true)) Show_File_Name();
}

void Slide_Commands::Save(bool selected_only)
{
    if (shows_.Save_Slide_Show(selected_only)) Show_File_Name();
}

/// In the caption and in the list of recent shows.
void Slide_Commands::Show_File_Name()
{
    recent_.Add(shows_.Slide_Show_File_Name());
    form_.State().view->Update_Status();
}

void Slide_Commands::Set_Slide_Times()
{
    if (!time_dialog_) {
        Ports().dialogs.Refuse(QStringLiteral("Feature Not Implemented"));
        return;
    }
    const Catalogue_State& state = form_.State();
    const std::vector<int> indices = All_Or_Selected(state, state.selection.Is_Empty());
    if (indices.empty()) return;
    std::vector<float> seconds;
    for (const int index : indices) seconds.push_back(state.pictures.Item(index).Interval_In_Seconds);
    if (time_dialog_(indices, seconds, program_.Slide_Display_Interval)) Apply_Slide_Times(indices, seconds);
}

void Slide_Commands::Apply_Slide_Times(std::span<const int> indices, std::span<const float> seconds)
{
    Catalogue_State& state = form_.State();
    bool changed = false;
    state.platform.shell.Show_Busy_Pointer(true);
    for (std::size_t i = 0; i < std::min(indices.size(), seconds.size()); ++i) {
        if (!state.pictures.Is_Index(indices[i])) continue;
        float& interval = state.pictures.Item(indices[i]).Interval_In_Seconds;
        changed = changed || interval != seconds[i];
        interval = seconds[i];
    }
    state.platform.shell.Show_Busy_Pointer(false);
    if (changed) shows_.Set_File_Modified();
}

void Slide_Commands::Ask_Display_Interval()
{
    const QString hint = QStringLiteral("\rOr press [Esc] or click cancel.");
    Input_Question question{.prompt = QStringLiteral("Display interval for each slide, in seconds\r"
                                                     "(must be less than 30 seconds)"),
                            .title = QStringLiteral("Slide display time interval"),
                            .text = Seconds_Text(program_.Slide_Display_Interval)};
    while (const auto answer = Ports().dialogs.Input(question)) {
        if (const auto seconds = Interval_From(answer->trimmed())) {
            program_.Slide_Display_Interval = *seconds;
            return;
        }
        Ports().shell.Beep();
        if (!question.prompt.endsWith(hint)) question.prompt += hint;
    }
}
