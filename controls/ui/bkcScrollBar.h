#pragma once

#include "controls/Scroll_Bar_Model.h"
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QSlider>

/// A scroll bar with tick marks. Drawing, keyboard, wheel, repeat and accessibility are those of QSlider; the marks and
/// the size of the thumb are the bar's own.
class bkcScrollBar : public QSlider {
    Q_OBJECT

public:
    explicit bkcScrollBar(QWidget* parent = nullptr);

    int Value() const { return model_.Value(); }
    void Set_Value(int New_Value); ///< clamped; raises Change when it changed
    int Min() const { return model_.Min(); }
    void Set_Min(int New_Min);
    int Max() const { return model_.Max(); }
    void Set_Max(int New_Max);
    int SmallChange() const { return model_.SmallChange(); }
    void Set_SmallChange(int New_Change);
    int LargeChange() const { return model_.LargeChange(); }
    void Set_LargeChange(int New_Change);
    int TickStyle() const { return model_.TickStyle; } ///< 0 none, 1 above or left, 2 below or right, 3 both
    void Set_TickStyle(int New_Style);
    int TickFrequency() const { return model_.TickFrequency; } ///< values from mark to mark
    void Set_TickFrequency(int New_Frequency);
    int TickSize() const { return model_.TickSize; } ///< pixels
    void Set_TickSize(int New_Size);
    int SliderPointerSize() const { return model_.SliderPointerSize; } ///< of the thumb, pixels; 0 is the style's own
    void Set_SliderPointerSize(int New_Size);
    int ScrollBarStyle() const { return model_.ScrollBarStyle; } ///< 0 horizontal, 1 vertical
    void Set_ScrollBarStyle(int New_Style);
    bool AcceptDragScrolling() const { return model_.AcceptDragScrolling; }
    void Set_AcceptDragScrolling(bool New_Accept); ///< default off
    /// How fast a press on the track repeats: the interval of a timer of the host's. Null: Qt's own pace.
    QTimer* ScrollTimer() const { return scroll_timer_; }
    void Set_ScrollTimer(QTimer* New_Timer) { scroll_timer_ = New_Timer; }
    bool AutoPaint() const { return auto_paint_; } ///< default on; off, changes show at Refresh
    void SetAutoPaint(bool New_AutoPaint);
    QColor BackColor() const { return palette().color(QPalette::Window); }
    void Set_BackColor(const QColor& New_Color); ///< an invalid one, the default, is the palette's

    // As for any control; pixels of the parent.
    int Left() const { return x(); }
    int Top() const { return y(); }
    int Width() const { return width(); }
    int Height() const { return height(); }
    bool Enabled() const { return isEnabled(); }
    void Set_Enabled(bool New_Enabled) { setEnabled(New_Enabled); }
    bool Visible() const { return !isHidden(); }
    void Set_Visible(bool New_Visible) { setVisible(New_Visible); }
    WId hWnd() const { return winId(); }
    void Move(int New_Left, int New_Top, int New_Width, int New_Height)
    {
        setGeometry(New_Left, New_Top, New_Width, New_Height);
    }
    void Refresh();

    // The mouse, as a host forwards it. Button and Shift as bit sets, X and Y in pixels of the bar.
    void MouseDown(int Button, int Shift, int X, int Y);
    void MouseMove(int Button, int Shift, int X, int Y);
    void MouseUp(int Button, int Shift, int X, int Y);
    void DblClick(int X, int Y); ///< as a second press: the track steps once more

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void Change(int Value);        ///< every change of the value
    void Scroll(int Value);        ///< while the thumb is dragged
    void SliderDropped(int Value); ///< the thumb was let go, or a key or the wheel moved it

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;

private:
    void Changed(); ///< shows the model, unless AutoPaint defers it
    void Show_Model();
    void Take_Value(int value);
    void Paint_Ticks(QPainter& painter) const;
    int Thumb_Length() const;
    QSize With_Ticks(QSize size) const;
    void Send_Mouse(QEvent::Type type, int button, int shift, QPoint point);

    Scroll_Bar_Model model_;
    QPointer<QTimer> scroll_timer_;
    std::unique_ptr<QStyle> thumb_style_; // null: the program's style draws the thumb
    bool auto_paint_ = true;
    bool showing_ = false;
};
