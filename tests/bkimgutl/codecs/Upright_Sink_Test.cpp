#include "bkimgutl/codecs/Upright_Sink.h"

#include "dev/samples/Picture.h"
#include "tests/bkimgutl/Reference_Pictures.h"
#include "tests/bkimgutl/codecs/Tiff_Fixture.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace {

Sample_Picture Noise(int width, int height, int channels, unsigned seed)
{
    std::mt19937 random(seed);
    Sample_Picture picture{width, height, channels, {}};
    picture.bytes.resize(std::size_t(width) * std::size_t(height) * std::size_t(channels));
    for (auto& byte : picture.bytes) byte = std::uint8_t(random());
    return picture;
}

/// The mean of each box of the upright picture, rounded to nearest: obviously right.
Bitmap Reduced_Reference(const Bitmap& source, int divisor)
{
    const auto from = source.View();
    divisor = std::min(divisor, 1000); // larger than any picture here
    auto result = Bitmap::Create((from.width + divisor - 1) / divisor, (from.height + divisor - 1) / divisor,
                                 from.bytes_per_pixel);
    const auto to = result->Change();
    for (int y = 0; y < to.height; ++y)
        for (int x = 0; x < to.width; ++x)
            for (int c = 0; c < to.bytes_per_pixel; ++c) {
                unsigned sum = 0, count = 0;
                for (int v = y * divisor; v < std::min((y + 1) * divisor, from.height); ++v)
                    for (int u = x * divisor; u < std::min((x + 1) * divisor, from.width); ++u, ++count)
                        sum += from.Row(v)[u * from.bytes_per_pixel + c];
                to.Row(y)[x * to.bytes_per_pixel + c] = std::uint8_t((sum + count / 2) / count);
            }
    return std::move(*result);
}

Bitmap Through_Sink(const Sample_Picture& stored, int orientation, int divisor)
{
    auto sink = Upright_Sink::Create(stored.width, stored.height, stored.channels, orientation, divisor);
    EXPECT_TRUE(sink);
    const Bitmap pixels = Bitmap_Of(stored);
    for (int y = 0; y < stored.height; ++y) {
        const int half = stored.width / 2; // rows may come in parts
        sink->Put(half, y, stored.width - half, pixels.View().Row(y) + half * stored.channels);
        if (half > 0) sink->Put(0, y, half, pixels.View().Row(y));
        sink->Close_Rows(y + 1);
    }
    return std::move(*sink).Take();
}

Bitmap Row_By_Row(const Sample_Picture& stored, int orientation, int divisor)
{
    auto sink = Upright_Sink::Create(stored.width, stored.height, stored.channels, orientation, divisor);
    EXPECT_TRUE(sink);
    const Bitmap pixels = Bitmap_Of(stored);
    for (int y = 0; y < stored.height; ++y) {
        std::memcpy(sink->Next_Row(), pixels.View().Row(y), pixels.View().Row_Bytes());
        sink->Row_Is_Written();
    }
    return std::move(*sink).Take();
}

} // namespace

TEST(Upright_Sink, Turns_And_Reduces_Like_The_Reference)
{
    for (const int channels : {1, 3})
        for (int orientation = 1; orientation <= 8; ++orientation)
            for (const int divisor : {1, 2, 3, 5, 8, 100, 2147483647})
                for (const auto& [width, height] : {std::pair{1, 1}, {7, 5}, {16, 24}, {1, 9}, {13, 1}, {9, 35}}) {
                    SCOPED_TRACE(testing::Message() << channels << " channels, orientation " << orientation
                                                    << ", divisor " << divisor << ", " << width << " x " << height);
                    const Sample_Picture upright = Noise(width, height, channels, unsigned(orientation * divisor));
                    const Sample_Picture stored = Stored_With_Orientation(upright, orientation);
                    const Bitmap expected = Reduced_Reference(Bitmap_Of(upright), divisor);
                    EXPECT_TRUE(Same_Pixels(expected.View(), Through_Sink(stored, orientation, divisor).View()));
                    EXPECT_TRUE(Same_Pixels(expected.View(), Row_By_Row(stored, orientation, divisor).View()));
                }
}

TEST(Upright_Sink, Takes_An_Unknown_Orientation_As_Upright)
{
    const Sample_Picture picture = Noise(5, 4, 3, 1);
    EXPECT_TRUE(Same_Pixels(Bitmap_Of(picture).View(), Through_Sink(picture, 0, 1).View()));
    EXPECT_TRUE(Same_Pixels(Bitmap_Of(picture).View(), Through_Sink(picture, 9, 1).View()));
}
