#include "imaging/Script_Utilities.h"

#include <gtest/gtest.h>
#include <random>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

using State = Item_Reading::State;

// ---- scanners ----

TEST(Scanners, Take_Runs_And_Leave_The_Position_Without_One)
{
    int position = 1;
    EXPECT_EQ(Scan_Alpha_Token(Q("Gamma(1"), position), Q("Gamma"));
    EXPECT_EQ(position, 6);
    EXPECT_EQ(Scan_Alpha_Token(Q("Gamma(1"), position), QString());
    EXPECT_EQ(position, 6);
    position = 1;
    EXPECT_EQ(Scan_Alphanumeric_Token(Q("Lanczos3,"), position), Q("Lanczos3"));
    EXPECT_EQ(position, 9);
    EXPECT_EQ(Scan_Alpha_Token(Q("Ärger"), position = 1), QString()) << "letters of ASCII only";
}

TEST(Scanners, Missing_Numbers_Give_The_Sentinels)
{
    int position = 3;
    EXPECT_EQ(Scan_Single_Token(Q("1,x"), position), Missing_Single);
    EXPECT_EQ(position, 3);
    EXPECT_EQ(Scan_Long_Token(Q("1,x"), position), Missing_Long);
    EXPECT_EQ(position, 3);
    EXPECT_EQ(Scan_Long_Token(Q("1"), position = 9), Missing_Long);
}

TEST(Scanners, Numbers_That_Are_None_Fail)
{
    int position = 1;
    EXPECT_FALSE(Scan_Single_Token(Q("1.2.3,"), position));
    EXPECT_FALSE(Scan_Long_Token(Q("1-2,"), position));
    EXPECT_FALSE(Scan_Long_Token(Q("99999999999,"), position));
    EXPECT_EQ(position, 1);
    EXPECT_EQ(Scan_Long_Token(Q("1.5"), position), 1) << "a Long ends at the point";
    EXPECT_EQ(position, 2);
}

TEST(Scanners, Required_Set_Passes_The_Whole_Run)
{
    int position = 2;
    EXPECT_TRUE(Scan_Required_Set(Q(", "), Q("1 , ,2"), position));
    EXPECT_EQ(position, 6);
    EXPECT_FALSE(Scan_Required_Set(Q(", "), Q("1 , ,2"), position));
    EXPECT_EQ(position, 6);
}

struct Quoted_Case {
    const char* name;
    const char* text;
    int position;
    const char* token;
    int behind;
};

class Quoted_Token : public testing::TestWithParam<Quoted_Case> {};

TEST_P(Quoted_Token, Is_Read)
{
    int position = GetParam().position;
    EXPECT_EQ(Scan_Quoted_Token(Q(GetParam().text), position), Q(GetParam().token));
    EXPECT_EQ(position, GetParam().behind);
}

INSTANTIATE_TEST_SUITE_P(All, Quoted_Token,
                         testing::Values(Quoted_Case{"plain", "\"ab\")", 1, "ab", 5},
                                         Quoted_Case{"empty", "\"\")", 1, "", 3},
                                         Quoted_Case{"not_closed", "\"ab)", 1, "", 2},
                                         Quoted_Case{"no_quote", "ab", 1, "", 1},
                                         Quoted_Case{"at_the_last_character", "a\"", 2, "", 2}),
                         [](const auto& row) { return row.param.name; });

// ---- names ----

TEST(Names, Of_All_Types)
{
    const char* const labels[] = {"",      "Contrast Optimize", "Saturation", "Color Balance", "Gamma", "Crop",
                                  "Scale", "Sharpen",           "Blur",       "Text",          ""};
    for (int type = 0; type <= 10; ++type) EXPECT_EQ(Script_Item_Type_Label(type), Q(labels[type]));
    const char* const items[] = {"x(",   "conopt(", "SATVAL",  "ColBal", "Gamma(",
                                 "Crop", "Scale",   "Unsharp", "Blur",   "Text\""};
    for (int type = 0; type <= 9; ++type) EXPECT_EQ(Script_Item_Type_From_String(Q(items[type])), type);
    EXPECT_EQ(Script_Item_Type_From_String(Q(" Gamma(")), 0) << "a blank in front";
    EXPECT_EQ(Script_Item_Type_From_String(QString()), 0);
}

