// How long the rename window takes at each key: all new names of a batch, with and without a formula, and the check of the
// whole plan on a real folder.
//   rename_bench [rows] [repeats]
// Each line: what, milliseconds for the batch, rows a second. The best of the repeats counts.

#include "evaluate/System_Host.h"
#include "rename/Rename_Preview.h"
#include "rename/Rename_Rows.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

void Measure(const char* name, int rows, int repeats, const std::function<void(int repeat)>& work)
{
    double best = 1e9;
    for (int i = 0; i < repeats; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        work(i);
        best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    }
    std::printf("%-44s %9.2f ms %9.0f rows a second\n", name, best * 1e3, rows / best);
}

std::vector<Rename_Row> Rows_In(const QString& folder, int count)
{
    std::vector<Rename_Row> rows;
    for (int i = 1; i <= count; ++i)
        rows.push_back({.folder = folder + u'/',
                        .file_name = QStringLiteral("IMG_%1.jpg").arg(i, 5, 10, QLatin1Char('0')),
                        .file_date = 46000.0 + i * 0.01,
                        .horz_pixels = 6000,
                        .vert_pixels = 4000});
    return rows;
}

/// A key in the field To at each repeat: everything is computed anew.
void Measure_Job(const char* name, std::vector<Rename_Row> rows, Rename_Inputs inputs, int repeats)
{
    Formula::System_Host host;
    const int count = int(rows.size());
    Rename_Job job(host, std::move(rows));
    Measure(name, count, repeats, [&](int repeat) {
        inputs.change_to = QStringLiteral("Trip%1").arg(repeat % 10);
        job.Set_Inputs(inputs);
        if (!Preview_Of(job.Rows()).Has_New_Names()) std::abort();
    });
}

void Measure_Plan(const QString& folder, std::vector<Rename_Row> rows, int repeats)
{
    for (Rename_Row& row : rows) {
        QFile file(row.folder + row.file_name);
        if (!file.open(QIODevice::WriteOnly)) std::abort();
        row.new_name = QStringLiteral("Trip") + row.file_name.mid(3);
    }
    const auto moves = Moves_Of(rows);
    const System_Rename_Files files;
    Measure("checking and ordering the plan, on a disk", int(rows.size()), repeats, [&](int) {
        if (Rename_Plan(files, moves).Steps().size() != moves.size()) std::abort();
    });
    std::printf("(in %s)\n", qPrintable(folder));
}

} // namespace

int main(int argc, char** argv)
{
    const int count = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10'000;
    const int repeats = argc > 2 ? std::max(1, std::atoi(argv[2])) : 15;
    const QTemporaryDir folder;
    const auto rows = Rows_In(folder.path(), count);
    Measure_Job("prefix", rows, {.change_from = QStringLiteral("IMG")}, repeats);
    Measure_Job("pattern", rows, {.change_from = QStringLiteral("*_"), .pattern_mode = true}, repeats);
    const Chosen_Formula formula{
        .name = QStringLiteral("Subject-Date-Serial"),
        .text = QStringLiteral("ChangeTo & \"-\" & Format(FileDate, \"yyyymmdd\")  & \"-\" & FileSerial")};
    Measure_Job("prefix and the built-in formula", rows, {.change_from = QStringLiteral("IMG"), .formula = formula},
                repeats);
    Measure_Plan(folder.path(), rows, repeats);
}
