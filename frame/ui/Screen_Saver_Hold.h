#pragma once

#include <QtCore/QObject>
#include <optional>

/// Asks the desktop, over the session bus, to leave the screen on. Where there is no bus or nobody answers, nothing happens.
/// The desktop forgets the wish of a program that ended.
class Screen_Saver_Hold final : public QObject {
    Q_OBJECT

public:
    ~Screen_Saver_Hold() override { Set(false); }
    void Set(bool on); ///< never waits

private:
    void Ask();
    void Give_Back(uint cookie);

    bool wanted_ = false;
    bool asking_ = false;
    std::optional<uint> cookie_; // what the desktop knows the wish by
};