TEST(Names, Of_Component_Sets)
{
    EXPECT_EQ(Color_Components_To_String(7), Q("RGB"));
    EXPECT_EQ(Color_Components_To_String(240), Q("CMYK"));
    EXPECT_EQ(Color_Components_To_String(255), Q("RGBLCMYK"));
    EXPECT_EQ(Color_Components_From_String(Q("kbrX")), 128 | 4 | 1) << "any order, any case, foreign letters";
    for (int mask = 0; mask < 256; ++mask)
        EXPECT_EQ(Color_Components_From_String(Color_Components_To_String(mask)), mask);
}

TEST(Names, Of_Interpolation_Methods)
{
    for (int method = 1; method <= 8; ++method)
        EXPECT_EQ(Interpolation_Method_From_String(Interpolation_Method_To_String(method).toUpper()), method);
    EXPECT_EQ(Interpolation_Method_To_String(0), QString());
    EXPECT_EQ(Interpolation_Method_To_String(9), QString());
    EXPECT_EQ(Interpolation_Method_To_String(5), Q("BSpline"));
    EXPECT_EQ(Interpolation_Method_Label(5), Q("B-Spline"));
    EXPECT_EQ(Interpolation_Method_From_String(Q("Cubic")), 0);
}

// ---- writers ----

TEST(Writers, Give_The_Texts_That_Files_Hold)
{
    EXPECT_EQ(Format_ConOpt_Item(0.005F, 0.005F, 1), Q("ConOpt(0.005,0.005,LUM)"));
    EXPECT_EQ(Format_ConOpt_Item(-1, 0.02F, 2), Q("ConOpt(-1,0.02,RGB)"));
    EXPECT_EQ(Format_ConOpt_Item(0, 0, 3), Q("ConOpt(0,0,LUM)")) << "any other mode is LUM";
    EXPECT_EQ(Format_SatVal_Item(1.1F, 0.9F), Q("SatVal(1.1,0.9)"));
    EXPECT_EQ(Format_ColBal_Item(1, 1.05F, 0.95F), Q("ColBal(1,1.05,0.95)"));
    EXPECT_EQ(Format_Gamma_Item({0, 1, 255}, {0, 1.2F, 255}, {10, 1, 245}), Q("Gamma(0,1,255,0,1.2,255,10,1,245)"));
    EXPECT_EQ(Format_Crop_Item(10, 20, 30, 40), Q("Crop(10,20,30,40)"));
    EXPECT_EQ(Format_Scale_Item(800, 600, 7, 300, 300), Q("Scale(800,600,Lanczos3,300,300)"));
    EXPECT_EQ(Format_Scale_Item(800, 600, 9, -1, -1), Q("Scale(800,600,,-1,-1)")) << "no such method";
    EXPECT_EQ(Format_Unsharp_Item({0.75F, 0.25F, 1.5F, 2, 5, 128}), Q("Unsharp(0.75,0.25,1.5,2,5,K)"));
    EXPECT_EQ(Format_Blur_Item(2, 50, 7), Q("Blur(2,50,RGB)"));
    EXPECT_EQ(Format_Text_Item(Q("a;b")), Q("Text(\"a;b\")"));
}

