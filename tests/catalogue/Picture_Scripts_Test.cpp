#include "tests/catalogue/Catalogue_Fixture.h"

namespace {

const std::vector<int> Clear_Nothing{0};

class Scripts : public Catalogue_Test {
protected:
    QString All() const { return form.Recall_Picture_All_Script_Items(key); }
    int key = Add("a.jpg");
};

TEST_F(Scripts, A_Whole_Script_Replaces_The_Items_And_Counts_As_Modified)
{
    EXPECT_TRUE(form.Set_Picture_All_Script_Items(key, "ConOpt(0.005,0.005,LUM);Blur(2,50,RGB)"));
    EXPECT_EQ("ConOpt(0.005,0.005,LUM);Blur(2,50,RGB)", All());
    EXPECT_TRUE(Item(key).Script_Modified);
    EXPECT_TRUE(form.Set_Picture_All_Script_Items(key, ""));
    EXPECT_EQ(QString(), All());
}

TEST_F(Scripts, A_Script_That_Cannot_Be_Split_Leaves_The_Record_As_It_Was)
{
    form.Set_Picture_All_Script_Items(key, "Blur(2,50,RGB)");
    EXPECT_FALSE(form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4);Text(\"a;b\")"));
    EXPECT_EQ("Blur(2,50,RGB)", All());
}

TEST_F(Scripts, A_Bad_Index_Appends_And_A_Good_One_Replaces)
{
    EXPECT_EQ(1, form.Set_Picture_Script_Item(key, "Blur(2,50,RGB)", Clear_Nothing, 0));
    EXPECT_EQ(2, form.Set_Picture_Script_Item(key, "Crop(1,2,3,4)", Clear_Nothing, 7));
    EXPECT_EQ(1, form.Set_Picture_Script_Item(key, "Blur(3,50,RGB)", Clear_Nothing, 1));
    EXPECT_EQ("Blur(3,50,RGB);Crop(1,2,3,4)", All());
    EXPECT_TRUE(Item(key).Script_Modified);
}

TEST_F(Scripts, An_Empty_Text_With_A_Bad_Index_Does_Nothing)
{
    form.Set_Picture_All_Script_Items(key, "Blur(2,50,RGB)");
    EXPECT_EQ(0, form.Set_Picture_Script_Item(key, "", std::vector<int>{8}, 0));
    EXPECT_EQ(0, form.Set_Picture_Script_Item(key, "", std::vector<int>{8}, 2));
    EXPECT_EQ("Blur(2,50,RGB)", All());
}

TEST_F(Scripts, An_Empty_Text_With_A_Valid_Index_Clears_The_Listed_Types_But_Writes_Nothing)
{
    form.Set_Picture_All_Script_Items(key, "Blur(2,50,RGB);Crop(1,2,3,4)");
    Item(key).Script_Modified = false;
    view.drawn.clear();
    EXPECT_EQ(2, form.Set_Picture_Script_Item(key, "", std::vector<int>{7}, 2));
    EXPECT_FALSE(Item(key).Script_Modified) << "there was nothing to clear";
    EXPECT_TRUE(view.drawn.isEmpty());
    EXPECT_EQ(2, form.Set_Picture_Script_Item(key, "", std::vector<int>{8}, 2));
    EXPECT_EQ("Crop(1,2,3,4)", All());
    EXPECT_TRUE(Item(key).Script_Modified);
    EXPECT_EQ(QList<int>{1}, view.drawn);
}

TEST_F(Scripts, What_Was_Just_Written_Survives_The_Clearing_Of_Its_Own_Type)
{
    form.Set_Picture_All_Script_Items(key, "Blur(2,50,RGB);Crop(1,2,3,4)");
    const int index = form.Set_Picture_Script_Item(key, "Crop(5,5,5,5)", std::vector<int>{5, 8}, 2);
    EXPECT_EQ(2, index);
    EXPECT_EQ("Crop(5,5,5,5)", All());
}

