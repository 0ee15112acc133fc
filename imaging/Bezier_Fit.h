#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

/// A point of a curve in levels, fractions allowed.
struct Curve_Point {
    float x = 0;
    float y = 0;
    bool operator==(const Curve_Point&) const = default;
};

using Bezier = std::array<Curve_Point, 4>;

/// The cubic Bezier curve that fits the samples best in the sense of least squares, each at its chord length parameter.
/// Nothing when the samples do not determine one, as when two of four fall together.
std::optional<Bezier> Fit_Bezier(std::span<const Curve_Point> samples);

/// Halves the curve `levels` times and appends the end of every piece: 2 to the power of levels points.
void Subdivide_Bezier(const Bezier& curve, int levels, std::vector<Curve_Point>& polyline);
