#include "frame/ui/Form_Frame.h"

#include "frame/Settings_Store.h"
#include "frame/ports/Scripted_Platform.h"
#include "frame/ui/Twips.h"

#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace {

class Form_Frame_Test : public testing::Test {
protected:
    Form_Frame_Test()
    {
        scripted.shell.screen = QSize(800, 800) * Twips_Per_Pixel;
        form.resize(300, 200);
    }
    Scripted_Platform scripted;
    QWidget form;
};

TEST_F(Form_Frame_Test, Restores_At_The_First_Show_And_Saves_At_The_Close)
{
    scripted.settings.user[Settings_Key]["Halvine-Wand"] = "WOR:150:300,WSZ:6000:4500,SPR:0.250";
    Form_Frame frame(form, &scripted.platform, "Halvine-Wand");
    std::vector<float> positions;
    QObject::connect(&frame, &Form_Frame::Restored, [&](const std::vector<float>& read) { positions = read; });
    form.show();
    EXPECT_EQ(QRect(10, 20, 400, 300), form.geometry());
    EXPECT_EQ(std::vector<float>{0.25F}, positions);
    form.setGeometry(30, 40, 500, 400);
    form.close();
    EXPECT_EQ("WOR:450:600,WSZ:7500:6000", scripted.settings.user[Settings_Key]["Halvine-Wand"].toStdString());
}

TEST_F(Form_Frame_Test, Without_A_Record_Is_Centred)
{
    Form_Frame frame(form, &scripted.platform, "Halvine-Wand");
    form.show();
    EXPECT_EQ(QRect(250, 300, 300, 200), form.geometry());
}

TEST_F(Form_Frame_Test, A_Damaged_Record_Opens_It_At_Its_Design_Size)
{
    scripted.settings.user[Settings_Key]["Halvine-Wand"] = "WOR:x,WSZ:-7,'";
    Form_Frame frame(form, &scripted.platform, "Halvine-Wand");
    frame.Set_Form_Design_Size(Program_State());
    form.show();
    EXPECT_EQ(QSize(300, 200), form.size());
}

TEST_F(Form_Frame_Test, The_Main_Windows_Own_Size_Does_Not_Count)
{
    Form_Frame frame(form, &scripted.platform, "Halvine-Picture", /*Design_From_Form=*/false);
    frame.Set_Form_Design_Size(Program_State());
    EXPECT_EQ(QSize(800, 600), form.minimumSize());
    EXPECT_EQ(12, frame.Design_Twips_Per_Pixel());
    EXPECT_EQ(12000, frame.Design_Form_Width());
}

TEST_F(Form_Frame_Test, Cannot_Be_Smaller_Than_Designed)
{
    Form_Frame frame(form, &scripted.platform, QString());
    frame.Set_Design_Form_Width(6000);
    frame.Set_Design_Form_Height(4500);
    form.resize(10, 10);
    EXPECT_EQ(QSize(400, 300), form.size());
    form.resize(700, 500);
    frame.Return_To_Design_Size();
    EXPECT_EQ(QSize(400, 300), form.size());
}

TEST_F(Form_Frame_Test, Can_Stay_On_Top_Without_Moving)
{
    Form_Frame frame(form, &scripted.platform, QString());
    form.show();
    const QRect before = form.geometry();
    EXPECT_TRUE(frame.Set_Always_On_Top(true));
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(before, form.geometry());
    EXPECT_TRUE(frame.Set_Always_On_Top(false));
}

TEST_F(Form_Frame_Test, One_That_Does_Not_Save_Itself_Stores_Nothing)
{
    Form_Frame frame(form, &scripted.platform, "Halvine-Picture");
    frame.Set_Saves_Itself(false);
    form.show();
    form.close();
    EXPECT_TRUE(scripted.settings.user.isEmpty());
    frame.Save();
    EXPECT_FALSE(scripted.settings.user.isEmpty());
}

} // namespace
