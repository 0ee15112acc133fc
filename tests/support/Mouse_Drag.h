#pragma once

#include <QtTest/QTest>
#include <QtWidgets/QtWidgets>
#include <vector>

/// Presses the left button on a widget and moves far enough for a drag. What the drag carries, or null when none began.
/// Without a display a drag ends at once; the object lives until the next turn of the event loop.
inline QMimeData* Begin_Mouse_Drag(QWidget& from, QPoint press)
{
    QTest::mousePress(&from, Qt::LeftButton, {}, press);
    const QPoint away = press + QPoint(QApplication::startDragDistance() + 5, 0);
    QMouseEvent move(QEvent::MouseMove, away, from.mapToGlobal(away), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&from, &move);
    auto* drag = from.window()->findChild<QDrag*>();
    QTest::mouseRelease(&from, Qt::LeftButton, {}, away);
    return drag == nullptr ? nullptr : drag->mimeData();
}

/// Lets data hang over points of a widget, one after another. Whether the widget would take it at the last one.
inline bool Hang_Over(QWidget& widget, const QMimeData& data, const std::vector<QPoint>& way)
{
    QDragEnterEvent enter(way.front(), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &enter);
    bool wanted = enter.isAccepted();
    for (const QPoint point : way) {
        QDragMoveEvent move(point, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        if (!enter.isAccepted()) break;
        QApplication::sendEvent(&widget, &move);
        wanted = move.isAccepted();
    }
    return wanted;
}

/// The same, and a drop on the last point where the widget wants it.
inline bool Drop_On(QWidget& widget, const QMimeData& data, const std::vector<QPoint>& way)
{
    if (!Hang_Over(widget, data, way)) return false;
    QDropEvent drop(way.back(), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &drop);
    return drop.isAccepted();
}
