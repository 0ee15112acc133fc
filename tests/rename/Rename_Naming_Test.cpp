// The naming rules: from present names and typed texts to new names.

#include "tests/rename/Naming_Inputs.h"

#include "evaluate/System_Host.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* Subject_Date_Serial = "ChangeTo & \"-\" & Format(FileDate, \"yyyymmdd\")  & \"-\" & FileSerial";
constexpr const char* Strip_Suffix =
    "Left(FileName, IIf((InStrRev(FileName, \"-\") > 0), (InStrRev(FileName, \"-\") - 1), Len(FileName)))";

/// Names stand between "|".
struct Naming_Case {
    const char* name;
    const char* files;
    Rename_Inputs inputs;
    const char* expected;
    const char* typed_start = nullptr; ///< null: nothing typed
    const char* shown_start = nullptr; ///< before anything is typed; null: not looked at

    Naming_Case With_Start(const char* text) const
    {
        Naming_Case changed = *this;
        changed.typed_start = text;
        return changed;
    }
    Naming_Case That_Shows(const char* text) const
    {
        Naming_Case changed = *this;
        changed.shown_start = text;
        return changed;
    }
};

class Naming : public testing::TestWithParam<Naming_Case> {
protected:
    Formula::System_Host host;
};

TEST_P(Naming, Gives_The_Names)
{
    const Naming_Case& row = GetParam();
    Rename_Job job(host, Rows_Of(Q(row.files).split('|')));
    job.Set_Inputs(row.inputs);
    if (row.shown_start != nullptr) {
        EXPECT_EQ(job.Inputs().start_numbering, Q(row.shown_start));
        EXPECT_EQ(job.Start_Numbering_Enabled(), *row.shown_start != '\0');
    }
    if (row.typed_start != nullptr) {
        Rename_Inputs inputs = job.Inputs();
        inputs.start_numbering = Q(row.typed_start);
        job.Set_Inputs(inputs);
    }
    EXPECT_EQ(New_Names(job), Q(row.expected).split('|'));
}

