#include "controls/ui/bkcButtonPanel.h"
#include "tests/support/Mouse_Drag.h"

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

std::vector<int> Ids(const bkcButtonPanel& panel)
{
    std::vector<int> ids;
    panel.Get_ID_List(ids);
    return ids;
}

TEST_F(Panel_Window, A_Dragged_Button_Is_Dropped_Before_Another)
{
    panel.Change_Properties([](auto& properties) { properties.AllowRearrange = true; });
    const QSignalSpy moves(&panel, &bkcButtonPanel::Rearranged);
    const QSignalSpy clicks(&panel, &bkcButtonPanel::Click);
    const QPoint before_two = Button(2)->geometry().topLeft() + QPoint(3, 10);
    const QMimeData* button = Begin_Mouse_Drag(*Button(5), {3, 10});
    ASSERT_NE(nullptr, button);
    EXPECT_TRUE(Drop_On(*panel.viewport(), *button, {before_two + QPoint(20, 0), before_two}));
    EXPECT_EQ((std::vector<int>{1, 5, 2, 3, 4}), Ids(panel));
    ASSERT_EQ(1, moves.size());
    EXPECT_EQ(5, moves[0][0].toInt());
    EXPECT_EQ(2, moves[0][1].toInt());
    EXPECT_EQ(0, clicks.size()) << "a drag is no click";
}

TEST_F(Panel_Window, A_Button_Dropped_Behind_The_Last_Comes_Last)
{
    panel.Change_Properties([](auto& properties) { properties.AllowRearrange = true; });
    const QMimeData* button = Begin_Mouse_Drag(*Button(2), {3, 10});
    ASSERT_NE(nullptr, button);
    EXPECT_TRUE(Drop_On(*panel.viewport(), *button, {QPoint(290, 10)}));
    EXPECT_EQ((std::vector<int>{1, 3, 4, 5, 2}), Ids(panel));
}

TEST_F(Panel_Window, Buttons_Stay_Without_The_Right_To_Rearrange)
{
    EXPECT_EQ(nullptr, Begin_Mouse_Drag(*Button(5), {3, 10}));
}

TEST_F(Panel_Window, A_Button_Of_Another_Panel_Is_Not_Wanted)
{
    panel.Change_Properties([](auto& properties) { properties.AllowRearrange = true; });
    bkcButtonPanel other;
    other.Change_Properties([](auto& properties) { properties.AllowRearrange = true; });
    const QMimeData* button = Begin_Mouse_Drag(*Button(5), {3, 10});
    ASSERT_NE(nullptr, button);
    EXPECT_FALSE(Hang_Over(*other.viewport(), *button, {QPoint(3, 3)}));
}

TEST_F(Panel_Window, A_Drag_At_The_Edge_Scrolls_In_State_3)
{
    panel.Change_Properties([](auto& properties) { properties.AllowRearrange = true; });
    panel.resize(60, 40); // three rows, one on view
    const QPoint low(10, panel.viewport()->height() - 2);
    const QMimeData* button = Begin_Mouse_Drag(*Button(1), {3, 10});
    ASSERT_NE(nullptr, button);
    EXPECT_TRUE(Hang_Over(*panel.viewport(), *button, {low}));
    EXPECT_EQ(0, panel.verticalScrollBar()->value());
    panel.Set_ScrollState(3);
    EXPECT_TRUE(Hang_Over(*panel.viewport(), *button, {low}));
    EXPECT_GT(panel.verticalScrollBar()->value(), 0);
}

TEST_F(Panel_Window, Sizes_Itself_By_Its_Buttons_And_The_Margins)
{
    panel.Autosize(10, 4, 20, 6);
    EXPECT_EQ(5 * 25 + 4 * 1 + 2 + 30, panel.width());
    EXPECT_EQ(25 + 2 + 10, panel.height());
    int left = 0, top = 0, right = 0, bottom = 0;
    ASSERT_TRUE(panel.Get_Button_Rectangle(1, left, top, right, bottom));
    EXPECT_EQ(11, left);
    EXPECT_EQ(5, top);
    EXPECT_FALSE(panel.Get_Button_Rectangle(77, left, top, right, bottom));
}

TEST_F(Panel_Window, Draws_Nothing_New_Until_Auto_Paint_Is_On_Again)
{
    panel.Set_AutoPaint(false);
    panel.Add_Button(6, "button 6", QIcon());
    panel.Set_ButtonMode(3);
    EXPECT_EQ(5, panel.viewport()->findChildren<QToolButton*>().size());
    panel.Set_AutoPaint(true);
    EXPECT_EQ(6, panel.viewport()->findChildren<QToolButton*>().size());
}

TEST_F(Panel_Window, Pictures_Follow_The_State)
{
    const auto icon = [](const QColor& color) {
        QPixmap picture(20, 20);
        picture.fill(color);
        return QIcon(picture);
    };
    const auto shown = [&] { return Button(6)->grab().toImage().pixelColor(Button(6)->rect().center()); };
    panel.Set_ButtonMode(1);
    panel.Add_Button(6, "six", icon(Qt::red), icon(Qt::green), icon(Qt::blue), icon(Qt::yellow));
    EXPECT_EQ(QColor(Qt::red), shown());
    panel.Set_ButtonState(6, true);
    EXPECT_EQ(QColor(Qt::blue), shown());
    panel.Set_Enabled(6, false);
    EXPECT_EQ(QColor(Qt::yellow), shown());
    panel.Set_ButtonState(6, false);
    EXPECT_EQ(QColor(Qt::green), shown());
    panel.Set_Enabled(6, true);
    panel.Picture(6, icon(Qt::cyan));
    EXPECT_EQ(QColor(Qt::cyan), shown());
}

TEST_F(Panel_Window, Has_A_Caption_A_Border_And_Colours_Of_Its_Own)
{
    panel.Change_Properties([](auto& properties) {
        properties.FrameCaption = "Tools";
        properties.BorderStyle = 1;
    });
    panel.resize(300, 100);
    EXPECT_EQ("Tools", panel.accessibleName().toStdString());
    EXPECT_NE(QFrame::NoFrame, panel.frameShape());
    EXPECT_TRUE(panel.findChild<QLabel*>()->isVisible());
    bkcButtonPanel::Colors colors;
    colors.PanelColor = QColor(Qt::red);
    panel.Set_Colors(colors);
    const QImage picture = panel.grab().toImage();
    EXPECT_EQ(QColor(Qt::red), picture.pixelColor(panel.width() - 5, panel.height() - 5));
}

TEST_F(Panel_Window, Centres_Its_Buttons_Where_It_Should)
{
    panel.Change_Properties([](auto& properties) { properties.CenterButtonsHorizontal = true; });
    int left = 0, top = 0, right = 0, bottom = 0;
    ASSERT_TRUE(panel.Get_Button_Rectangle(1, left, top, right, bottom));
    const int first = left;
    ASSERT_TRUE(panel.Get_Button_Rectangle(5, left, top, right, bottom));
    EXPECT_NEAR(first, panel.width() - right, 1);
}

} // namespace
