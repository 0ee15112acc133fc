#pragma once

#include "controls/Scroll_Bar_Model.h"
#include <QtWidgets/QSlider>

/// A scroll bar with tick marks. Drawing, keyboard, wheel, repeat and accessibility are those of QSlider.
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
    int TickStyle() const { return model_.TickStyle; }
    void Set_TickStyle(int New_Style);
    int TickFrequency() const { return model_.TickFrequency; }
    void Set_TickFrequency(int New_Frequency);
    int ScrollBarStyle() const { return model_.ScrollBarStyle; } ///< 0 horizontal, 1 vertical
    void Set_ScrollBarStyle(int New_Style);
    bool AcceptDragScrolling() const { return model_.AcceptDragScrolling; }
    void Set_AcceptDragScrolling(bool New_Accept); ///< default off
    void Move(int New_Left, int New_Top, int New_Width, int New_Height)
    {
        setGeometry(New_Left, New_Top, New_Width, New_Height);
    }
    void Refresh();

signals:
    void Change(int Value);        ///< every change of the value
    void Scroll(int Value);        ///< while the thumb is dragged
    void SliderDropped(int Value); ///< the thumb was let go, or a key or the wheel moved it

protected:
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;

private:
    void Show_Model();
    void Take_Value(int value);

    Scroll_Bar_Model model_;
    bool showing_ = false;
};
