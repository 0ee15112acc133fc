#include "controls/ui/bkcSlider.h"

bkcSlider::bkcSlider(QWidget* parent) : QWidget(parent), bar_(new bkcScrollBar(this)), legend_(new QLabel(this))
{
    legend_->setBuddy(bar_);
    setFocusProxy(bar_);
    connect(bar_, &bkcScrollBar::Change, this, [this](int value) {
        Show_Legend();
        emit Change(value);
    });
    connect(bar_, &bkcScrollBar::SliderDropped, this, &bkcSlider::SliderDropped);
    Arrange();
}

void bkcSlider::Arrange()
{
    delete layout();
    const bool beside = model_.LegendPosition >= 2;
    const bool legend_first = model_.LegendPosition % 2 == 0;
    auto* line = new QBoxLayout(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(model_.LegendSeparation);
    line->addWidget(bar_, 1);
    line->insertWidget(legend_first ? 0 : 1, legend_);
    const auto side = model_.LegendAlignment == 1   ? Qt::AlignRight
                      : model_.LegendAlignment == 2 ? Qt::AlignHCenter
                                                    : Qt::AlignLeft;
    legend_->setAlignment(side | Qt::AlignVCenter);
    Show_Legend();
}

void bkcSlider::Show_Legend()
{
    model_.Value = bar_->Value();
    legend_->setVisible(model_.ShowLegend);
    legend_->setText(model_.Legend());
    bar_->setAccessibleName(model_.LegendText.isEmpty() ? tr("Slider") : model_.LegendText);
}

void bkcSlider::Set_LegendText(const QString& New_Text)
{
    model_.LegendText = New_Text;
    Show_Legend();
}

void bkcSlider::Set_LegendFormatString(const QString& New_Format)
{
    model_.LegendFormatString = New_Format;
    Show_Legend();
}

void bkcSlider::Set_ShowLegend(bool New_Show)
{
    model_.ShowLegend = New_Show;
    Show_Legend();
}

void bkcSlider::Set_LegendPosition(int New_Position)
{
    model_.LegendPosition = std::clamp(New_Position, 0, 3);
    Arrange();
}

void bkcSlider::Set_LegendAlignment(int New_Alignment)
{
    model_.LegendAlignment = std::clamp(New_Alignment, 0, 2);
    Arrange();
}

void bkcSlider::Set_LegendSeparation(int New_Separation)
{
    model_.LegendSeparation = std::max(0, New_Separation);
    Arrange();
}

void bkcSlider::Set_BackColor(const QColor& New_Color)
{
    QPalette colors;
    if (New_Color.isValid()) colors.setColor(QPalette::Window, New_Color);
    setPalette(colors);
    setAutoFillBackground(New_Color.isValid());
    bar_->Set_BackColor(New_Color);
}

void bkcSlider::Set_Legend_Scale(double New_Scale)
{
    model_.Legend_Scale = New_Scale;
    Show_Legend();
}
