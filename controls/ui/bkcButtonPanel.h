#pragma once

#include "controls/Button_Panel_Model.h"
#include <QtCore/QHash>
#include <QtGui/QIcon>
#include <QtWidgets/QAbstractScrollArea>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolButton>
#include <functional>
#include <optional>

/// A strip of picture buttons that wraps, each a tool button with the tooltip as accessible name. Ids, states and places
/// are Button_Panel_Model's business.
/// Keyboard: Tab reaches the panel, arrows move the focus from button to button, Space or Enter clicks.
class bkcButtonPanel : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit bkcButtonPanel(QWidget* parent = nullptr);

    /// A missing picture is derived from Picture. Add_As_Index: 1-based place, 0 at the end. Icons have vector sources, so
    /// that every scale is sharp; ButtonPictureWidth and Height say their size.
    bool Add_Button(int Button_ID, const QString& Tooltip, const QIcon& Picture, const QIcon& Disabled_Picture = {},
                    const QIcon& Down_Picture = {}, const QIcon& Disabled_Down_Picture = {}, bool Initial_State = false,
                    bool Enabled = true, int Add_As_Index = 0);
    void Add_Spacer();
    bool Remove_Button(int Button_ID);
    void Clear_Buttons();
    void Refresh();
    int Get_Selected_Button_ID() const { return model_.Get_Selected_Button_ID(); }
    int Get_ID_List(std::vector<int>& ID_List) const; ///< how many
    int Get_Selected_ID_List(std::vector<int>& Selected_ID_List) const;
    /// The panel takes the size that its buttons need and the margins.
    void AutoSizeHorizontal(int Left_Margin = 0, int Right_Margin = 0);
    void AutoSizeVertical(int Top_Margin = 0, int Bottom_Margin = 0);
    void Autosize(int Left_Margin = 0, int Top_Margin = 0, int Right_Margin = 0, int Bottom_Margin = 0);
    /// In pixels of the panel; false without such a button.
    bool Get_Button_Rectangle(int Button_ID, int& Button_Left, int& Button_Top, int& Button_Right,
                              int& Button_Bottom) const;
    bool ButtonID(int Old_ID, int New_ID);
    bool Exchange(int Button_ID, int Partner_ID); ///< a button and its hidden partner exchange places
    void Set_Visible(int Button_ID, bool New_Visible);
    bool ButtonState(int Button_ID) const { return model_.ButtonState(Button_ID); }
    void Set_ButtonState(int Button_ID, bool New_State);
    bool Enabled(int Button_ID) const { return model_.Enabled(Button_ID); }
    void Set_Enabled(int Button_ID, bool New_Enabled);
    QString Tooltip(int Button_ID) const { return model_.Tooltip(Button_ID); }
    void Set_Tooltip(int Button_ID, const QString& New_Tooltip);
    void Picture(int Button_ID, const QIcon& New_Picture);
    void Down_Picture(int Button_ID, const QIcon& New_Down_Picture);

    const Button_Panel_Properties& Properties() const { return model_.Properties; }
    void Change_Properties(const std::function<void(Button_Panel_Properties&)>& change);
    int ButtonMode() const { return int(model_.ButtonMode()); }
    void Set_ButtonMode(int New_Mode);
    int DisplayStyle() const { return model_.DisplayStyle(); }
    void Set_DisplayStyle(int New_Style);
    int ScrollState() const { return model_.ScrollState(); }
    void Set_ScrollState(int New_State);
    bool AutoPaint() const { return auto_paint_; } ///< default on
    void Set_AutoPaint(bool New_AutoPaint);
    QPixmap ButtonDragIcon() const { return button_drag_icon_; } ///< default none: the button itself is dragged
    void Set_ButtonDragIcon(const QPixmap& New_Icon) { button_drag_icon_ = New_Icon; }
    /// Unset colours, the default, are those of the palette.
    struct Colors {
        std::optional<QColor> PanelColor, ButtonDarkShadowColor, ButtonShadowColor, ButtonFaceColor,
            ButtonHighlightColor;
    };
    void Set_Colors(const Colors& New_Colors);

    int Focus_Button() const { return focus_button_; }       ///< id; 0 none
    void Click_Button(int Button, int Shift, int Button_ID); ///< as by the user

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return model_.ScrollState() != 2; }
    int heightForWidth(int width) const override;

signals:
    /// Button and Shift as bit sets; State after the click.
    void Click(int Button, int Shift, bool State, int Button_ID);
    void Rearranged(int Button_ID, int Before_ID); ///< Before_ID 0: to the end

protected:
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Pictures {
        QIcon normal, disabled, down, disabled_down;
    };
    void Changed(); ///< shows everything, unless AutoPaint defers it
    void Show_Buttons();
    void Show_Button(const Panel_Button& button);
    void Show_Scroll_Bars();
    void Place_Buttons();
    void Place_Caption();
    void Show_Colors();
    QIcon Icon_Of(const Panel_Button& button) const;
    QPixmap Fitted(const QIcon& icon) const;
    QToolButton* Widget_Of(int Button_ID);
    void Give_Focus_To(int Button_ID);
    bool Button_Key(QKeyEvent* event, int Button_ID);
    bool Button_Mouse(QMouseEvent* event, int Button_ID, const QWidget& widget);
    void Begin_Drag(int Button_ID);
    QPoint On_Panel(QPoint viewport_point) const;
    void Show_Drop_Mark(int Before_ID);
    void Scroll_Towards(QPoint viewport_point);
    int Scroll_Offset_X() const;
    int Scroll_Offset_Y() const;

    Button_Panel_Model model_;
    QHash<int, Pictures> pictures_;
    QHash<int, QToolButton*> widgets_;
    QPixmap button_drag_icon_;
    Colors colors_;
    QLabel* caption_;
    QWidget* drop_mark_;
    QPoint press_point_;
    QMargins margins_; // around the buttons, from the sizing by content
    int shift_ = 0;    // of the last mouse or key event
    int focus_button_ = 0;
    int drag_button_ = 0;
    bool auto_paint_ = true;
};
