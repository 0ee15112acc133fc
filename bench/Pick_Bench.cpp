#include "bench/Window_Bench.h"

#include <QtCore/QProcess>
#include <cstdio>
#include <cstdlib>
#include <thread>

// Picking pictures of 24 megapixels into the filmstrip of the real window, its event loop live, beside vipsthumbnail on the
// same files. In each round both run once, in turn; a figure is the median of the rounds, a pause the longest of all.
//
// pick_bench [ROUNDS] [FILES] [LARGE_PICK]
//   ROUNDS      5; the first one only warms up
//   FILES       100
//   LARGE_PICK  1000 files, in one pick, for the longest pause alone; 0 leaves it out

namespace {

int Number(int count, char** words, int place, int otherwise)
{
    return count > place ? std::max(0, std::atoi(words[place])) : otherwise;
}

/// Milliseconds of one process over all files, as its users run it: with its own number of threads and its usual size.
double Time_Of_Vips(const QStringList& paths, const QString& folder)
{
    QProcess process;
    const double start = Now_Milliseconds();
    process.start(QStringLiteral("vipsthumbnail"),
                  QStringList{QStringLiteral("--output"), folder + QStringLiteral("/%s.jpg")} + paths);
    process.waitForFinished(-1);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        std::fprintf(stderr, "vipsthumbnail: %s\n", process.readAllStandardError().constData());
        std::exit(1);
    }
    return Now_Milliseconds() - start;
}

/// Milliseconds of a pick that replaces what is listed.
double Time_Of_Pick(Bench_Window& window, Heartbeat& heartbeat, const QStringList& paths, double& longest_pause)
{
    double took = 0;
    const double pause = heartbeat.Longest_Pause([&] {
        const double start = Now_Milliseconds();
        window.Window().Commands().Pick_Paths(paths, false, true);
        took = Now_Milliseconds() - start;
    });
    longest_pause = std::max(longest_pause, pause);
    if (window.Form().State().pictures.Count() != paths.size()) {
        std::fprintf(stderr, "only %d pictures were read\n", window.Form().State().pictures.Count());
        std::exit(1);
    }
    return took;
}

} // namespace

int main(int count, char** words)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, words);
    const int rounds = std::max(2, Number(count, words, 1, 5));
    const int files = std::max(1, Number(count, words, 2, 100));
    const int large = Number(count, words, 3, 1000);

    const Bench_Folder folder;
    const QString photograph = folder.File(QStringLiteral("photograph.jpg"));
    const std::int64_t bytes = Write_Photograph(photograph, 6000, 4000);
    const QStringList paths = Numbered_Copies(photograph, folder.File(QStringLiteral("pictures")), files, false);
    const QString thumbnails = folder.File(QStringLiteral("thumbnails"));
    QDir().mkpath(thumbnails);
    Bench_Window window(folder.File(QStringLiteral("pictures")));
    Heartbeat heartbeat;

    double longest_pause = 0;
    std::vector<double> ours, theirs;
    for (int round = 0; round < rounds; ++round) {
        ours.push_back(Time_Of_Pick(window, heartbeat, paths, longest_pause));
        theirs.push_back(Time_Of_Vips(paths, thumbnails));
    }
    ours.erase(ours.begin());
    theirs.erase(theirs.begin());
    const double our_rate = files * 1000 / Median(ours);
    const double their_rate = files * 1000 / Median(theirs);
    std::printf("%d files of 24 megapixels, %.1f MB each, %u processors\n\n", files, double(bytes) / 1e6,
                std::thread::hardware_concurrency());
    std::printf("| what | figure | goal |\n|---|---|---|\n");
    std::printf("| picking, window live | %.1f files a second | |\n", our_rate);
    std::printf("| vipsthumbnail, same files | %.1f files a second | |\n", their_rate);
    std::printf("| ratio | %.2f | 2 |\n", our_rate / their_rate);
    std::printf("| longest pause of the window meanwhile | %.0f ms | 100 |\n", longest_pause);

    if (large > 0) {
        const QStringList many = Numbered_Copies(photograph, folder.File(QStringLiteral("many")), large, true);
        double pause = 0;
        const double took = Time_Of_Pick(window, heartbeat, many, pause);
        std::printf("| a pick of %d such files | %.1f s | |\n", large, took / 1000);
        std::printf("| longest pause of the window meanwhile | %.0f ms | 100 |\n", pause);
        std::printf("| most memory | %.0f MiB | |\n", Most_Resident_Mebibytes());
    }
}
