#include "frame/program/Slide_Wiring.h"

Slide_Wiring::Slide_Wiring(Halvine_Form& form, Halvine_Window& window, Program_State& program, Platform& platform,
                           const std::function<QIcon(const QString& id)>& icon)
    : form_(form),
      window_(window),
      shell_(platform.shell),
      recent_shows_(platform.settings, QStringLiteral("Recent-Show")),
      recent_folders_(platform.settings, QStringLiteral("Recent-Folder")),
      shows_(form.State(), form.Picking(), program),
      player_(form.State(), form.Pictures(), shows_, program),
      commands_(form, shows_, player_, program, recent_shows_),
      control_form_(form, platform, icon, &window),
      full_screen_(window, control_form_,
                   [this](Slide_Control_Code code) { player_.Slide_Show_Control(int(code), player_.Slide_Index()); })
{
    form_.Set_Slide_Show(&forwarder_);
    player_.Set_Windows(this, &control_form_);
    commands_.Bring_To(window_.Commands());
    window_.Set_Slide_Show_Opener(
        [this](const QString& path) { commands_.Open(QDir::current().absoluteFilePath(path), false); });
    window_.Commands().Set_Picked_From([this](const QString& folder) { recent_folders_.Add(folder); });
    new Recent_Menu(window_.Menu_Of(Menu::Slides), recent_shows_, [this](const QString& path) {
        window_.Commands().Run_Unlisted([&] { commands_.Open(path, false); });
    });
    new Recent_Menu(window_.Menu_Of(Menu::File), recent_folders_, [this](const QString& path) {
        window_.Commands().Run_Unlisted([&] { window_.Explorer().Set_Path(path); });
    });
}

Slide_Wiring::~Slide_Wiring()
{
    player_.Stop_Slide_Show();
    player_.Set_Windows(nullptr, nullptr);
    form_.Set_Slide_Show(nullptr);
}

void Slide_Wiring::Set_Full_Window(bool on)
{
    if (!on) full_screen_.End();
    window_.Set_Full_Window_View(on);
    if (on) full_screen_.Begin();
}

void Slide_Wiring::Set_Show_Look(bool running)
{
    window_.Set_Slide_Show_Look(running);
    shell_.Hold_Off_Screen_Saver(running);
}
