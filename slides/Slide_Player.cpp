#include "slides/Slide_Player.h"

#include "catalogue/Selection_For_Function.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr int Pictures_That_Are_A_Choice = 2; // fewer selected ones are no show
constexpr float Shortest_Own_Seconds = 0.01F;
constexpr double Longest_Milliseconds = std::numeric_limits<int>::max();
constexpr int Quiet_Milliseconds = 20; // until the slide stands on the screen
constexpr int Wait_Milliseconds = 10;  // for the next slide, when its time came before it was ready

} // namespace

int Slide_Milliseconds(float picture_seconds, float show_seconds)
{
    float seconds = picture_seconds;
    if (!(seconds > Shortest_Own_Seconds)) seconds = show_seconds;
    if (!(seconds > 0)) seconds = Program_State().Slide_Display_Interval;
    return int(std::clamp(std::nearbyint(double(seconds) * 1000), 1.0, Longest_Milliseconds));
}

Slide_Player::Slide_Player(Catalogue_State& catalogue, Picture_Pictures& pictures, const Slide_Shows& shows,
                           const Program_State& program)
    : catalogue_(catalogue),
      pictures_(pictures),
      shows_(shows),
      program_(program),
      timer_(catalogue.platform.make_timer([this] { Tick(); })),
      ahead_timer_(catalogue.platform.make_timer([this] { Read_Ahead(); }))
{}

void Slide_Player::Set_Windows(Slide_Main_Window* window, Slide_Control_Window* control)
{
    window_ = window != nullptr ? window : &no_window_;
    control_ = control != nullptr ? control : &no_control_;
}

std::vector<int> Slide_Player::Slide_Indices() const
{
    std::vector<int> indices;
    for (const int key : slide_keys_) indices.push_back(catalogue_.pictures.Index_From_Key(key));
    return indices;
}

int Slide_Player::Picture_Key_Of_Slide(int Slide_Index) const
{
    return Slide_Index >= 1 && Slide_Index <= Count() ? slide_keys_[std::size_t(Slide_Index - 1)] : 0;
}

bool Slide_Player::Slide_Show_Test_Slide_Selected(int Slide_Index) const
{
    return catalogue_.selection.Test_Key(Picture_Key_Of_Slide(Slide_Index));
}

void Slide_Player::Build_List(const std::vector<int>& indices)
{
    slide_keys_.clear();
    for (const int index : indices) slide_keys_.push_back(catalogue_.pictures.Item(index).Picture_Key);
}

void Slide_Player::Find_First_Slide()
{
    slide_index_ = 1;
    if (catalogue_.selection.Count() != 1) return;
    const auto slide = std::find(slide_keys_.begin(), slide_keys_.end(), catalogue_.selection.Selected_Keys().front());
    if (slide != slide_keys_.end()) slide_index_ = int(slide - slide_keys_.begin()) + 1;
}

void Slide_Player::Start_Slide_Show(bool Start_In_Play_Mode)
{
    if (Is_Running()) return;
    Build_List(Pictures_For_Function(catalogue_, {.minimum = Pictures_That_Are_A_Choice}));
    if (!Is_Running()) return;
    from_selection_ = catalogue_.selection.Count() >= Pictures_That_Are_A_Choice;
    if (window_->Is_Full_Window() != Display_Full_Window) window_->Set_Full_Window(Display_Full_Window);
    Find_First_Slide();
    slide_sound_index_ = 1;
    slide_selection_made_ = false;
    direction_ = 1;
    due_key_ = 0;
    window_->Set_Show_Look(true);
    Show_Slide(Start_In_Play_Mode ? Arm::Yes : Arm::No);
    if (slide_sound_index_ <= shows_.Sounds().size()) ++slide_sound_index_;
    control_->Form_Display(slide_index_, Count(), Start_In_Play_Mode);
}

void Slide_Player::Stop_Slide_Show()
{
    if (!Is_Running()) return;
    const int last_shown = Picture_Key_Of_Slide(slide_index_);
    slide_keys_.clear();
    timer_->Stop();
    ahead_timer_->Stop();
    pictures_.Next().Begin(0);
    window_->Set_Show_Look(false);
    if (window_->Is_Full_Window()) window_->Set_Full_Window(false);
    if (!slide_selection_made_) Select_Alone(last_shown);
    catalogue_.view->Draw_All_Thumbnails();
    catalogue_.view->Update_Status();
    control_->Form_Erase();
}

/// A picture that was discarded leaves the selection as it is.
void Slide_Player::Select_Alone(int key)
{
    const int index = catalogue_.pictures.Index_From_Key(key);
    if (!catalogue_.pictures.Is_Index(index)) return;
    catalogue_.selection.Clear();
    catalogue_.selection.Set_Index(index, true);
    catalogue_.view->Scroll_To_Index(index);
}

void Slide_Player::Show_Slide(Arm arm)
{
    const int index = catalogue_.pictures.Index_From_Key(Picture_Key_Of_Slide(slide_index_));
    pictures_.Set_Current_Picture(index);
    if (arm == Arm::Yes && catalogue_.pictures.Is_Index(index))
        timer_->Start(
            Slide_Milliseconds(catalogue_.pictures.Item(index).Interval_In_Seconds, program_.Slide_Display_Interval));
    ahead_timer_->Start(Quiet_Milliseconds);
}

