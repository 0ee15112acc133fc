#include "imaging/Bezier_Fit.h"

#include <gtest/gtest.h>

namespace {

Curve_Point At(const Bezier& curve, float t)
{
    const float s = 1 - t;
    const float weights[] = {s * s * s, 3 * t * s * s, 3 * t * t * s, t * t * t};
    Curve_Point point;
    for (std::size_t i = 0; i < 4; ++i) {
        point.x += weights[i] * curve[i].x;
        point.y += weights[i] * curve[i].y;
    }
    return point;
}

TEST(Fit, Goes_Through_Four_Samples)
{
    const Curve_Point samples[] = {{0, 0}, {3, 4}, {9, 12}, {12, 16}}; // chords 5, 10, 5
    const auto curve = Fit_Bezier(samples);
    ASSERT_TRUE(curve);
    const float parameters[] = {0, 0.25F, 0.75F, 1};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(At(*curve, parameters[i]).x, samples[i].x, 1e-3);
        EXPECT_NEAR(At(*curve, parameters[i]).y, samples[i].y, 1e-3);
    }
}

TEST(Fit, Is_Refused_When_Samples_Fall_Together)
{
    const Curve_Point samples[] = {{0, 0}, {0, 0}, {9, 12}, {12, 16}};
    EXPECT_FALSE(Fit_Bezier(samples));
    EXPECT_FALSE(Fit_Bezier(std::span(samples, 3)));
}

TEST(Subdivision, Ends_Every_Piece_On_The_Curve)
{
    const Bezier curve = {Curve_Point{0, 0}, {10, 90}, {60, 20}, {100, 100}};
    std::vector<Curve_Point> polyline;
    Subdivide_Bezier(curve, 6, polyline);
    ASSERT_EQ(polyline.size(), 64U);
    for (std::size_t i = 0; i < 64; ++i) {
        const Curve_Point expected = At(curve, float(i + 1) / 64);
        EXPECT_NEAR(polyline[i].x, expected.x, 1e-3);
        EXPECT_NEAR(polyline[i].y, expected.y, 1e-3);
    }
}

} // namespace
