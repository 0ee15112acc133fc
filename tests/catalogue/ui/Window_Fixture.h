#pragma once

#include "catalogue/ui/Halvine_Window.h"
#include "tests/catalogue/Picture_Fixture.h"
#include "tests/frame/Entry_Fixture.h"

#include <QtTest/QtTest>

/// The main window as the program makes it, opened on `folder`; nothing is shown yet.
inline std::unique_ptr<Halvine_Window> Window_On(const QString& folder, Halvine_Form& form, Entry_Fixture& entry,
                                                 const std::function<QIcon(const QString& id)>& icon = {})
{
    entry.state.Default_Path = folder;
    return Make_Halvine_Window({.form = form,
                                .state = entry.state,
                                .ports = entry.ports,
                                .icon = icon,
                                .short_version = QStringLiteral("0.1"),
                                .long_version = QStringLiteral("0.1.0")});
}

inline void Bring_Up(Halvine_Window& window, const QString& arguments = {})
{
    Display_Main_Window(window, arguments);
    QApplication::setActiveWindow(&window);
    QApplication::processEvents();
}

/// The main window on a folder of pictures, with answers from a list and without a display.
class Window_Test : public testing::Test {
protected:
    void Make_Pictures(int count)
    {
        for (int i = 1; i <= count; ++i)
            ASSERT_TRUE(Save_Bitmap(Drawn_Bitmap(160 + 8 * i, 120, i).Get(), Path(i), 1, {}));
    }
    QString Path(int number) const
    {
        return QString::fromStdString(
            folder.File(QStringLiteral("%1.jpg").arg(number, 2, 10, QLatin1Char('0')).toStdString()));
    }

    /// Opens the window on the folder.
    Halvine_Window& Open()
    {
        window = Window_On(QString::fromStdString(folder.Path()), form, entry);
        Bring_Up(*window);
        return *window;
    }
    void Open_And_Pick(int count)
    {
        Make_Pictures(count);
        Open();
        window->Commands().Run({Menu::File, 101});
        window->Commands().Run({Menu::Select, 101});
        QApplication::processEvents();
    }
    void Click(int index, Qt::KeyboardModifiers modifiers = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(window->Filmstrip().viewport(), button, modifiers,
                          window->Filmstrip().Cell_On_View(index).center());
    }
    std::vector<int> Selected() const { return form.State().selection.Selected_Indices(); }
    template <class Widget>
    Widget* Part(const char* name) const
    {
        return window->findChild<Widget*>(QLatin1String(name));
    }

    Test_Folder folder;
    Entry_Fixture entry;
    Halvine_Form form{entry.scripted.platform};
    std::unique_ptr<Halvine_Window> window;
};
