#include "controls/Button_Panel_Model.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int Left_Button = 1;
constexpr int Shift_Key = 1;
constexpr int Control_Key = 2;

} // namespace

void Button_Panel_Model::Set_DisplayStyle(int New_Style)
{
    display_style_ = New_Style;
    if (New_Style == Flat_Display_Style) Set_ButtonMode(0);
}

void Button_Panel_Model::Set_ButtonMode(int New_Mode)
{
    if (New_Mode < int(Panel_Mode::Stateless) || New_Mode > int(Panel_Mode::Several)) return;
    mode_ = display_style_ == Flat_Display_Style ? Panel_Mode::Stateless : Panel_Mode(New_Mode);
    if (mode_ == Panel_Mode::Stateless)
        for (auto& button : buttons_) button.down = false;
}

void Button_Panel_Model::Set_ScrollState(int New_State)
{
    if (New_State >= 0 && New_State <= 3) scroll_state_ = New_State;
}

Panel_Button* Button_Panel_Model::Find(int Button_ID)
{
    return const_cast<Panel_Button*>(std::as_const(*this).Find(Button_ID));
}

const Panel_Button* Button_Panel_Model::Find(int Button_ID) const
{
    const auto found = std::find_if(buttons_.begin(), buttons_.end(),
                                    [&](const auto& button) { return !button.spacer && button.id == Button_ID; });
    return found == buttons_.end() ? nullptr : &*found;
}

bool Button_Panel_Model::Add_Button(int Button_ID, const QString& Tooltip, bool Initial_State, bool Enabled,
                                    int Add_As_Index)
{
    if (Has(Button_ID)) return false;
    auto place = buttons_.end();
    if (Add_As_Index > 0) {
        int index = 0; // spacers do not count
        place = std::find_if(buttons_.begin(), buttons_.end(),
                             [&](const auto& button) { return !button.spacer && ++index == Add_As_Index; });
    }
    buttons_.insert(place, {.id = Button_ID, .tooltip = Tooltip, .enabled = Enabled});
    if (Initial_State) Set_ButtonState(Button_ID, true);
    return true;
}

void Button_Panel_Model::Add_Spacer()
{
    buttons_.push_back({.spacer = true});
}

bool Button_Panel_Model::Remove_Button(int Button_ID)
{
    return std::erase_if(buttons_, [&](const auto& button) { return !button.spacer && button.id == Button_ID; }) > 0;
}

bool Button_Panel_Model::ButtonID(int Old_ID, int New_ID)
{
    auto* button = Find(Old_ID);
    if (!button || (Old_ID != New_ID && Has(New_ID))) return false;
    button->id = New_ID;
    return true;
}

bool Button_Panel_Model::Exchange(int Button_ID, int Partner_ID)
{
    auto* button = Find(Button_ID);
    auto* partner = Find(Partner_ID);
    if (!button || !partner) return false;
    std::swap(*button, *partner);
    std::swap(button->visible, partner->visible); // a place stays visible or hidden, whoever stands there
    return true;
}

void Button_Panel_Model::Set_Visible(int Button_ID, bool New_Visible)
{
    if (auto* button = Find(Button_ID)) button->visible = New_Visible;
}

bool Button_Panel_Model::ButtonState(int Button_ID) const
{
    const auto* button = Find(Button_ID);
    return button && button->down;
}

void Button_Panel_Model::Release_Others(int Button_ID)
{
    for (auto& button : buttons_)
        if (button.id != Button_ID) button.down = false;
}

// A group is what stands between two spacers.
void Button_Panel_Model::Release_Group(int Button_ID)
{
    const auto own = std::find_if(buttons_.begin(), buttons_.end(),
                                  [&](const auto& button) { return !button.spacer && button.id == Button_ID; });
    const auto is_spacer = [](const auto& button) { return button.spacer; };
    const auto first = std::find_if(std::make_reverse_iterator(own), buttons_.rend(), is_spacer).base();
    const auto last = std::find_if(own, buttons_.end(), is_spacer);
    for (auto button = first; button != last; ++button)
        if (button != own) button->down = false;
}

