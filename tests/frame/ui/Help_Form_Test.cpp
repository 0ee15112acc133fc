#include "frame/ui/Help_Form.h"

#include "frame/Settings_Store.h"
#include "frame/ports/Scripted_Platform.h"
#include "frame/ui/Qt_Platform.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>
#include <QtWidgets/QtWidgets>
#include <gtest/gtest.h>

namespace {

class Help_Window : public testing::Test {
protected:
    QTextBrowser& Page() { return *help.findChild<QTextBrowser*>(); }
    QListWidget& Contents() { return *help.findChild<QListWidget*>(); }

    Scripted_Platform scripted;
    Help_Form help{&scripted.platform};
};

TEST_F(Help_Window, Has_A_Text_Under_Its_Title_For_Every_Page)
{
    for (const Help_Page& page : Help_Pages()) {
        help.Open_Topic(page.topic);
        EXPECT_GT(Page().toPlainText().size(), 400) << page.topic;
        EXPECT_EQ(page.title, Page().document()->firstBlock().text().toStdString()) << page.topic;
        EXPECT_EQ(page.title, Contents().currentItem()->text().toStdString());
    }
}

TEST_F(Help_Window, Links_Lead_To_Pages_That_Are_There)
{
    int links = 0;
    for (const Help_Page& page : Help_Pages()) {
        QFile file(QStringLiteral(":/help/") + page.topic + ".md");
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << page.topic;
        static const QRegularExpression link(QStringLiteral("\\]\\(([^)]+)\\)"));
        for (auto found = link.globalMatch(QString::fromUtf8(file.readAll())); found.hasNext(); ++links) {
            const QString target = found.next().captured(1);
            EXPECT_TRUE(QFile::exists(":/help/" + target)) << page.topic << " leads to " << target.toStdString();
        }
    }
    EXPECT_GT(links, 5);
}

TEST_F(Help_Window, A_Link_And_The_Way_Back_Are_Followed_By_The_List)
{
    help.Open_Topic({});
    EXPECT_EQ(0, Contents().currentRow());
    Page().setFocus();
    QTest::keyClick(&Page(), Qt::Key_Tab); // the first link of the page
    QTest::keyClick(&Page(), Qt::Key_Return);
    EXPECT_EQ("Saving and safety", Contents().currentItem()->text().toStdString());
    EXPECT_EQ("Saving and safety", Page().document()->firstBlock().text().toStdString());
    Page().backward();
    EXPECT_EQ("First steps", Page().document()->firstBlock().text().toStdString());
    EXPECT_EQ(0, Contents().currentRow());
    QTest::keyClick(&Contents(), Qt::Key_Down);
    EXPECT_EQ("The filmstrip", Page().document()->firstBlock().text().toStdString());
}

TEST_F(Help_Window, An_Unknown_Topic_Opens_The_First_Page_Or_The_Last_One_And_Escape_Closes)
{
    help.Open_Topic("no such page");
    EXPECT_EQ("First steps", Page().document()->firstBlock().text().toStdString());
    help.Open_Topic("keys");
    help.Open_Topic({});
    EXPECT_EQ("Keys", Page().document()->firstBlock().text().toStdString());
    QTest::keyClick(&help, Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

TEST(Help_Viewer, Opens_One_Window_And_Goes_When_It_Is_Quit)
{
    const auto windows = [] {
        int count = 0;
        for (const QWidget* window : QApplication::topLevelWidgets())
            count += window->objectName() == "Help_Form" && window->isVisible() ? 1 : 0;
        return count;
    };
    Scripted_Platform scripted;
    Qt_Shell shell;
    shell.Set_Platform(scripted.platform);
    shell.Quit_Help();
    shell.Open_Help("keys");
    shell.Open_Help({});
    EXPECT_EQ(1, windows());
    shell.Quit_Help();
    EXPECT_EQ(0, windows());
    EXPECT_FALSE(scripted.settings.Read_Value(Settings_Key, "Halvine-Help").isEmpty()) << "its place is kept";
}

} // namespace
