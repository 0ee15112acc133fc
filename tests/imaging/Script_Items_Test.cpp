#include "imaging/Script_Items.h"

#include "imaging/Script_Utilities.h"

#include <gtest/gtest.h>
#include <random>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

QString Items_Of(const Script_Item_Array& items)
{
    QString text;
    for (int i = 1; i <= items.Count(); ++i)
        text += QStringLiteral("%1|%2\n").arg(items.Item(i).Script_Item_Type).arg(items.Item(i).Script_Item_String);
    return text;
}

struct Split_Case {
    const char* name;
    const char* script;
    const char* items; ///< a line TYPE|TEXT an item
    Script_Status status = Script_Status::Complete;
};

class Splitting : public testing::TestWithParam<Split_Case> {};

TEST_P(Splitting, Gives_The_Items)
{
    const auto& row = GetParam();
    Script_Item_Array items;
    items.Append({5, Q("left from before")});
    EXPECT_EQ(Parse_Script_Items(Q(row.script), items), row.status);
    EXPECT_EQ(Items_Of(items), Q(row.items));
}

INSTANTIATE_TEST_SUITE_P(
    All, Splitting,
    testing::Values(
        Split_Case{"empty_script", "", ""},
        Split_Case{"two_items", "ConOpt(0.005,0.005,LUM);Blur(2,50,RGB)",
                   "1|ConOpt(0.005,0.005,LUM)\n8|Blur(2,50,RGB)\n"},
        Split_Case{"trailing_separator_gives_no_item", "Crop(1,2,3,4);", "5|Crop(1,2,3,4)\n"},
        Split_Case{"one_character_rest_is_never_looked_at", "Crop(1,2,3,4);x", "5|Crop(1,2,3,4)\n"},
        Split_Case{"blank_behind_the_separator_drops_the_item",
                   "ConOpt(0.005,0.005,LUM); Gamma(0,1,255,0,1,255,0,1,255)", "1|ConOpt(0.005,0.005,LUM)\n"},
        Split_Case{"unknown_keyword_is_dropped", "Swirl(3);Crop(1,2,3,4)", "5|Crop(1,2,3,4)\n"},
        Split_Case{"item_text_is_stored_as_it_stands", "Crop( 1,2,3,4 ) ;Blur", "5|Crop( 1,2,3,4 ) \n8|Blur\n"},
        Split_Case{"keywords_without_case", "conopt(0.005,0.005,lum)", "1|conopt(0.005,0.005,lum)\n"},
        Split_Case{"text_alone_may_hold_a_separator", "Text(\"a;b\")", "9|Text(\"a;b\")\n"},
        Split_Case{"text_first_then_another", "Text(\"a;b\");Blur(2,50,RGB)", "9|Text(\"a;b\")\n8|Blur(2,50,RGB)\n"},
        Split_Case{"text_behind_another_item_cannot_be_split", "Crop(1,2,3,4);Text(\"a\")", "5|Crop(1,2,3,4)\n",
                   Script_Status::Invalid_Argument},
        Split_Case{"second_text_takes_the_whole_rest", "Text(\"q\");Text(\"b;c\");Blur(2,50,RGB)",
                   "9|Text(\"q\")\n9|Text(\"b;c\");Blur(2,50,RGB)\n"},
        Split_Case{"damaged_first_text_takes_the_whole_rest", "Text(\"a;Blur(2,50,RGB)", "9|Text(\"a;Blur(2,50,RGB)\n"},
        Split_Case{"separators_alone", ";;;;", ""}),
    [](const auto& row) { return row.param.name; });

TEST(Item_Array, Starts_With_Ten_Slots)
{
    Script_Item_Array items;
    EXPECT_EQ(Parse_Script_Items(QString(), items), Script_Status::Complete);
    EXPECT_EQ(items.Count(), 0);
    EXPECT_EQ(items.Upper_Bound(), 10);
}

TEST(Item_Array, Eleven_Items_Make_Twenty_Slots)
{
    Script_Item_Array items;
    Parse_Script_Items(QStringLiteral("Crop(1,2,3,4);").repeated(11), items);
    EXPECT_EQ(items.Count(), 11);
    EXPECT_EQ(items.Upper_Bound(), 20);
    EXPECT_EQ(items.Item(11).Script_Item_String, Q("Crop(1,2,3,4)"));
    EXPECT_EQ(items.Item(12), Script_Item());
    EXPECT_EQ(items.Item(0), Script_Item());
}

