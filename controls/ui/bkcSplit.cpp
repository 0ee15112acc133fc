#include "controls/ui/bkcSplit.h"

namespace {

/// The bar itself: moves by the model's rules, with the mouse and with arrow keys.
class Split_Handle : public QSplitterHandle {
public:
    Split_Handle(Qt::Orientation orientation, bkcSplit* split) : QSplitterHandle(orientation, split), split_(split)
    {
        setFocusPolicy(Qt::TabFocus);
        setAccessibleName(split->accessibleName());
    }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() != Qt::LeftButton) return;
        press_ = Along(event->globalPosition());
        pixels_ = split_->Pixels_LT();
        dragging_ = true;
    }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (dragging_) split_->Drag(Along(event->globalPosition()) - press_, pixels_);
    }
    void mouseReleaseEvent(QMouseEvent*) override { dragging_ = false; }
    void keyPressEvent(QKeyEvent* event) override
    {
        const bool back = event->key() == (orientation() == Qt::Horizontal ? Qt::Key_Left : Qt::Key_Up);
        const bool forward = event->key() == (orientation() == Qt::Horizontal ? Qt::Key_Right : Qt::Key_Down);
        if (back || forward)
            split_->Drag(back ? -10 : 10, split_->Pixels_LT());
        else
            QSplitterHandle::keyPressEvent(event);
    }

private:
    int Along(QPointF point) const { return int(orientation() == Qt::Horizontal ? point.x() : point.y()); }

    bkcSplit* split_;
    int press_ = 0;
    int pixels_ = 0;
    bool dragging_ = false;
};

} // namespace

bkcSplit::bkcSplit(QWidget* parent) : QSplitter(Qt::Horizontal, parent)
{
    setChildrenCollapsible(false);
    setOpaqueResize(true);
    setHandleWidth(model_.SplitterWidth());
    setAccessibleName(tr("Splitter"));
}

QSplitterHandle* bkcSplit::createHandle()
{
    return new Split_Handle(orientation(), this);
}

void bkcSplit::Initialize(QWidget* Container, QWidget* Control_LT, QWidget* Control_RB, bool Execute_Split)
{
    if (container_) container_->removeEventFilter(this);
    container_ = Container;
    if (container_) {
        setParent(container_);
        container_->installEventFilter(this);
        setGeometry(container_->rect());
        show();
    }
    InitializeContentControls(Control_LT, Control_RB, Execute_Split);
}

void bkcSplit::InitializeContainerBound(int Container_Left, int Container_Top, int Container_Width,
                                        int Container_Height, bool Execute_Split)
{
    setGeometry(Container_Left, Container_Top, Container_Width, Container_Height);
    if (Execute_Split) Refresh();
}

void bkcSplit::InitializeContentControls(QWidget* Control_LT, QWidget* Control_RB, bool Execute_Split)
{
    for (auto* old : {control_lt_, control_rb_})
        if (old && old != Control_LT && old != Control_RB) old->setParent(nullptr);
    control_lt_ = Control_LT;
    control_rb_ = Control_RB;
    if (control_lt_) insertWidget(0, control_lt_);
    if (control_rb_) insertWidget(1, control_rb_);
    if (Execute_Split) Refresh();
}

void bkcSplit::Take_Area()
{
    // Margins are the layout's contents margins already: the model sees what is inside them.
    const auto inner = contentsRect();
    const auto margin = model_.Margin();
    model_.Resize_Container({inner.left() - margin.left, inner.top() - margin.top,
                             inner.width() + margin.left + margin.right, inner.height() + margin.top + margin.bottom});
}

void bkcSplit::Lay_Out()
{
    if (count() != 2) return;
    setSizes({model_.Pixels_LT(), model_.Usable_Length() - model_.Pixels_LT()});
}

void bkcSplit::Refresh()
{
    Take_Area();
    Lay_Out();
}

