#include "controls/ui/bkcScrollBar.h"

// The model holds the values; QSlider shows them. Its range runs upwards, so a bar whose Min is above its Max shows the
// same range the other way round.

namespace {

/// The style of the program with a thumb of another size.
class Pointer_Style : public QProxyStyle {
public:
    explicit Pointer_Style(int pixels) : pixels_(pixels) {}
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        const bool thumb =
            metric == PM_SliderLength || metric == PM_SliderThickness || metric == PM_SliderControlThickness;
        return thumb ? pixels_ : QProxyStyle::pixelMetric(metric, option, widget);
    }

private:
    int pixels_;
};

} // namespace

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
    updateGeometry();
    update();
}

void bkcScrollBar::Changed()
{
    if (auto_paint_) Show_Model();
}

void bkcScrollBar::SetAutoPaint(bool New_AutoPaint)
{
    auto_paint_ = New_AutoPaint;
    Changed();
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
    Changed();
    if (changed) emit Change(Value());
}

void bkcScrollBar::Set_Min(int New_Min)
{
    const bool changed = model_.Set_Min(New_Min);
    Changed();
    if (changed) emit Change(Value());
}

void bkcScrollBar::Set_Max(int New_Max)
{
    const bool changed = model_.Set_Max(New_Max);
    Changed();
    if (changed) emit Change(Value());
}

void bkcScrollBar::Set_SmallChange(int New_Change)
{
    model_.Set_SmallChange(New_Change);
    Changed();
}

void bkcScrollBar::Set_LargeChange(int New_Change)
{
    model_.Set_LargeChange(New_Change);
    Changed();
}

void bkcScrollBar::Set_TickStyle(int New_Style)
{
    model_.TickStyle = New_Style;
    Changed();
}

void bkcScrollBar::Set_TickFrequency(int New_Frequency)
{
    model_.TickFrequency = std::max(1, New_Frequency);
    Changed();
}

void bkcScrollBar::Set_TickSize(int New_Size)
{
    model_.TickSize = std::max(0, New_Size);
    Changed();
}

void bkcScrollBar::Set_SliderPointerSize(int New_Size)
{
    const int size = std::max(0, New_Size);
    if (std::exchange(model_.SliderPointerSize, size) == size) return;
    auto own = size > 0 ? std::make_unique<Pointer_Style>(size) : nullptr;
    setStyle(own.get()); // without one of its own it has that of the program
    thumb_style_ = std::move(own);
    Changed();
}

void bkcScrollBar::Set_BackColor(const QColor& New_Color)
{
    QPalette colors;
    if (New_Color.isValid()) colors.setColor(QPalette::Window, New_Color);
    setPalette(colors);
    setAutoFillBackground(New_Color.isValid());
}

void bkcScrollBar::Set_ScrollBarStyle(int New_Style)
{
    model_.ScrollBarStyle = New_Style == 1 ? 1 : 0;
    setOrientation(New_Style == 1 ? Qt::Vertical : Qt::Horizontal);
    Changed();
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

int bkcScrollBar::Thumb_Length() const
{
    return style()->pixelMetric(QStyle::PM_SliderLength, nullptr, this);
}

// The marks stand outside the thumb. Both sides grow by the same, so that the track stays in the middle where every style
// draws it.
QSize bkcScrollBar::With_Ticks(QSize size) const
{
    const int extra = TickStyle() == 0 ? 0 : 2 * TickSize();
    return orientation() == Qt::Horizontal ? size + QSize(0, extra) : size + QSize(extra, 0);
}

QSize bkcScrollBar::sizeHint() const
{
    return With_Ticks(QSlider::sizeHint());
}

QSize bkcScrollBar::minimumSizeHint() const
{
    return With_Ticks(QSlider::minimumSizeHint());
}

void bkcScrollBar::paintEvent(QPaintEvent* event)
{
    if (TickStyle() != 0) {
        QPainter painter(this);
        Paint_Ticks(painter);
    }
    QSlider::paintEvent(event);
}

void bkcScrollBar::Paint_Ticks(QPainter& painter) const
{
    const bool upright = orientation() == Qt::Vertical;
    const int thumb = Thumb_Length();
    const int track = (upright ? height() : width()) - thumb; // what the middle of the thumb runs over
    const int count = model_.Tick_Count();
    if (track < 1 || count < 1) return;
    const int middle = (upright ? width() : height()) / 2;
    const int near = std::max(TickSize() + 1, middle - thumb / 2) - 1; // where the marks of the first side end
    const int far = (upright ? width() : height()) - 1 - near;
    painter.setPen(palette().color(QPalette::Mid));
    const int direction = Min() <= Max() ? 1 : -1;
    // Where marks would touch each other only some are drawn.
    const int step = std::max(1, int(3LL * count / track));
    for (int tick = 0; tick < count; tick += step) {
        const int value = int(Min() + static_cast<long long>(direction) * tick * TickFrequency());
        const int along = thumb / 2 + model_.Position_Of(value, track + 1);
        const auto mark = [&](int from, int to) {
            upright ? painter.drawLine(from, along, to, along) : painter.drawLine(along, from, along, to);
        };
        if ((TickStyle() & 1) != 0) mark(near - TickSize() + 1, near);
        if ((TickStyle() & 2) != 0) mark(far, far + TickSize() - 1);
    }
}

void bkcScrollBar::mousePressEvent(QMouseEvent* event)
{
    QSlider::mousePressEvent(event);
    if (repeatAction() != SliderNoAction && scroll_timer_ != nullptr && scroll_timer_->interval() > 0)
        setRepeatAction(repeatAction(), scroll_timer_->interval(), scroll_timer_->interval());
}

void bkcScrollBar::Send_Mouse(QEvent::Type type, int button, int shift, QPoint point)
{
    const auto one = (button & 1) != 0 ? Qt::LeftButton : (button & 2) != 0 ? Qt::RightButton : Qt::NoButton;
    const bool moves = type == QEvent::MouseMove;
    Qt::KeyboardModifiers keys;
    keys.setFlag(Qt::ShiftModifier, (shift & 1) != 0);
    keys.setFlag(Qt::ControlModifier, (shift & 2) != 0);
    keys.setFlag(Qt::AltModifier, (shift & 4) != 0);
    const Qt::MouseButtons down = type == QEvent::MouseButtonRelease ? Qt::MouseButtons() : Qt::MouseButtons(one);
    QMouseEvent event(type, point, mapToGlobal(point), moves ? Qt::NoButton : one, down, keys);
    QCoreApplication::sendEvent(this, &event);
}

void bkcScrollBar::MouseDown(int Button, int Shift, int X, int Y)
{
    Send_Mouse(QEvent::MouseButtonPress, Button, Shift, {X, Y});
}

void bkcScrollBar::MouseMove(int Button, int Shift, int X, int Y)
{
    Send_Mouse(QEvent::MouseMove, Button, Shift, {X, Y});
}

void bkcScrollBar::MouseUp(int Button, int Shift, int X, int Y)
{
    Send_Mouse(QEvent::MouseButtonRelease, Button, Shift, {X, Y});
}

void bkcScrollBar::DblClick(int X, int Y)
{
    MouseDown(1, 0, X, Y);
    MouseUp(1, 0, X, Y);
}
