// What a run may hold in all: the notes against a heap that the test makes up, then programs against the real one.

#include "evaluate/Formula_Memory.h"

#include "evaluate/bkcEvaluate.h"
#include "evaluate/variant/Variant_Array.h"
#include "tests/evaluate/engine/Scripted_Services.h"

#include <gtest/gtest.h>

using namespace Formula;

namespace {

constexpr std::int64_t KiB = 1 << 10, MiB = 1 << 20;

class Metered_Memory : public testing::Test {
protected:
    /// A text of so many KiB that the heap holds from now on.
    Error_Number Keep(std::int64_t size)
    {
        heap += size * KiB;
        return Drop(size);
    }
    /// A text that is gone again.
    Error_Number Drop(std::int64_t size) { return memory.Note(Variant(QString(qsizetype(size * KiB / 2), u'x'))); }
    Error_Number Make_Array(std::int64_t size)
    {
        return memory.Take_Elements(size * KiB / std::int64_t(sizeof(Variant)));
    }

    std::int64_t heap = 500 * KiB;
    int asked = 0;
    Formula_Memory memory{100 * KiB, [this] { return ++asked, heap; }};
};

TEST_F(Metered_Memory, Ends_A_Run_That_Keeps_More_Than_The_Limit)
{
    int kept = 0;
    while (Keep(1) == Error_Number::None) ASSERT_LE(++kept, 200);
    EXPECT_GE(kept, 98);
    EXPECT_LE(kept, 100 + 2 * 25) << "the limit, and the steps at both ends";
    EXPECT_LE(asked, 5);
}

TEST_F(Metered_Memory, Lets_A_Run_Make_And_Drop_Any_Amount)
{
    for (int i = 0; i < 2000; ++i) ASSERT_EQ(Error_Number::None, Drop(1));
    EXPECT_LE(asked, 2000 / 75 + 1);
}

TEST_F(Metered_Memory, Refuses_An_Array_Before_It_Is_Made)
{
    EXPECT_EQ(Error_Number::None, Make_Array(60));
    heap += 60 * KiB;
    EXPECT_EQ(Error_Number::Out_Of_Memory, Make_Array(60));
    EXPECT_EQ(Error_Number::None, Make_Array(30)) << "what was refused is not held";
}

TEST_F(Metered_Memory, Has_Room_Only_For_What_Fits_And_Notes_Nothing)
{
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(Error_Number::None, memory.Room_For_Text(5 * KiB));
    EXPECT_EQ(0, asked) << "what was only asked for is not used up";
    EXPECT_EQ(Error_Number::None, memory.Room_For_Text(49 * KiB)) << "98 of 100 KiB";
    EXPECT_EQ(Error_Number::Out_Of_String_Space, memory.Room_For_Text(51 * KiB));
    EXPECT_EQ(Error_Number::None, memory.Room_For_List(1 * KiB, 5 * KiB)) << "64 KiB of headers and 10 of letters";
    EXPECT_EQ(Error_Number::Out_Of_Memory, memory.Room_For_List(1 * KiB, 50 * KiB));
    EXPECT_EQ(Error_Number::Out_Of_Memory, memory.Room_For_List(2 * KiB, 0));
    ASSERT_EQ(Error_Number::None, Keep(60));
    EXPECT_EQ(Error_Number::Out_Of_String_Space, memory.Room_For_Text(40 * KiB));
}

TEST_F(Metered_Memory, Tells_Texts_From_Arrays)
{
    EXPECT_EQ(Error_Number::Out_Of_String_Space, [this] {
        while (true)
            if (const Error_Number error = Keep(10); error != Error_Number::None) return error;
    }());
    memory.Start();
    EXPECT_EQ(Error_Number::Out_Of_Memory, Make_Array(101));
}

TEST_F(Metered_Memory, Does_Not_Blame_The_Run_For_What_Other_Threads_Take)
{
    ASSERT_EQ(Error_Number::None, Drop(30));
    heap += 10'000 * KiB;
    EXPECT_EQ(Error_Number::None, Drop(60));
    EXPECT_EQ(Error_Number::None, Drop(5));
}

TEST_F(Metered_Memory, Is_Not_Misled_By_What_Others_Give_Back)
{
    ASSERT_EQ(Error_Number::None, Drop(30));
    heap -= 400 * KiB;
    ASSERT_EQ(Error_Number::None, Drop(80));
    int kept = 0;
    while (Keep(1) == Error_Number::None) ASSERT_LE(++kept, 300);
    EXPECT_LE(kept, 100 + 2 * 25);
}

TEST_F(Metered_Memory, Starts_Anew_With_Each_Run)
{
    while (Keep(10) == Error_Number::None) {
    }
    memory.Start();
    for (int i = 0; i < 8; ++i) EXPECT_EQ(Error_Number::None, Keep(10)) << "what is there now belongs to nobody";
}

TEST_F(Metered_Memory, Counts_What_Is_Shared_Once)
{
    const QString text(qsizetype(10 * KiB), u'x');
    const Variant array = Make_List({Variant(text)}), same = array;
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(Error_Number::None, memory.Note(Variant(text)));
        ASSERT_EQ(Error_Number::None, memory.Note(same));
    }
    EXPECT_EQ(0, asked);
}

struct Greedy_Program {
    const char* name;
    const char* text;
    int code;
    bool raises_errors = true; ///< without it an array can be read as a value
};

