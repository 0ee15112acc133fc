#include "controls/Slider_Model.h"

#include "controls/Value_Format.h"

QString Slider_Model::Legend() const
{
    if (!ShowLegend) return {};
    // A whole scale shows whole numbers, whatever the type of the scale.
    const QVariant shown = Legend_Scale == 1 ? QVariant(Value) : QVariant(Value * Legend_Scale);
    return LegendText + Format_Value(shown, LegendFormatString);
}
