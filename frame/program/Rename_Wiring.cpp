#include "frame/program/Rename_Wiring.h"

Rename_Wiring::Rename_Wiring(Halvine_Form& form, Halvine_Window& window, Program_State& program,
                             const std::string& journal_folder)
    : windows_(form, program),
      journal_(journal_folder),
      commands_(
          {.form = form, .dialogs = windows_, .files = files_, .journal = journal_, .show_file_changes = [&window] {
               window.Show_File_Changes();
           }})
{
    commands_.Bring_To(window.Commands());
}

void Rename_Wiring::Bring_Slide_Times(Slide_Commands& slides)
{
    slides.Set_Slide_Time_Dialog(
        [this](const std::vector<int>& indices, std::vector<float>& seconds, float default_seconds) {
            return windows_.Slide_Time_Dialog(indices, seconds, default_seconds);
        });
}
