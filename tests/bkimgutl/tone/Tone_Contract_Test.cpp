#include "bkimgutl/bkimgutl.h"
#include "bkimgutl/core/Last_Error.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>

namespace {

/// Every creating function of the tone family, and scaling, with arguments that it accepts.
struct Tone_Function {
    const char* name;
    Bitmap_Handle (*create)(Bitmap_Handle source);
};

const std::array<std::int32_t, 256> identity = [] {
    std::array<std::int32_t, 256> table{};
    for (int i = 0; i < 256; ++i) table[std::size_t(i)] = i;
    return table;
}();
const std::int32_t* const table = identity.data();
constexpr std::int32_t neutral_mix[19] = {100, 0, 0, 100, 0, 100, 0, 100, 0, 0, 100, 100};

class Tone_Contract : public testing::TestWithParam<Tone_Function> {};
INSTANTIATE_TEST_SUITE_P(
    All, Tone_Contract,
    testing::Values(
        Tone_Function{"contrast",
                      [](Bitmap_Handle b) { return Create_Contrast_Optimized_Bitmap_CPP(b, 0.01F, 0.01F); }},
        Tone_Function{"tables",
                      [](Bitmap_Handle b) {
                          return Create_RGB_Luminance_Table_Mapped_Bitmap_CPP(b, 15, table, table, table, table);
                      }},
        Tone_Function{"hsv", [](Bitmap_Handle b) { return Create_HSV_Table_Mapped_Bitmap_CPP(b, table, table); }},
        Tone_Function{
            "unsharp",
            [](Bitmap_Handle b) { return Create_Unsharp_Masked_Bitmap_CPP(b, 0.75F, 0.25F, 1.5F, 2, 5, 128); }},
        Tone_Function{"blur", [](Bitmap_Handle b) { return Create_Blurred_Bitmap_CPP(b, 2.5F, 50, 7); }},
        Tone_Function{"mix", [](Bitmap_Handle b) { return Create_Color_Mixed_Bitmap_CPP(b, neutral_mix); }},
        Tone_Function{"scale", [](Bitmap_Handle b) { return Create_Scaled_Bitmap_CPP(b, 5, 4, 7); }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_P(Tone_Contract, Makes_A_Bitmap_Of_A_Living_Handle_Only)
{
    for (const int depth : {1, 3}) {
        const Bitmap_Handle source = Create_Empty_Bitmap_CPP(5, 4, depth, 8);
        ASSERT_NE(0, source);
        const Bitmap_Handle result = GetParam().create(source);
        EXPECT_NE(0, result) << Last_Error_Text();
        Bitmap_Facts facts;
        ASSERT_TRUE(Get_Bitmap_Facts_CPP(result, &facts));
        EXPECT_EQ(std::tuple(5, 4, depth * 8), std::tuple(facts.width, facts.height, facts.bits_per_pixel));
        Delete_Bitmap_CPP(result);
        Delete_Bitmap_CPP(source);
        EXPECT_EQ(0, GetParam().create(source));
        EXPECT_FALSE(Last_Error_Text().empty());
    }
    EXPECT_EQ(0, GetParam().create(0));
    EXPECT_EQ(0, GetParam().create(std::numeric_limits<Bitmap_Handle>::min()));
}

TEST(Tone_Contract_Arguments, Sentinels_Of_Damaged_Items_Are_Failures_Or_Results)
{
    constexpr float sentinel = -2147483648.0F;
    constexpr std::int32_t missing = -2147483647;
    const Bitmap_Handle source = Create_Empty_Bitmap_CPP(4, 4, 3, 8);
    EXPECT_EQ(0, Create_Unsharp_Masked_Bitmap_CPP(source, sentinel, sentinel, sentinel, missing, missing, missing));
    EXPECT_EQ(0, Create_Blurred_Bitmap_CPP(source, sentinel, missing, missing));
    EXPECT_EQ(0, Create_Contrast_Optimized_Bitmap_CPP(source, sentinel, sentinel)); // both sides off on one level
    EXPECT_EQ("the picture has one level only, so its contrast cannot be stretched", Last_Error_Text());
    EXPECT_EQ(0, Create_Scaled_Bitmap_CPP(source, missing, missing, missing));
    EXPECT_EQ(0, Create_Scaled_Bitmap_CPP(source, 4, 4, 0));
    EXPECT_EQ(0, Create_Color_Mixed_Bitmap_CPP(source, nullptr));
    EXPECT_EQ(0, Create_HSV_Table_Mapped_Bitmap_CPP(source, nullptr, nullptr));
    Delete_Bitmap_CPP(source);
}

} // namespace
