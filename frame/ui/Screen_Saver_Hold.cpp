#include "frame/ui/Screen_Saver_Hold.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>
#include <utility>

namespace {

QDBusMessage Call_To_Screen_Saver(const QString& method)
{
    const auto name = QStringLiteral("org.freedesktop.ScreenSaver");
    auto call = QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/ScreenSaver"), name, method);
    call.setAutoStartService(false);
    return call;
}

} // namespace

void Screen_Saver_Hold::Set(bool on)
{
    wanted_ = on;
    if (on && !cookie_ && !asking_) Ask();
    if (!on && cookie_) Give_Back(*std::exchange(cookie_, std::nullopt));
}

void Screen_Saver_Hold::Ask()
{
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    const auto call = Call_To_Screen_Saver(QStringLiteral("Inhibit"))
                      << QStringLiteral("Halvine") << tr("A slide show is running");
    asking_ = true;
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        asking_ = false;
        answer->deleteLater();
        const QDBusPendingReply<uint> reply = *answer;
        if (reply.isError()) return;
        if (wanted_)
            cookie_ = reply.value();
        else
            Give_Back(reply.value()); // the show was over before the answer came
    });
}

void Screen_Saver_Hold::Give_Back(uint cookie)
{
    QDBusConnection::sessionBus().call(Call_To_Screen_Saver(QStringLiteral("UnInhibit")) << cookie, QDBus::NoBlock);
}
