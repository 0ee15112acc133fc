#include "imaging/Bezier_Fit.h"

#include <cmath>
#include <utility>

namespace {

/// Normal equations: four unknowns, right sides for x and y.
using Equations = std::array<std::array<double, 6>, 4>;

std::array<double, 4> Bernstein_Weights(double t)
{
    const double s = 1 - t;
    return {s * s * s, 3 * t * s * s, 3 * t * t * s, t * t * t};
}

std::vector<double> Chord_Parameters(std::span<const Curve_Point> samples)
{
    std::vector<double> parameters{0};
    for (std::size_t i = 1; i < samples.size(); ++i)
        parameters.push_back(parameters.back() + std::hypot(double(samples[i].x - samples[i - 1].x),
                                                            double(samples[i].y - samples[i - 1].y)));
    const double length = parameters.back();
    if (length > 0)
        for (double& parameter : parameters) parameter /= length;
    return parameters;
}

Equations Normal_Equations(std::span<const Curve_Point> samples)
{
    Equations equations{};
    const auto parameters = Chord_Parameters(samples);
    for (std::size_t sample = 0; sample < samples.size(); ++sample) {
        const auto weights = Bernstein_Weights(parameters[sample]);
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t column = 0; column < 4; ++column) equations[row][column] += weights[row] * weights[column];
            equations[row][4] += weights[row] * double(samples[sample].x);
            equations[row][5] += weights[row] * double(samples[sample].y);
        }
    }
    return equations;
}

/// Brings the equations into diagonal form; false when they have no single solution.
bool Eliminate(Equations& equations)
{
    for (std::size_t column = 0; column < 4; ++column) {
        std::size_t pivot = column;
        for (std::size_t row = column + 1; row < 4; ++row)
            if (std::abs(equations[row][column]) > std::abs(equations[pivot][column])) pivot = row;
        if (std::abs(equations[pivot][column]) < 1e-12) return false;
        std::swap(equations[column], equations[pivot]);
        for (std::size_t row = 0; row < 4; ++row) {
            if (row == column) continue;
            const double factor = equations[row][column] / equations[column][column];
            for (std::size_t i = column; i < 6; ++i) equations[row][i] -= factor * equations[column][i];
        }
    }
    return true;
}

Curve_Point Middle(Curve_Point a, Curve_Point b)
{
    return {(a.x + b.x) / 2, (a.y + b.y) / 2};
}

} // namespace

std::optional<Bezier> Fit_Bezier(std::span<const Curve_Point> samples)
{
    if (samples.size() < 4) return {};
    Equations equations = Normal_Equations(samples);
    if (!Eliminate(equations)) return {};
    Bezier curve;
    for (std::size_t i = 0; i < 4; ++i)
        curve[i] = {float(equations[i][4] / equations[i][i]), float(equations[i][5] / equations[i][i])};
    return curve;
}

void Subdivide_Bezier(const Bezier& curve, int levels, std::vector<Curve_Point>& polyline)
{
    if (levels <= 0) {
        polyline.push_back(curve[3]);
        return;
    }
    const auto ab = Middle(curve[0], curve[1]), bc = Middle(curve[1], curve[2]), cd = Middle(curve[2], curve[3]);
    const auto abc = Middle(ab, bc), bcd = Middle(bc, cd), middle = Middle(abc, bcd);
    Subdivide_Bezier({curve[0], ab, abc, middle}, levels - 1, polyline);
    Subdivide_Bezier({middle, bcd, cd, curve[3]}, levels - 1, polyline);
}
