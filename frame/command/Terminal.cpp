#include "frame/command/Terminal.h"

#include "frame/text/Path_Utilities.h"

#include <QtCore/QDateTime>
#include <QtCore/QJsonDocument>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

volatile std::sig_atomic_t interrupted = 0;
bool output_failed = false;

void Write(std::FILE* stream, const std::string& bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), stream) != bytes.size() && stream == stdout) output_failed = true;
}

} // namespace

void Print_Line(const QString& line)
{
    Write(stdout, File_System_Bytes(line) + '\n');
}

void Print_Json(const QJsonObject& object)
{
    Write(stdout, (QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n').toStdString());
}

void Print_Message(const QString& file, const QString& reason)
{
    std::fflush(stdout);
    QString text = QStringLiteral("hv: ");
    if (!file.isEmpty() && !reason.startsWith(file)) text += file + QStringLiteral(": ");
    Write(stderr, File_System_Bytes(text + On_One_Line(reason)) + '\n');
}

bool Finish_Output()
{
    if (std::fflush(stdout) != 0) output_failed = true;
    if (output_failed)
        Print_Message({}, QStringLiteral("standard output: ") + QString::fromLocal8Bit(std::strerror(errno)));
    return !output_failed;
}

QString On_One_Line(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    for (QChar& c : text)
        if (c == u'\n' || c == u'\r') c = u' ';
    return text;
}

Progress_Line::Progress_Line() : began_(QDateTime::currentMSecsSinceEpoch()), has_terminal_(isatty(STDERR_FILENO) != 0)
{}

Progress_Line::~Progress_Line()
{
    if (is_shown_) Write(stderr, "\r\033[K");
}

void Progress_Line::Show(int done, int total, const QString& text)
{
    if (!has_terminal_ || QDateTime::currentMSecsSinceEpoch() - began_ < 1000) return;
    const QString line = QStringLiteral("%1 of %2  %3").arg(done).arg(total).arg(On_One_Line(text)).left(78);
    Write(stderr, '\r' + File_System_Bytes(line) + "\033[K");
    std::fflush(stderr);
    is_shown_ = true;
}

void Catch_Interrupts()
{
    struct sigaction action {};
    action.sa_handler = [](int) { interrupted = 1; };
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool Is_Interrupted()
{
    return interrupted != 0;
}
