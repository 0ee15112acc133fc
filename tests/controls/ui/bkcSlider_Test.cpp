#include "controls/ui/bkcSlider.h"
#include "tests/support/Mouse_Drag.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace {

struct Bar_Window : testing::Test {
    Bar_Window()
    {
        bar.resize(bar.sizeHint().expandedTo({220, 0}));
        bar.show();
    }
    QPoint Thumb() const
    {
        QStyleOptionSlider option;
        option.initFrom(&bar);
        option.orientation = bar.orientation();
        option.minimum = bar.minimum();
        option.maximum = bar.maximum();
        option.sliderPosition = bar.sliderPosition();
        option.upsideDown = bar.invertedAppearance();
        option.subControls = QStyle::SC_All;
        return bar.style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &bar).center();
    }
    bkcScrollBar bar;
};

TEST_F(Bar_Window, Marks_Are_Drawn_Beside_The_Thumb_At_Their_Size)
{
    bar.Set_TickFrequency(25);
    const auto marks_at = [&](int y) { // columns of the row that are not the ground
        const QImage picture = bar.grab().toImage();
        int count = 0;
        for (int x = 0; x < picture.width(); ++x) count += picture.pixelColor(x, y) != picture.pixelColor(1, 0);
        return count;
    };
    const int plain = bar.sizeHint().height();
    bar.Set_TickStyle(2);
    bar.Set_TickSize(7);
    EXPECT_EQ(plain + 14, bar.sizeHint().height());
    bar.resize(220, bar.sizeHint().height());
    EXPECT_EQ(5, marks_at(bar.height() - 3)) << "0, 25, 50, 75, 100";
    bar.Set_TickStyle(1);
    EXPECT_EQ(0, marks_at(bar.height() - 3));
    EXPECT_EQ(5, marks_at(3));
    bar.Set_TickStyle(0);
    EXPECT_EQ(plain, bar.sizeHint().height());
}

TEST_F(Bar_Window, Millions_Of_Marks_Are_Drawn_At_Once)
{
    bar.Set_Max(2'000'000'000);
    bar.Set_TickStyle(3);
    EXPECT_FALSE(bar.grab().isNull());
}

TEST_F(Bar_Window, The_Thumb_Has_The_Size_That_Was_Asked_For)
{
    const int own = bar.style()->pixelMetric(QStyle::PM_SliderLength, nullptr, &bar);
    bar.Set_SliderPointerSize(own + 9);
    EXPECT_EQ(own + 9, bar.style()->pixelMetric(QStyle::PM_SliderLength, nullptr, &bar));
    bar.Set_SliderPointerSize(own + 3);
    EXPECT_EQ(own + 3, bar.style()->pixelMetric(QStyle::PM_SliderLength, nullptr, &bar));
    bar.Set_SliderPointerSize(0);
    EXPECT_EQ(own, bar.style()->pixelMetric(QStyle::PM_SliderLength, nullptr, &bar));
}

TEST_F(Bar_Window, Dragging_The_Thumb_Scrolls_And_Drops_Once)
{
    const QSignalSpy scrolls(&bar, &bkcScrollBar::Scroll);
    const QSignalSpy drops(&bar, &bkcScrollBar::SliderDropped);
    const QPoint thumb = Thumb();
    bar.MouseDown(1, 0, thumb.x(), thumb.y()); // as a host forwards it
    bar.MouseMove(1, 0, thumb.x() + 40, thumb.y());
    bar.MouseMove(1, 0, thumb.x() + 80, thumb.y());
    EXPECT_EQ(0, drops.size());
    bar.MouseUp(1, 0, thumb.x() + 80, thumb.y());
    EXPECT_EQ(2, scrolls.size());
    EXPECT_EQ(1, drops.size());
    EXPECT_GT(bar.Value(), 20);
    EXPECT_LT(bar.Value(), 60);
}

TEST_F(Bar_Window, A_Press_On_The_Track_Steps_And_A_Double_Click_Steps_Again)
{
    bar.MouseDown(1, 0, 200, bar.height() / 2);
    bar.MouseUp(1, 0, 200, bar.height() / 2);
    const int once = bar.Value();
    EXPECT_GT(once, 0);
    bar.DblClick(200, bar.height() / 2);
    EXPECT_GT(bar.Value(), once);
}

TEST_F(Bar_Window, The_Hosts_Timer_Sets_The_Pace_Of_The_Repeat)
{
    QTimer pace;
    pace.setInterval(1);
    bar.Set_ScrollTimer(&pace);
    bar.Set_Max(1'000'000);
    bar.MouseDown(1, 0, 200, bar.height() / 2);
    const int once = bar.Value();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.Value() > once + 20; }, 2000));
    bar.MouseUp(1, 0, 200, bar.height() / 2);
}

