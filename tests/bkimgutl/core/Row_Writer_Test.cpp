#include "bkimgutl/core/Row_Writer.h"

#include "bkimgutl/core/Bitmap.h"

#include <cstring>
#include <gtest/gtest.h>
#include <vector>

namespace {

/// Copies every second row in `parts` pieces, from an odd place.
void Copies_All_And_Nothing_Else(int width, int height, std::size_t parts)
{
    Bitmap target = std::move(Bitmap::Create(width, height, 3).value());
    const auto view = target.Change();
    const std::size_t bytes = view.Row_Bytes();
    std::vector<std::uint8_t> row(bytes + 1);
    for (std::size_t i = 0; i < bytes; ++i) row[i + 1] = std::uint8_t(i * 7 + 1);
    for (int y = 0; y < height; ++y) std::memset(view.Row(y), 0, bytes);
    {
        Row_Writer writer(view);
        for (int y = 0; y < height; y += 2)
            for (std::size_t i = 0; i < parts; ++i) {
                const std::size_t first = bytes * i / parts, end = bytes * (i + 1) / parts;
                writer.Copy_To_Row(y, first, row.data() + 1 + first, end - first);
            }
    }
    const std::vector<std::uint8_t> none(bytes);
    for (int y = 0; y < height; ++y)
        ASSERT_EQ(0, std::memcmp(view.Row(y), y % 2 != 0 ? none.data() : row.data() + 1, bytes)) << "row " << y;
}

} // namespace

TEST(Row_Writer, Copies_Rows_Of_Pictures_Small_And_Too_Large_For_The_Caches)
{
    Copies_All_And_Nothing_Else(1, 1, 1);
    Copies_All_And_Nothing_Else(123, 45, 7);
    Copies_All_And_Nothing_Else(2501, 2400, 1);
    Copies_All_And_Nothing_Else(2501, 2400, 333);
    Copies_All_And_Nothing_Else(20, 300000, 1); // rows shorter than a line
}
