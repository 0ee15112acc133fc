#pragma once

#include "catalogue/Catalogue_Commands.h"
#include "frame/Recent_List.h"
#include "slides/Slide_Player.h"

/// Asks for the times of pictures. Gets their indices, their times in seconds in the same order (0 is the show's time) and
/// the show's time; changes the times. False when cancelled.
using Slide_Time_Dialog = std::function<bool(const std::vector<int>& Slide_Time_Picture_Index,
                                             std::vector<float>& Picture_Slide_Time, float Default_Slide_Time)>;

/// The commands of the Slides menu. Brings their handlers to the main window's commands.
class Slide_Commands {
public:
    /// All must outlive the commands.
    Slide_Commands(Halvine_Form& form, Slide_Shows& shows, Slide_Player& player, Program_State& program,
                   Recent_List& recent)
        : form_(form), shows_(shows), player_(player), program_(program), recent_(recent)
    {}

    void Bring_To(Catalogue_Commands& commands);

    /// Opens a show, or asks for one when the name is empty. The time of its pictures is as Slide_Shows tells.
    void Open(const QString& file, bool append);

    /// Without one, "Set Slide Times..." answers that it is not there yet.
    void Set_Slide_Time_Dialog(Slide_Time_Dialog dialog) { time_dialog_ = std::move(dialog); }

    void Set_Slide_Times();
    /// The times of a list of pictures become those of their records. An open show counts as modified then.
    void Apply_Slide_Times(std::span<const int> indices, std::span<const float> seconds);

    /// Asks until a number above 0 and below 30 is given, or the box is cancelled.
    void Ask_Display_Interval();

private:
    void Save(bool selected_only);
    void Show_File_Name();
    Platform& Ports() const { return form_.State().platform; }

    Halvine_Form& form_;
    Slide_Shows& shows_;
    Slide_Player& player_;
    Program_State& program_;
    Recent_List& recent_;
    Slide_Time_Dialog time_dialog_;
};
