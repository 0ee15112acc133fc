#pragma once

#include "frame/ports/Platform.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtWidgets/QDialog>

class QLabel;
class QProgressBar;

/// The window of a long operation, with a bar and Stop. Not modal; it comes only when the operation takes longer than a
/// moment, and its size stays whatever the texts are. Escape and a close count as Stop.
class Progress_Form final : public Progress_Window {
public:
    /// platform    keeps the window's place; may be null
    Progress_Form(const Platform* platform, const QString& caption, const QString& text, QWidget* parent);
    ~Progress_Form() override;
    void Show(const QString& text, int done, int total) override;
    bool Stop_Requested() override;

private:
    void Show_When_Due();
    QPointer<QDialog> dialog_; ///< goes early with its parent
    QLabel* label_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QElapsedTimer since_start_;
    bool stopped_ = false;
    bool shown_ = false;
};
