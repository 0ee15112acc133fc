// How long the rename window takes from a key in Change To until every row shows its new name.
//   QT_QPA_PLATFORM=offscreen rename_window_bench [rows] [keys]

#include "frame/ports/Scripted_Platform.h"
#include "rename/ui/Rename_Describe_Form.h"
#include "rename/ui/Rename_Describe_Windows.h"

#include <QtTest/QtTest>
#include <chrono>
#include <cstdio>
#include <numeric>

namespace {

void List_Pictures(Halvine_Form& form, int count)
{
    for (int i = 1; i <= count; ++i) {
        Picture_Item item;
        item.Picture_Key = form.State().pictures.Take_Next_Key();
        item.Path = QStringLiteral("/home/anna/Pictures/");
        item.File_Name = QStringLiteral("IMG_%1.jpg").arg(i, 5, 10, QLatin1Char('0'));
        item.File_Date = 46000 + i * 0.01;
        form.State().pictures.Append(std::move(item));
    }
}

void Measure_Keys(Rename_Describe_Form& shown, const char* name, int rows, int keys)
{
    auto* to = shown.findChild<QLineEdit*>(QStringLiteral("Rename_Change_To_Text"));
    to->setFocus();
    double longest = 0, sum = 0;
    for (int i = 0; i < keys; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        QTest::keyClick(to, i % 2 == 0 ? Qt::Key_A : Qt::Key_B);
        QApplication::processEvents();
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        longest = std::max(longest, seconds);
        sum += seconds;
    }
    std::printf("%-44s %9.2f ms a key, longest %.2f ms (%d rows)\n", name, sum / keys * 1e3, longest * 1e3, rows);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const int rows = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10'000;
    const int keys = argc > 2 ? std::max(1, std::atoi(argv[2])) : 20;
    Scripted_Platform platform;
    Halvine_Form form(platform.platform);
    List_Pictures(form, rows);
    Program_State state;
    Complete_Empty_Lists(state);
    Rename_Describe_Windows windows(form, state);
    windows.Show_Form = [&](Rename_Describe_Form& shown) {
        shown.show();
        QApplication::setActiveWindow(&shown);
        QApplication::processEvents();
        Measure_Keys(shown, "window, prefix", rows, keys);
        shown.findChild<QComboBox*>(QStringLiteral("Rename_Formula_Combo"))->setCurrentIndex(1);
        Measure_Keys(shown, "window, prefix and the built-in formula", rows, keys);
        shown.reject();
    };
    std::vector<int> indices(static_cast<std::size_t>(rows));
    std::iota(indices.begin(), indices.end(), 1);
    QStringList names;
    windows.Rename_Dialog(QStringLiteral("Rename"), indices, names);
}