class Greedy : public testing::TestWithParam<Greedy_Program> {};

/// Each of them would hold gigabytes within the instructions that a run has.
TEST_P(Greedy, Ends_In_An_Error_While_The_Heap_Is_Small)
{
    constexpr std::int64_t Limit = 64 * MiB;
    Scripted_Services services;
    bkcEvaluate evaluator(services);
    evaluator.Set_MemoryLimit(Limit);
    evaluator.Set_RaiseErrors(GetParam().raises_errors);
    const std::int64_t before = Formula_Memory::Heap_Bytes();
    EXPECT_FALSE(evaluator.Execute(QString::fromLatin1(GetParam().text)));
    EXPECT_EQ(GetParam().code, evaluator.Last_Error().Code) << evaluator.Last_Error().Description.toStdString();
    EXPECT_LT(Formula_Memory::Heap_Bytes() - before, 2 * Limit);
    EXPECT_TRUE(evaluator.Execute(QStringLiteral("x = 1")));
    EXPECT_LT(Formula_Memory::Heap_Bytes() - before, Limit / 4) << "the next run finds it given back";
}

INSTANTIATE_TEST_SUITE_P(
    All, Greedy,
    testing::Values(
        Greedy_Program{"an_array_filled_with_long_texts",
                       "Dim a(), b()\ni = 0\nReDim a(100000)\nFor i = 0 To 100000\na(i) = String(1000000, \"x\")\nNext",
                       14},
        Greedy_Program{
            "an_array_filled_with_joined_texts",
            "Dim a(), b()\ni = 0\ns = String(100000, \"x\")\nReDim a(100000)\nFor i = 0 To 100000\na(i) = s & i\nNext",
            14},
        Greedy_Program{"an_array_filled_with_short_texts",
                       "Dim a(), b()\ni = 0\nReDim a(1000000)\nFor i = 0 To 1000000\na(i) = \"text \" & i\nNext", 14},
        Greedy_Program{"texts_changed_in_the_middle",
                       "Dim a(), b()\ni = 0\ns = String(1000000, \"x\")\nReDim a(10000)\nFor i = 0 To 10000\nMid(s, 1, "
                       "1) = \"y\"\n"
                       "a(i) = s\nNext",
                       14},
        Greedy_Program{"arrays_in_an_array",
                       "Dim a(), b()\ni = 0\nReDim a(10000)\nFor i = 0 To 10000\nReDim b(100000)\na(i) = b\nNext", 7,
                       false},
        Greedy_Program{"arrays_inside_one_another",
                       "Dim a(), b()\na = Array(1)\nDo\nb = Array(a, 1)\na = Array(b, 1)\nLoop", 7, false},
        Greedy_Program{"lists_in_an_array",
                       "Dim a(), b()\ni = 0\ns = String(100000, \",\")\nReDim a(10000)\nFor i = 0 To 10000\na(i) = "
                       "Split(s, \",\")\nNext",
                       7},
        Greedy_Program{"one_list_above_the_limit", "s = String(4000000, \",\")\ns = Join(Split(s, \",\"), \"\")", 7},
        Greedy_Program{"one_joined_text_above_the_limit", "s = String(10000000, \"x\")\ns = s & s & s & s", 14},
        Greedy_Program{"one_formatted_date_above_the_limit", "x = Format(5, String(16000000, \"c\"))", 14},
        Greedy_Program{
            "copies_of_an_array_that_are_written_to",
            "Dim a(), b()\ni = 0\nReDim a(10000)\nReDim b(100000)\nFor i = 0 To 10000\na(i) = b\nb(0) = i\nNext", 7,
            false},
        Greedy_Program{"copies_of_an_array_that_are_sorted",
                       "Dim a(), b()\ni = 0\nReDim a(10000)\nReDim b(100000)\nFor i = 0 To 100000\nb(i) = i\nNext\n"
                       "For i = 0 To 10000\na(i) = b\nx = ASort(b)\nNext",
                       7, false},
        Greedy_Program{"many_redims", "Dim a(), b()\ni = 0\nFor i = 1 To 100\nReDim Preserve a(i * 100000)\nNext", 7},
        Greedy_Program{"one_array_above_the_limit", "Dim a()\nReDim a(3000000)", 7}),
    [](const auto& row) { return row.param.name; });

TEST(Formula_Memory_Limit, A_Long_Loop_That_Builds_Texts_And_Arrays_And_Drops_Them_Goes_On)
{
    Scripted_Services services;
    bkcEvaluate evaluator(services);
    evaluator.Set_MemoryLimit(32 * MiB);
    EXPECT_TRUE(evaluator.Execute(QStringLiteral("Dim a(), b()\ni = 0\ns = \"\"\nFor i = 1 To 30000\ns = s & \"x\"\n"
                                                 "If i Mod 10 = 0 Then t = String(500000, \"y\")\n"
                                                 "If i Mod 100 = 0 Then ReDim a(100000)\nNext")))
        << evaluator.Last_Error().Description.toStdString();
    EXPECT_EQ(30'000, evaluator.Variable(QStringLiteral("s")).value_or(Variant()).Text().size());
}

TEST(Formula_Memory_Limit, Is_That_Of_The_Program_At_First)
{
    Scripted_Services services;
    EXPECT_EQ(std::int64_t(1) << 30, bkcEvaluate(services).MemoryLimit());
}

} // namespace
