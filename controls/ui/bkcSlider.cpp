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
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(model_.LegendSeparation);
    const bool below = model_.LegendPosition == 1;
    rows->addWidget(below ? static_cast<QWidget*>(bar_) : legend_);
    rows->addWidget(below ? static_cast<QWidget*>(legend_) : bar_);
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

void bkcSlider::Set_Legend(int New_Position, int New_Alignment, int New_Separation)
{
    model_.LegendPosition = New_Position;
    model_.LegendAlignment = New_Alignment;
    model_.LegendSeparation = std::max(0, New_Separation);
    Arrange();
}

void bkcSlider::Set_Legend_Scale(double New_Scale)
{
    model_.Legend_Scale = New_Scale;
    Show_Legend();
}
