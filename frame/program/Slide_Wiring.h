#pragma once

#include "catalogue/ui/Halvine_Window.h"
#include "frame/program/Recent_Menu.h"
#include "slides/Slide_Commands.h"
#include "slides/Slide_Show_Forwarder.h"
#include "slides/ui/Full_Screen_Show.h"
#include "slides/ui/Slide_Show_Control_Form.h"

/// Puts the slide shows and the main window together, which do not know each other: the commands of the Slides menu, the
/// start with a show, the control window, the whole screen, and the lists of recent shows and folders. Everything that it
/// is given must outlive it.
class Slide_Wiring : private Slide_Main_Window {
public:
    Slide_Wiring(Halvine_Form& form, Halvine_Window& window, Program_State& program, Platform& platform,
                 const std::function<QIcon(const QString& id)>& icon);
    ~Slide_Wiring() override;
    Slide_Wiring(const Slide_Wiring&) = delete;
    Slide_Wiring& operator=(const Slide_Wiring&) = delete;

    Slide_Commands& Commands() { return commands_; }
    Slide_Player& Player() { return player_; }
    Slide_Shows& Shows() { return shows_; }
    Slide_Show_Control_Form& Control_Form() { return control_form_; }

private:
    // Slide_Main_Window.
    bool Is_Busy() const override { return window_.Commands().Is_Busy(); }
    bool Is_Full_Window() const override { return window_.Is_In_Full_Window_View(); }
    void Set_Full_Window(bool on) override;
    void Set_Show_Look(bool running) override;

    Halvine_Form& form_;
    Halvine_Window& window_;
    Shell& shell_;
    Recent_List recent_shows_;
    Recent_List recent_folders_;
    Slide_Shows shows_;
    Slide_Player player_;
    Slide_Show_Forwarder forwarder_{shows_, player_};
    Slide_Commands commands_;
    Slide_Show_Control_Form control_form_;
    Full_Screen_Show full_screen_;
};
