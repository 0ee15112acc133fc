#pragma once

#include "controls/Slider_Model.h"
#include "controls/ui/bkcScrollBar.h"
#include <QtWidgets/QLabel>
#include <functional>

/// A scroll bar with a legend: a text and the value in a format.
class bkcSlider : public QWidget {
    Q_OBJECT

public:
    explicit bkcSlider(QWidget* parent = nullptr);

    bkcScrollBar& Bar() { return *bar_; }
    const bkcScrollBar& Bar() const { return *bar_; }
    int Value() const { return bar_->Value(); }
    void Set_Value(int New_Value) { bar_->Set_Value(New_Value); }
    int Min() const { return bar_->Min(); }
    void Set_Min(int New_Min) { bar_->Set_Min(New_Min); }
    int Max() const { return bar_->Max(); }
    void Set_Max(int New_Max) { bar_->Set_Max(New_Max); }
    int SmallChange() const { return bar_->SmallChange(); }
    void Set_SmallChange(int New_Change) { bar_->Set_SmallChange(New_Change); }
    int LargeChange() const { return bar_->LargeChange(); }
    void Set_LargeChange(int New_Change) { bar_->Set_LargeChange(New_Change); }
    int TickStyle() const { return bar_->TickStyle(); }
    void Set_TickStyle(int New_Style) { bar_->Set_TickStyle(New_Style); }
    int TickFrequency() const { return bar_->TickFrequency(); }
    void Set_TickFrequency(int New_Frequency) { bar_->Set_TickFrequency(New_Frequency); }
    int TickSize() const { return bar_->TickSize(); }
    void Set_TickSize(int New_Size) { bar_->Set_TickSize(New_Size); }
    int SliderPointerSize() const { return bar_->SliderPointerSize(); }
    void Set_SliderPointerSize(int New_Size) { bar_->Set_SliderPointerSize(New_Size); }
    bool Enabled() const { return isEnabled(); }
    void Set_Enabled(bool New_Enabled) { setEnabled(New_Enabled); } ///< the legend greys with the bar
    QColor BackColor() const { return palette().color(QPalette::Window); }
    void Set_BackColor(const QColor& New_Color); ///< of the bar and the legend; an invalid one is the palette's
    // The legend, with the values of Slider_Model.
    QString LegendText() const { return model_.LegendText; }
    void Set_LegendText(const QString& New_Text);
    QString LegendFormatString() const { return model_.LegendFormatString; }
    void Set_LegendFormatString(const QString& New_Format);
    bool ShowLegend() const { return model_.ShowLegend; }
    void Set_ShowLegend(bool New_Show);
    int LegendPosition() const { return model_.LegendPosition; }
    void Set_LegendPosition(int New_Position);
    int LegendAlignment() const { return model_.LegendAlignment; }
    void Set_LegendAlignment(int New_Alignment);
    int LegendSeparation() const { return model_.LegendSeparation; }
    void Set_LegendSeparation(int New_Separation);
    QFont LegendFont() const { return legend_->font(); }
    void Set_LegendFont(const QFont& New_Font) { legend_->setFont(New_Font); }
    void Set_Legend_Scale(double New_Scale); ///< the legend shows value times scale
    QString Legend() const { return model_.Legend(); }

signals:
    void Change(int Value);        ///< every change: the legend follows
    void SliderDropped(int Value); ///< for costly work

private:
    void Show_Legend();
    void Arrange();

    Slider_Model model_;
    bkcScrollBar* bar_;
    QLabel* legend_;
};