TEST(Readers, Take_What_The_Writers_Give)
{
    std::mt19937 random(11);
    const auto whole = [&] { return std::uniform_int_distribution<int>(-100, 6000)(random); };
    const auto single = [&] {
        return std::stof(std::to_string(std::uniform_real_distribution<float>(0, 9)(random)).substr(0, 5));
    };
    for (int round = 0; round < 500; ++round) {
        const Unsharp_Fields fields{single(), single(), single(), whole(), whole(), 1 + whole() % 100 + 127};
        Unsharp_Fields read;
        ASSERT_TRUE(Parse_Unsharp_Item(Format_Unsharp_Item(fields), read));
        ASSERT_EQ(Format_Unsharp_Item(read), Format_Unsharp_Item(fields));
        const Gamma_Channel red{whole(), single(), whole()}, green{whole(), single(), whole()}, blue{1, 1, 1};
        Gamma_Channel r, g, b;
        ASSERT_TRUE(Parse_Gamma_Item(Format_Gamma_Item(red, green, blue), r, g, b));
        ASSERT_TRUE(r == red && g == green && b == blue);
        int width, height, method, horizontal, vertical;
        const QString scale = Format_Scale_Item(whole(), whole(), 1 + round % 8, whole(), -1);
        ASSERT_TRUE(Parse_Scale_Item(scale, width, height, method, horizontal, vertical));
        ASSERT_EQ(Format_Scale_Item(width, height, method, horizontal, vertical), scale);
    }
}

// ---- readers: the looseness of the format ----

TEST(Readers, Words_Are_Compared_Without_Case)
{
    float shadow = 0, highlight = 0;
    int mode = 0;
    EXPECT_TRUE(Parse_ConOpt_Item(Q("conopt(0.005,0.005,lum)"), shadow, highlight, mode));
    EXPECT_EQ(mode, 1);
    EXPECT_EQ(shadow, 0.005F);
    int width, height, method, horizontal, vertical;
    EXPECT_TRUE(Parse_Scale_Item(Q("SCALE(1,2,LANCZOS2,3,4)"), width, height, method, horizontal, vertical));
    EXPECT_EQ(method, 6);
}

TEST(Readers, Blanks_Are_Taken_Around_Separators)
{
    Gamma_Channel red, green, blue;
    EXPECT_TRUE(Parse_Gamma_Item(Q("Gamma( 0 , 1 , 255 , 0 , 1 , 255 , 0 , 1 , 255 )"), red, green, blue));
    EXPECT_EQ(blue, (Gamma_Channel{0, 1, 255}));
    EXPECT_TRUE(Parse_Gamma_Item(Q("Gamma((0,,1 255,0,1,255,0,1,255) )x"), red, green, blue))
        << "runs of separators count as one, what follows is not looked at";
}

TEST(Readers, Blanks_Are_Refused_Elsewhere)
{
    int left = -7, top = -7, right = -7, bottom = -7;
    EXPECT_FALSE(Parse_Crop_Item(Q(" Crop(1,2,3,4)"), left, top, right, bottom));
    EXPECT_EQ(left, -7);
    EXPECT_FALSE(Parse_Crop_Item(Q("Cr op(1,2,3,4)"), left, top, right, bottom));
    EXPECT_FALSE(Parse_Crop_Item(Q("Crop(1,2,3 4x)"), left, top, right, bottom));
    EXPECT_TRUE(Parse_Crop_Item(Q("Crop(1,2,3,4 x"), left, top, right, bottom)) << "a blank ends an item as well";
}

TEST(Readers, Another_Keyword_Stores_Nothing)
{
    float saturation = 3, value = 4;
    EXPECT_FALSE(Parse_SatVal_Item(Q("ColBal(1,1,1)"), saturation, value));
    EXPECT_EQ(saturation, 3);
}

TEST(Readers, ConOpt_Without_Third_Field_Keeps_Both_Clips)
{
    float shadow = 9, highlight = 9;
    int mode = 5;
    EXPECT_FALSE(Parse_ConOpt_Item(Q("ConOpt(0.01,0.02)"), shadow, highlight, mode));
    EXPECT_EQ(shadow, 0.01F);
    EXPECT_EQ(highlight, 0.02F);
    EXPECT_EQ(mode, 5);
    EXPECT_FALSE(Parse_ConOpt_Item(Q("ConOpt(0.01,0.02,XYZ)"), shadow, highlight, mode));
    EXPECT_EQ(mode, 5);
}

