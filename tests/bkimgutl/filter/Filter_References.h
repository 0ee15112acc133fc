#pragma once

#include "bkimgutl/filter/Scale.h"

#include <vector>

// Slow and plain ways to what the filters do, with real numbers throughout. They are no part of a test's own file, so that
// they are optimised also where the tests are not.

/// Scaled with the whole filter at every sample, rounded once.
Bitmap Scaled_Reference(const Bitmap_View& source, int width, int height, Interpolation_Method method);

/// The mean of the pixels whose centres lie in each output pixel, on a border those to the left or above; halves upwards.
Bitmap Mean_Of_Blocks(const Bitmap_View& source, int width, int height);

/// Rows of real numbers, interleaved like the picture.
using Real_Rows = std::vector<std::vector<double>>;

/// The Gaussian of that standard deviation out to six of them; pixels at an edge stand for those beyond it.
Real_Rows Blurred_Reference(const Bitmap_View& source, double radius);
