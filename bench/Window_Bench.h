#pragma once

#include "catalogue/ui/Halvine_Window.h"
#include "frame/ports/Scripted_Platform.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
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

    /// What became of that pause, in milliseconds: how long this thread worked, how long it stood ready without a
    /// processor, and how much the host of a virtual machine took away from all processors together. What is left of it the
    /// thread waited for something else, such as another thread.
    double Worked() const { return double(longest_at_.worked - longest_from_.worked) / 1e6; }
    double Without_Processor() const { return double(longest_at_.ready - longest_from_.ready) / 1e6; }
    double Taken_Away() const { return double(longest_at_.taken_away - longest_from_.taken_away) / 1e6; }

private:
    /// Nanoseconds since some beginning.
    struct Thread_Time {
        qint64 worked = 0;
        qint64 ready = 0;
        qint64 taken_away = 0; ///< in steps of 10 milliseconds
    };
    Thread_Time Time_Of_Thread() const;
    void Beat();
    QTimer timer_;
    QElapsedTimer clock_;
    QFile scheduler_;  // how this thread fared
    QFile processors_; // what became of their time
    qint64 last_ = 0;  // nanoseconds
    qint64 longest_ = 0;
    Thread_Time last_time_, longest_from_, longest_at_;
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
