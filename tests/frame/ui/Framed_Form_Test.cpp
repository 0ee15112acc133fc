#include "frame/ui/Framed_Form.h"

#include "frame/Settings_Store.h"
#include "frame/ports/Scripted_Platform.h"

#include <QtTest/QTest>
#include <QtWidgets/QPushButton>
#include <gtest/gtest.h>

namespace {

class Asking_Form : public Framed_Form {
public:
    explicit Asking_Form(const Platform* platform, Kind kind = Kind::Dialog)
        : Framed_Form(platform, QStringLiteral("Halvine-Wand"), nullptr, kind)
    {
        resize(320, 240);
    }
    bool may_close = true;
    int asked = 0;

private:
    bool May_Close() override
    {
        ++asked;
        return may_close;
    }
};

struct Framed_Form_Test : testing::Test {
    Scripted_Platform scripted;
};

TEST_F(Framed_Form_Test, The_Size_It_Is_Built_With_Is_Its_Smallest)
{
    Asking_Form form(&scripted.platform);
    form.show();
    form.resize(10, 10);
    EXPECT_EQ(QSize(320, 240), form.size());
    EXPECT_TRUE(form.Frame().Design_From_Form());
    EXPECT_EQ(320 * 15, form.Frame().Design_Form_Width());
}

TEST_F(Framed_Form_Test, Each_Way_To_Leave_It_Asks_Once)
{
    Asking_Form form(&scripted.platform);
    form.may_close = false;
    form.show();
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.close());
    form.reject();
    EXPECT_EQ(3, form.asked);
    EXPECT_TRUE(form.isVisible());
    form.may_close = true;
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_FALSE(scripted.settings.Read_Value(Settings_Key, "Halvine-Wand").isEmpty());
}

TEST_F(Framed_Form_Test, Accepting_Asks_Nothing_And_Stores_The_Place)
{
    Asking_Form form(&scripted.platform);
    form.show();
    form.accept();
    EXPECT_EQ(0, form.asked);
    EXPECT_FALSE(scripted.settings.Read_Value(Settings_Key, "Halvine-Wand").isEmpty());
}

TEST_F(Framed_Form_Test, An_Agreement_Spares_The_Question_At_The_Close_Unless_It_Is_Withdrawn)
{
    Asking_Form form(&scripted.platform);
    form.show();
    EXPECT_TRUE(form.Agree_To_Close());
    form.Withdraw_Agreement();
    EXPECT_TRUE(form.Agree_To_Close());
    EXPECT_EQ(2, form.asked);
    EXPECT_TRUE(form.close());
    EXPECT_EQ(2, form.asked);
    form.show(); // opened again it asks again
    EXPECT_TRUE(form.close());
    EXPECT_EQ(3, form.asked);
}

TEST_F(Framed_Form_Test, Without_A_Platform_Nothing_Is_Stored)
{
    Asking_Form form(nullptr);
    form.show();
    EXPECT_TRUE(form.close());
    EXPECT_TRUE(scripted.settings.user.isEmpty());
}

TEST_F(Framed_Form_Test, Working_Windows_Can_Be_Minimized_And_Maximized)
{
    EXPECT_TRUE(Asking_Form(&scripted.platform, Framed_Form::Kind::Working_Window)
                    .windowFlags()
                    .testFlag(Qt::WindowMinMaxButtonsHint));
    EXPECT_FALSE(Asking_Form(&scripted.platform).windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
}

TEST_F(Framed_Form_Test, Open_Forms_Stand_In_The_Order_Of_Opening)
{
    Asking_Form first(&scripted.platform);
    Asking_Form second(&scripted.platform);
    auto third = std::make_unique<Asking_Form>(&scripted.platform);
    second.show();
    third->show();
    first.show();
    EXPECT_EQ((QWidgetList{&second, third.get(), &first}), Form_Frame::Open_Forms());
    second.close();
    third.reset(); // one that goes while it is open
    EXPECT_EQ(QWidgetList{&first}, Form_Frame::Open_Forms());
    first.close();
    EXPECT_TRUE(Form_Frame::Open_Forms().isEmpty());
}

} // namespace