TEST_F(Bar_Window, Runs_The_Other_Way_When_Min_Is_Above_Max)
{
    bar.Set_Min(100);
    bar.Set_Max(0);
    bar.Set_Value(40);
    EXPECT_EQ(40, bar.Value());
    const QPoint right_half(180, bar.height() / 2);
    bar.MouseDown(1, 0, right_half.x(), right_half.y());
    bar.MouseUp(1, 0, right_half.x(), right_half.y());
    EXPECT_NE(40, bar.Value());
}

TEST_F(Bar_Window, Changes_Wait_For_Refresh_Without_Auto_Paint)
{
    bar.SetAutoPaint(false);
    bar.Set_Value(70);
    EXPECT_EQ(70, bar.Value());
    EXPECT_EQ(0, bar.sliderPosition());
    bar.Refresh();
    EXPECT_EQ(70, bar.sliderPosition());
}

TEST_F(Bar_Window, A_Drag_Over_It_Scrolls_Where_It_Accepts_That)
{
    QMimeData data;
    EXPECT_FALSE(bar.acceptDrops());
    bar.Set_AcceptDragScrolling(true);
    EXPECT_TRUE(bar.acceptDrops());
    EXPECT_FALSE(Drop_On(bar, data, {QPoint(110, 5)})) << "nothing can be dropped here";
    EXPECT_EQ(50, bar.Value());
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

struct Legend_Case {
    const char* name;
    int position;
    bool beside, first;
};

class Legend_Places : public testing::TestWithParam<Legend_Case> {};

INSTANTIATE_TEST_SUITE_P(All, Legend_Places,
                         testing::Values(Legend_Case{"above", 0, false, true}, Legend_Case{"below", 1, false, false},
                                         Legend_Case{"left", 2, true, true}, Legend_Case{"right", 3, true, false}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Legend_Places, Are_Where_The_Position_Says)
{
    bkcSlider slider;
    slider.Set_LegendText("Radius");
    slider.Set_LegendPosition(GetParam().position);
    slider.Set_LegendSeparation(9);
    slider.resize(300, 80);
    slider.show();
    const QRect legend = slider.findChild<QLabel*>()->geometry();
    const QRect bar = slider.Bar().geometry();
    const QRect first = GetParam().first ? legend : bar;
    const QRect second = GetParam().first ? bar : legend;
    if (GetParam().beside)
        EXPECT_EQ(first.right() + 1 + 9, second.left());
    else
        EXPECT_EQ(first.bottom() + 1 + 9, second.top());
}

TEST(Slider_Window, Has_The_Properties_Of_Its_Bar_And_Its_Legend)
{
    bkcSlider slider;
    slider.Set_Min(-50);
    slider.Set_Max(50);
    slider.Set_SmallChange(2);
    slider.Set_LargeChange(20);
    slider.Set_TickStyle(3);
    slider.Set_TickFrequency(25);
    slider.Set_TickSize(6);
    slider.Set_SliderPointerSize(15);
    slider.Set_BackColor(Qt::red);
    const auto& bar = slider.Bar();
    EXPECT_EQ((std::vector<int>{-50, 50, 2, 20, 3, 25, 6, 15}),
              (std::vector<int>{bar.Min(), bar.Max(), bar.SmallChange(), bar.LargeChange(), bar.TickStyle(),
                                bar.TickFrequency(), bar.TickSize(), bar.SliderPointerSize()}));
    EXPECT_EQ(
        (std::vector<int>{-50, 50, 2, 20, 3, 25, 6, 15}),
        (std::vector<int>{slider.Min(), slider.Max(), slider.SmallChange(), slider.LargeChange(), slider.TickStyle(),
                          slider.TickFrequency(), slider.TickSize(), slider.SliderPointerSize()}));
    EXPECT_EQ(QColor(Qt::red), slider.BackColor());
    EXPECT_EQ(QColor(Qt::red), bar.BackColor());
    slider.Set_LegendAlignment(2);
    slider.Set_LegendPosition(9);
    EXPECT_EQ(2, slider.LegendAlignment());
    EXPECT_EQ(3, slider.LegendPosition()) << "the last there is";
    EXPECT_TRUE(slider.findChild<QLabel*>()->alignment().testFlag(Qt::AlignHCenter));
}

TEST(Slider_Window, The_Legend_Can_Be_Hidden_And_Greys_With_The_Bar)
{
    bkcSlider slider;
    slider.Set_LegendText("Radius");
    slider.show();
    auto* legend = slider.findChild<QLabel*>();
    slider.Set_ShowLegend(false);
    EXPECT_FALSE(legend->isVisible());
    EXPECT_EQ("", slider.Legend().toStdString());
    slider.Set_ShowLegend(true);
    slider.Set_Enabled(false);
    EXPECT_FALSE(legend->isEnabled());
    EXPECT_FALSE(slider.Bar().isEnabled());
    EXPECT_EQ("Radius", slider.Bar().accessibleName().toStdString());
}

} // namespace
