#include "controls/ui/bkcScrollBar.h"

// The model holds the values; QSlider shows them. Its range runs upwards, so a bar whose Min is above its Max shows the
// same range the other way round.

bkcScrollBar::bkcScrollBar(QWidget* parent) : QSlider(Qt::Horizontal, parent)
{
    setAccessibleName(tr("Slider"));
    Show_Model();
    connect(this, &QSlider::valueChanged, this, &bkcScrollBar::Take_Value);
    connect(this, &QSlider::sliderMoved, this, [this](int) { emit Scroll(model_.Value()); });
    connect(this, &QSlider::sliderReleased, this, [this] { emit SliderDropped(model_.Value()); });
}

void bkcScrollBar::Show_Model()
{
    const QScopedValueRollback showing(showing_, true);
    setRange(std::min(Min(), Max()), std::max(Min(), Max()));
    setInvertedAppearance((Min() > Max()) != (ScrollBarStyle() == 1)); // an upright bar has its least value on top
    setInvertedControls(ScrollBarStyle() == 1);
    setSingleStep(SmallChange());
    setPageStep(LargeChange());
    setValue(Value());
    constexpr TickPosition positions[] = {NoTicks, TicksAbove, TicksBelow, TicksBothSides};
    setTickPosition(positions[TickStyle() & 3]);
    setTickInterval(TickFrequency());
}

void bkcScrollBar::Take_Value(int value)
{
    if (showing_ || !model_.Set_Value(value)) return;
    emit Change(Value());
    // A step by key, wheel or click on the track is a drop as well: there is no later release.
    if (!isSliderDown()) emit SliderDropped(Value());
}

void bkcScrollBar::Set_Value(int New_Value)
{
    const bool changed = model_.Set_Value(New_Value);
    Show_Model();
    if (changed) emit Change(Value());
}

void bkcScrollBar::Set_Min(int New_Min)
{
    const bool changed = model_.Set_Min(New_Min);
    Show_Model();
    if (changed) emit Change(Value());
}

void bkcScrollBar::Set_Max(int New_Max)
{
    const bool changed = model_.Set_Max(New_Max);
    Show_Model();
    if (changed) emit Change(Value());
}

void bkcScrollBar::Set_SmallChange(int New_Change)
{
    model_.Set_SmallChange(New_Change);
    Show_Model();
}

void bkcScrollBar::Set_LargeChange(int New_Change)
{
    model_.Set_LargeChange(New_Change);
    Show_Model();
}

void bkcScrollBar::Set_TickStyle(int New_Style)
{
    model_.TickStyle = New_Style;
    Show_Model();
}

void bkcScrollBar::Set_TickFrequency(int New_Frequency)
{
    model_.TickFrequency = std::max(1, New_Frequency);
    Show_Model();
}

void bkcScrollBar::Set_ScrollBarStyle(int New_Style)
{
    model_.ScrollBarStyle = New_Style == 1 ? 1 : 0;
    setOrientation(New_Style == 1 ? Qt::Vertical : Qt::Horizontal);
    Show_Model();
}

void bkcScrollBar::Set_AcceptDragScrolling(bool New_Accept)
{
    model_.AcceptDragScrolling = New_Accept;
    setAcceptDrops(New_Accept);
}

void bkcScrollBar::Refresh()
{
    Show_Model();
    update();
}

void bkcScrollBar::dragEnterEvent(QDragEnterEvent* event)
{
    event->accept();
}

// Something that is dragged over the bar scrolls to where it hangs; it cannot be dropped here.
void bkcScrollBar::dragMoveEvent(QDragMoveEvent* event)
{
    const bool upright = orientation() == Qt::Vertical;
    const auto point = event->position().toPoint();
    setValue(model_.Value_At(upright ? point.y() : point.x(), upright ? height() : width()));
    event->ignore();
}
