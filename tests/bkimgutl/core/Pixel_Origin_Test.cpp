#include "bkimgutl/core/Pixel_Origin.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Art = std::vector<std::string>;

Art Mirrored(Art art)
{
    for (auto& row : art) std::reverse(row.begin(), row.end());
    return art;
}

Art Turned_Counterclockwise(const Art& art)
{
    Art turned(art[0].size());
    for (std::size_t y = 0; y < turned.size(); ++y)
        for (const auto& row : art) turned[y] += row[row.size() - 1 - y];
    return turned;
}

Art Apply(Pixel_Symmetry symmetry, Art art)
{
    if (symmetry.mirrored) art = Mirrored(art);
    for (int i = 0; i < symmetry.quarter_turns; ++i) art = Turned_Counterclockwise(art);
    return art;
}

const Art stored = {"abc", "def"};

TEST(Pixel_Symmetry, Two_In_A_Row_Are_One)
{
    for (int first = 0; first < 8; ++first) {
        for (int second = 0; second < 8; ++second) {
            const Pixel_Symmetry a{first & 3, first > 3};
            const Pixel_Symmetry b{second & 3, second > 3};
            EXPECT_EQ(Apply(Then(a, b), stored), Apply(b, Apply(a, stored))) << first << " then " << second;
        }
    }
}

struct Orientation_Case {
    int orientation;
    Art upright;
};

class Orientation : public testing::TestWithParam<Orientation_Case> {};

// The number says which sides of the upright picture the stored row 0 and column 0 are.
TEST_P(Orientation, Turns_Stored_Pixels_Upright)
{
    EXPECT_EQ(Apply(Symmetry_Of_Orientation(GetParam().orientation), stored), GetParam().upright);
}

INSTANTIATE_TEST_SUITE_P(All, Orientation,
                         testing::Values(Orientation_Case{1, {"abc", "def"}},     // top, left
                                         Orientation_Case{2, {"cba", "fed"}},     // top, right
                                         Orientation_Case{3, {"fed", "cba"}},     // bottom, right
                                         Orientation_Case{4, {"def", "abc"}},     // bottom, left
                                         Orientation_Case{5, {"ad", "be", "cf"}}, // left, top
                                         Orientation_Case{6, {"da", "eb", "fc"}}, // right, top
                                         Orientation_Case{7, {"fc", "eb", "da"}}, // right, bottom
                                         Orientation_Case{8, {"cf", "be", "ad"}}, // left, bottom
                                         Orientation_Case{0, stored}, Orientation_Case{9, stored},
                                         Orientation_Case{-3, stored}));

} // namespace
