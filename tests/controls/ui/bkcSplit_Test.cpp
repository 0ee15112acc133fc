#include "controls/ui/bkcSlider.h"
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

TEST(Slider_Window, Keys_Change_The_Value_And_The_Legend)
{
    bkcSlider slider;
    slider.Set_LegendText("Weight ");
    slider.Set_LegendFormatString("0\"%\"");
    const QSignalSpy changes(&slider, &bkcSlider::Change);
    const QSignalSpy drops(&slider, &bkcSlider::SliderDropped);
    slider.Set_Value(40);
    EXPECT_EQ(0, drops.size()) << "the program's own change is no drop";
    QTest::keyClick(&slider.Bar(), Qt::Key_Right);
    QTest::keyClick(&slider.Bar(), Qt::Key_PageUp);
    EXPECT_EQ(51, slider.Value());
    EXPECT_EQ("Weight 51%", slider.Legend().toStdString());
    EXPECT_EQ(3, changes.size());
    EXPECT_EQ(2, drops.size());
}

} // namespace
