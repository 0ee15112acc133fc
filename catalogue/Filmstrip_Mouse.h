#pragma once

#include "catalogue/Filmstrip_Layout.h"
#include "catalogue/Halvine_Form.h"

/// What clicks and keys do to the selection of the filmstrip. Nothing here draws or loads the current picture: the result
/// tells which picture becomes the current one.

struct Strip_Modifiers {
    bool shift = false;
    bool control = false;
};

struct Strip_Action {
    int current_index = 0;    ///< becomes the current picture; 0 leaves it
    bool opens_popup = false; ///< the menu of the filmstrip, at the pointer
    bool blows_up = false;    ///< the full-window view
    int cursor_index = 0;     ///< where the keyboard goes on from; 0 leaves it
};

enum class Strip_Button { Left, Right };

/// A press on the cell of this index; 0, a miss, does nothing. Right: a picture that is not selected becomes the only one
/// selected. Left: alone selects, Ctrl toggles, Shift selects from the anchor (the picture that was selected first).
Strip_Action Press_Cell(Halvine_Form& form, int index, Strip_Button button, Strip_Modifiers modifiers);

enum class Strip_Key { Left, Right, Up, Down, Home, End, Page_Up, Page_Down, Space, Enter };

/// A key with the cursor at `cursor_index` (0: none yet, the first key goes to the first picture). Arrows, Home, End and
/// the page keys move: alone they select, with Shift they select from the anchor, with Ctrl they only move. Space toggles
/// the picture under the cursor, Enter shows it alone in the window.
Strip_Action Press_Key(Halvine_Form& form, const Filmstrip_Layout& layout, int cursor_index, Strip_Key key,
                       Strip_Modifiers modifiers);
