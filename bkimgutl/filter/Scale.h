#pragma once

#include "bkimgutl/contract/Types.h"
#include "bkimgutl/core/Bitmap.h"

/// Resamples to width x height, both 1 and up. Pixel i of n has its centre at (i + 0.5) / n of the side. Where the picture
/// shrinks, the filter widens with the ratio; taps beyond an edge are left out and the rest weighs more, so that edges do
/// not darken. Integer arithmetic, rounded to nearest at the end, within 1 level of exact real numbers. Fails on method
/// None, on a size without area, and beyond the limits.
Result<Bitmap> Scaled(const Bitmap_View& source, int width, int height, Interpolation_Method method);

/// The filter itself, for tests and for other resamplers: 0 beyond its support.
double Interpolation_Weight(Interpolation_Method method, double distance);

/// Half the width of the filter: 0.5 to 3.
double Interpolation_Support(Interpolation_Method method);
