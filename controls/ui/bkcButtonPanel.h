#pragma once

#include "controls/Button_Panel_Model.h"
#include <QtCore/QHash>
#include <QtGui/QIcon>
#include <QtWidgets/QAbstractScrollArea>
#include <functional>
#include <optional>

/// A strip of picture buttons that wraps, drawn by the style. Ids, states and places are Button_Panel_Model's business.
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
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    struct Pictures {
        QIcon normal, disabled, down, disabled_down;
    };
    void Changed();
    void Show_Scroll_Bars();
    void Paint_Button(QPainter& painter, const Panel_Button& button, const QRect& place) const;
    void Paint_Drop_Mark(QPainter& painter) const;
    QPixmap Picture_Of(const Panel_Button& button, QSize size) const;
    QRect Place_Of(int Button_ID) const; ///< on the viewport
    QPoint On_Panel(QPoint viewport_point) const;
    int Button_At(QPoint viewport_point) const;
    void Set_Hot(int Button_ID);
    void Move_Focus(int step);
    void Begin_Drag();

    Button_Panel_Model model_;
    QHash<int, Pictures> pictures_;
    QPixmap button_drag_icon_;
    Colors colors_;
    bool auto_paint_ = true;
    int hot_button_ = 0;     // under the pointer
    int pressed_button_ = 0; // the mouse button is down on it
    int focus_button_ = 0;
    int drop_before_ = -1; // -1: no drag over the panel
    QPoint press_point_;
};
