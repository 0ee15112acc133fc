#include "bench/Window_Bench.h"
#include "bkimgutl/core/Pixel_Memory.h"

#include <QtTest/QtTest>
#include <cstdio>
#include <cstdlib>

// The real window with a hundred thousand pictures: how long it does not answer at most while the user does one thing, and
// how much memory it takes. The pictures are one small file under as many names, large enough that their thumbnails together
// are beyond the budget.
//
// catalogue_bench [PICTURES] [WIDTH]
//   PICTURES  100000
//   WIDTH     1024 pixels, of the small file

namespace {

struct Action {
    const char* name;
    std::function<void()> run;
};

void Press(Bench_Window& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(&window.Window().Filmstrip(), key, modifiers);
}

std::vector<Action> Actions(Bench_Window& window)
{
    const auto command = [&window](Menu menu, int number) {
        return [&window, menu, number] { window.Run(menu, number); };
    };
    auto* list = window.Window().findChild<bkcGrid*>(QStringLiteral("Picture_List_bkcGrid"));
    const auto sort_list = [list](int column) {
        return [list, column] { list->Content().Header_Click(column, false), list->Content().Update(); };
    };
    QScrollBar& bar = *window.Window().Filmstrip().verticalScrollBar();
    return {
        {"select all", command(Menu::Select, 102)},
        {"invert, none is left", command(Menu::Select, 103)},
        {"invert, all are again", command(Menu::Select, 103)},
        {"rotate all by 90", command(Menu::Rotate, 101)},
        {"rotate all by 180", command(Menu::Rotate, 103)},
        {"flip all", command(Menu::Rotate, 301)},
        {"choose a prepared script", [&window] { window.Window().Commands().Choose_Prepared_Script(2); }},
        {"leave it again", [&window] { window.Window().Commands().Choose_Prepared_Script(2); }},
        {"scroll a row", [&bar] { bar.setValue(bar.value() + 1); }},
        {"scroll a page", [&bar] { bar.setValue(bar.value() + bar.pageStep()); }},
        {"drag the bar to the middle", [&bar] { bar.setValue(bar.maximum() / 2); }},
        {"drag the bar to the end", [&bar] { bar.setValue(bar.maximum()); }},
        {"select none", command(Menu::Select, 101)},
        {"End key", [&window] { Press(window, Qt::Key_End); }},
        {"Home key", [&window] { Press(window, Qt::Key_Home); }},
        {"Shift and End: select from the first to the last",
         [&window] { Press(window, Qt::Key_End, Qt::ShiftModifier); }},
        {"click on one picture of all selected", [&window] { Press(window, Qt::Key_Home); }},
        {"discard it", command(Menu::File, 103)},
        {"show the list of pictures", command(Menu::Options, 401)},
        {"sort it by path", sort_list(1)},
        {"sort it by name", sort_list(2)},
        {"by name, falling", sort_list(2)},
        {"sort it by type", sort_list(3)},
        {"sort it by date", sort_list(4)},
        {"sort it by size", sort_list(5)},
        {"sort it by description", sort_list(10)},
        {"select all in the list", [list] { QTest::keyClick(list, Qt::Key_A, Qt::ControlModifier); }},
        {"select one row", [list] { QTest::keyClick(list, Qt::Key_Down); }},
        {"Shift and End in the list",
         [list] { QTest::keyClick(list, Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier); }},
        {"drag the list's bar to the middle",
         [list] { list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum() / 2); }},
        {"leave the list", command(Menu::Options, 401)},
        {"show the list with all selected", command(Menu::Options, 401)},
        {"leave it again", command(Menu::Options, 401)},
        {"select all", command(Menu::Select, 102)},
        {"discard all selected", command(Menu::File, 103)},
    };
}

/// Closes a window and knows how long it could be seen after that.
class Hiding : public QObject {
public:
    explicit Hiding(QWidget& window) : window_(window) { window.installEventFilter(this); }
    void Close()
    {
        start_ = Now_Milliseconds();
        window_.close();
    }
    double Took() const { return hidden_ - start_; }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Hide) hidden_ = Now_Milliseconds();
        return false;
    }

private:
    QWidget& window_;
    double start_ = 0, hidden_ = 0;
};

void Print_Pause(const char* what, double pause, const Heartbeat& heartbeat)
{
    std::printf("| %s | %.0f | %.0f, %.0f, %.0f |\n", what, pause, heartbeat.Worked(), heartbeat.Without_Processor(),
                heartbeat.Taken_Away());
    std::fflush(stdout);
}

} // namespace

int main(int count, char** words)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, words);
    QApplication::setQuitOnLastWindowClosed(false); // what comes after the close is measured too
    const int pictures = count > 1 ? std::max(1, std::atoi(words[1])) : 100'000;
    const Bench_Folder folder;
    const QString photograph = folder.File(QStringLiteral("photograph.jpg"));
    const int width = count > 2 ? std::max(3, std::atoi(words[2])) : 1024;
    Write_Photograph(photograph, width, width * 2 / 3);
    const QStringList paths = Numbered_Copies(photograph, folder.File(QStringLiteral("pictures")), pictures, true);
    QDir().mkpath(folder.File(QStringLiteral("empty")));
    Bench_Window window(folder.File(QStringLiteral("empty")));
    Heartbeat heartbeat;

    const double before = Resident_Mebibytes();
    double took = 0;
    const double pause = heartbeat.Longest_Pause([&] {
        const double start = Now_Milliseconds();
        window.Window().Commands().Pick_Paths(paths, false, false);
        took = Now_Milliseconds() - start;
    });
    const double after = Resident_Mebibytes();
    const double thumbnails = double(Current_Pixel_Memory_Use().live_bytes) / 1048576;
    std::printf("| %d pictures | figure |\n|---|---|\n| the pick | %.1f s |\n", pictures, took / 1000);
    std::printf("| memory before, and after | %.0f, %.0f MiB |\n", before, after);
    std::printf("| thumbnails in it | %.0f MiB |\n", thumbnails);
    std::printf("| the rest, for each record | %.2f KiB |\n\n", (after - before - thumbnails) * 1024 / pictures);
    std::printf("| what | longest pause, ms | in it: at work, without a processor, taken away by the host |\n"
                "|---|---|---|\n");
    Print_Pause("the pick", pause, heartbeat);
    for (const Action& action : Actions(window))
        Print_Pause(action.name, heartbeat.Longest_Pause(action.run), heartbeat);
    window.Window().Commands().Pick_Paths(paths, false, false);
    Hiding hiding(window.Window());
    Print_Pause("close the window", heartbeat.Longest_Pause([&] { hiding.Close(); }), heartbeat);
    std::printf("\nUntil the closed window was gone: %.0f ms\n", hiding.Took());
    std::printf("Most memory: %.0f MiB\n", Most_Resident_Mebibytes());
}
