#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Dates.h"
#include "evaluate/variant/Like.h"
#include "evaluate/variant/Operators.h"
#include "evaluate/variant/Variant_Array.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

using namespace Formula;

TEST(Variant, Copies_Share_An_Array_Until_One_Is_Written)
{
    auto first = Make_List({Variant(std::int32_t(1))});
    auto second = first;
    EXPECT_EQ(&first.Array(), &second.Array());
    second.Writable_Array().elements[0] = Variant(std::int32_t(2));
    EXPECT_EQ(first.Array().elements[0].Long(), 1);
    EXPECT_EQ(second.Array().elements[0].Long(), 2);
}

TEST(Variant, An_Element_Can_Replace_Its_Own_Array)
{
    auto list = Make_List({Variant(QStringLiteral("inside"))});
    list = list.Array().elements[0];
    EXPECT_EQ(list.Text(), QStringLiteral("inside"));
}

TEST(Variant, Arrays_In_Arrays_To_Any_Depth_Are_Let_Go)
{
    Variant nested;
    for (int depth = 0; depth < 200'000; ++depth) {
        std::vector<Variant> one;
        one.push_back(std::move(nested));
        nested = Make_List(std::move(one));
    }
    nested.Clear();
    EXPECT_TRUE(nested.Is_Empty());
}

TEST(Variant, Changes_Between_Kinds_Keep_Nothing_Behind)
{
    Variant value(QStringLiteral("a text that is long enough to stand on the heap"));
    value.Set_Long(5);
    EXPECT_EQ(value.Type(), Variant_Type::Long);
    value = Variant(QStringLiteral("b"));
    const Variant taken = std::move(value);
    EXPECT_EQ(taken.Text(), QStringLiteral("b"));
}

TEST(Variant_Array, First_Index_Runs_Fastest_And_Bounds_Are_Checked)
{
    const Array_Bound bounds[] = {{1, 2}, {-1, 3}};
    const auto array = Make_Array(bounds);
    ASSERT_TRUE(array);
    const std::int32_t place[] = {2, 0}, outside[] = {3, 0}, below[] = {1, -2}, single[] = {1};
    EXPECT_EQ(Element_Place(*array, place).value_or(99), 3u);
    EXPECT_EQ(Element_Place(*array, outside).error(), Error_Number::Subscript_Out_Of_Range);
    EXPECT_EQ(Element_Place(*array, below).error(), Error_Number::Subscript_Out_Of_Range);
    EXPECT_EQ(Element_Place(*array, single).error(), Error_Number::Subscript_Out_Of_Range);
    EXPECT_EQ(Element_Place(Variant(), single).error(), Error_Number::Type_Mismatch);
}

TEST(Variant_Array, Too_Many_Elements_Are_Refused_Before_They_Are_Allocated)
{
    const Array_Bound huge[] = {{0, 2'000'000'000}, {0, 2'000'000'000}, {0, 2'000'000'000}};
    const Array_Bound backward[] = {{5, -1}};
    EXPECT_EQ(Make_Array(huge).error(), Error_Number::Out_Of_Memory);
    EXPECT_EQ(Make_Array(backward).error(), Error_Number::Subscript_Out_Of_Range);
}

TEST(Variant_Array, Resizing_Keeps_Elements_And_Only_Moves_The_Last_Bound)
{
    const Array_Bound before[] = {{0, 2}, {0, 2}}, wider[] = {{0, 2}, {0, 5}}, other[] = {{0, 3}, {0, 2}},
                      flat[] = {{0, 2}};
    auto array = *Make_Array(before);
    array.Writable_Array().elements[3] = Variant(std::int32_t(7));
    ASSERT_EQ(Resize_Array(array, wider), Error_Number::None);
    EXPECT_EQ(array.Array().elements.size(), 10u);
    EXPECT_EQ(array.Array().elements[3].Long(), 7);
    EXPECT_EQ(Resize_Array(array, other), Error_Number::Subscript_Out_Of_Range);
    EXPECT_EQ(Resize_Array(array, flat), Error_Number::Subscript_Out_Of_Range);
}

TEST(Dates, Every_Day_Goes_To_Its_Parts_And_Back)
{
    int weekday = Parts_Of(Minimum_Date).weekday;
    for (double day = Minimum_Date; day < End_Of_Dates; ++day) {
        const auto parts = Parts_Of(day);
        ASSERT_EQ(double(Day_Number(parts.year, parts.month, parts.day).value_or(0)), day);
        ASSERT_EQ(parts.weekday, weekday);
        weekday = weekday % 7 + 1;
    }
}

TEST(Dates, Seconds_Survive_On_Both_Sides_Of_Day_Zero)
{
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        const auto seconds = std::int64_t(random()) - 2'147'483'648LL;
        const auto date = Date_From_Seconds(seconds);
        ASSERT_TRUE(date);
        ASSERT_EQ(Seconds_Of(*date), seconds) << "seed 7, round " << i;
    }
}

TEST(Conversions, A_Double_With_15_Digits_Survives_Its_Text)
{
    std::mt19937_64 random(11);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::ldexp(double(random() >> 20), int(random() % 200) - 100);
        const auto text = Text_From_Double(value);
        const auto again = Number_From_Text(text);
        ASSERT_TRUE(again) << text.toStdString();
        ASSERT_EQ(Text_From_Double(*again), text) << "seed 11, round " << i;
    }
}

