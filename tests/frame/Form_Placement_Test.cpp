#include "frame/Form_Placement.h"

#include "frame/Settings_Store.h"
#include "frame/ports/Scripted_Platform.h"

#include <gtest/gtest.h>
#include <random>

namespace {

struct Window_On_Paper : Placed_Form {
    Form_Place Place() const override { return place; }
    void Move_To(const Form_Place& to) override { place = to; }
    Form_Place place{300, 450, 12000, 9000};
};

struct Record_Case {
    const char* name;
    const char* text;
    Placement_Record expected;
};

class Placement_Text : public testing::TestWithParam<Record_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Placement_Text,
    testing::Values(Record_Case{"whole_record",
                                "WOR:100:200,WSZ:300:400,SPR:0.250,SPR:0.750",
                                {{100, 200, 300, 400}, {0.25F, 0.75F}}},
                    Record_Case{"any_order", "SPR:0.5,WSZ:300:400,WOR:100:200", {{100, 200, 300, 400}, {0.5F}}},
                    Record_Case{"any_case_and_blanks", " wor : 100 : 200 ; wsz:300:400", {{100, 200, 300, 400}, {}}},
                    Record_Case{"other_keywords_are_passed", "ABC:'x,y',WOR:1:2,Q,WSZ:3:4,", {{1, 2, 3, 4}, {}}},
                    Record_Case{"a_negative_first_number_is_0", "WOR:-5:200", {{0, 200, 0, 0}, {}}},
                    Record_Case{"a_negative_second_number_is_the_first", "WOR:70:-5", {{70, 70, 0, 0}, {}}},
                    Record_Case{"too_large_a_number_is_not_taken", "WSZ:9:99999999999", {{0, 0, 9, 9}, {}}},
                    Record_Case{"the_largest_number_is_taken", "WSZ:2147483647:1", {{0, 0, 2147483647, 1}, {}}},
                    Record_Case{"a_missing_number", "WOR:12", {{12, 12, 0, 0}, {}}},
                    Record_Case{"letters_for_numbers", "WOR:a:b,WSZ:3:4", {{0, 0, 3, 4}, {}}},
                    Record_Case{"comment", "~WOR:1:2,WSZ:3:4", {{0, 0, 3, 4}, {}}},
                    Record_Case{"quotes_that_never_close", "WOR:'1:2,WSZ:3:4", {{0, 0, 0, 0}, {}}},
                    Record_Case{"separators_alone", ",;,,::", {{0, 0, 0, 0}, {}}},
                    Record_Case{"empty", "", {{0, 0, 0, 0}, {}}}),
    [](const auto& row) { return row.param.name; });

TEST_P(Placement_Text, Is_Read)
{
    EXPECT_EQ(GetParam().expected, Read_Placement_Record(QString::fromUtf8(GetParam().text)));
}

TEST(Placement_Record, Is_Written_With_Three_Decimals)
{
    const std::vector<float> splitters{0.3333F, 1.0F};
    EXPECT_EQ("WOR:1:2,WSZ:3:4,SPR:0.333,SPR:1.000", Placement_Record_Text({1, 2, 3, 4}, splitters).toStdString());
}

TEST(Placement_Record, Any_Text_Is_Read_To_Its_End)
{
    std::mt19937 random(7);
    const QString alphabet = QStringLiteral("WORSZP:,;'\"<>~-+.0123456789 &x\n\u00e9");
    for (int turn = 0; turn < 3000; ++turn) {
        QString text;
        for (unsigned left = random() % 60; left > 0; --left)
            text += alphabet[qsizetype(random() % unsigned(alphabet.size()))];
        const Form_Place place = Read_Placement_Record(text).place;
        EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.width >= 0 && place.height >= 0) << text.toStdString();
    }
}

struct Restore_Case {
    const char* name;
    Form_Place recorded;
    Form_Place expected; // minimum 12000 x 9000, screen 28800 x 16200
};

