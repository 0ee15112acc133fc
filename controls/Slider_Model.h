#pragma once

#include <QtCore/QString>

/// The legend of a slider: a text, and the value in a format.
class Slider_Model {
public:
    int Value = 0;
    QString LegendText;
    QString LegendFormatString; ///< as in Value_Format.h; empty shows the plain number
    bool ShowLegend = true;
    int LegendSeparation = 4; ///< pixels between legend and bar
    int LegendPosition = 0;   ///< 0 above the bar, 1 below it, 2 left of it, 3 right of it
    int LegendAlignment = 0;  ///< 0 left, 1 right, 2 centre
    /// What the legend shows is value * scale, for sliders whose unit is a fraction of the value. 1 by default.
    double Legend_Scale = 1;

    QString Legend() const; ///< text and formatted value; empty when ShowLegend is off
};
