#include "bkimgutl/filter/Scale.h"

#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/filter/Box_Scale.h"
#include "bkimgutl/filter/Scratch.h"
#include "bkimgutl/filter/Spread_Rows.h"
#include "bkimgutl/filter/Strip_Passes.h"
#include "bkimgutl/filter/Window_Rows.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

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

/// How far source sample i lies from the centre of an output, in units of the filter: a quotient of whole numbers, so that
/// a sample on the border between two boxes belongs to the same one everywhere.
double Distance(int sample, int output, int from, int to)
{
    const double numerator = (2.0 * sample + 1) * to - (2.0 * output + 1) * from;
    return numerator / (2.0 * std::max(from, to));
}

Taps Taps_Of(int output, int from, int to, Interpolation_Method method)
{
    const double ratio = double(from) / to, centre = (output + 0.5) * ratio - 0.5;
    const double reach = Interpolation_Support(method) * std::max(ratio, 1.0);
    Taps taps;
    taps.first = std::max(0, int(std::ceil(centre - reach)) - 1);
    const int last = std::min(from - 1, int(std::floor(centre + reach)) + 1);
    for (int i = taps.first; i <= last; ++i)
        taps.weights.push_back(Interpolation_Weight(method, Distance(i, output, from, to)));
    Make_Sum_One(taps); // never 0: the sample nearest to the centre is one of them
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

Line_Taps Scale_Line(int from, int to, Interpolation_Method method)
{
    const double ratio = double(from) / to, reach = Interpolation_Support(method) * std::max(ratio, 1.0);
    const int divisor = std::gcd(from, to), period = to / divisor, advance = from / divisor;
    const auto is_whole = [&](int output) {
        const double centre = (output + 0.5) * ratio - 0.5;
        return centre - reach >= 0 && centre + reach <= from - 1;
    };
    std::vector<int> own; // outputs with a recipe of their own; others have that of one period before
    for (int i = 0; i < to; ++i)
        if (i < period || !is_whole(i) || !is_whole(i - period)) own.push_back(i);

    std::vector<Taps> taps(own.size());
    For_Rows(int(own.size()), std::size_t(reach * 256), [&](int first, int end) {
        for (int k = first; k < end; ++k) {
            taps[std::size_t(k)] = Taps_Of(own[std::size_t(k)], from, to, method);
            Trim(taps[std::size_t(k)]);
        }
    });

    Line_Taps line{from, {}, {}};
    for (int i = 0, k = 0; i < to; ++i) {
        if (k < int(own.size()) && own[std::size_t(k)] == i) {
            line.Add(std::move(taps[std::size_t(k++)]));
        } else {
            const auto before = line.outputs[std::size_t(i - period)];
            line.outputs.push_back({before.first + advance, before.recipe});
        }
    }
    return line;
}

void Scale_Columns_First(const Bitmap_View& source, const Line_Taps& columns, const Line_Taps& rows,
                         const Mutable_Bitmap_View& target)
{
    Two_Banks banks{Weight_Bank(columns, Column_Shape(16)), Weight_Bank(rows, Window_Row_Shape(16))};
    banks.bits_between = std::min(6, 21 - banks.rows.Bits()); // so that the sums fit 32 bits
    const int strips = (target.height + Strip_Rows - 1) / Strip_Rows;
    const std::size_t cost =
        source.Row_Bytes() * std::size_t(source.height) / std::size_t(strips) + target.Row_Bytes() * Strip_Rows;
    For_Rows(strips, cost, [&](int first, int end) {
        for (int strip = first; strip < end; ++strip) {
            const int top = strip * Strip_Rows;
            Strip_Output<std::uint8_t> output{top, std::min(Strip_Rows, target.height - top), {}};
            for (int i = 0; i < output.count; ++i) output.rows[i] = target.Row(top + i);
            Filter_Columns_Then_Rows(source, banks, output);
        }
    });
}

constexpr int enlarging_bits = 6; // fractional ones; beyond 0..255 the filters swing by no more than that again

Row_Maker Enlarging_Maker(const Bitmap_View& source, const Spread_Plan& plan, int width)
{
    const std::size_t row_samples = source.Row_Bytes(), stride = Padded_Samples(row_samples);
    return {source.height, std::size_t(width) * std::size_t(source.bytes_per_pixel),
            [=, &plan](int first, int count, std::int16_t* const* out) {
                std::int16_t* grown = Scratch<struct Grown_Rows>(stride * 4);
                const std::int16_t* in[4];
                for (int i = 0; i < count; ++i) {
                    Grow_Row(source.Row(first + i), row_samples, enlarging_bits + 1, grown + std::size_t(i) * stride);
                    in[i] = grown + std::size_t(i) * stride;
                }
                Spread_Rows(plan, in, count, out);
            }};
}

Row_Maker Reducing_Maker(const Bitmap_View& source, const Weight_Bank& bank)
{
    const int channels = source.bytes_per_pixel;
    const std::size_t plane = Padded_Samples(std::size_t(source.width));
    return {source.height, std::size_t(bank.Length()) * std::size_t(channels),
            [=, &bank](int first, int count, std::int16_t* const* out) {
                std::int16_t* planes = Scratch<struct Maker_Planes>(plane * std::size_t(channels));
                for (int i = 0; i < count; ++i) {
                    Split_Planes(source.Row(first + i), std::size_t(source.width), channels, planes, plane);
                    Sum_Windows({&bank, channels, planes, plane, bank.Bits() - enlarging_bits}, out[i]);
                }
            }};
}

void Scale_Rows_First(const Bitmap_View& source, const Line_Taps& columns, const Line_Taps& rows,
                      const Mutable_Bitmap_View& target)
{
    const bool enlarging = target.width >= source.width;
    const Spread_Plan plan = enlarging ? Plan_Spread(rows, source.bytes_per_pixel, 14) : Spread_Plan();
    const Weight_Bank window_bank(rows, Window_Row_Shape(16));
    const Row_Maker maker =
        enlarging ? Enlarging_Maker(source, plan, target.width) : Reducing_Maker(source, window_bank);
    const Blend_Bank bank(columns);
    constexpr int rows_per_task = 128; // so that what two tasks both make of the source is little
    const int tasks = (target.height + rows_per_task - 1) / rows_per_task;
    For_Rows(tasks, target.Row_Bytes() * rows_per_task, [&](int first, int end) {
        Filter_Rows_Then_Columns(
            maker, bank, first * rows_per_task, std::min(end * rows_per_task, target.height),
            [&](int y, const Blend_Job& job) { Blend_Columns(job, enlarging_bits, target.Row(y) + job.first); });
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
    if (method == Interpolation_Method::Box && Can_Scale_By_Box(source, width, height)) {
        Scale_By_Box(source, result->Change());
        return result;
    }
    const Line_Taps columns = Scale_Line(source.height, height, method), rows = Scale_Line(source.width, width, method);
    const Mutable_Bitmap_View target = result->Change();
    if (height >= source.height)
        Scale_Rows_First(source, columns, rows, target);
    else
        Scale_Columns_First(source, columns, rows, target);
    return result;
}