TEST(Readers, Missing_Numbers_Act_As_Sentinels)
{
    Gamma_Channel red{1, 1, 1}, green{2, 2, 2}, blue;
    EXPECT_FALSE(Parse_Gamma_Item(Q("Gamma(0,x,255"), red, green, blue));
    EXPECT_EQ(red, (Gamma_Channel{0, Missing_Single, 1}));
    EXPECT_EQ(green, (Gamma_Channel{2, 2, 2}));
    int left = 1, top = 1, right = 1, bottom = 1;
    EXPECT_FALSE(Parse_Crop_Item(Q("Crop(a"), left, top, right, bottom));
    EXPECT_EQ(left, Missing_Long);
    EXPECT_EQ(top, 1);
}

TEST(Readers, A_Number_At_The_End_Takes_The_Appended_Zero)
{
    float radius = 0;
    int weight = 0, component = 0;
    EXPECT_FALSE(Parse_Blur_Item(Q("Blur(2,5"), radius, weight, component));
    EXPECT_EQ(weight, 50);
    int left = 0, top = 0, right = 0, bottom = 0;
    EXPECT_FALSE(Parse_Crop_Item(Q("Crop(1,2,3,4"), left, top, right, bottom));
    EXPECT_EQ(bottom, 40);
}

TEST(Readers, A_Number_That_Is_None_Is_A_Conversion_Failure)
{
    float saturation = 0, value = 0;
    EXPECT_EQ(Parse_SatVal_Item(Q("SatVal(1.5,1.2.3)"), saturation, value).state, State::Conversion_Failure);
    EXPECT_EQ(saturation, 1.5F);
}

TEST(Readers, Scale_With_The_Shown_Name_B_Spline_Stops_At_The_Dash)
{
    int width = 0, height = 0, method = 5, horizontal = 7, vertical = 7;
    EXPECT_FALSE(Parse_Scale_Item(Q("Scale(1,2,B-Spline,3,4)"), width, height, method, horizontal, vertical));
    EXPECT_EQ(method, 0) << "the word B is unknown";
    EXPECT_EQ(horizontal, 7);
}

TEST(Readers, Scale_Without_Method_Word_Keeps_The_Method)
{
    int width = 0, height = 0, method = 0, horizontal = 0, vertical = 0;
    EXPECT_FALSE(Parse_Scale_Item(Q("Scale(1,2,,3,4)"), width, height, method, horizontal, vertical) &&
                 horizontal == 3 && vertical == 4);
}

TEST(Readers, An_Empty_Word_Ends_The_Item_And_Is_Not_Stored)
{
    int width = 0, height = 0, method = 5, horizontal = 7, vertical = 7;
    EXPECT_FALSE(Parse_Scale_Item(Q("Scale(1,2,-,3,4)"), width, height, method, horizontal, vertical));
    EXPECT_EQ(method, 5);
    float radius = 0;
    int weight = 0, component = 9;
    EXPECT_FALSE(Parse_Blur_Item(Q("Blur(2,50,)"), radius, weight, component));
    EXPECT_EQ(component, 9);
    Unsharp_Fields fields{.component = 9};
    EXPECT_FALSE(Parse_Unsharp_Item(Q("Unsharp(0.75,0.25,1.5,2,5,)"), fields));
    EXPECT_EQ(fields, (Unsharp_Fields{0.75F, 0.25F, 1.5F, 2, 5, 9}));
}

TEST(Readers, Foreign_Letters_Alone_Are_No_Component_But_A_Word)
{
    float radius = 0;
    int weight = 0, component = 9;
    EXPECT_TRUE(Parse_Blur_Item(Q("Blur(2,50,xz)"), radius, weight, component));
    EXPECT_EQ(component, 0);
}

TEST(Readers, Text_With_A_Quote_In_The_Body_Fails_At_The_Closing_Run)
{
    QString body;
    EXPECT_FALSE(Parse_Text_Item(Q("Text(\"say \"hi\"\")"), body));
    EXPECT_EQ(body, Q("say "));
}

TEST(Readers, Text_Body_Is_Taken_As_It_Stands)
{
    QString body;
    EXPECT_TRUE(Parse_Text_Item(Q("Text(\" a;b) \")"), body));
    EXPECT_EQ(body, Q(" a;b) "));
    EXPECT_TRUE(Parse_Text_Item(Format_Text_Item(QString()), body));
    EXPECT_EQ(body, QString());
}

} // namespace
