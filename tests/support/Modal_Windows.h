#pragma once

#include <QtTest/QTest>
#include <QtWidgets/QtWidgets>
#include <functional>
#include <gtest/gtest.h>

/// Does something to the modal window as soon as there is one.
inline void When_Asked(std::function<void(QWidget*)> act)
{
    auto* timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [timer, act = std::move(act)] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr || !modal->isVisible()) return;
        timer->stop();
        timer->deleteLater();
        act(modal);
    });
    timer->start(5);
}

inline void Press_When_Asked(Qt::Key key)
{
    When_Asked([key](QWidget* modal) {
        QWidget* focus = modal->focusWidget();
        QTest::keyClick(focus != nullptr ? focus : modal, key);
    });
}

inline void Click_When_Asked(const QString& caption)
{
    When_Asked([caption](QWidget* modal) {
        for (QPushButton* button : modal->findChildren<QPushButton*>())
            if (QString(button->text()).remove(u'&') == caption) return button->click();
        ADD_FAILURE() << "no button " << caption.toStdString();
        modal->close();
    });
}
