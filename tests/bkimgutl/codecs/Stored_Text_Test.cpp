#include "bkimgutl/codecs/Stored_Text.h"

#include <gtest/gtest.h>

namespace {

struct Stored_Case {
    const char* name;
    std::string stored;
    std::string expected;
};

class Stored_Text : public testing::TestWithParam<Stored_Case> {};

TEST_P(Stored_Text, Becomes_UTF8)
{
    EXPECT_EQ(GetParam().expected, UTF8_From_Stored(GetParam().stored));
    EXPECT_TRUE(Is_UTF8(UTF8_From_Stored(GetParam().stored)));
}

INSTANTIATE_TEST_SUITE_P(
    All, Stored_Text,
    testing::Values(Stored_Case{"empty", "", ""}, Stored_Case{"plain", "Meadow", "Meadow"},
                    Stored_Case{"utf8_stays", "Wiese \xC3\xBC", "Wiese \xC3\xBC"},
                    Stored_Case{"four_bytes_stay", "\xF0\x9F\x8C\xBB", "\xF0\x9F\x8C\xBB"},
                    Stored_Case{"latin_letter", "f\xFCr", "f\xC3\xBCr"},
                    Stored_Case{"euro_of_windows", "\x80", "\xE2\x82\xAC"},
                    Stored_Case{"unassigned_code", "\x81", "\xC2\x81"}, Stored_Case{"cut_sequence", "\xC3", "\xC3\x83"},
                    Stored_Case{"overlong_slash", "\xC0\xAF", "\xC3\x80\xC2\xAF"},
                    Stored_Case{"surrogate", "\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},
                    Stored_Case{"beyond_the_last_code", "\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xE2\x82\xAC\xE2\x82\xAC"},
                    Stored_Case{"overlong_three", "\xE0\x80\x80", "\xC3\xA0\xE2\x82\xAC\xE2\x82\xAC"}),
    [](const auto& row) { return row.param.name; });

} // namespace
