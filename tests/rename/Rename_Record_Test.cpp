#include "rename/Rename_Record.h"

#include <gtest/gtest.h>

namespace {

const Rename_Record Some_Record{.moves = {{"/a b/", "x\ny", "%41\xff "}, {"/", "", "z"}},
                                .steps = {{"/a b/x\ny", "/a b/%41\xff ", {7, ~std::uint64_t(0)}},
                                          {"/z", "/.rename-1.halvine", {7, 8}},
                                          {"/.rename-1.halvine", "/y", {7, 8}}}};

/// What stands in a damaged text must have stood in the whole one.
void Expect_Part_Of(const Rename_Record& part, const Rename_Record& whole)
{
    for (const Rename_Move& move : part.moves)
        EXPECT_NE(std::find(whole.moves.begin(), whole.moves.end(), move), whole.moves.end());
    for (const Rename_Step& step : part.steps)
        EXPECT_NE(std::find(whole.steps.begin(), whole.steps.end(), step), whole.steps.end());
}

TEST(Rename_Record, Survives_Its_Text_With_Any_Bytes)
{
    const Record_Reading reading = Record_From_Text(Text_Of_Record(Some_Record));
    EXPECT_EQ(reading.fault, "");
    EXPECT_EQ(reading.record, Some_Record);
}

TEST(Rename_Record, Cut_At_Any_Byte_Is_Not_Whole_And_Tells_No_Lies)
{
    const QByteArray text = Text_Of_Record(Some_Record);
    for (qsizetype length = 0; length < text.size(); ++length) {
        const Record_Reading reading = Record_From_Text(text.left(length));
        EXPECT_NE(reading.fault.find(" breaks off"), std::string::npos) << length << ": " << reading.fault;
        Expect_Part_Of(reading.record, Some_Record);
    }
    EXPECT_EQ(Record_From_Text(text.left(text.indexOf("move "))).fault, "line 2 breaks off");
}

TEST(Rename_Record, With_Any_Byte_Changed_Is_Not_Whole_And_Tells_No_Lies)
{
    const QByteArray text = Text_Of_Record(Some_Record);
    for (qsizetype at = 0; at < text.size(); ++at)
        for (const int flipped : {0x01, 0x20, 0x80, 0xff}) {
            QByteArray damaged = text;
            damaged[at] = char(damaged[at] ^ flipped);
            const Record_Reading reading = Record_From_Text(damaged);
            EXPECT_FALSE(reading.Is_Whole()) << at << " ^ " << flipped;
            Expect_Part_Of(reading.record, Some_Record);
        }
}

TEST(Rename_Record, A_Damaged_Line_Leaves_The_Others)
{
    QByteArray text = Text_Of_Record(Some_Record);
    text.replace("%2Fy ", "%2Fx ");
    const Record_Reading reading = Record_From_Text(text);
    EXPECT_EQ(reading.fault, "line 6 was changed");
    EXPECT_EQ(reading.record.moves, Some_Record.moves);
    EXPECT_EQ(reading.record.steps.size(), 2U);
}

struct Line_Case {
    const char* name;
    QList<QByteArray> lines;
    const char* fault;
};

class Record_Lines : public testing::TestWithParam<Line_Case> {};

TEST_P(Record_Lines, Have_This_Fault)
{
    EXPECT_EQ(Record_From_Text(Checked_Lines(GetParam().lines)).fault, GetParam().fault);
}

INSTANTIATE_TEST_SUITE_P(
    All, Record_Lines,
    testing::Values(
        Line_Case{"as_they_should_be", {"names", "move /p/ a b", "step /p/a /p/b 1 2", "end"}, ""},
        Line_Case{"no_files_at_all", {"names", "end"}, ""}, Line_Case{"no_lines_at_all", {}, "line 1 breaks off"},
        Line_Case{"no_first_line", {"move /p/ a b", "end"}, "line 1 was changed"},
        Line_Case{"a_second_first_line", {"names", "names", "end"}, "line 2 was changed"},
        Line_Case{"a_line_behind_the_last", {"names", "end", "end"}, "line 3 was changed"},
        Line_Case{"no_last_line", {"names", "move /p/ a b"}, "line 3 breaks off"},
        Line_Case{"an_unknown_line", {"names", "leap /p/a /p/b 1 2", "end"}, "line 2 was changed"},
        Line_Case{"an_empty_line", {"names", "", "end"}, "line 2 was changed"},
        Line_Case{"a_move_without_a_name", {"names", "move /p/ a", "end"}, "line 2 was changed"},
        Line_Case{"a_device_that_is_no_number", {"names", "step /p/a /p/b x 2", "end"}, "line 2 was changed"},
        Line_Case{"a_file_that_is_no_number", {"names", "step /p/a /p/b 1 2x", "end"}, "line 2 was changed"},
        Line_Case{"a_file_below_zero", {"names", "step /p/a /p/b 1 -2", "end"}, "line 2 was changed"},
        Line_Case{"a_step_without_a_file", {"names", "step /p/a /p/b 1", "end"}, "line 2 was changed"}),
    [](const auto& row) { return row.param.name; });

TEST(Rename_Record, Lines_In_Another_Order_Are_Found_Out)
{
    QList<QByteArray> lines = Text_Of_Record(Some_Record).split('\n');
    lines.swapItemsAt(4, 5);
    EXPECT_EQ(Record_From_Text(lines.join('\n')).fault, "line 5 was changed");
}

} // namespace
