#include "tests/bkimgutl/filter/Filter_References.h"

#include "tests/bkimgutl/Picture_Fixtures.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

/// What one sample of a scaled line is made of: neighbours of the old line, their weights with the sum 1.
struct Sample_Recipe {
    int first = 0;
    std::vector<double> weights{};
};

std::vector<Sample_Recipe> Recipes(int from, int to, Interpolation_Method method)
{
    const double ratio = double(from) / to, widening = std::max(ratio, 1.0);
    std::vector<Sample_Recipe> recipes;
    for (int i = 0; i < to; ++i) {
        const double centre = (i + 0.5) * ratio - 0.5, reach = Interpolation_Support(method) * widening;
        Sample_Recipe recipe{.first = std::max(0, int(std::ceil(centre - reach)) - 1)};
        double sum = 0;
        for (int j = recipe.first; j <= std::min(from - 1.0, centre + reach + 1); ++j) {
            // One division of whole numbers, so that the border between two boxes is where it is.
            const double distance = ((2.0 * j + 1) * to - (2.0 * i + 1) * from) / (2.0 * std::max(from, to));
            recipe.weights.push_back(Interpolation_Weight(method, distance));
            sum += recipe.weights.back();
        }
        for (double& weight : recipe.weights) weight /= sum;
        recipes.push_back(std::move(recipe));
    }
    return recipes;
}

/// One line of samples with real numbers throughout.
std::vector<double> Scaled_Line(const std::vector<double>& line, const std::vector<Sample_Recipe>& recipes)
{
    std::vector<double> out;
    for (const Sample_Recipe& recipe : recipes)
        out.push_back(
            std::inner_product(recipe.weights.begin(), recipe.weights.end(), line.data() + recipe.first, 0.0));
    return out;
}

/// Adds `count` samples times a weight.
template <class Sample>
void Add_Weighted(double* sums, const Sample* samples, std::size_t count, double weight)
{
    for (std::size_t x = 0; x < count; ++x) sums[x] += weight * samples[x];
}

std::vector<double> Gaussian_Weights(double radius, int reach)
{
    std::vector<double> weights;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        weights.push_back(std::exp(-0.5 * i * i / (radius * radius)));
        sum += weights.back();
    }
    for (double& weight : weights) weight /= sum;
    return weights;
}

} // namespace

Bitmap Scaled_Reference(const Bitmap_View& source, int width, int height, Interpolation_Method method)
{
    const auto across = Recipes(source.width, width, method);
    const auto down = Recipes(source.height, height, method);
    Bitmap result = New_Picture(width, height, source.bytes_per_pixel);
    const auto target = result.Change();
    for (int c = 0; c < source.bytes_per_pixel; ++c) {
        std::vector<std::vector<double>> middle;
        for (int y = 0; y < source.height; ++y) {
            std::vector<double> line;
            for (int x = 0; x < source.width; ++x) line.push_back(source.Row(y)[x * source.bytes_per_pixel + c]);
            middle.push_back(Scaled_Line(line, across));
        }
        for (int x = 0; x < width; ++x) {
            std::vector<double> line;
            for (const auto& row : middle) line.push_back(row[std::size_t(x)]);
            const auto scaled = Scaled_Line(line, down);
            for (int y = 0; y < height; ++y)
                target.Row(y)[x * source.bytes_per_pixel + c] =
                    std::uint8_t(std::clamp(std::nearbyint(scaled[std::size_t(y)]), 0.0, 255.0));
        }
    }
    return result;
}

Bitmap Mean_Of_Blocks(const Bitmap_View& source, int width, int height)
{
    const auto start = [](std::int64_t i, std::int64_t from, std::int64_t to) {
        return int((2 * i * from + to) / (2 * to));
    };
    return Drawn_Picture(width, height, source.bytes_per_pixel, [&](int x, int y, int c) {
        const int left = start(x, source.width, width), right = start(x + 1, source.width, width);
        const int top = start(y, source.height, height), bottom = start(y + 1, source.height, height);
        std::int64_t sum = 0;
        for (int v = top; v < bottom; ++v)
            for (int u = left; u < right; ++u) sum += source.Row(v)[u * source.bytes_per_pixel + c];
        const std::int64_t pixels = std::int64_t(right - left) * (bottom - top);
        return int((2 * sum + pixels) / (2 * pixels));
    });
}

Real_Rows Blurred_Reference(const Bitmap_View& source, double radius)
{
    const int reach = int(std::ceil(6 * radius)), depth = source.bytes_per_pixel;
    const std::vector<double> weights = Gaussian_Weights(radius, reach);
    const std::size_t row_samples = source.Row_Bytes();
    Real_Rows rows(std::size_t(source.height), std::vector<double>(row_samples));
    for (int y = 0; y < source.height; ++y) {
        std::vector<double> column(row_samples), wide;
        for (int i = -reach; i <= reach; ++i)
            Add_Weighted(column.data(), source.Row(std::clamp(y + i, 0, source.height - 1)), row_samples,
                         weights[std::size_t(i + reach)]);
        for (int x = -reach; x < source.width + reach; ++x)
            for (int c = 0; c < depth; ++c)
                wide.push_back(column[std::size_t(std::clamp(x, 0, source.width - 1) * depth + c)]);
        for (int i = 0; i <= 2 * reach; ++i)
            Add_Weighted(rows[std::size_t(y)].data(), wide.data() + i * depth, row_samples, weights[std::size_t(i)]);
    }
    return rows;
}
