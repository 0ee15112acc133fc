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

} // namespace

int main(int count, char** words)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, words);
    const int pictures = count > 1 ? std::max(1, std::atoi(words[1])) : 100'000;
    const Bench_Folder folder;
    const QString photograph = folder.File(QStringLiteral("photograph.jpg"));
    const int width = count > 2 ? std::max(3, std::atoi(words[2])) : 1024;
    Write_Photograph(photograph, width, width * 2 / 3);
    const QStringList paths = Numbered_Copies(photograph, folder.File(QStringLiteral("pictures")), pictures, true);
    QDir().mkpath(folder.File(QStringLiteral("empty")));
    Bench_Window window(folder.File(QStringLiteral("empty")));
    Heartbeat heartbeat;

    std::printf("| what, with %d pictures | figure |\n|---|---|\n", pictures);
    const double before = Resident_Mebibytes();
    double took = 0;
    const double pause = heartbeat.Longest_Pause([&] {
        const double start = Now_Milliseconds();
        window.Window().Commands().Pick_Paths(paths, false, false);
        took = Now_Milliseconds() - start;
    });
    std::printf("| the pick | %.1f s |\n| longest pause during the pick, at work in it | %.0f, %.0f ms |\n",
                took / 1000, pause, heartbeat.Worked());
    const double after = Resident_Mebibytes();
    const double thumbnails = double(Current_Pixel_Memory_Use().live_bytes) / 1048576;
    std::printf("| memory before, and after | %.0f, %.0f MiB |\n", before, after);
    std::printf("| thumbnails in it | %.0f MiB |\n", thumbnails);
    std::printf("| the rest, for each record | %.2f KiB |\n", (after - before - thumbnails) * 1024 / pictures);
    for (const Action& action : Actions(window)) {
        const double longest = heartbeat.Longest_Pause(action.run);
        std::printf("| %s: longest pause, at work in it | %.0f, %.0f ms |\n", action.name, longest, heartbeat.Worked());
        std::fflush(stdout);
    }
    std::printf("| most memory | %.0f MiB |\n", Most_Resident_Mebibytes());
}
