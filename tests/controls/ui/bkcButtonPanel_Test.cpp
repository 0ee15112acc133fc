#include "controls/ui/bkcButtonPanel.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace {

class Panel_Window : public testing::Test {
protected:
    void SetUp() override
    {
        for (int id = 1; id <= 5; ++id) panel.Add_Button(id, QStringLiteral("button %1").arg(id), QIcon());
        panel.resize(300, 40);
        panel.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
    }
    QWidget* Button(int id)
    {
        int left = 0, top = 0, right = 0, bottom = 0;
        EXPECT_TRUE(panel.Get_Button_Rectangle(id, left, top, right, bottom));
        return panel.childAt((left + right) / 2, (top + bottom) / 2);
    }
    void Press(int id, Qt::KeyboardModifiers keys = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(Button(id), button, keys);
    }
    std::vector<int> Down()
    {
        std::vector<int> ids;
        panel.Get_Selected_ID_List(ids);
        return ids;
    }

    bkcButtonPanel panel;
};

TEST_F(Panel_Window, In_Mode_0_A_Click_Only_Raises_The_Event)
{
    const QSignalSpy clicks(&panel, &bkcButtonPanel::Click);
    Press(3, Qt::ShiftModifier);
    Press(2, Qt::NoModifier, Qt::RightButton);
    ASSERT_EQ(2, clicks.size());
    EXPECT_EQ((QVariantList{1, 1, false, 3}), clicks[0]);
    EXPECT_EQ((QVariantList{2, 0, false, 2}), clicks[1]);
    EXPECT_TRUE(Down().empty());
}

TEST_F(Panel_Window, In_Mode_5_Buttons_Are_Independent)
{
    panel.Set_ButtonMode(5);
    Press(1);
    Press(4);
    EXPECT_EQ((std::vector<int>{1, 4}), Down());
    EXPECT_TRUE(qobject_cast<QToolButton*>(Button(4))->isChecked());
}

TEST_F(Panel_Window, In_Mode_6_Shift_And_Control_Select_Several)
{
    panel.Set_ButtonMode(6);
    Press(2);
    Press(4, Qt::ShiftModifier);
    EXPECT_EQ((std::vector<int>{2, 3, 4}), Down());
    Press(3, Qt::ControlModifier);
    EXPECT_EQ((std::vector<int>{2, 4}), Down());
    Press(5);
    EXPECT_EQ((std::vector<int>{5}), Down());
    EXPECT_FALSE(qobject_cast<QToolButton*>(Button(2))->isChecked());
}

TEST_F(Panel_Window, Arrows_And_Return_Work_Without_A_Mouse)
{
    const QSignalSpy clicks(&panel, &bkcButtonPanel::Click);
    panel.Set_Enabled(2, false);
    QTest::keyClick(Button(1), Qt::Key_Right);
    EXPECT_EQ(3, panel.Focus_Button()) << "a disabled button is passed";
    QTest::keyClick(Button(3), Qt::Key_Return);
    ASSERT_EQ(1, clicks.size());
    EXPECT_EQ(3, clicks[0][3].toInt());
    EXPECT_EQ("button 3", Button(3)->accessibleName().toStdString());
}

TEST_F(Panel_Window, The_Flat_Style_Raises_Only_What_Is_Under_The_Pointer)
{
    panel.Set_ButtonMode(5);
    panel.Set_DisplayStyle(2);
    EXPECT_EQ(0, panel.ButtonMode());
    EXPECT_TRUE(qobject_cast<QToolButton*>(Button(1))->autoRaise());
}

TEST_F(Panel_Window, A_Handler_May_Remove_The_Button_It_Was_Called_For)
{
    QObject::connect(&panel, &bkcButtonPanel::Click, &panel, [&](int, int, bool, int id) { panel.Remove_Button(id); });
    Press(2);
    EXPECT_EQ("", panel.Tooltip(2).toStdString());
}

TEST_F(Panel_Window, Partners_Exchange_Places)
{
    panel.Add_Button(19, "Stop pick", QIcon());
    panel.Set_Visible(19, false);
    auto* pick = Button(1);
    panel.Exchange(1, 19);
    EXPECT_FALSE(pick->isVisible());
    EXPECT_EQ("Stop pick", Button(19)->toolTip().toStdString());
}

} // namespace
