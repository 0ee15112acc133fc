#pragma once

#include "catalogue/ui/Halvine_Window.h"
#include "frame/ports/Scripted_Platform.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// What the benches of the main window share: the real window, on whatever platform Qt has (offscreen unless told
// otherwise), with its event loop live.

/// A folder in memory that is gone at the end.
class Bench_Folder {
public:
    Bench_Folder();
    ~Bench_Folder();
    Bench_Folder(const Bench_Folder&) = delete;
    Bench_Folder& operator=(const Bench_Folder&) = delete;
    QString Path() const { return QString::fromStdString(path_); }
    QString File(const QString& name) const { return Path() + QLatin1Char('/') + name; }

private:
    std::string path_;
};

/// A photograph-like JPEG, 4:2:0 at quality 92. Returns its length in bytes.
std::int64_t Write_Photograph(const QString& path, int width, int height);

/// A copy of `file` under each of so many names, "000001.jpg" and on; with links all of them are one file.
QStringList Numbered_Copies(const QString& file, const QString& folder, int count, bool links);

/// Beats with the turns of the event loop, every millisecond when nothing else is to do, and knows the longest time
/// between two beats: so long did the window not answer.
class Heartbeat {
public:
    Heartbeat();

    /// Runs `action`, and the event loop for `rest` milliseconds after it; the longest pause, in milliseconds.
    double Longest_Pause(const std::function<void()>& action, int rest = 300);

    /// How much of it this thread worked, in milliseconds; the rest it waited, for a processor or for other threads.
    double Worked() const { return double(worked_) / 1e6; }

private:
    void Beat();
    QTimer timer_;
    QElapsedTimer clock_;
    qint64 last_ = 0; // nanoseconds
    qint64 longest_ = 0;
    qint64 last_work_ = 0;
    qint64 worked_ = 0;
};

/// The main window on a folder, with an answer of Yes to every question.
class Bench_Window {
public:
    explicit Bench_Window(const QString& folder);
    ~Bench_Window();
    Bench_Window(const Bench_Window&) = delete;
    Bench_Window& operator=(const Bench_Window&) = delete;

    Halvine_Form& Form();
    Halvine_Window& Window();
    void Run(Menu menu, int number); ///< a command of the menus

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

double Now_Milliseconds();
double Median(std::vector<double> values);

/// Of this process, in MiB: now, and at most so far.
double Resident_Mebibytes();
double Most_Resident_Mebibytes();
