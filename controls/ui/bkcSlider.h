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

    bkcScrollBar& Bar() { return *bar_; } ///< with the properties that a bar has: SmallChange, TickStyle and so on
    const bkcScrollBar& Bar() const { return *bar_; }
    int Value() const { return bar_->Value(); }
    void Set_Value(int New_Value) { bar_->Set_Value(New_Value); }
    int Min() const { return bar_->Min(); }
    void Set_Min(int New_Min) { bar_->Set_Min(New_Min); }
    int Max() const { return bar_->Max(); }
    void Set_Max(int New_Max) { bar_->Set_Max(New_Max); }
    bool Enabled() const { return isEnabled(); }
    void Set_Enabled(bool New_Enabled) { setEnabled(New_Enabled); } ///< the legend greys with the bar
    void Set_BackColor(const QColor& New_Color); ///< of the bar and the legend; an invalid one is the palette's
    const Slider_Model& Legend_Model() const { return model_; }
    void Set_LegendText(const QString& New_Text);
    void Set_LegendFormatString(const QString& New_Format);
    void Set_ShowLegend(bool New_Show);
    void Set_Legend(int New_Position, int New_Alignment, int New_Separation); ///< as in Slider_Model
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
