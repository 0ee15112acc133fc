#pragma once

#include <cstdint>

/// Where a pixel of a rotated picture comes from. Pixel centres are whole numbers; positions carry 32 binary places.
struct Rotation_Map {
    double cosine = 1, sine = 0;
    double u0 = 0, v0 = 0;     ///< source position of the result's pixel (0, 0)
    int width = 0, height = 0; ///< of the result

    Rotation_Map(int source_width, int source_height, double degrees);

    static constexpr int places = 32;
    std::int64_t U_At_Row_Start(int y) const;
    std::int64_t V_At_Row_Start(int y) const;
    std::int64_t U_Step() const;
    std::int64_t V_Step() const;
};

/// A stretch of a result's row: pixels first to end.
struct Pixel_Span {
    int first = 0;
    int end = 0;
};

/// The x in 0..width for which low <= start + x * step <= high; empty as {0, 0}.
Pixel_Span Span_Where(std::int64_t start, std::int64_t step, std::int64_t low, std::int64_t high, int width);
Pixel_Span Both(Pixel_Span a, Pixel_Span b);
