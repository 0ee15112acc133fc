#include "frame/ui/Qt_Platform.h"

#include "frame/ui/Twips.h"

#include <QtCore/QFile>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>

void Qt_Event_Pump::Process_Pending_Events()
{
    QCoreApplication::processEvents();
}

Qt_Timer::Qt_Timer(std::function<void()> call)
{
    QObject::connect(&timer_, &QTimer::timeout, &timer_, std::move(call));
}

bool Qt_Shell::Move_To_Trash(const QString& path, QString* reason)
{
    QFile file(path);
    const bool moved = file.moveToTrash();
    if (!moved && reason != nullptr) *reason = file.errorString();
    return moved;
}

void Qt_Shell::Beep()
{
    QApplication::beep();
}

void Qt_Shell::Show_Busy_Pointer(bool busy)
{
    if (busy)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

QSize Qt_Shell::Screen_Size_Twips() const
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? Twips_From_Pixels(screen->availableSize()) : QSize();
}

void Qt_Shell::Open_Help(const QString& topic)
{
    if (help_ == nullptr) help_ = std::make_unique<Help_Form>(platform_);
    help_->Open_Topic(topic);
}

void Qt_Shell::Quit_Help()
{
    if (help_ != nullptr) help_->close(); // keeps its place
    help_.reset();
}

Qt_Platform::Qt_Platform()
    : platform{dialogs_, events_,
               clock_,   settings_,
               shell_,   [](std::function<void()> call) { return std::make_unique<Qt_Timer>(std::move(call)); }}
{
    dialogs_.Set_Platform(platform);
    shell_.Set_Platform(platform);
}
