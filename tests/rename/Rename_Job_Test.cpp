#include "rename/Rename_Job.h"

#include "evaluate/System_Host.h"
#include "tests/rename/Rename_Reference.h"

#include <gtest/gtest.h>
#include <random>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

std::vector<Rename_Row> Rows_Of(const QStringList& names)
{
    std::vector<Rename_Row> rows;
    for (const QString& name : names)
        rows.push_back({.folder = Q("/home/anna/Pictures/"),
                        .file_name = name,
                        .file_date = 46095.5, // 14 March 2026, noon
                        .horz_pixels = 400,
                        .vert_pixels = 300});
    return rows;
}

QStringList New_Names(const Rename_Job& job)
{
    QStringList names;
    for (const Rename_Row& row : job.Rows()) names << row.new_name;
    return names;
}

const Chosen_Formula Subject_Date_Serial{
    .name = Q("Subject-Date-Serial"),
    .text = Q("ChangeTo & \"-\" & Format(FileDate, \"yyyymmdd\")  & \"-\" & FileSerial")};
const Chosen_Formula Strip_Suffix{
    .name = Q("Strip Suffix"),
    .text = Q("Left(FileName, IIf((InStrRev(FileName, \"-\") > 0), (InStrRev(FileName, \"-\") - 1), Len(FileName)))")};

struct Naming_Case {
    const char* name;
    QStringList files;
    Rename_Inputs inputs;
    const char* typed_start; ///< null: nothing typed
    QStringList expected;
    const char* start = nullptr; ///< what the start field shows before anything is typed; null: not looked at
};

class Naming : public testing::TestWithParam<Naming_Case> {
protected:
    Formula::System_Host host;
};

Rename_Inputs From_To(const char* from, const char* to)
{
    return {.change_from = Q(from), .change_to = Q(to)};
}

Rename_Inputs Pattern(const char* from, const char* to)
{
    return {.change_from = Q(from), .change_to = Q(to), .pattern_mode = true};
}

Rename_Inputs Reserialized(Rename_Inputs inputs, const char* interval)
{
    inputs.reserialize = true;
    inputs.reserialize_interval = Q(interval);
    return inputs;
}

Rename_Inputs With(Rename_Inputs inputs, const Chosen_Formula& formula)
{
    inputs.formula = formula;
    return inputs;
}

Rename_Inputs Typed(Rename_Inputs inputs, const char* type)
{
    inputs.file_type = Q(type);
    return inputs;
}

