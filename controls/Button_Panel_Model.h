#pragma once

#include <QtCore/QString>
#include <cstdint>
#include <vector>

/// The buttons of a panel: ids, states, what a click does, and where each button stands. Pixels.

struct Panel_Button {
    int id = 0;
    QString tooltip{};
    bool down = false;
    bool enabled = true;
    bool spacer = false;
    bool visible = true; ///< a hidden button takes no place
};

struct Panel_Rectangle {
    int left = 0;
    int top = 0;
    int right = 0;  ///< exclusive
    int bottom = 0; ///< exclusive
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool operator==(const Panel_Rectangle&) const = default;
};

/// What a click does to the states. Hosts store these numbers.
/// Stateless: buttons keep no state. Toggle: a click turns a button over. One_Or_None: at most one is down, a click on it
/// releases it. One_Of_Many: exactly the clicked one is down. One_Of_Groups: one of many between spacers. Independent: a
/// click changes no other button. Several: with Ctrl and Shift, as in lists.
enum class Panel_Mode : int {
    Stateless = 0,
    Toggle = 1,
    One_Or_None = 2,
    One_Of_Many = 3,
    One_Of_Groups = 4,
    Independent = 5,
    Several = 6,
};
constexpr int Flat_Display_Style = 2; ///< only the button under the pointer is raised

struct Button_Panel_Properties {
    int ButtonWidth = 25;
    int ButtonHeight = 25;
    int ButtonPictureWidth = 20;
    int ButtonPictureHeight = 20;
    bool CenterButtonsHorizontal = false;
    bool CenterButtonsVertical = false;
    int BorderStyle = 0;
    bool AllowRearrange = false;
    bool StretchPictures = false;
    bool CropPictures = false;
    int HorizontalSpacing = 1;
    int VerticalSpacing = 1;
    int HorizontalSpacerWidth = 2;
    int VerticalSpacerHeight = 2;
    int HorizontalOffset = 1;
    int VerticalOffset = 1;
    QString FrameCaption{};
    std::uint32_t ButtonDropColor = 255; ///< 0x00BBGGRR; the mark where a dragged button would drop
};

class Button_Panel_Model {
public:
    Button_Panel_Properties Properties;

    int DisplayStyle() const { return display_style_; }
    void Set_DisplayStyle(int New_Style); ///< the flat style makes the panel stateless
    Panel_Mode ButtonMode() const { return mode_; }
    void Set_ButtonMode(int New_Mode); ///< a number that is no mode is ignored; in flat style it stays 0
    /// 0: rows from left to right that wrap. 1 the same, 2 columns from top to bottom that wrap, 3 rows, and the bar
    /// takes drags.
    int ScrollState() const { return scroll_state_; }
    void Set_ScrollState(int New_State);

    /// Adds in front of the Add_As_Index-th button (1-based), or at the end with 0 or less. False when the id exists.
    bool Add_Button(int Button_ID, const QString& Tooltip, bool Initial_State = false, bool Enabled = true,
                    int Add_As_Index = 0);
    void Add_Spacer(); ///< a gap behind the last button
    bool Remove_Button(int Button_ID);
    void Clear_Buttons() { buttons_.clear(); }
    const std::vector<Panel_Button>& Buttons() const { return buttons_; } ///< spacers included
    bool Has(int Button_ID) const { return Find(Button_ID) != nullptr; }

    bool ButtonID(int Old_ID, int New_ID); ///< gives a button another id; false when it is taken or there is no Old_ID
    /// Two buttons exchange their places, and with them who is visible: a button and its hidden partner. False when one
    /// does not exist.
    bool Exchange(int Button_ID, int Partner_ID);
    void Set_Visible(int Button_ID, bool New_Visible);
    bool ButtonState(int Button_ID) const;
    /// Sets the state as the host wishes; in the one-of modes the others are released. Stateless panels ignore it.
    void Set_ButtonState(int Button_ID, bool New_State);
    bool Enabled(int Button_ID) const;
    void Set_Enabled(int Button_ID, bool New_Enabled);
    QString Tooltip(int Button_ID) const;
    void Set_Tooltip(int Button_ID, const QString& New_Tooltip);

    int Get_Selected_Button_ID() const; ///< the first button that is down, or 0
    std::vector<int> Get_ID_List() const;
    std::vector<int> Get_Selected_ID_List() const;

    struct Click {
        int Button = 1;
        int Shift = 0;
        bool State = false; ///< after the click
        int Button_ID = 0;
    };
    /// Carries out a click. Shift is a bit set: 1 shift, 2 control. Buttons other than the left one change no state.
    /// Nothing without such a button, or with a disabled one: then Button_ID is 0.
    Click Press(int Button, int Shift, int Button_ID);
    int Anchor() const; ///< the single button that is down; 0 when none is, or several are

    /// Moves a dragged button in front of another, or to the end with 0. Only with AllowRearrange.
    bool Rearrange(int Button_ID, int Before_ID);

    // Layout, for a panel of the given size. A panel narrower than a button still has one button a row.
    std::vector<Panel_Rectangle> Layout(int width, int height) const; ///< one each, spacers included
    Panel_Rectangle Content_Size(int width, int height) const;        ///< what all of them take, offsets included
    bool Get_Button_Rectangle(int Button_ID, int width, int height, Panel_Rectangle& rectangle) const;
    int Button_At(int x, int y, int width, int height) const;   ///< 0 between buttons
    int Drop_Before(int x, int y, int width, int height) const; ///< the button that a drop would stand before, or 0
    Panel_Rectangle Auto_Size() const; ///< the size that holds all buttons in one row, or in one column in state 2
    int Auto_Scroll_State(int width, int height) const { return width >= height ? 1 : 2; }

private:
    Panel_Button* Find(int Button_ID);
    const Panel_Button* Find(int Button_ID) const;
    void Release_Others(int Button_ID);
    void Release_Group(int Button_ID);
    void Press_Several(Panel_Button& button, int Shift);
    bool Columns_First() const { return scroll_state_ == 2; }

    std::vector<Panel_Button> buttons_;
    Panel_Mode mode_ = Panel_Mode::Stateless;
    int display_style_ = 0;
    int scroll_state_ = 0;
};
