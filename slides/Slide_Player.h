#pragma once

#include "catalogue/Catalogue_State.h"
#include "catalogue/Picture_Pictures.h"
#include "frame/Program_State.h"
#include "slides/Slide_Shows.h"

#include <vector>

/// What the control window and the keys of a running show ask for. Windows pass these numbers.
enum class Slide_Control_Code : int {
    Play = 0,
    Pause = 1, ///< toggles
    Stop = 2,
    Previous = 3,
    Next = 4,
    Select = 5,
    Remove = 6, ///< from the show and from the selection
};

/// The small window with the buttons, as the player sees it. Slides are counted from 1.
class Slide_Control_Window {
public:
    virtual ~Slide_Control_Window() = default;
    virtual void Form_Display(int /*Slide_Index*/, int /*Slide_Count*/, bool /*Start_In_Play_Mode*/) {}
    virtual void Set_Slide_Index(int /*Slide_Index*/) {}
    virtual void Set_Slide_Count(int /*Slide_Count*/) {}
    virtual void Set_Playing(bool /*playing*/) {}
    virtual void Form_Erase() {}
};

/// The main window, as the player sees it.
class Slide_Main_Window {
public:
    virtual ~Slide_Main_Window() = default;
    virtual bool Is_Busy() const { return false; } ///< a command is running
    virtual bool Is_Full_Window() const { return false; }
    virtual void Set_Full_Window(bool /*on*/) {} ///< off also gives the window back its state of before the show
    /// A black ground behind the picture and the button that stops, or the usual ones.
    virtual void Set_Show_Look(bool /*running*/) {}
};

/// How long a slide is shown. A picture's own time counts from 0.01 seconds on. A show file may hold any number as the
/// time of all others: what is not above 0 counts as the program's default, and no time is below a millisecond or above
/// what a timer takes.
int Slide_Milliseconds(float picture_seconds, float show_seconds);

/// Steps through pictures of the catalogue, each as the current picture for its time. Stopped, playing or paused; paused
/// is the timer being off. Sounds of a show are counted and not played.
class Slide_Player {
public:
    Slide_Player(Catalogue_State& catalogue, Picture_Pictures& pictures, const Slide_Shows& shows,
                 const Program_State& program);

    /// Both must outlive the player; null for none.
    void Set_Windows(Slide_Main_Window* window, Slide_Control_Window* control);

    /// Two or more selected pictures are the show, otherwise all; a single selected one is the first slide. Nothing while
    /// a show is running.
    void Start_Slide_Show(bool Start_In_Play_Mode);
    void Stop_Slide_Show();

    /// A Slide_Control_Code as a number; others, and a stopped show, do nothing. The slide meant is the one that is shown.
    void Slide_Show_Control(int New_Slide_Show_Control, int New_Slide_Index);
    bool Slide_Show_Test_Slide_Selected(int Slide_Index) const;

    /// Pictures that have left the catalogue leave the show; when the shown one is among them, the next one comes up.
    void Forget_Removed();

    bool Is_Running() const { return !slide_keys_.empty(); }
    bool Is_Paused() const { return Is_Running() && !timer_->Is_On(); }
    std::vector<int> Slide_Indices() const; ///< indices in the list of pictures
    int Slide_Show_Count() const { return int(slide_keys_.size()); }
    int Slide_Index() const { return slide_index_; } ///< from 1
    int Slide_Sound_Index() const { return slide_sound_index_; }
    bool Slide_Selection_Made() const { return slide_selection_made_; }
    int Picture_Key_Of_Slide(int Slide_Index) const; ///< 0 for none

    bool Slide_Continuous = false;    ///< "Continuous Display"
    bool Display_Full_Window = false; ///< looked at when a show starts

private:
    enum class Arm { No, Yes };
    void Build_List(const std::vector<int>& indices);
    void Find_First_Slide();
    void Show_Slide(Arm arm);
    void Step(int slides, Arm arm);
    int Slide_After(int slides) const; // from 1, going round
    bool Next_Is_Ready();
    void Tick();
    void Play();
    void Toggle_Pause();
    void Select_Slide();
    void Remove_Slide();
    void Select_Alone(int key);
    void Read_Ahead();
    int Count() const { return Slide_Show_Count(); }

    Catalogue_State& catalogue_;
    Picture_Pictures& pictures_;
    const Slide_Shows& shows_;
    const Program_State& program_;
    Slide_Main_Window no_window_;
    Slide_Control_Window no_control_;
    Slide_Main_Window* window_ = &no_window_;
    Slide_Control_Window* control_ = &no_control_;
    std::unique_ptr<Repeating_Timer> timer_;       // Slide_Show_Timer
    std::unique_ptr<Repeating_Timer> ahead_timer_; // in the quiet after a slide came up, for the next one
    std::vector<int> slide_keys_;                  // keys, since indices shift when a picture is discarded
    bool from_selection_ = false;
    int slide_index_ = 0;
    int slide_sound_index_ = 1;
    int due_key_ = 0;   // of the slide that a tick waits for
    int direction_ = 1; // of the last step, which the next one by hand is likely to go on
    bool slide_selection_made_ = false;
};
