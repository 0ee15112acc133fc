#include "bkimgutl/core/Pixel_Memory.h"

#include <cstring>
#include <gtest/gtest.h>
#include <vector>

namespace {

class Pixel_Memory_Pool : public testing::Test {
protected:
    void SetUp() override { Release_Idle_Pixel_Memory(); }
    static constexpr std::size_t large = 10 << 20;
};

TEST_F(Pixel_Memory_Pool, Blocks_Are_Aligned_And_Have_Room_Behind_Their_End)
{
    for (const std::size_t size : {std::size_t(1), std::size_t(63), std::size_t(100'000), large, large + 1}) {
        const auto memory = Pixel_Memory::Allocate(size);
        ASSERT_TRUE(memory);
        EXPECT_EQ(memory->Size(), size);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory->Bytes()) % 64, 0U);
        std::memset(memory->Bytes(), 1, size + 64);
    }
}

TEST_F(Pixel_Memory_Pool, A_Large_Block_Is_Used_Again)
{
    const std::uint8_t* place = nullptr;
    {
        auto memory = Pixel_Memory::Allocate(large);
        ASSERT_TRUE(memory);
        place = memory->Bytes();
    }
    EXPECT_GE(Current_Pixel_Memory_Use().idle_bytes, large);
    const auto again = Pixel_Memory::Allocate(large - 1000);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->Bytes(), place);
    EXPECT_EQ(Current_Pixel_Memory_Use().idle_bytes, 0U);
}

TEST_F(Pixel_Memory_Pool, A_Much_Larger_Idle_Block_Is_Left_For_A_Larger_Picture)
{
    {
        auto memory = Pixel_Memory::Allocate(8 * large);
    }
    const std::size_t idle = Current_Pixel_Memory_Use().idle_bytes;
    const auto small = Pixel_Memory::Allocate(large);
    ASSERT_TRUE(small);
    EXPECT_EQ(Current_Pixel_Memory_Use().idle_bytes, idle);
}

TEST_F(Pixel_Memory_Pool, Idle_Memory_Stays_Below_Its_Bound)
{
    const std::size_t bound = Current_Pixel_Memory_Use().most_idle_bytes;
    const std::size_t block = bound / 4 + 1;
    {
        std::vector<Pixel_Memory> blocks;
        for (int i = 0; i < 6; ++i) {
            auto memory = Pixel_Memory::Allocate(block);
            ASSERT_TRUE(memory);
            blocks.push_back(std::move(*memory));
        }
    }
    EXPECT_LE(Current_Pixel_Memory_Use().idle_bytes, bound);
    EXPECT_GE(Current_Pixel_Memory_Use().idle_bytes, block);
    Release_Idle_Pixel_Memory();
    EXPECT_EQ(Current_Pixel_Memory_Use().idle_bytes, 0U);
}

TEST_F(Pixel_Memory_Pool, Live_Bytes_Return_To_Where_They_Were)
{
    const std::size_t before = Current_Pixel_Memory_Use().live_bytes;
    {
        auto first = Pixel_Memory::Allocate(large);
        auto second = Pixel_Memory::Allocate(100);
        Pixel_Memory moved = std::move(*first);
        *second = std::move(moved);
        EXPECT_GT(Current_Pixel_Memory_Use().live_bytes, before);
    }
    EXPECT_EQ(Current_Pixel_Memory_Use().live_bytes, before);
}

TEST_F(Pixel_Memory_Pool, Refuses_What_No_Machine_Has)
{
    EXPECT_FALSE(Pixel_Memory::Allocate(std::size_t(-1)));
    EXPECT_FALSE(Pixel_Memory::Allocate(Current_Pixel_Memory_Use().most_live_bytes + 1));
}

} // namespace