INSTANTIATE_TEST_SUITE_P(
    All, Naming,
    testing::Values(
        Naming_Case{"the_start_field_shows_the_digits_of_the_name", "IMG_0012.jpg", From_To("IMG", "Trip"),
                    "Trip_0012.jpg"}
            .That_Shows("0012"),
        Naming_Case{"a_typed_start_of_1_gives_the_width_of_the_largest", "IMG_0012.jpg", From_To("IMG", "Trip"),
                    "Trip_01.jpg"}
            .With_Start("1"),
        Naming_Case{"zeros_in_the_typed_start_widen", "IMG_0012.jpg", From_To("IMG", "Trip"), "Trip_0001.jpg"}
            .With_Start("0001"),
        Naming_Case{"blanks_around_the_typed_start_do_not_count", "IMG_0012.jpg", From_To("IMG", "Trip"),
                    "Trip_001.jpg"}
            .With_Start(" 001 "),
        Naming_Case{"without_digits_names_keep_their_rest", "beach-day.jpg|beach.jpg", From_To("beach", "Sea"),
                    "Sea-day.jpg|Sea.jpg"}
            .That_Shows(""),
        Naming_Case{"without_digits_patterns_keep_the_rest", "a-b-c.jpg", Pattern("*-", "X-"), "X-b-c.jpg"}.That_Shows(
            ""),
        Naming_Case{"a_pattern_matches_to_the_shortest_end", "a-b-c7.jpg", Pattern("*-", "X-"), "X-b-c7.jpg"}
            .That_Shows("7"),
        Naming_Case{"reserializing_by_5_from_10", "IMG_1.jpg|IMG_2.jpg|IMG_3.jpg",
                    Reserialized(From_To("IMG", "Trip"), "5"), "Trip_10.jpg|Trip_15.jpg|Trip_20.jpg"}
            .With_Start("10"),
        Naming_Case{"reserializing_by_1_when_the_interval_is_no_number", "IMG_1.jpg|IMG_2.jpg",
                    Reserialized(From_To("IMG", "Trip"), "x"), "Trip_09.jpg|Trip_10.jpg"}
            .With_Start("9"),
        Naming_Case{"files_that_do_not_fit_take_no_number", "IMG_1.jpg|DSC_9.jpg|IMG_3.jpg",
                    Reserialized(From_To("IMG", "Trip"), ""), "Trip_1.jpg||Trip_2.jpg"}
            .With_Start("1"),
        Naming_Case{"a_file_without_digits_is_reserialized_at_its_end", "IMG_1.jpg|IMG_x.jpg",
                    Reserialized(From_To("IMG", "Trip"), ""), "Trip_1.jpg|Trip_x2.jpg"}
            .With_Start("1"),
        Naming_Case{"the_last_file_gives_the_smallest_serial", "IMG_10.jpg|IMG_12.jpg", From_To("IMG", "Trip"),
                    "Trip_10.jpg|Trip_01.jpg"}
            .That_Shows("12")
            .With_Start("1"),
        Naming_Case{"in_pattern_mode_the_smallest_serial_is_the_smallest", "IMG_10.jpg|IMG_12.jpg",
                    Pattern("IMG", "Trip"), "Trip_01.jpg|Trip_03.jpg"}
            .That_Shows("10")
            .With_Start("1"),
        Naming_Case{"the_prefix_is_compared_without_case", "img_7.jpg", From_To("IMG", "Trip"), "Trip_7.jpg"},
        Naming_Case{"a_name_that_does_not_begin_so_stays", "DSC_7.jpg", From_To("IMG", "Trip"), ""},
        Naming_Case{"an_empty_from_names_nothing", "IMG_7.jpg", From_To("", "Trip"), ""},
        Naming_Case{"an_empty_to_names_nothing", "IMG_7.jpg", From_To("IMG", ""), ""},
        Naming_Case{"digits_before_the_end_and_a_suffix", "IMG_0012_edit.jpg", From_To("IMG", "Trip"),
                    "Trip_01_edit.jpg"}
            .With_Start("1"),
        Naming_Case{"digits_that_begin_the_name_are_no_serial", "0012.jpg", From_To("0", "Trip"), "Trip012.jpg"}
            .That_Shows(""),
        Naming_Case{"only_the_run_behind_the_prefix_is_renumbered", "IMG_0012.jpg", From_To("IMG_00", "T"), "T05.jpg"}
            .That_Shows("0012")
            .With_Start("5"),
        Naming_Case{"a_serial_that_is_too_large_is_none", "IMG_99999999999.jpg|IMG_1.jpg", From_To("IMG", "T"),
                    "T_99999999999.jpg|T_1.jpg"}
            .That_Shows("1"),
        Naming_Case{"a_serial_of_the_limit_itself_is_none", "IMG_2147483647.jpg", From_To("IMG", "T"),
                    "T_2147483647.jpg"}
            .That_Shows(""),
        Naming_Case{"the_largest_serial_counts", "IMG_2147483646.jpg", From_To("IMG", "T"), "T_2147483646.jpg"}
            .That_Shows("2147483646"),
        Naming_Case{"a_start_that_is_no_number_renumbers_nothing", "IMG_0012.jpg", From_To("IMG", "T"), "T_0012.jpg"}
            .With_Start("x"),
        Naming_Case{"an_offset_below_zero_keeps_the_rest", "IMG_10.jpg|IMG_12.jpg", From_To("IMG", "T"),
                    "T_10.jpg|T_00.jpg"}
            .With_Start("0"),
        Naming_Case{"in_pattern_mode_a_file_without_digits_is_number_0", "IMG_a.jpg|IMG_7.jpg", Pattern("IMG_", "T"),
                    "Ta0.jpg|T7.jpg"},
        Naming_Case{"in_pattern_mode_without_digits_a_formula_sees_serial_00", "beach.jpg|lake.jpg",
                    With_Formula(Pattern("?", "x"), Subject_Date_Serial), "x-20260314-00.jpg|x-20260314-00.jpg"}
            .That_Shows(""),
        Naming_Case{"in_pattern_mode_a_start_that_is_no_number_keeps_the_rest", "IMG_0012.jpg|IMG_0013.jpg",
                    Pattern("IMG", "T"), "T_0012.jpg|T_0013.jpg"}
            .With_Start("none"),
        Naming_Case{"a_start_that_is_no_number_widens_what_a_formula_sees", "IMG_7.jpg",
                    With_Formula(Pattern("IMG", "T"), "FileSerial"), "0000.jpg"}
            .With_Start("none"),
        Naming_Case{"a_start_below_zero_gives_no_width_and_its_file_keeps_its_rest", "IMG_1.jpg|IMG_2.jpg|IMG_3.jpg",
                    Reserialized(From_To("IMG", "T"), "100"), "T_1.jpg|T_95.jpg|T_195.jpg"}
            .With_Start("-5"),
        Naming_Case{"names_without_digits_are_numbered_from_a_given_start", "beach-day.jpg|beach.jpg",
                    Reserialized(From_To("beach", "Sea"), "2"), "Sea-day08.jpg|Sea10.jpg"}
            .With_Start("08"),
        Naming_Case{"the_type_is_that_of_the_field", "IMG_7.TIF", Of_Type(From_To("IMG", "T"), "jpg"), "T_7.jpg"},
        Naming_Case{"the_type_may_have_its_point", "IMG_7.TIF", Of_Type(From_To("IMG", "T"), ".jpg"), "T_7.jpg"},
        Naming_Case{"a_file_without_a_type_stays_without", "IMG_7", From_To("IMG", "T"), "T_7"},
        Naming_Case{"only_the_last_point_parts_the_type", "IMG_7.a.jpg", From_To("IMG", "T"), "T_7.a.jpg"},
        Naming_Case{"colons_and_backslashes_belong_to_the_name", "IMG:7\\8.jpg", From_To("IMG", "T"), "T:7\\8.jpg"},
        Naming_Case{"names_beyond_ascii", "Öland 7.jpg", From_To("öland", "Gotland"), "Gotland 7.jpg"},
        Naming_Case{"a_pattern_with_a_list", "DSC_7.jpg|IMG_8.jpg|QQQ_9.jpg", Pattern("[di][sm][cg]", "T"),
                    "T_7.jpg|T_8.jpg|"},
        Naming_Case{"a_pattern_that_is_not_closed_fits_nothing", "IMG_7.jpg", Pattern("[I", "T"), ""},
        Naming_Case{"a_pattern_of_digits", "IMG_0012.jpg", Pattern("IMG_##", "T"), "T12.jpg"}.That_Shows("12"),
        Naming_Case{"subject_date_serial", "IMG_0012.jpg|IMG_0013.jpg",
                    With_Formula(Reserialized(From_To("IMG", "Trip"), ""), Subject_Date_Serial),
                    "Trip-20260314-001.jpg|Trip-20260314-002.jpg"}
            .With_Start("001"),
        Naming_Case{"strip_suffix", "trip-0012.jpg", With_Formula(From_To("trip", "x"), Strip_Suffix), "trip.jpg"},
        Naming_Case{"strip_suffix_without_a_suffix", "trip.jpg", With_Formula(Pattern("trip", "x"), Strip_Suffix),
                    "trip.jpg"},
        Naming_Case{"without_a_serial_there_is_no_formula", "trip.jpg",
                    With_Formula(From_To("trip", "x"), Subject_Date_Serial), "x.jpg"},
        Naming_Case{"a_formula_needs_from_and_to", "IMG_7.jpg", With_Formula(From_To("", "x"), Strip_Suffix), ""},
        Naming_Case{"the_width_and_the_height_of_a_picture_share_one_name", "IMG_7.jpg",
                    With_Formula(From_To("IMG", "x"), "FileHPix & FileExt"), "300.jpg.jpg"},
        Naming_Case{"a_formula_that_fails_for_a_file_leaves_it", "IMG_7.jpg|IMG_0.jpg",
                    With_Formula(From_To("IMG", "x"), "14 / FileSerial"), "2.jpg|"},
        Naming_Case{"a_formula_without_a_text_leaves_the_file", "IMG_7.jpg", With_Formula(From_To("IMG", "x"), "\"\""),
                    ""},
        Naming_Case{"a_folder_in_change_to_is_left_out", "IMG_7.jpg", From_To("IMG", "2026/Trip"), "Trip_7.jpg"},
        Naming_Case{"the_folder_above_is_left_out_too", "IMG_7.jpg", From_To("IMG", "../Trip"), "Trip_7.jpg"},
        Naming_Case{"a_new_name_that_is_a_folder_alone_is_none", "IMG_7.jpg", From_To("IMG_7", "Trip/"), ""},
        Naming_Case{"a_folder_that_a_formula_gives_is_left_out", "IMG_7.jpg",
                    With_Formula(From_To("IMG", "x"), "Format(FileDate, \"yyyy\") & \"/\" & FileSerial"), "7.jpg"},
        Naming_Case{"a_folder_in_the_type_is_left_out", "IMG_7.jpg", Of_Type(From_To("IMG", "T"), "a/tif"), "T_7.tif"},
        Naming_Case{"a_type_that_is_a_folder_alone_is_none", "IMG_7.jpg", Of_Type(From_To("IMG", "T"), "a/"),
                    "T_7.jpg"},
        Naming_Case{"pattern_and_interval_5_from_10", "IMG_1.jpg|IMG_2.jpg|IMG_3.jpg",
                    Reserialized(Pattern("*_", "Trip"), "5"), "Trip10.jpg|Trip15.jpg|Trip20.jpg"}
            .With_Start("10"),
        Naming_Case{"a_start_beyond_what_numbers_hold_is_none", "IMG_0012.jpg", From_To("IMG", "T"), "T_0012.jpg"}
            .With_Start("99999999999")),
    [](const auto& row) { return row.param.name; });

} // namespace
