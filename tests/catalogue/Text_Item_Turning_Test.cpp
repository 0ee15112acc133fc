#include "catalogue/Text_Item_Turning.h"

#include "catalogue/Picture_Item.h"
#include "imaging/Script_Utilities.h"

#include <gtest/gtest.h>

namespace {

Script_Item_Array Items_Of(const QString& script)
{
    Script_Item_Array items;
    EXPECT_EQ(Script_Status::Complete, Parse_Script_Items(script, items));
    return items;
}

QString Mirrored(const QString& script, int flip, Pixel_Size size = {160, 96})
{
    Script_Item_Array items = Items_Of(script);
    Mirror_Items(items, flip, size);
    return Join_Script_Items(items);
}

QString Paragraph(const QString& x, const QString& y, int escape)
{
    return QStringLiteral("Text(\"<Paragraph width='50' height='20' orgx='%1' orgy='%2' escape='%3' >a</Paragraph>\")")
        .arg(x, y)
        .arg(escape);
}

struct Mirror_Case {
    const char* name;
    int flip;
    QString before;
    QString after;
};

class Mirroring : public testing::TestWithParam<Mirror_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Mirroring,
    testing::Values(
        Mirror_Case{"swaps_left_and_right", Flip_Left_To_Right, "Crop(1,2,3,4)", "Crop(3,2,1,4)"},
        Mirror_Case{"swaps_top_and_bottom", Flip_Top_To_Bottom, "Crop(1,2,3,4)", "Crop(1,4,3,2)"},
        Mirror_Case{"both_swap_both", 3, "Crop(1,2,3,4)", "Crop(3,4,1,2)"},
        Mirror_Case{"none_changes_nothing", 0, "Crop(1,2,3,4)", "Crop(1,2,3,4)"},
        Mirror_Case{"leaves_other_items", Flip_Left_To_Right, "Blur(2,50,RGB);Crop(1,2,3,4);Blur(2,50,RGB)",
                    "Blur(2,50,RGB);Crop(3,2,1,4);Blur(2,50,RGB)"},
        Mirror_Case{"moves_a_level_text_across", Flip_Left_To_Right, Paragraph("10", "30", 0),
                    Paragraph("100", "30", 0)},
        Mirror_Case{"moves_a_level_text_down", Flip_Top_To_Bottom, Paragraph("10", "30", 0), Paragraph("10", "46", 0)},
        // Upwards along the left: the mirrored one stands right, and runs downwards.
        Mirror_Case{"turns_an_upright_text_over", Flip_Left_To_Right, Paragraph("10", "80", 900),
                    Paragraph("150", "30", 2700)},
        Mirror_Case{"turns_an_upright_text_over_its_foot", Flip_Top_To_Bottom, Paragraph("10", "80", 900),
                    Paragraph("30", "16", 2700)},
        Mirror_Case{"leaves_a_text_without_paragraph", Flip_Left_To_Right, "Text(\"plain\")", "Text(\"plain\")"}),
    [](const auto& row) { return row.param.name; });

TEST_P(Mirroring, Gives_The_Item)
{
    EXPECT_EQ(GetParam().after.toStdString(), Mirrored(GetParam().before, GetParam().flip).toStdString());
}

QString Turned(const QString& script, int degrees)
{
    Script_Item_Array items = Items_Of(script);
    Turn_Items(items, degrees, {160, 96});
    return Join_Script_Items(items);
}

TEST(Turning_Items, Leaves_What_It_Cannot_Read_And_What_Is_No_Right_Angle)
{
    for (const char* script : {"Crop(1,2)", "Crop(1,2,x,4)", "Text(\"<Paragraph orgx='1' orgy='2' escape='0'>",
                               "Text(\"plain\")", "Blur(2,50,RGB)"})
        EXPECT_EQ(script, Turned(script, 90).toStdString());
    const QString whole = Paragraph("10", "30", 0) + ";Crop(1,2,3,4)";
    for (const int degrees : {0, 45, 360, -720}) EXPECT_EQ(whole, Turned(whole, degrees)) << degrees;
    EXPECT_EQ(Paragraph("30", "150", 900) + ";Crop(2,3,4,1)", Turned(whole, 90));
    EXPECT_EQ(Paragraph("150", "66", 1800) + ";Crop(3,4,1,2)", Turned(whole, 180));
    EXPECT_EQ(Paragraph("66", "10", 2700) + ";Crop(4,1,2,3)", Turned(whole, -90));
}

TEST(Turning_Items, Knows_An_Attribute_By_Its_Whole_Name)
{
    const QString script =
        Turned("Text(\"<Paragraph xorgx='7' width='50' orgx='10' orgy='30' escape='0' >a</Paragraph>\")", 90);
    EXPECT_TRUE(script.contains("xorgx='7' width='50' orgx='30' orgy='150' escape='900'")) << script.toStdString();
}

TEST(Mirroring_Items, Twice_Gives_The_Items_Back)
{
    for (const int flip : {Flip_Left_To_Right, Flip_Top_To_Bottom}) {
        for (const int escape : {0, 300, 900, 1800, 2700, 3300}) {
            const QString script = Paragraph("40", "30", escape) + ";Crop(1,2,3,4)"; // a Text item must stand first
            const QString twice = Mirrored(Mirrored(script, flip), flip);
            if (escape % 900 == 0) {
                EXPECT_EQ(script.toStdString(), twice.toStdString());
            } else {
                EXPECT_TRUE(twice.contains(QString("escape='%1'").arg(escape))) << twice.toStdString();
            }
        }
    }
}

} // namespace