void bkcSplit::resizeEvent(QResizeEvent* event)
{
    QSplitter::resizeEvent(event);
    Refresh();
}

bool bkcSplit::event(QEvent* event)
{
    const bool handled = QSplitter::event(event);
    if (event->type() == QEvent::LayoutRequest) Lay_Out(); // a child's new hints do not move the splitter
    return handled;
}

bool bkcSplit::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == container_ && event->type() == QEvent::Resize) setGeometry(container_->rect());
    return QSplitter::eventFilter(watched, event);
}

double bkcSplit::ComputeSplitRatio(int Split_Offset, int Split_Pixels_LT) const
{
    return model_.ComputeSplitRatio(Split_Offset, Split_Pixels_LT);
}

void bkcSplit::Drag(int Split_Offset, int Split_Pixels_LT)
{
    const double before = model_.SplitRatio();
    model_.Set_SplitRatio(ComputeSplitRatio(Split_Offset, Split_Pixels_LT));
    if (model_.SplitRatio() == before) return;
    Lay_Out();
    emit SplitRatioChanged(model_.SplitRatio());
}

void bkcSplit::Set_SplitRatio(double New_SplitRatio)
{
    model_.Set_SplitRatio(New_SplitRatio);
    Lay_Out();
}

void bkcSplit::Set_SplitRatioUnbound(double New_SplitRatio)
{
    model_.Set_SplitRatioUnbound(New_SplitRatio);
    Lay_Out();
}

void bkcSplit::Set_MinSplitRatio(double New_Ratio)
{
    model_.Set_MinSplitRatio(New_Ratio);
    Lay_Out();
}

void bkcSplit::Set_MaxSplitRatio(double New_Ratio)
{
    model_.Set_MaxSplitRatio(New_Ratio);
    Lay_Out();
}

void bkcSplit::Set_Orientation(Split_Orientation New_Orientation)
{
    model_.Set_Orientation(New_Orientation);
    setOrientation(New_Orientation == Split_Orientation::Horizontal ? Qt::Horizontal : Qt::Vertical);
    Refresh();
}

void bkcSplit::Set_SplitterWidth(int New_Width)
{
    model_.Set_SplitterWidth(New_Width);
    setHandleWidth(model_.SplitterWidth());
    Refresh();
}

void bkcSplit::Set_Margin(int New_Margin)
{
    Set_Margins(New_Margin, New_Margin, New_Margin, New_Margin);
}

void bkcSplit::Set_Margins(int New_Left, int New_Top, int New_Right, int New_Bottom)
{
    model_.Set_Margins({New_Left, New_Top, New_Right, New_Bottom});
    setContentsMargins(New_Left, New_Top, New_Right, New_Bottom);
    Refresh();
}

void bkcSplit::Set_BorderStyle(int New_Style)
{
    border_style_ = New_Style == 1 ? 1 : 0;
    Show_Frame();
}

void bkcSplit::Set_Appearance(int New_Appearance)
{
    appearance_ = New_Appearance == 0 ? 0 : 1;
    Show_Frame();
}

void bkcSplit::Show_Frame()
{
    setFrameStyle(border_style_ == 0 ? int(QFrame::NoFrame)
                  : appearance_ == 0 ? int(QFrame::Box) | int(QFrame::Plain)
                                     : int(QFrame::StyledPanel) | int(QFrame::Sunken));
    Refresh();
}

void bkcSplit::Set_BackColor(const QColor& New_Color)
{
    QPalette colors;
    if (New_Color.isValid()) colors.setColor(QPalette::Window, New_Color);
    setPalette(colors);
}

void bkcSplit::Set_Caption(const QString& New_Caption)
{
    setAccessibleName(New_Caption);
    if (count() == 2) handle(1)->setAccessibleName(New_Caption);
}

void bkcSplit::Set_Enabled(bool New_Enabled)
{
    if (count() == 2) handle(1)->setEnabled(New_Enabled);
}
