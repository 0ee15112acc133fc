#include "bench/Window_Bench.h"

#include "dev/samples/Jpeg_File.h"
#include "frame/ui/Qt_Platform.h"

#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace {

class Yes_To_All final : public Scripted_Dialogs {
public:
    Message_Answer Ask(const Message&) override { return Message_Answer::Yes; }
};

struct No_Kernel final : Kernel_Setup {
    void Set_CMYK_Parameters(const CMYK_Setting&) override {}
    void Set_Background_Color(const Background_Color&) override {}
    int Live_Bitmaps() const override { return 0; }
};

struct No_Printer final : Printer_Binding {
    void Clear() override {}
    Page_Orientation Default_Orientation() const override { return Page_Orientation::Portrait; }
    bool Open_Printer(const QString&) override { return false; }
    void Open_Default_Printer() override {}
    QString Device_Name() const override { return {}; }
};

/// The number at a place, from 0 on, in the first line of a file that is open and is written anew all the time.
qint64 Number_In(const QFile& file, int place)
{
    char text[256] = {};
    if (pread(file.handle(), text, sizeof text - 1, 0) <= 0) return 0;
    std::istringstream numbers(text + std::strcspn(text, "0123456789"));
    qint64 number = 0;
    for (int i = 0; i <= place; ++i) numbers >> number;
    return number;
}

/// A line of /proc/self/status that counts in kB.
double Status_Mebibytes(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.compare(0, name.size(), name) == 0) return std::stod(line.substr(name.size() + 1)) / 1024;
    return 0;
}

} // namespace

Bench_Folder::Bench_Folder() : path_("/dev/shm/halvine-window-bench-" + std::to_string(getpid()))
{
    std::filesystem::create_directories(path_);
}

Bench_Folder::~Bench_Folder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::int64_t Write_Photograph(const QString& path, int width, int height)
{
    const auto bytes = Jpeg_File(Meadow(width, height, 1), {.quality = 92});
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return 0;
    return file.write(reinterpret_cast<const char*>(bytes.data()), qint64(bytes.size()));
}

QStringList Numbered_Copies(const QString& file, const QString& folder, int count, bool links)
{
    std::filesystem::create_directories(folder.toStdString());
    QStringList paths;
    for (int i = 1; i <= count; ++i) {
        paths << folder + QStringLiteral("/%1.jpg").arg(i, 6, 10, QLatin1Char('0'));
        if (links)
            std::filesystem::create_hard_link(file.toStdString(), paths.back().toStdString());
        else
            std::filesystem::copy_file(file.toStdString(), paths.back().toStdString());
    }
    return paths;
}

Heartbeat::Heartbeat()
    : scheduler_(QStringLiteral("/proc/thread-self/schedstat")), processors_(QStringLiteral("/proc/stat"))
{
    for (QFile* file : {&scheduler_, &processors_}) static_cast<void>(file->open(QIODevice::ReadOnly));
    timer_.setInterval(1);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Beat(); });
    clock_.start();
    timer_.start();
}

Heartbeat::Thread_Time Heartbeat::Time_Of_Thread() const
{
    timespec worked{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &worked);
    Thread_Time time{.worked = qint64(worked.tv_sec) * 1'000'000'000 + worked.tv_nsec};
    time.ready = Number_In(scheduler_, 1);
    time.taken_away = Number_In(processors_, 7) * 10'000'000;
    return time;
}

void Heartbeat::Beat()
{
    const qint64 now = clock_.nsecsElapsed();
    const Thread_Time time = Time_Of_Thread();
    if (now - last_ > longest_) {
        longest_ = now - last_;
        longest_from_ = last_time_;
        longest_at_ = time;
    }
    last_ = now;
    last_time_ = time;
}

double Heartbeat::Longest_Pause(const std::function<void()>& action, int rest)
{
    last_ = clock_.nsecsElapsed();
    last_time_ = Time_Of_Thread();
    longest_ = 0;
    action();
    QEventLoop loop;
    QTimer::singleShot(rest, &loop, &QEventLoop::quit);
    loop.exec();
    return double(longest_) / 1e6;
}

struct Bench_Window::Parts {
    Yes_To_All dialogs;
    Qt_Event_Pump events;
    Qt_Clock clock;
    Settings_In_Memory settings;
    Scripted_Shell shell;
    Platform platform{dialogs, events,
                      clock,   settings,
                      shell,   [](std::function<void()> call) {
                          return std::make_unique<Qt_Timer>(std::move(call)); }};
    No_Kernel kernel;
    No_Printer printer;
    Entry_Ports ports{platform, kernel, printer};
    Program_State state;
    Halvine_Form form{platform};
    std::unique_ptr<Halvine_Window> window;
};

Bench_Window::Bench_Window(const QString& folder) : parts_(std::make_unique<Parts>())
{
    parts_->state.Default_Path = folder;
    parts_->window = Make_Halvine_Window({.form = parts_->form,
                                          .state = parts_->state,
                                          .ports = parts_->ports,
                                          .icon = {},
                                          .short_version = QStringLiteral("0"),
                                          .long_version = QStringLiteral("0")});
    Display_Main_Window(*parts_->window, {});
    QApplication::processEvents();
}

Bench_Window::~Bench_Window() = default;

Halvine_Form& Bench_Window::Form()
{
    return parts_->form;
}

Halvine_Window& Bench_Window::Window()
{
    return *parts_->window;
}

void Bench_Window::Run(Menu menu, int number)
{
    if (!parts_->window->Commands().Run({menu, number}))
        std::fprintf(stderr, "command %d of menu %d cannot run\n", number, int(menu));
}

double Now_Milliseconds()
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 != 0 ? values[half] : (values[half - 1] + values[half]) / 2;
}

double Resident_Mebibytes()
{
    return Status_Mebibytes("VmRSS:");
}

double Most_Resident_Mebibytes()
{
    return Status_Mebibytes("VmHWM:");
}
