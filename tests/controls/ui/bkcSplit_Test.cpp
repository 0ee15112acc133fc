#include "controls/ui/bkcSplit.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace {

class Split_Window : public testing::Test {
protected:
    void SetUp() override
    {
        container.resize(405, 200);
        split = new bkcSplit(&container);
        split->Set_SplitterWidth(5);
        split->Initialize(&container, new QWidget, new QWidget, true);
        container.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&container));
    }
    void Drag(int by)
    {
        auto* handle = split->handle(1);
        const auto from = handle->rect().center();
        QTest::mousePress(handle, Qt::LeftButton, Qt::NoModifier, from);
        QMouseEvent move(QEvent::MouseMove, from + QPoint(by, 0), handle->mapToGlobal(from + QPoint(by, 0)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(handle, &move);
        QTest::mouseRelease(handle, Qt::LeftButton);
    }

    QWidget container;
    bkcSplit* split = nullptr;
};

TEST_F(Split_Window, Dragging_The_Handle_Moves_It_Within_The_Limits)
{
    EXPECT_EQ(200, split->Control_LT()->width());
    const QSignalSpy changes(split, &bkcSplit::SplitRatioChanged);
    Drag(100);
    EXPECT_EQ(300, split->Control_LT()->width());
    EXPECT_DOUBLE_EQ(0.75, split->SplitRatio());
    split->Set_MinSplitRatio(0.5);
    Drag(-250);
    EXPECT_DOUBLE_EQ(0.5, split->SplitRatio());
    EXPECT_EQ(200, split->Control_LT()->width());
    EXPECT_EQ(2, changes.size());
}

TEST_F(Split_Window, Follows_The_Container_And_Keeps_The_Ratio)
{
    split->Set_SplitRatio(0.25);
    container.resize(805, 200);
    EXPECT_EQ(200, split->Control_LT()->width());
    split->Set_ResizeToAxisLT(false);
    container.resize(405, 200);
    EXPECT_EQ(200, split->Control_LT()->width());
}

TEST_F(Split_Window, Arrow_Keys_Move_The_Splitter)
{
    QTest::keyClick(split->handle(1), Qt::Key_Right);
    EXPECT_EQ(210, split->Control_LT()->width());
}

TEST_F(Split_Window, Has_A_Frame_And_A_Ground_As_Any_Control)
{
    EXPECT_EQ(QFrame::NoFrame, split->frameShape());
    split->Set_BorderStyle(1);
    EXPECT_EQ(QFrame::Sunken, split->frameShadow());
    split->Set_Appearance(0);
    EXPECT_EQ(QFrame::Box, split->frameShape());
    split->Set_BackColor(Qt::red);
    split->Set_BackStyle(1);
    EXPECT_EQ(1, split->BackStyle());
    EXPECT_EQ(QColor(Qt::red), split->BackColor());
    split->Set_Caption("Files and pictures");
    EXPECT_EQ("Files and pictures", split->handle(1)->accessibleName().toStdString());
}

TEST_F(Split_Window, A_Disabled_Splitter_Does_Not_Move)
{
    split->Set_Enabled(false);
    Drag(100);
    EXPECT_EQ(200, split->Control_LT()->width());
    EXPECT_TRUE(split->Control_LT()->isEnabled());
    split->Set_Enabled(true);
    Drag(100);
    EXPECT_EQ(300, split->Control_LT()->width());
}

TEST_F(Split_Window, Margins_And_Splitter_Width_Leave_The_Rest_To_The_Controls)
{
    split->Set_Margin(10);
    split->Set_SplitterWidth(15);
    EXPECT_EQ(405 - 20 - 15, split->Control_LT()->width() + split->Control_RB()->width());
    EXPECT_EQ(10, split->Control_LT()->x());
    EXPECT_EQ(180, split->Control_LT()->height());
}

TEST_F(Split_Window, Each_Margin_Can_Be_Set_By_Itself)
{
    split->Set_MarginLeft(1);
    split->Set_MarginTop(2);
    split->Set_MarginRight(3);
    split->Set_MarginBottom(4);
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}),
              (std::vector<int>{split->MarginLeft(), split->MarginTop(), split->MarginRight(), split->MarginBottom()}));
    EXPECT_EQ(QPoint(1, 2), split->Control_LT()->pos());
    EXPECT_EQ(200 - 6, split->Control_LT()->height());
    EXPECT_EQ(405 - 4 - 5, split->Control_LT()->width() + split->Control_RB()->width());
}

TEST_F(Split_Window, Stands_Across_With_The_Other_Orientation)
{
    split->Set_Orientation(Split_Orientation::Vertical);
    EXPECT_EQ(405, split->Control_LT()->width());
    EXPECT_EQ(200 - 5, split->Control_LT()->height() + split->Control_RB()->height());
    QTest::keyClick(split->handle(1), Qt::Key_Up);
    EXPECT_LT(split->Control_LT()->height(), split->Control_RB()->height());
}

} // namespace
