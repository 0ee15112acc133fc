#include "bkimgutl/filter/Scale.h"

#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/filter/Strip_Passes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

double Bell(double x)
{
    if (x < 0.5) return 0.75 - x * x;
    return x < 1.5 ? 0.5 * (x - 1.5) * (x - 1.5) : 0;
}

double Hermite(double x)
{
    return x < 1 ? (2 * x - 3) * x * x + 1 : 0;
}

double B_Spline(double x)
{
    if (x < 1) return (0.5 * x - 1) * x * x + 2.0 / 3;
    return x < 2 ? (2 - x) * (2 - x) * (2 - x) / 6 : 0;
}

double Sinc(double x)
{
    return x == 0 ? 1 : std::sin(std::numbers::pi * x) / (std::numbers::pi * x);
}

double Lanczos(double x, double lobes)
{
    return x < lobes ? Sinc(x) * Sinc(x / lobes) : 0;
}

double Mitchell(double x)
{
    constexpr double b = 1.0 / 3, c = 1.0 / 3;
    if (x < 1) return ((12 - 9 * b - 6 * c) * x * x * x + (-18 + 12 * b + 6 * c) * x * x + (6 - 2 * b)) / 6;
    if (x >= 2) return 0;
    return ((-b - 6 * c) * x * x * x + (6 * b + 30 * c) * x * x + (-12 * b - 48 * c) * x + (8 * b + 24 * c)) / 6;
}

Taps Taps_Of(int output, double ratio, int source_length, Interpolation_Method method)
{
    const double widening = std::max(ratio, 1.0);
    const double centre = (output + 0.5) * ratio - 0.5;
    const double reach = Interpolation_Support(method) * widening;
    Taps taps;
    taps.first = std::max(0, int(std::ceil(centre - reach)));
    const int last = std::min(source_length - 1, int(std::floor(centre + reach)));
    double sum = 0;
    for (int i = taps.first; i <= last; ++i) {
        taps.weights.push_back(Interpolation_Weight(method, (i - centre) / widening));
        sum += taps.weights.back();
    }
    if (!(sum > 1e-6)) return {std::clamp(int(std::nearbyint(centre)), 0, source_length - 1), {1.0}};
    Keep_Inside(taps, source_length);
    return taps;
}

/// Windows often begin or end with a tap of weight 0, which would cost as much as any other.
void Trim(Taps& taps)
{
    while (taps.weights.size() > 1 && taps.weights.back() == 0) taps.weights.pop_back();
    const auto first = std::find_if(taps.weights.begin(), taps.weights.end(), [](double w) { return w != 0; });
    taps.first += int(first - taps.weights.begin());
    taps.weights.erase(taps.weights.begin(), first);
}

Weight_Bank Scale_Bank(int from, int to, Interpolation_Method method)
{
    std::vector<Taps> taps;
    taps.reserve(std::size_t(to));
    for (int i = 0; i < to; ++i) {
        taps.push_back(Taps_Of(i, double(from) / to, from, method));
        Trim(taps.back());
    }
    return Weight_Bank::From_Taps(from, taps, 16);
}

void Scale_Columns_First(const Bitmap_View& source, const Two_Banks& banks, const Mutable_Bitmap_View& target)
{
    const int strips = (target.height + Strip_Rows - 1) / Strip_Rows;
    const std::size_t cost =
        source.Row_Bytes() * std::size_t(source.height) / std::size_t(strips) + target.Row_Bytes() * Strip_Rows;
    For_Rows(strips, cost, [&](int first, int end) {
        for (int strip = first; strip < end; ++strip) {
            Strip_Output output{
                strip * Strip_Rows, std::min((strip + 1) * Strip_Rows, target.height), Row_Layout::Bytes, {}, 0};
            for (int y = output.first; y < output.end; ++y) output.rows[y - output.first] = target.Row(y);
            Filter_Columns_Then_Rows(source, banks, output);
        }
    });
}

void Scale_Rows_First(const Bitmap_View& source, const Two_Banks& banks, const Mutable_Bitmap_View& target)
{
    constexpr int rows_per_task = 128; // so that what two tasks both make of the source is little
    const int tasks = (target.height + rows_per_task - 1) / rows_per_task;
    const int pairs = banks.columns.pairs;
    For_Rows(tasks, target.Row_Bytes() * rows_per_task, [&](int first, int end) {
        Filtered_Rows filtered(source, banks.rows, banks.bits_between);
        const std::int16_t* rows[Filtered_Rows::Most_Rows];
        for (int y = first * rows_per_task; y < std::min(end * rows_per_task, target.height); ++y) {
            filtered.Look_At(banks.columns.starts[std::size_t(y)], 2 * pairs, rows);
            Filter_Word_Columns(
                {rows, banks.columns.Weights(y), pairs, target.Row_Bytes(), banks.columns.bits + banks.bits_between},
                target.Row(y));
        }
    });
}

} // namespace

double Interpolation_Support(Interpolation_Method method)
{
    switch (method) {
    case Interpolation_Method::None: return 0;
    case Interpolation_Method::Box: return 0.5;
    case Interpolation_Method::Triangle:
    case Interpolation_Method::Hermite: return 1;
    case Interpolation_Method::Bell: return 1.5;
    case Interpolation_Method::B_Spline:
    case Interpolation_Method::Lanczos2:
    case Interpolation_Method::Mitchell: return 2;
    case Interpolation_Method::Lanczos3: return 3;
    }
    return 0;
}

double Interpolation_Weight(Interpolation_Method method, double distance)
{
    const double x = std::abs(distance);
    switch (method) {
    case Interpolation_Method::None: return 0;
    case Interpolation_Method::Box: return distance > -0.5 && distance <= 0.5 ? 1 : 0;
    case Interpolation_Method::Triangle: return std::max(0.0, 1 - x);
    case Interpolation_Method::Bell: return Bell(x);
    case Interpolation_Method::Hermite: return Hermite(x);
    case Interpolation_Method::B_Spline: return B_Spline(x);
    case Interpolation_Method::Lanczos2: return Lanczos(x, 2);
    case Interpolation_Method::Lanczos3: return Lanczos(x, 3);
    case Interpolation_Method::Mitchell: return Mitchell(x);
    }
    return 0;
}

Result<Bitmap> Scaled(const Bitmap_View& source, int width, int height, Interpolation_Method method)
{
    if (Interpolation_Support(method) == 0)
        return Failure("interpolation method " + std::to_string(int(method)) + " is outside 1 to 8");
    auto result = Bitmap::Create(width, height, source.bytes_per_pixel);
    if (!result) return result;
    Two_Banks banks{Scale_Bank(source.height, height, method), Scale_Bank(source.width, width, method)};
    const double columns_first =
        double(source.width) * height * banks.columns.pairs + double(width) * height * banks.rows.pairs;
    const double rows_first =
        double(width) * source.height * banks.rows.pairs + double(width) * height * banks.columns.pairs;
    const bool by_rows = rows_first < columns_first && 2 * banks.columns.pairs <= Filtered_Rows::Most_Rows;
    banks.bits_between = std::min(6, 21 - (by_rows ? banks.columns.bits : banks.rows.bits));
    const Mutable_Bitmap_View target = result->Change();
    if (by_rows)
        Scale_Rows_First(source, banks, target);
    else
        Scale_Columns_First(source, banks, target);
    return result;
}