TEST_P(Naming, Gives_The_Names)
{
    const Naming_Case& row = GetParam();
    Rename_Job job(host, Rows_Of(row.files));
    job.Set_Inputs(row.inputs);
    if (row.start != nullptr) {
        EXPECT_EQ(job.Inputs().start_numbering, Q(row.start));
    }
    if (row.typed_start != nullptr) {
        Rename_Inputs inputs = job.Inputs();
        inputs.start_numbering = Q(row.typed_start);
        job.Set_Inputs(inputs);
    }
    EXPECT_EQ(New_Names(job), row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    All, Naming,
    testing::Values(
        Naming_Case{"the_start_field_shows_the_digits_of_the_name",
                    {"IMG_0012.jpg"},
                    From_To("IMG", "Trip"),
                    nullptr,
                    {"Trip_0012.jpg"},
                    "0012"},
        Naming_Case{"a_typed_start_of_1_gives_the_width_of_the_largest",
                    {"IMG_0012.jpg"},
                    From_To("IMG", "Trip"),
                    "1",
                    {"Trip_01.jpg"}},
        Naming_Case{
            "zeros_in_the_typed_start_widen", {"IMG_0012.jpg"}, From_To("IMG", "Trip"), "0001", {"Trip_0001.jpg"}},
        Naming_Case{"blanks_around_the_typed_start_do_not_count",
                    {"IMG_0012.jpg"},
                    From_To("IMG", "Trip"),
                    " 001 ",
                    {"Trip_001.jpg"}},
        Naming_Case{"without_digits_names_keep_their_rest",
                    {"beach-day.jpg", "beach.jpg"},
                    From_To("beach", "Sea"),
                    nullptr,
                    {"Sea-day.jpg", "Sea.jpg"},
                    ""},
        Naming_Case{
            "without_digits_patterns_keep_the_rest", {"a-b-c.jpg"}, Pattern("*-", "X-"), nullptr, {"X-b-c.jpg"}, ""},
        Naming_Case{
            "a_pattern_matches_to_the_shortest_end", {"a-b-c7.jpg"}, Pattern("*-", "X-"), nullptr, {"X-b-c7.jpg"}, "7"},
        Naming_Case{"reserializing_by_5_from_10",
                    {"IMG_1.jpg", "IMG_2.jpg", "IMG_3.jpg"},
                    Reserialized(From_To("IMG", "Trip"), "5"),
                    "10",
                    {"Trip_10.jpg", "Trip_15.jpg", "Trip_20.jpg"}},
        Naming_Case{"reserializing_by_1_when_the_interval_is_no_number",
                    {"IMG_1.jpg", "IMG_2.jpg"},
                    Reserialized(From_To("IMG", "Trip"), "x"),
                    "9",
                    {"Trip_09.jpg", "Trip_10.jpg"}},
        Naming_Case{"files_that_do_not_fit_take_no_number",
                    {"IMG_1.jpg", "DSC_9.jpg", "IMG_3.jpg"},
                    Reserialized(From_To("IMG", "Trip"), ""),
                    "1",
                    {"Trip_1.jpg", "", "Trip_2.jpg"}},
        Naming_Case{"a_file_without_digits_is_reserialized_at_its_end",
                    {"IMG_1.jpg", "IMG_x.jpg"},
                    Reserialized(From_To("IMG", "Trip"), ""),
                    "1",
                    {"Trip_1.jpg", "Trip_x2.jpg"}},
        Naming_Case{"the_last_file_gives_the_smallest_serial",
                    {"IMG_10.jpg", "IMG_12.jpg"},
                    From_To("IMG", "Trip"),
                    "1",
                    {"Trip_10.jpg", "Trip_01.jpg"},
                    "12"},
        Naming_Case{"in_pattern_mode_the_smallest_serial_is_the_smallest",
                    {"IMG_10.jpg", "IMG_12.jpg"},
                    Pattern("IMG", "Trip"),
                    "1",
                    {"Trip_01.jpg", "Trip_03.jpg"},
                    "10"},
        Naming_Case{
            "the_prefix_is_compared_without_case", {"img_7.jpg"}, From_To("IMG", "Trip"), nullptr, {"Trip_7.jpg"}},
        Naming_Case{"a_name_that_does_not_begin_so_stays", {"DSC_7.jpg"}, From_To("IMG", "Trip"), nullptr, {""}},
        Naming_Case{"an_empty_from_names_nothing", {"IMG_7.jpg"}, From_To("", "Trip"), nullptr, {""}},
        Naming_Case{"an_empty_to_names_nothing", {"IMG_7.jpg"}, From_To("IMG", ""), nullptr, {""}},
        Naming_Case{"digits_before_the_end_and_a_suffix",
                    {"IMG_0012_edit.jpg"},
                    From_To("IMG", "Trip"),
                    "1",
                    {"Trip_01_edit.jpg"}},
        Naming_Case{"digits_that_begin_the_name_are_no_serial",
                    {"0012.jpg"},
                    From_To("0", "Trip"),
                    nullptr,
                    {"Trip012.jpg"},
                    ""},
        Naming_Case{"only_the_run_behind_the_prefix_is_renumbered",
                    {"IMG_0012.jpg"},
                    From_To("IMG_00", "T"),
                    "5",
                    {"T05.jpg"},
                    "0012"},
        Naming_Case{"a_serial_that_is_too_large_is_none",
                    {"IMG_99999999999.jpg", "IMG_1.jpg"},
                    From_To("IMG", "T"),
                    nullptr,
                    {"T_99999999999.jpg", "T_1.jpg"},
                    "1"},
        Naming_Case{"a_serial_of_the_limit_itself_is_none",
                    {"IMG_2147483647.jpg"},
                    From_To("IMG", "T"),
                    nullptr,
                    {"T_2147483647.jpg"},
                    ""},
        Naming_Case{"the_largest_serial_counts",
                    {"IMG_2147483646.jpg"},
                    From_To("IMG", "T"),
                    nullptr,
                    {"T_2147483646.jpg"},
                    "2147483646"},
        Naming_Case{
            "a_start_that_is_no_number_renumbers_nothing", {"IMG_0012.jpg"}, From_To("IMG", "T"), "x", {"T_0012.jpg"}},
        Naming_Case{"an_offset_below_zero_keeps_the_rest",
                    {"IMG_10.jpg", "IMG_12.jpg"},
                    From_To("IMG", "T"),
                    "0",
                    {"T_10.jpg", "T_00.jpg"}},
        Naming_Case{"in_pattern_mode_a_file_without_digits_is_number_0",
                    {"IMG_a.jpg", "IMG_7.jpg"},
                    Pattern("IMG_", "T"),
                    nullptr,
                    {"Ta0.jpg", "T7.jpg"}},
        Naming_Case{"in_pattern_mode_without_digits_a_formula_sees_serial_00",
                    {"beach.jpg", "lake.jpg"},
                    With(Pattern("?", "x"), Subject_Date_Serial),
                    nullptr,
                    {"x-20260314-00.jpg", "x-20260314-00.jpg"},
                    ""},
        Naming_Case{"in_pattern_mode_a_start_that_is_no_number_keeps_the_rest",
                    {"IMG_0012.jpg", "IMG_0013.jpg"},
                    Pattern("IMG", "T"),
                    "none",
                    {"T_0012.jpg", "T_0013.jpg"}},
        Naming_Case{"a_start_that_is_no_number_widens_what_a_formula_sees",
                    {"IMG_7.jpg"},
                    With(Pattern("IMG", "T"), {.name = Q("s"), .text = Q("FileSerial")}),
                    "none",
                    {"0000.jpg"}},
        Naming_Case{"names_without_digits_are_numbered_from_a_given_start",
                    {"beach-day.jpg", "beach.jpg"},
                    Reserialized(From_To("beach", "Sea"), "2"),
                    "08",
                    {"Sea-day08.jpg", "Sea10.jpg"}},
        Naming_Case{
            "the_type_is_that_of_the_field", {"IMG_7.TIF"}, Typed(From_To("IMG", "T"), "jpg"), nullptr, {"T_7.jpg"}},
        Naming_Case{
            "the_type_may_have_its_point", {"IMG_7.TIF"}, Typed(From_To("IMG", "T"), ".jpg"), nullptr, {"T_7.jpg"}},
        Naming_Case{"a_file_without_a_type_stays_without", {"IMG_7"}, From_To("IMG", "T"), nullptr, {"T_7"}},
        Naming_Case{"only_the_last_point_parts_the_type", {"IMG_7.a.jpg"}, From_To("IMG", "T"), nullptr, {"T_7.a.jpg"}},
        Naming_Case{"colons_and_backslashes_belong_to_the_name",
                    {"IMG:7\\8.jpg"},
                    From_To("IMG", "T"),
                    nullptr,
                    {"T:7\\8.jpg"}},
        Naming_Case{"names_beyond_ascii", {"Öland 7.jpg"}, From_To("öland", "Gotland"), nullptr, {"Gotland 7.jpg"}},
        Naming_Case{"a_pattern_with_a_list",
                    {"DSC_7.jpg", "IMG_8.jpg", "QQQ_9.jpg"},
                    Pattern("[di][sm][cg]", "T"),
                    nullptr,
                    {"T_7.jpg", "T_8.jpg", ""}},
        Naming_Case{"a_pattern_that_is_not_closed_fits_nothing", {"IMG_7.jpg"}, Pattern("[I", "T"), nullptr, {""}},
        Naming_Case{"a_pattern_of_digits", {"IMG_0012.jpg"}, Pattern("IMG_##", "T"), nullptr, {"T12.jpg"}, "12"},
        Naming_Case{"subject_date_serial",
                    {"IMG_0012.jpg", "IMG_0013.jpg"},
                    With(Reserialized(From_To("IMG", "Trip"), ""), Subject_Date_Serial),
                    "001",
                    {"Trip-20260314-001.jpg", "Trip-20260314-002.jpg"}},
        Naming_Case{"strip_suffix", {"trip-0012.jpg"}, With(From_To("trip", "x"), Strip_Suffix), nullptr, {"trip.jpg"}},
        Naming_Case{"strip_suffix_without_a_suffix",
                    {"trip.jpg"},
                    With(Pattern("trip", "x"), Strip_Suffix),
                    nullptr,
                    {"trip.jpg"}},
        Naming_Case{"without_a_serial_there_is_no_formula",
                    {"trip.jpg"},
                    With(From_To("trip", "x"), Subject_Date_Serial),
                    nullptr,
                    {"x.jpg"}},
        Naming_Case{"a_formula_needs_from_and_to", {"IMG_7.jpg"}, With(From_To("", "x"), Strip_Suffix), nullptr, {""}},
        Naming_Case{"the_width_and_the_height_of_a_picture_share_one_name",
                    {"IMG_7.jpg"},
                    With(From_To("IMG", "x"), {.name = Q("h"), .text = Q("FileHPix & FileExt")}),
                    nullptr,
                    {"300.jpg.jpg"}},
        Naming_Case{"a_formula_that_fails_for_a_file_leaves_it",
                    {"IMG_7.jpg", "IMG_0.jpg"},
                    With(From_To("IMG", "x"), {.name = Q("d"), .text = Q("14 / FileSerial")}),
                    nullptr,
                    {"2.jpg", ""}},
        Naming_Case{"a_formula_without_a_text_leaves_the_file",
                    {"IMG_7.jpg"},
                    With(From_To("IMG", "x"), {.name = Q("e"), .text = Q("\"\"")}),
                    nullptr,
                    {""}}),
    [](const auto& row) { return row.param.name; });

class Rename_Job_Test : public testing::Test {
protected:
    Formula::System_Host host;
};

TEST_F(Rename_Job_Test, The_Start_Field_Is_Enabled_By_A_Serial)
{
    EXPECT_FALSE(Rename_Job(host, Rows_Of({"beach.jpg"})).Start_Numbering_Enabled());
    const Rename_Job job(host, Rows_Of({"IMG_3.jpg", "IMG_9.jpg", "IMG_4.jpg"}));
    EXPECT_TRUE(job.Start_Numbering_Enabled());
    EXPECT_EQ(job.Inputs().start_numbering, "4");
    EXPECT_EQ(job.Smallest_Serial(), 4);
    EXPECT_EQ(job.Largest_Serial(), 9);
}

TEST_F(Rename_Job_Test, A_Match_Behind_The_Beginning_Leaves_The_Name_As_It_Was)
{
    Rename_Job job(host, Rows_Of({"IMG_7.jpg"}));
    job.Set_Inputs(Pattern("IMG", "Trip"));
    job.Set_Inputs(Pattern("MG", "Sea"));
    EXPECT_EQ(New_Names(job), QStringList{"Trip_7.jpg"});
}

TEST_F(Rename_Job_Test, Another_Interval_Keeps_What_Was_Typed_As_Start)
{
    Rename_Job job(host, Rows_Of({"IMG_7.jpg", "IMG_8.jpg"}));
    Rename_Inputs inputs = Reserialized(From_To("IMG", "T"), "1");
    job.Set_Inputs(inputs);
    inputs = job.Inputs();
    inputs.start_numbering = "100";
    job.Set_Inputs(inputs);
    inputs.reserialize_interval = "10";
    job.Set_Inputs(inputs);
    EXPECT_EQ(New_Names(job), (QStringList{"T_100.jpg", "T_110.jpg"}));
    inputs.change_to = "U";
    job.Set_Inputs(inputs);
    EXPECT_EQ(job.Inputs().start_numbering, "8") << "another To finds the range again";
}

TEST_F(Rename_Job_Test, While_A_Formula_Has_A_Fault_The_Names_Stay)
{
    Rename_Job job(host, Rows_Of({"IMG_7.jpg"}));
    job.Set_Inputs(From_To("IMG", "Trip"));
    Rename_Inputs faulty = With(From_To("IMG", "Sea"), {.name = Q("f"), .text = Q("1 + + )")});
    job.Set_Inputs(faulty);
    ASSERT_TRUE(job.Fault());
    EXPECT_EQ(New_Names(job), QStringList{"Trip_7.jpg"});
    faulty.formula.reset();
    faulty.start_numbering = job.Inputs().start_numbering;
    job.Set_Inputs(faulty);
    EXPECT_FALSE(job.Fault());
    EXPECT_EQ(New_Names(job), QStringList{"Sea_7.jpg"}) << "what was left undone is done";
}

TEST_F(Rename_Job_Test, A_Formula_That_The_Update_Cannot_Compile_Is_Told_And_Gives_No_Names)
{
    Rename_Job job(host, Rows_Of({"IMG_7.jpg", "IMG_x.jpg"}));
    job.Set_Inputs(From_To("IMG", "Trip"));
    job.Set_Inputs(With(job.Inputs(), {.name = Q("f"), .text = Q("ChangeTo & & FileName")}));
    ASSERT_TRUE(job.Fault());
    EXPECT_FALSE(job.Update_Fault()) << "the check kept it from the update";
    job.Update_Names();
    ASSERT_TRUE(job.Update_Fault());
    EXPECT_EQ(*job.Update_Fault(), *job.Fault());
    EXPECT_EQ(New_Names(job), (QStringList{"", "Trip_x.jpg"})) << "a file without a serial needs no formula";
    job.Set_Inputs(From_To("IMG", "Trip"));
    EXPECT_FALSE(job.Update_Fault());
}

TEST_F(Rename_Job_Test, A_Formula_That_Fails_For_A_File_Is_No_Fault_Of_The_Update)
{
    Rename_Job job(host, Rows_Of({"IMG_0.jpg"}));
    job.Set_Inputs(With(From_To("IMG", "x"), {.name = Q("d"), .text = Q("14 / FileSerial")}));
    EXPECT_FALSE(job.Fault());
    EXPECT_FALSE(job.Update_Fault());
    EXPECT_EQ(New_Names(job), QStringList{""});
}

TEST_F(Rename_Job_Test, Duplicates_Are_Counted_By_Pairs_Without_Case)
{
    Rename_Job job(host, Rows_Of({"a1.jpg", "b1.jpg", "c1.jpg", "d2.jpg"}));
    EXPECT_EQ(job.Duplicate_Count(), 0);
    job.Set_User_Name(0, "x.jpg");
    job.Set_User_Name(1, "X.JPG");
    EXPECT_EQ(job.Duplicate_Count(), 1);
    job.Set_User_Name(2, "x.Jpg");
    EXPECT_EQ(job.Duplicate_Count(), 3);
    job.Set_User_Name(3, "c1.jpg");
    EXPECT_EQ(job.Duplicate_Count(), 3) << "c1.jpg itself has another name now";
    job.Set_User_Name(2, "");
    EXPECT_EQ(job.Duplicate_Count(), 2) << "a file that keeps its name counts too";
}

TEST_F(Rename_Job_Test, The_Users_Own_Name_Wins_And_Gets_The_Files_Type)
{
    Rename_Job job(host, Rows_Of({"IMG_7.jpg", "IMG_8"}));
    job.Set_Inputs(From_To("IMG", "Trip"));
    EXPECT_EQ(job.Rows()[0].Final_Name(), "Trip_7.jpg");
    job.Set_User_Name(0, "Sunset");
    EXPECT_EQ(job.Rows()[0].Final_Name(), "Sunset.jpg");
    job.Set_User_Name(0, "Sunset.tif");
    EXPECT_EQ(job.Rows()[0].Final_Name(), "Sunset.tif");
    job.Set_User_Name(0, "Sunset.");
    EXPECT_EQ(job.Rows()[0].Final_Name(), "Sunset.");
    job.Set_User_Name(0, "");
    EXPECT_EQ(job.Rows()[0].Final_Name(), "Trip_7.jpg");
    job.Set_User_Name(1, "Sunset");
    EXPECT_EQ(job.Rows()[1].Final_Name(), "Sunset");
}

TEST_F(Rename_Job_Test, The_Collision_Message_Has_Three_Lines)
{
    EXPECT_EQ(Duplicates_Message(3), "3 file name duplicates have been found.\nThe rename or copy/rename will fail for "
                                     "these files.\nSelect 'Renumber' option to eliminate duplication.");
}

TEST(Changed_Part, Is_What_Stands_Between_The_Common_Ends)
{
    EXPECT_EQ(Changed_Part_Of("IMG_7.jpg", "Trip_7.jpg"), (Changed_Part{0, 4}));
    EXPECT_EQ(Changed_Part_Of("a.jpg", "a.jpg"), (Changed_Part{5, 0}));
    EXPECT_EQ(Changed_Part_Of("aa.jpg", "aaa.jpg"), (Changed_Part{2, 1}));
    EXPECT_EQ(Changed_Part_Of("aaa.jpg", "aa.jpg"), (Changed_Part{2, 0}));
    EXPECT_EQ(Changed_Part_Of("", "x"), (Changed_Part{0, 1}));
    EXPECT_EQ(Changed_Part_Of("a19.jpg", "a10.jpg"), (Changed_Part{1, 2})) << "a number is one";
    EXPECT_EQ(Changed_Part_Of("DSC_0445.jpg", "Lake05.jpg"), (Changed_Part{0, 6}));
    EXPECT_EQ(Changed_Part_Of("a19.jpg", "a9.jpg"), (Changed_Part{1, 0})) << "nothing is new";
}

/// Names and inputs out of few letters, so that matches, collisions and strange places are common.
class Random_Texts {
public:
    explicit Random_Texts(unsigned seed) : random_(seed) {}
    int Number(int below) { return int(random_() % unsigned(below)); }
    QString Text(const char* letters, int most)
    {
        QString text;
        const QString all = Q(letters);
        for (int length = Number(most + 1); length > 0; --length) text += all[Number(int(all.size()))];
        return text;
    }

private:
    std::mt19937 random_;
};

Rename_Inputs Random_Inputs(Random_Texts& random)
{
    Rename_Inputs inputs;
    inputs.pattern_mode = random.Number(2) == 0;
    inputs.change_from = random.Text(inputs.pattern_mode ? "aB-1*?#[]!" : "aB-1", 4);
    inputs.change_to = random.Text("xY-2", 3);
    if (random.Number(4) == 0) inputs.file_type = random.Text(".tj", 3);
    inputs.reserialize = random.Number(3) == 0;
    inputs.reserialize_interval = random.Text("-12x", 2);
    return inputs;
}

TEST_F(Rename_Job_Test, Agrees_With_The_Plain_Reference_On_Random_Jobs)
{
    Random_Texts random(20260314);
    const Chosen_Formula formula{.name = Q("f"), .text = Q("\"<\" & FileSerial & FileName & \">\"")};
    const Reference_Formula with_formula = [](const Rename_Row& row, const QString& serial) {
        return "<" + serial + Root_Of_Name(row.file_name) + ">";
    };
    for (int round = 0; round < 20'000; ++round) {
        QStringList names;
        for (int count = random.Number(4) + 1; count > 0; --count)
            names << random.Text("aAbB-_0129", 7) + (random.Number(5) ? ".jpg" : "");
        Rename_Job job(host, Rows_Of(names));
        Rename_Inputs inputs = Random_Inputs(random);
        inputs.start_numbering = job.Inputs().start_numbering;
        const bool has_formula = random.Number(4) == 0;
        if (has_formula) inputs.formula = formula;
        const auto before = job.Rows();
        job.Set_Inputs(inputs);
        const auto expected = Reference_Names(before, inputs, {}, has_formula ? with_formula : Reference_Formula());
        const auto told = [&] {
            return "round " + std::to_string(round) + ": " + names.join(" ").toStdString() + " from \"" +
                   inputs.change_from.toStdString() + "\" to \"" + inputs.change_to.toStdString() + "\"" +
                   (inputs.pattern_mode ? " pattern" : "") + (inputs.reserialize ? " reserialize" : "");
        };
        ASSERT_EQ(New_Names(job), expected.names) << told();
        ASSERT_EQ(job.Inputs().start_numbering, expected.start_numbering) << told();
        ASSERT_EQ(job.Smallest_Serial(), expected.smallest) << told();
        ASSERT_EQ(job.Largest_Serial(), expected.largest) << told();

        const QString typed = random.Text("-012 x", 4);
        Rename_Inputs again = job.Inputs();
        again.start_numbering = typed;
        const auto rows = job.Rows(); // a match behind the beginning keeps what stands there now
        job.Set_Inputs(again);
        ASSERT_EQ(New_Names(job),
                  Reference_Names(rows, again, typed, has_formula ? with_formula : Reference_Formula()).names)
            << told() << " start \"" << typed.toStdString() << '"';
    }
}

} // namespace
