#pragma once

#include "controls/Scroll_Bar_Model.h"
#include <QtCore/QString>

/// A scroll bar with a legend: a text, and the value in a format.
class Slider_Model {
public:
    Scroll_Bar_Model Bar;
    QString LegendText;
    QString LegendFormatString; ///< as in Value_Format.h; empty shows the plain number
    bool ShowLegend = true;
    int LegendSeparation = 4; ///< pixels between legend and bar
    int LegendPosition = 0;   ///< 0 above or left of the bar, 1 below or right
    int LegendAlignment = 0;  ///< 0 left, 1 right, 2 centre
    /// What the legend shows is value * scale, for sliders whose unit is a fraction of the value. 1 by default.
    double Legend_Scale = 1;

    QString Legend() const; ///< text and formatted value; empty when ShowLegend is off
};
