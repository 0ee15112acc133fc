#include "bkimgutl/geometry/Turn.h"

#include "tests/bkimgutl/Reference_Pictures.h"

namespace {

void Copy_Pixel(const Bitmap_View& from, int from_x, int from_y, const Mutable_Bitmap_View& to, int to_x, int to_y)
{
    for (int c = 0; c < from.bytes_per_pixel; ++c)
        to.Row(to_y)[to_x * from.bytes_per_pixel + c] = from.Row(from_y)[from_x * from.bytes_per_pixel + c];
}

Bitmap Mirrored_Reference(const Bitmap& source)
{
    Bitmap result = Random_Picture(source.Width(), source.Height(), source.Bytes_Per_Pixel(), 0);
    const auto to = result.Change();
    for (int y = 0; y < source.Height(); ++y)
        for (int x = 0; x < source.Width(); ++x) Copy_Pixel(source.View(), source.Width() - 1 - x, y, to, x, y);
    return result;
}

// Counterclockwise: the right column becomes the topmost row.
Bitmap Quarter_Turn_Reference(const Bitmap& source)
{
    Bitmap result = Random_Picture(source.Height(), source.Width(), source.Bytes_Per_Pixel(), 0);
    const auto to = result.Change();
    for (int y = 0; y < source.Width(); ++y)
        for (int x = 0; x < source.Height(); ++x) Copy_Pixel(source.View(), source.Width() - 1 - y, x, to, x, y);
    return result;
}

Bitmap Turned_Reference(const Bitmap& source, Pixel_Symmetry symmetry)
{
    Bitmap result = symmetry.mirrored ? Mirrored_Reference(source) : Mirrored_Reference(Mirrored_Reference(source));
    for (int i = 0; i < symmetry.quarter_turns; ++i) result = Quarter_Turn_Reference(result);
    return result;
}

TEST(Turned, Agrees_With_The_Reference_In_All_Eight_Symmetries)
{
    For_Every_Target([] {
        For_Edge_Case_Pictures([](const Bitmap& source) {
            for (int number = 0; number < 8; ++number) {
                const Pixel_Symmetry symmetry{number & 3, number > 3};
                const auto turned = Turned(source, symmetry);
                ASSERT_TRUE(turned);
                EXPECT_TRUE(Same_Pixels(Turned_Reference(source, symmetry).View(), turned->View())) << number;
                EXPECT_TRUE(Padding_Is_Zero(*turned)) << number;
            }
        });
    });
}

TEST(Turned, A_Large_Picture_Is_Divided_Among_Threads_Without_A_Seam)
{
    for (const int bytes_per_pixel : {1, 3}) {
        const Bitmap source = Random_Picture(1051, 737, bytes_per_pixel, 9);
        for (int number = 0; number < 8; ++number) {
            const Pixel_Symmetry symmetry{number & 3, number > 3};
            const Bitmap expected = Turned_Reference(source, symmetry);
            For_Every_Target([&] { EXPECT_TRUE(Same_Pixels(expected.View(), Turned(source, symmetry)->View())); });
        }
    }
}

TEST(Turned, Four_Quarter_Turns_Give_The_Picture_Back)
{
    const Bitmap source = Random_Picture(101, 67, 3, 5);
    Bitmap turned = std::move(*Turned(source, {1, false}));
    for (int i = 0; i < 3; ++i) turned = std::move(*Turned(turned, {1, false}));
    EXPECT_TRUE(Same_Pixels(source.View(), turned.View()));
}

TEST(Turned, The_Origin_Learns_Of_Each_Turn)
{
    Bitmap source = Random_Picture(4, 3, 3, 1);
    EXPECT_EQ(Turned(source, {1, false})->Origin(), nullptr);
    auto origin = std::make_shared<Pixel_Origin>();
    origin->path = "a.jpg";
    origin->symmetry = {3, false};
    source.Set_Origin(origin);
    const auto once = Turned(source, {1, false});
    EXPECT_TRUE(once->Origin()->symmetry.Is_Identity());
    EXPECT_EQ(once->Origin()->path, "a.jpg");
    const auto twice = Turned(*once, Mirror_Top_To_Bottom);
    EXPECT_EQ(twice->Origin()->symmetry, Mirror_Top_To_Bottom);
}

} // namespace
