// A session bus of the test's own with a desktop on it that only takes down what it is asked. The program finds the bus by
// its environment, as it finds a real one.

#include "frame/ui/Screen_Saver_Hold.h"

#include <QtCore/QProcess>
#include <QtDBus/QtDBus>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <gtest/gtest.h>

namespace {

const QString Service = QStringLiteral("org.freedesktop.ScreenSaver");

QDBusConnection Desktop_Side()
{
    return QDBusConnection(QStringLiteral("desktop"));
}

class Desktop_Screen_Saver : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

public:
    QList<QPair<QString, QString>> inhibited; ///< application and reason
    QList<uint> given_back;
    bool refuses = false;

public slots:
    uint Inhibit(const QString& application, const QString& reason)
    {
        if (refuses) sendErrorReply(QDBusError::AccessDenied, QStringLiteral("not now"));
        inhibited << qMakePair(application, reason);
        return 4000000000U + uint(inhibited.size()); // a cookie may be any 32 bits
    }
    void UnInhibit(uint cookie) { given_back << cookie; }
};

class Screen_Saver : public testing::Test {
protected:
    Screen_Saver()
    {
        auto bus = Desktop_Side();
        EXPECT_TRUE(bus.registerObject(QStringLiteral("/org/freedesktop/ScreenSaver"), &desktop,
                                       QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(bus.registerService(Service));
    }
    ~Screen_Saver() override
    {
        auto bus = Desktop_Side();
        bus.unregisterService(Service);
        bus.unregisterObject(QStringLiteral("/org/freedesktop/ScreenSaver"));
    }
    bool Comes_To(const std::function<bool()>& state) { return QTest::qWaitFor(state, 5000); }
    void Let_Answers_Come() { QTest::qWait(100); }

    Desktop_Screen_Saver desktop;
};

TEST_F(Screen_Saver, Is_Held_Off_With_The_Programs_Name_And_A_Reason_And_Given_Back_By_Its_Cookie)
{
    Screen_Saver_Hold hold;
    hold.Set(true);
    ASSERT_TRUE(Comes_To([&] { return desktop.inhibited.size() == 1; }));
    EXPECT_EQ("Halvine", desktop.inhibited[0].first.toStdString());
    EXPECT_EQ("A slide show is running", desktop.inhibited[0].second.toStdString());
    Let_Answers_Come();
    hold.Set(true); // it is held already
    hold.Set(false);
    ASSERT_TRUE(Comes_To([&] { return desktop.given_back.size() == 1; }));
    EXPECT_EQ(4000000001U, desktop.given_back[0]);
    EXPECT_EQ(1, desktop.inhibited.size());
    hold.Set(false); // nor is anything given back twice
    hold.Set(true);
    EXPECT_TRUE(Comes_To([&] { return desktop.inhibited.size() == 2; }));
    EXPECT_EQ(1, desktop.given_back.size());
}

TEST_F(Screen_Saver, Is_Given_Back_When_The_Show_Ends_Before_The_Answer)
{
    Screen_Saver_Hold hold;
    hold.Set(true);
    hold.Set(false);
    EXPECT_TRUE(Comes_To([&] { return desktop.given_back == QList<uint>{4000000001U}; }));
}

TEST_F(Screen_Saver, Is_Asked_Once_When_The_Wish_Changes_Before_The_Answer)
{
    Screen_Saver_Hold hold;
    for (const bool on : {true, false, true}) hold.Set(on);
    ASSERT_TRUE(Comes_To([&] { return desktop.inhibited.size() == 1; }));
    Let_Answers_Come();
    EXPECT_EQ(1, desktop.inhibited.size());
    EXPECT_TRUE(desktop.given_back.isEmpty());
}

TEST_F(Screen_Saver, Is_Given_Back_At_The_End)
{
    {
        Screen_Saver_Hold hold;
        hold.Set(true);
        ASSERT_TRUE(Comes_To([&] { return desktop.inhibited.size() == 1; }));
        Let_Answers_Come();
    }
    EXPECT_TRUE(Comes_To([&] { return desktop.given_back.size() == 1; }));
}

TEST_F(Screen_Saver, A_Refusal_Is_No_Trouble_And_The_Next_Show_Asks_Again)
{
    Screen_Saver_Hold hold;
    desktop.refuses = true;
    hold.Set(true);
    ASSERT_TRUE(Comes_To([&] { return desktop.inhibited.size() == 1; }));
    Let_Answers_Come();
    hold.Set(false);
    desktop.refuses = false;
    hold.Set(true);
    ASSERT_TRUE(Comes_To([&] { return desktop.inhibited.size() == 2; }));
    Let_Answers_Come();
    hold.Set(false);
    EXPECT_TRUE(Comes_To([&] { return desktop.given_back == QList<uint>{4000000002U}; }));
}

TEST_F(Screen_Saver, A_Desktop_Without_One_Is_No_Trouble)
{
    Desktop_Side().unregisterService(Service);
    Screen_Saver_Hold hold;
    hold.Set(true);
    Let_Answers_Come();
    hold.Set(false);
    EXPECT_TRUE(desktop.inhibited.isEmpty());
}

constexpr const char* Without_A_Bus = "--without-a-bus";

TEST(Screen_Saver_Test, A_System_Without_A_Bus_Is_No_Trouble)
{
    for (const char* address : {"unix:path=/nowhere/at/all", "damaged", ""}) {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QLatin1String(address));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), QStringLiteral("/nowhere/at/all"));
        environment.remove(QStringLiteral("DISPLAY")); // no bus is started by way of it
        QProcess child;
        child.setProcessEnvironment(environment);
        child.start(QCoreApplication::applicationFilePath(), {QLatin1String(Without_A_Bus)});
        ASSERT_TRUE(child.waitForFinished(20'000));
        EXPECT_EQ(QProcess::NormalExit, child.exitStatus()) << address;
        EXPECT_EQ(0, child.exitCode()) << address;
    }
}

int Hold_Without_A_Bus()
{
    Screen_Saver_Hold hold;
    for (const bool on : {true, true, false, true}) hold.Set(on);
    QTest::qWait(50);
    return QDBusConnection::sessionBus().isConnected() ? 1 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (argc > 1 && qstrcmp(argv[1], Without_A_Bus) == 0) {
        const QCoreApplication application(argc, argv);
        return Hold_Without_A_Bus();
    }
    QProcess bus;
    bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                              QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1")});
    if (!bus.waitForReadyRead(10'000)) {
        qCritical("dbus-daemon does not start: %s", qPrintable(bus.errorString()));
        return 1;
    }
    const QByteArray address = bus.readLine().trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    const QCoreApplication application(argc, argv);
    QDBusConnection::connectToBus(QString::fromLatin1(address), QStringLiteral("desktop"));
    const int result = RUN_ALL_TESTS();
    bus.terminate();
    bus.waitForFinished();
    return result;
}

#include "Screen_Saver_Hold_Test.moc"
