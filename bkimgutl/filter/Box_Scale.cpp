#include "bkimgutl/filter/Box_Scale.h"

#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/filter/Box_Rows.h"
#include "bkimgutl/filter/Scratch.h"

#include <cstdlib>
#include <vector>

namespace {

int Most_Block(int from, int to)
{
    return (from + to - 1) / to;
}

/// The first source sample of each output, and the end of the last: the samples j with j + 1/2 beyond i x from / to.
std::vector<std::int32_t> Block_Starts(int from, int to)
{
    std::vector<std::int32_t> starts;
    starts.reserve(std::size_t(to) + 1);
    for (std::int64_t i = 0; i <= to; ++i)
        starts.push_back(
            std::int32_t((2 * i * from + to) / (2 * std::int64_t(to)))); // i x from / to + 1/2, rounded down
    return starts;
}

std::vector<float> Column_Shares(const std::vector<std::int32_t>& starts, int channels)
{
    constexpr std::size_t room = 64; // vector code runs over the end
    std::vector<float> shares;
    shares.reserve(starts.size() * std::size_t(channels) + room);
    for (std::size_t i = 0; i + 1 < starts.size(); ++i)
        shares.insert(shares.end(), std::size_t(channels), 1 / float(starts[i + 1] - starts[i]));
    shares.resize(shares.size() + room);
    return shares;
}

} // namespace

bool Can_Scale_By_Box(const Bitmap_View& source, int width, int height)
{
    if (width > source.width || height > source.height) return false;
    const int rows = Most_Block(source.height, height);
    return rows <= Most_Box_Rows && std::int64_t(rows) * Most_Block(source.width, width) <= Most_Box_Pixels;
}

void Scale_By_Box(const Bitmap_View& source, const Mutable_Bitmap_View& target)
{
    const auto columns = Block_Starts(source.width, target.width), lines = Block_Starts(source.height, target.height);
    const auto shares = Column_Shares(columns, source.bytes_per_pixel);
    const int most_columns = Most_Block(source.width, target.width);
    const std::size_t cost = source.Row_Bytes() * std::size_t(source.height) / std::size_t(target.height);
    For_Rows(target.height, cost, [&](int first, int end) {
        std::uint16_t* sums = Scratch<struct Box_Sums, std::uint16_t>(source.Row_Bytes() + 64);
        const std::uint8_t* rows[Most_Box_Rows];
        for (int y = first; y < end; ++y) {
            const int top = lines[std::size_t(y)], count = lines[std::size_t(y) + 1] - top;
            for (int i = 0; i < count; ++i) rows[i] = source.Row(top + i);
            Box_Row_Sums(rows, count, source.Row_Bytes(), sums);
            Box_Line line{.sums = sums,
                          .starts = columns.data(),
                          .shares = shares.data(),
                          .most_columns = most_columns,
                          .count = target.width,
                          .channels = source.bytes_per_pixel,
                          .row_count = count,
                          .ahead = {}};
            if (y + 1 < end) // the rows below, which begin in memory with the last of them where it is bottom-up
                line.ahead = {source.Row(source.step < 0 ? top + 2 * count - 1 : top + count),
                              std::size_t(std::abs(source.step)) * std::size_t(count)};
            Box_Means(line, target.Row(y));
        }
    });
}