class Restored : public testing::TestWithParam<Restore_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Restored,
    testing::Values(Restore_Case{"fits", {1000, 2000, 13000, 10000}, {1000, 2000, 13000, 10000}},
                    Restore_Case{"smaller_than_designed", {1000, 2000, 100, 100}, {1000, 2000, 12000, 9000}},
                    Restore_Case{"larger_than_the_screen", {1, 1, 99999, 99999}, {1, 1, 28798, 16198}},
                    Restore_Case{"as_large_as_the_screen", {5, 5, 28800, 16200}, {1, 1, 28798, 16198}},
                    Restore_Case{"flush_at_the_left_is_centred", {0, 2000, 13000, 10000}, {7900, 2000, 13000, 10000}},
                    Restore_Case{"flush_at_the_top_is_centred", {1000, 0, 13000, 10000}, {1000, 3100, 13000, 10000}},
                    Restore_Case{"reaches_the_right_edge", {15800, 2000, 13000, 10000}, {7900, 2000, 13000, 10000}},
                    Restore_Case{
                        "just_inside_the_right_edge", {15799, 2000, 13000, 10000}, {15799, 2000, 13000, 10000}},
                    Restore_Case{"far_outside", {2147483647, 2147483647, 2147483647, 2147483647}, {1, 1, 28798, 16198}},
                    Restore_Case{"nothing_but_zeros", {0, 0, 0, 0}, {8400, 3600, 12000, 9000}}),
    [](const auto& row) { return row.param.name; });

TEST_P(Restored, Place)
{
    const Form_Place place = Restored_Place(GetParam().recorded, {12000, 9000}, {28800, 16200});
    EXPECT_EQ(GetParam().expected.left, place.left);
    EXPECT_EQ(GetParam().expected.top, place.top);
    EXPECT_EQ(GetParam().expected.width, place.width);
    EXPECT_EQ(GetParam().expected.height, place.height);
}

TEST(Form_Placement, Without_A_Record_The_Form_Is_Centred_At_Its_Size)
{
    Scripted_Platform scripted;
    Window_On_Paper form;
    EXPECT_TRUE(Restore_Form_Placement(scripted.platform, form, "Halvine-Grid", 20000, 15000).empty());
    EXPECT_EQ((Form_Place{8400, 3600, 12000, 9000}), form.place);
}

TEST(Form_Placement, A_Small_Record_Opens_A_Form_At_Its_Design_Size)
{
    Scripted_Platform scripted;
    scripted.settings.user[Settings_Key]["Halvine-Grid"] = "WOR:500:600,WSZ:100:100";
    Window_On_Paper form;
    Restore_Form_Placement(scripted.platform, form, "Halvine-Grid", 12000, 9000);
    EXPECT_EQ((Form_Place{500, 600, 12000, 9000}), form.place);
}

TEST(Form_Placement, What_Is_Saved_Comes_Back)
{
    Scripted_Platform scripted;
    Window_On_Paper form;
    const std::vector<float> splitters{0.25F, 0.625F};
    Save_Form_Placement(scripted.settings, form, "Halvine-Picture", splitters);
    Window_On_Paper next;
    next.place = {};
    EXPECT_EQ(splitters, Restore_Form_Placement(scripted.platform, next, "Halvine-Picture", 100, 100));
    EXPECT_EQ(form.place, next.place);
}

TEST(Form_Placement, A_Place_Left_Of_The_Screen_Is_Centred_At_The_Next_Start)
{
    Scripted_Platform scripted;
    Window_On_Paper form;
    form.place.left = -400;
    Save_Form_Placement(scripted.settings, form, "Halvine-Wand");
    Restore_Form_Placement(scripted.platform, form, "Halvine-Wand", 100, 100);
    EXPECT_EQ(8400, form.place.left);
}

TEST(Form_Design_Size, Is_The_Forms_Own_Or_The_Global_One)
{
    const QSize form(4000, 3000);
    const QSize global(12000, 9000);
    EXPECT_EQ(form, Form_Design_Size(true, form, global));
    EXPECT_EQ(global, Form_Design_Size(false, form, global));
    EXPECT_EQ(QSize(4000, 9000), Form_Design_Size(false, form, {0, 9000}));
}

} // namespace
