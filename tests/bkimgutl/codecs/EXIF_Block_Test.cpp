#include "bkimgutl/codecs/EXIF_Block.h"

#include "bkimgutl/codecs/Codec.h"
#include "dev/samples/Camera_Block.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace {

using Block = std::vector<std::byte>;

Block Made(const Camera_Facts& facts)
{
    const auto bytes = Camera_Block(facts);
    const auto view = std::as_bytes(std::span(bytes));
    return {view.begin(), view.end()};
}

Camera_Facts With_Thumbnail(bool big_endian)
{
    Camera_Facts facts{.big_endian = big_endian, .orientation = 6};
    facts.maker_note = std::vector<std::uint8_t>(50, 0x55);
    facts.thumbnail = std::vector<std::uint8_t>(300, 0xAB);
    return facts;
}

std::size_t Count(const Block& block, int value)
{
    return std::size_t(std::count(block.begin(), block.end(), std::byte(value)));
}

class EXIF_Block : public testing::TestWithParam<bool> {};

TEST_P(EXIF_Block, Orientation_Is_Read_And_Set_In_Place)
{
    Block block = Made({.big_endian = GetParam(), .orientation = 6});
    const Block before = block;
    EXPECT_EQ(6, Orientation_Of_EXIF_Block(block));
    Mend_EXIF_Block(block, 1, false);
    EXPECT_EQ(1, Orientation_Of_EXIF_Block(block));
    ASSERT_EQ(before.size(), block.size());
    int changed = 0;
    for (std::size_t i = 0; i < block.size(); ++i) changed += block[i] != before[i];
    EXPECT_EQ(1, changed);
}

TEST_P(EXIF_Block, Thumbnail_Becomes_Zeros_And_Everything_Else_Stays)
{
    Block block = Made(With_Thumbnail(GetParam()));
    const std::size_t size = block.size();
    Mend_EXIF_Block(block, 1, true);
    EXPECT_EQ(size, block.size());
    EXPECT_EQ(0U, Count(block, 0xAB));
    EXPECT_EQ(50U, Count(block, 0x55)) << "the maker note";
    const auto view = EXIF_View::Of(block);
    ASSERT_TRUE(view);
    EXPECT_EQ(0U, view->Next_Directory(view->First_Directory())) << "no reader looks for a broken thumbnail";
    EXPECT_TRUE(view->Find(view->Sub_Directory(view->First_Directory(), 34665), 37500));
}

TEST_P(EXIF_Block, Thumbnail_Stays_When_Pixels_Stay)
{
    Block block = Made(With_Thumbnail(GetParam()));
    Mend_EXIF_Block(block, 1, false);
    EXPECT_GE(Count(block, 0xAB), 300U);
}

INSTANTIATE_TEST_SUITE_P(Both_Orders, EXIF_Block, testing::Bool(),
                         [](const auto& row) { return row.param ? "big_endian" : "little_endian"; });

TEST(EXIF_Mending, Leaves_A_Block_Without_The_Tag_As_It_Is)
{
    Block block = Made({.orientation = 0});
    const Block before = block;
    Mend_EXIF_Block(block, 1, true);
    EXPECT_EQ(before, block);
    EXPECT_EQ(1, Orientation_Of_EXIF_Block(block));
}

TEST(EXIF_Mending, Takes_An_Orientation_Out_Of_Range_For_Upright)
{
    EXPECT_EQ(1, Orientation_Of_EXIF_Block(Made({.orientation = 9})));
    EXPECT_EQ(1, Orientation_Of_EXIF_Block({}));
    EXPECT_EQ(1, Orientation_Of_EXIF_Block(Block(5, std::byte('E'))));
}

TEST(EXIF_Mending, Does_Not_Blank_What_Something_Else_Uses)
{
    Block block = Made(With_Thumbnail(false));
    const auto view = EXIF_View::Of(block);
    const std::size_t thumbnail = view->Next_Directory(view->First_Directory());
    const auto offset = view->Find(thumbnail, 513);
    const auto length = view->Find(thumbnail, 514);
    // The claimed thumbnail covers the whole block, directories included.
    block[offset->value_at] = std::byte(8);
    block[offset->value_at + 1] = std::byte(0);
    block[length->value_at] = block[length->value_at + 1] = std::byte(0xFF);
    Mend_EXIF_Block(block, 1, true);
    EXPECT_EQ(1, Orientation_Of_EXIF_Block(block));
    EXPECT_EQ(50U, Count(block, 0x55));
}

TEST(EXIF_Mending, Survives_Every_Truncation)
{
    const Block whole = Made(With_Thumbnail(true));
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        Block block(whole.begin(), whole.begin() + std::ptrdiff_t(size));
        Mend_EXIF_Block(block, 1, true);
        Put_Resolution_In_EXIF_Block(block, 72, 96);
        EXPECT_EQ(size, block.size());
    }
}

TEST(EXIF_Mending, Survives_Random_Bytes_In_The_Directories)
{
    const unsigned seed = 20;
    std::mt19937 random(seed);
    const Block whole = Made(With_Thumbnail(false));
    for (int round = 0; round < 20'000; ++round) {
        Block block = whole;
        for (int i = 0; i < 4; ++i) block[6 + random() % (block.size() - 6)] = std::byte(random());
        const int orientation = Orientation_Of_EXIF_Block(block);
        EXPECT_GE(orientation, 1);
        EXPECT_LE(orientation, 8);
        Mend_EXIF_Block(block, 1, true);
        Put_Resolution_In_EXIF_Block(block, 72, 96);
        ASSERT_EQ(whole.size(), block.size());
    }
}

TEST(EXIF_View, Follows_No_Directory_That_Names_Itself)
{
    Block block = Made({});
    const auto view = EXIF_View::Of(block);
    block[view->Next_Field(view->First_Directory())] = std::byte(8);
    EXPECT_EQ(0U, EXIF_View::Of(block)->Next_Directory(EXIF_View::Of(block)->First_Directory()));
}

} // namespace