TEST(Jump_Test, One_Is_Neither_True_Nor_False)
{
    EXPECT_FALSE(*Equals_Boolean(Variant(std::int32_t(1)), true));
    EXPECT_FALSE(*Equals_Boolean(Variant(std::int32_t(1)), false));
    EXPECT_TRUE(*Equals_Boolean(Variant(std::int32_t(-1)), true));
    EXPECT_TRUE(*Equals_Boolean(Variant(), false));
    EXPECT_FALSE(*Equals_Boolean(Variant::Null(), true));
    EXPECT_FALSE(*Equals_Boolean(Variant::Null(), false));
    EXPECT_EQ(Equals_Boolean(Make_List({}), true).error(), Error_Number::Type_Mismatch);
}

namespace {

// Obviously right: the pattern letter by letter, with every length of a star tried.
bool Like_Reference(QStringView text, QStringView pattern)
{
    if (pattern.isEmpty()) return text.isEmpty();
    if (pattern[0] == u'*') {
        for (qsizetype skipped = 0; skipped <= text.size(); ++skipped)
            if (Like_Reference(text.mid(skipped), pattern.mid(1))) return true;
        return false;
    }
    if (text.isEmpty()) return false;
    const bool fits = pattern[0] == u'?' || pattern[0].toLower() == text[0].toLower();
    return fits && Like_Reference(text.mid(1), pattern.mid(1));
}

QString Random_Text(std::mt19937& random, const char* letters, int count, int longest)
{
    QString text;
    for (int length = int(random() % unsigned(longest + 1)); length > 0; --length)
        text += QChar::fromLatin1(letters[random() % unsigned(count)]);
    return text;
}

// The searches as a bisection would find them, tried one by one.
Like_Place First_Reference(const QString& text, const QString& pattern, qsizetype first)
{
    for (auto end = first + 1; end <= text.size(); ++end) {
        if (!Like_Reference(text.mid(first, end - first), u'*' + pattern + u'*')) continue;
        for (auto start = end - 1;; --start)
            if (Like_Reference(text.mid(start, end - start), u'*' + pattern + u'*')) return {start + 1, end};
    }
    return {};
}

Like_Place Last_Reference(const QString& text, const QString& pattern)
{
    for (auto start = text.size() - 1; start >= 0; --start) {
        if (!Like_Reference(text.mid(start), u'*' + pattern + u'*')) continue;
        for (auto end = start + 1;; ++end)
            if (Like_Reference(text.mid(start, end - start), u'*' + pattern + u'*')) return {start + 1, end};
    }
    return {};
}

} // namespace

TEST(Like, Agrees_With_The_Reference)
{
    std::mt19937 random(3);
    for (int i = 0; i < 20000; ++i) {
        const auto text = Random_Text(random, "aAb", 3, 8), pattern = Random_Text(random, "ab*?", 4, 6);
        ASSERT_EQ(*Is_Like(text, pattern, Compare_Mode::Text), Like_Reference(text, pattern))
            << text.toStdString() << " Like " << pattern.toStdString();
    }
}

TEST(Like_Searches, Agree_With_The_Reference)
{
    std::mt19937 random(5);
    for (int i = 0; i < 5000; ++i) {
        const auto text = Random_Text(random, "aAb", 3, 9), pattern = Random_Text(random, "ab*?", 4, 5);
        const auto first = *First_Like(text, pattern, 2), last = *Last_Like(text, pattern, 0);
        const auto first_wanted = First_Reference(text, pattern, 1), last_wanted = Last_Reference(text, pattern);
        ASSERT_EQ(first.begin, first_wanted.begin) << text.toStdString() << " in " << pattern.toStdString();
        ASSERT_EQ(first.end, first_wanted.end) << text.toStdString() << " in " << pattern.toStdString();
        ASSERT_EQ(last.begin, last_wanted.begin) << text.toStdString() << " in " << pattern.toStdString();
        ASSERT_EQ(last.end, last_wanted.end) << text.toStdString() << " in " << pattern.toStdString();
    }
}