void Button_Panel_Model::Set_ButtonState(int Button_ID, bool New_State)
{
    auto* button = Find(Button_ID);
    if (!button || mode_ == Panel_Mode::Stateless) return;
    button->down = New_State;
    if (!New_State) return;
    if (mode_ == Panel_Mode::One_Of_Many || mode_ == Panel_Mode::One_Or_None) Release_Others(Button_ID);
    if (mode_ == Panel_Mode::One_Of_Groups) Release_Group(Button_ID);
}

bool Button_Panel_Model::Enabled(int Button_ID) const
{
    const auto* button = Find(Button_ID);
    return button && button->enabled;
}

void Button_Panel_Model::Set_Enabled(int Button_ID, bool New_Enabled)
{
    if (auto* button = Find(Button_ID)) button->enabled = New_Enabled;
}

QString Button_Panel_Model::Tooltip(int Button_ID) const
{
    const auto* button = Find(Button_ID);
    return button ? button->tooltip : QString();
}

void Button_Panel_Model::Set_Tooltip(int Button_ID, const QString& New_Tooltip)
{
    if (auto* button = Find(Button_ID)) button->tooltip = New_Tooltip;
}

int Button_Panel_Model::Get_Selected_Button_ID() const
{
    for (const auto& button : buttons_)
        if (button.down) return button.id;
    return 0;
}

std::vector<int> Button_Panel_Model::Get_ID_List() const
{
    std::vector<int> ids;
    for (const auto& button : buttons_)
        if (!button.spacer) ids.push_back(button.id);
    return ids;
}

std::vector<int> Button_Panel_Model::Get_Selected_ID_List() const
{
    std::vector<int> ids;
    for (const auto& button : buttons_)
        if (button.down) ids.push_back(button.id);
    return ids;
}

int Button_Panel_Model::Anchor() const
{
    const auto down = Get_Selected_ID_List();
    return down.size() == 1 ? down.front() : 0;
}

void Button_Panel_Model::Press_Several(Panel_Button& button, int Shift)
{
    const auto* anchor = Find(Anchor());
    if ((Shift & Shift_Key) != 0 && anchor && anchor->down) {
        const auto* first = std::min(anchor, static_cast<const Panel_Button*>(&button));
        const auto* last = std::max(anchor, static_cast<const Panel_Button*>(&button));
        for (auto& other : buttons_) other.down = !other.spacer && &other >= first && &other <= last;
        return;
    }
    if ((Shift & Control_Key) != 0) {
        button.down = !button.down;
        return;
    }
    button.down = true;
    Release_Others(button.id);
}

Button_Panel_Model::Click Button_Panel_Model::Press(int Button, int Shift, int Button_ID)
{
    auto* button = Find(Button_ID);
    if (!button || !button->enabled || !button->visible) return {Button, Shift, false, 0};
    if (Button == Left_Button) {
        switch (mode_) {
        case Panel_Mode::Stateless: break;
        case Panel_Mode::Toggle:
        case Panel_Mode::Independent:
        case Panel_Mode::One_Or_None: Set_ButtonState(Button_ID, !button->down); break;
        case Panel_Mode::One_Of_Many:
        case Panel_Mode::One_Of_Groups: Set_ButtonState(Button_ID, true); break;
        case Panel_Mode::Several: Press_Several(*button, Shift); break;
        }
    }
    return {Button, Shift, button->down, Button_ID};
}

bool Button_Panel_Model::Rearrange(int Button_ID, int Before_ID)
{
    if (!Properties.AllowRearrange || Button_ID == Before_ID || !Has(Button_ID)) return false;
    if (Before_ID != 0 && !Has(Before_ID)) return false;
    const auto moved = *Find(Button_ID);
    Remove_Button(Button_ID);
    const auto* before = Before_ID == 0 ? nullptr : Find(Before_ID);
    buttons_.insert(before ? buttons_.begin() + (before - buttons_.data()) : buttons_.end(), moved);
    return true;
}