TEST_F(Scripts, Recall_Finds_The_Last_Item_Of_Its_Type)
{
    form.Set_Picture_All_Script_Items(key, "Blur(2,50,RGB);Crop(1,2,3,4);Blur(3,60,K)");
    QString text;
    EXPECT_EQ(3, form.Recall_Picture_Script_Item(key, 8, text));
    EXPECT_EQ("Blur(3,60,K)", text);
    EXPECT_EQ(-1, form.Recall_Picture_Script_Item(key, 1, text));
    EXPECT_EQ(QString(), text);
}

TEST_F(Scripts, Without_A_Script_The_Prepared_One_Is_Shown_But_The_Index_Stays_Minus_1)
{
    form.State().Current_Prepared_Script = 2;
    QString text;
    EXPECT_EQ(-1, form.Recall_Picture_Script_Item(key, 7, text));
    EXPECT_EQ("Unsharp(0.75,0.25,1.5,2,5,K)", text);
    Unsharp_Fields fields;
    EXPECT_EQ(-1, form.Recall_Picture_Unsharp_Mask(key, fields));
    EXPECT_FLOAT_EQ(0.75F, fields.lighten_amount);
    form.Set_Picture_Crop(key, 1, 2, 3, 4, 0);
    EXPECT_EQ(-1, form.Recall_Picture_Script_Item(key, 7, text)) << "the picture has items of its own now";
    EXPECT_EQ(QString(), text);
}

TEST_F(Scripts, An_Item_That_Does_Not_Parse_Counts_As_Missing)
{
    form.Set_Picture_All_Script_Items(key, "Crop(1,2)");
    int a = 0, b = 0, c = 0, d = 0;
    EXPECT_EQ(-1, form.Recall_Picture_Crop(key, a, b, c, d));
}

TEST_F(Scripts, Every_Typed_Pair_Gives_Back_What_Was_Set)
{
    EXPECT_EQ(1, form.Set_Picture_Contrast_Optimize(key, 0.005F, 0.01F, 2, 0));
    EXPECT_EQ(2, form.Set_Picture_Saturation_Value_Adjust(key, 1.1F, 0.9F, 0));
    EXPECT_EQ(3, form.Set_Picture_Color_Balance(key, 1, 1.05F, 0.95F, 0));
    EXPECT_EQ(4, form.Set_Picture_Gamma(key, {0, 1, 255}, {0, 1.2F, 255}, {10, 1, 245}, 0));
    EXPECT_EQ(5, form.Set_Picture_Crop(key, 10, 20, 30, 40, 0));
    EXPECT_EQ(6, form.Set_Picture_Unsharp_Mask(key, {0.75F, 0.25F, 1.5F, 2, 5, 128}, 0));
    EXPECT_EQ(7, form.Set_Picture_Blur(key, 2, 50, 7, 0));
    EXPECT_EQ("ConOpt(0.005,0.01,RGB);SatVal(1.1,0.9);ColBal(1,1.05,0.95);Gamma(0,1,255,0,1.2,255,10,1,245);"
              "Crop(10,20,30,40);Unsharp(0.75,0.25,1.5,2,5,K);Blur(2,50,RGB)",
              All());
    float x = 0, y = 0, z = 0;
    int i = 0, j = 0, k = 0, l = 0;
    Gamma_Channel red, green, blue;
    Unsharp_Fields unsharp;
    EXPECT_EQ(1, form.Recall_Picture_Contrast_Optimize(key, x, y, i));
    EXPECT_EQ(2, i);
    EXPECT_EQ(2, form.Recall_Picture_Saturation_Value_Adjust(key, x, y));
    EXPECT_FLOAT_EQ(0.9F, y);
    EXPECT_EQ(3, form.Recall_Picture_Color_Balance(key, x, y, z));
    EXPECT_FLOAT_EQ(0.95F, z);
    EXPECT_EQ(4, form.Recall_Picture_Gamma(key, red, green, blue));
    EXPECT_EQ(245, blue.white);
    EXPECT_EQ(5, form.Recall_Picture_Crop(key, i, j, k, l));
    EXPECT_EQ(40, l);
    EXPECT_EQ(6, form.Recall_Picture_Unsharp_Mask(key, unsharp));
    EXPECT_EQ(128, unsharp.component);
    EXPECT_EQ(7, form.Recall_Picture_Blur(key, x, i, j));
    EXPECT_EQ(7, j);
}

} // namespace