void Slide_Player::Read_Ahead()
{
    ahead_timer_->Stop();
    const int next = Slide_After(timer_->Is_On() ? 1 : direction_);
    if (next != slide_index_) pictures_.Next().Begin(Picture_Key_Of_Slide(next));
}

int Slide_Player::Slide_After(int slides) const
{
    return (Count() + slide_index_ - 1 + slides) % Count() + 1;
}

void Slide_Player::Step(int slides, Arm arm)
{
    direction_ = slides;
    slide_index_ = Slide_After(slides);
    due_key_ = 0;
    Show_Slide(arm);
    control_->Set_Slide_Index(slide_index_);
}

void Slide_Player::Forget_Removed()
{
    const auto is_gone = [this](int key) { return catalogue_.pictures.Find(key) == nullptr; };
    const auto shown = slide_keys_.begin() + std::max(slide_index_ - 1, 0);
    if (std::none_of(slide_keys_.begin(), slide_keys_.end(), is_gone)) return;
    const bool shown_is_gone = is_gone(*shown);
    slide_index_ -= int(std::count_if(slide_keys_.begin(), shown, is_gone));
    std::vector<int> left = slide_keys_;
    std::erase_if(left, is_gone);
    if (left.empty()) {
        Stop_Slide_Show();
        return;
    }
    const bool playing = timer_->Is_On();
    slide_keys_ = std::move(left);
    slide_index_ = std::min(slide_index_, Count()); // what followed the slide has taken its place
    control_->Set_Slide_Count(Count());
    if (shown_is_gone) Show_Slide(playing ? Arm::Yes : Arm::No);
    control_->Set_Slide_Index(slide_index_);
}

void Slide_Player::Tick()
{
    if (!Is_Running() || window_->Is_Busy()) return; // the timer goes on, and a later tick finds the command done
    if (slide_index_ == Count() && !Slide_Continuous)
        Stop_Slide_Show();
    else if (Next_Is_Ready())
        Step(1, Arm::Yes);
    else
        timer_->Start(Wait_Milliseconds);
}

/// A slide whose time is over stays until the next one is made aside, so that the window answers meanwhile.
bool Slide_Player::Next_Is_Ready()
{
    const int next = Slide_After(1);
    if (next == slide_index_) return true;
    const int key = Picture_Key_Of_Slide(next);
    if (std::exchange(due_key_, key) != key) pictures_.Next().Begin(key); // once: a file may grow all the time
    return !pictures_.Next().Is_Being_Made(key);
}

void Slide_Player::Slide_Show_Control(int New_Slide_Show_Control, int /*New_Slide_Index*/)
{
    if (!Is_Running()) return;
    switch (Slide_Control_Code(New_Slide_Show_Control)) {
    case Slide_Control_Code::Play: Play(); break;
    case Slide_Control_Code::Pause: Toggle_Pause(); break;
    case Slide_Control_Code::Stop: Stop_Slide_Show(); break;
    case Slide_Control_Code::Previous: Step(-1, Arm::No); break;
    case Slide_Control_Code::Next: Step(1, Arm::No); break;
    case Slide_Control_Code::Select: Select_Slide(); break;
    case Slide_Control_Code::Remove: Remove_Slide(); break;
    }
}

void Slide_Player::Play()
{
    Show_Slide(Arm::Yes);
    control_->Set_Playing(true);
}

void Slide_Player::Toggle_Pause()
{
    if (Is_Paused()) {
        Play();
        return;
    }
    timer_->Stop();
    control_->Set_Playing(false);
}

void Slide_Player::Select_Slide()
{
    Catalogue_View& view = *catalogue_.view;
    const bool draws = !window_->Is_Full_Window();
    if (!slide_selection_made_) {
        if (!Display_Full_Window)
            for (const int index : catalogue_.selection.Selected_Indices()) view.Set_Thumbnail_Frame(index, false);
        catalogue_.selection.Clear();
    }
    const int index = catalogue_.pictures.Index_From_Key(Picture_Key_Of_Slide(slide_index_));
    const bool selected = !catalogue_.selection.Test_Index(index);
    catalogue_.selection.Set_Index(index, selected);
    if (draws) view.Set_Thumbnail_Frame(index, selected);
    slide_selection_made_ = true;
    view.Update_Status();
    control_->Set_Slide_Index(slide_index_);
}

/// A show of all pictures has no selection behind it: the slide then leaves the show alone.
void Slide_Player::Remove_Slide()
{
    if (slide_selection_made_ || Count() <= 1) return;
    const int key = Picture_Key_Of_Slide(slide_index_);
    const int index = catalogue_.pictures.Index_From_Key(key);
    if (catalogue_.selection.Set_Key(key, false)) catalogue_.view->Set_Thumbnail_Frame(index, false);
    if (from_selection_)
        Build_List(catalogue_.selection.Selected_Indices());
    else
        std::erase(slide_keys_, key);
    if (!Is_Running()) slide_keys_ = {key}; // the user emptied the selection meanwhile: this slide stays
    control_->Set_Slide_Count(Count());
    slide_index_ = (slide_index_ - 1) % Count() + 1;
    Show_Slide(Arm::No);
    catalogue_.view->Update_Status();
    control_->Set_Slide_Index(slide_index_);
}