TEST(Item_Array, Refuses_More_Items_Than_The_Limit)
{
    Script_Item_Array items;
    EXPECT_EQ(Parse_Script_Items(QStringLiteral("Blur;").repeated(1001), items), Script_Status::Too_Many_Items);
    EXPECT_EQ(items.Count(), 1000);
    EXPECT_TRUE(Script_Status_Text(Script_Status::Too_Many_Items).contains(Q("1000")));
}

Script_Item_Array Sample()
{
    Script_Item_Array items;
    Parse_Script_Items(Q("ConOpt(0,0,LUM);Crop(1,2,3,4);Blur(2,50,RGB);Crop(5,6,7,8)"), items);
    return items;
}

TEST(Item_Array, Clears_Types_And_Closes_The_Gaps)
{
    Script_Item_Array items = Sample();
    const int types[] = {5, 6};
    items.Remove_Types(types);
    EXPECT_EQ(Join_Script_Items(items), Q("ConOpt(0,0,LUM);Blur(2,50,RGB)"));
    EXPECT_EQ(items.Upper_Bound(), 10);
}

TEST(Item_Array, A_List_Of_One_Zero_Clears_Nothing)
{
    Script_Item_Array items = Sample();
    items.Set_Item(2, {});
    const int types[] = {0};
    EXPECT_FALSE(items.Clear_Types(types));
    items.Remove_Types(types);
    EXPECT_EQ(items.Count(), 4) << "not even compacted";
}

TEST(Item_Array, Compaction_Empties_What_It_Leaves_Behind)
{
    Script_Item_Array items = Sample();
    items.Set_Item(1, {});
    items.Compact();
    EXPECT_EQ(items.Count(), 3);
    EXPECT_EQ(items.Item(4), Script_Item());
    items.Append({8, Q("Blur")});
    EXPECT_EQ(items.Count(), 4);
}

TEST(Joining, Trims_Blanks_And_Separates_Around_Empty_Items)
{
    Script_Item_Array items;
    items.Append({0, QString()});
    items.Append({5, Q(" Crop(1,2,3,4)  ")});
    items.Append({0, QString()});
    items.Append({8, Q("Blur(2,50,RGB)")});
    EXPECT_EQ(Join_Script_Items(items), Q("Crop(1,2,3,4);;Blur(2,50,RGB)"));
    EXPECT_EQ(Join_Script_Items({}), QString());
}

TEST(Joining, Gives_Back_What_The_Writers_Wrote)
{
    std::mt19937 random(5);
    const auto pick = [&random](int below) { return int(random() % unsigned(below)); };
    for (int round = 0; round < 300; ++round) {
        QStringList texts;
        if (pick(3) == 0) texts << Format_Text_Item(QStringLiteral("say;x%1").arg(pick(9)));
        for (int n = pick(25); n > 0; --n) {
            switch (pick(5)) {
            case 0: texts << Format_Crop_Item(pick(900), pick(900), pick(900), pick(900)); break;
            case 1: texts << Format_ConOpt_Item(float(pick(20)) / 1000, -1, 1 + pick(2)); break;
            case 2: texts << Format_Blur_Item(1 + float(pick(24)), pick(101), 1 + pick(255)); break;
            case 3: texts << Format_Scale_Item(1 + pick(5000), 1 + pick(5000), 1 + pick(8), -1, 300); break;
            default: texts << Format_SatVal_Item(float(pick(99)) / 10, float(pick(99)) / 10); break;
            }
        }
        const QString script = texts.join(u';');
        Script_Item_Array items;
        ASSERT_EQ(Parse_Script_Items(script, items), Script_Status::Complete) << script.toStdString();
        ASSERT_EQ(Join_Script_Items(items), script);
        ASSERT_EQ(items.Count(), texts.size());
    }
}

TEST(Prepared, Scripts_Are_Three)
{
    const auto& sets = Prepared_Script_Sets();
    ASSERT_EQ(sets.size(), 3U);
    EXPECT_EQ(sets[0].name, Q("Contrast Optimize"));
    EXPECT_EQ(Join_Script_Items(sets[0].Script_Items), Q("ConOpt(0.005,0.005,LUM)"));
    EXPECT_EQ(sets[1].name, Q("People"));
    EXPECT_EQ(Join_Script_Items(sets[1].Script_Items), Q("ConOpt(0.005,0.005,LUM);Unsharp(0.75,0.25,1.5,2,5,K)"));
    EXPECT_EQ(sets[2].name, Q("Buildings/Machines"));
    EXPECT_EQ(Join_Script_Items(sets[2].Script_Items), Q("ConOpt(0.005,0.005,LUM);Unsharp(0.25,0.75,1.5,5,2,K)"));
}

} // namespace
