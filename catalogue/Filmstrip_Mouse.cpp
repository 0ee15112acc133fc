#include "catalogue/Filmstrip_Mouse.h"

#include <algorithm>

namespace {

void Select_Only(Halvine_Form& form, int index)
{
    form.Set_Picture_Selected(0, false);
    form.Set_Picture_Selected(index, true);
}

/// The anchor is the picture that was selected first; it stays, and so does the order from it to here.
void Select_From_Anchor(Halvine_Form& form, int index)
{
    const std::vector<int> selected = form.State().selection.Selected_Indices();
    if (selected.empty()) {
        form.Set_Picture_Selected(index, true);
        return;
    }
    const int anchor = selected.front();
    for (auto place = selected.begin() + 1; place != selected.end(); ++place) form.Set_Picture_Selected(*place, false);
    const int step = index < anchor ? -1 : 1;
    for (int next = anchor; next != index + step; next += step) form.Set_Picture_Selected(next, true);
}

void Toggle(Halvine_Form& form, int index)
{
    form.Set_Picture_Selected(index, !form.Test_Picture_Selected(index));
}

int Target_Of(const Filmstrip_Layout& layout, int cursor, Strip_Key key)
{
    const int columns = layout.Thumbnails_Per_Row();
    const int page = columns * std::max(layout.Thumbnail_Rows() - 1, 1);
    const int last = layout.Count();
    if (cursor < 1 || cursor > last) return key == Strip_Key::End ? last : 1;
    switch (key) {
    case Strip_Key::Left: return std::max(cursor - 1, 1);
    case Strip_Key::Right: return std::min(cursor + 1, last);
    case Strip_Key::Up: return cursor > columns ? cursor - columns : cursor;
    case Strip_Key::Down:
        // From the row above an incomplete last row the last picture is the nearest one below.
        if (layout.Row_Of(cursor) == layout.Row_Of(last)) return cursor;
        return std::min(cursor + columns, last);
    case Strip_Key::Home: return 1;
    case Strip_Key::End: return last;
    case Strip_Key::Page_Up: return cursor > page ? cursor - page : (cursor - 1) % columns + 1;
    case Strip_Key::Page_Down: return std::min(cursor + page, last);
    case Strip_Key::Space:
    case Strip_Key::Enter: break;
    }
    return cursor;
}

} // namespace

Strip_Action Press_Cell(Halvine_Form& form, int index, Strip_Button button, Strip_Modifiers modifiers)
{
    if (!form.State().pictures.Is_Index(index)) return {};
    if (button == Strip_Button::Right) {
        if (!form.Test_Picture_Selected(index)) Select_Only(form, index);
    } else if (modifiers.control) {
        Toggle(form, index);
    } else if (modifiers.shift) {
        Select_From_Anchor(form, index);
    } else {
        Select_Only(form, index);
    }
    form.State().view->Update_Status();
    return {.current_index = index, .opens_popup = button == Strip_Button::Right, .cursor_index = index};
}

Strip_Action Press_Key(Halvine_Form& form, const Filmstrip_Layout& layout, int cursor_index, Strip_Key key,
                       Strip_Modifiers modifiers)
{
    if (layout.Count() < 1) return {};
    const int target = Target_Of(layout, cursor_index, key);
    Strip_Action action{.current_index = target, .cursor_index = target};
    if (key == Strip_Key::Space) {
        Toggle(form, target);
    } else if (key == Strip_Key::Enter) {
        action.blows_up = true;
    } else if (modifiers.shift) {
        Select_From_Anchor(form, target);
    } else if (modifiers.control) {
        action.current_index = 0;
    } else {
        Select_Only(form, target);
    }
    form.State().view->Update_Status();
    return action;
}
