#pragma once

#include <QtGui/QAccessible>
#include <QtWidgets/QtWidgets>

/// Parts of other widgets that assistive tools pass over: the widget around them carries the name.
inline bool Is_Inner_Part(const QWidget& widget)
{
    if (qobject_cast<const QMenu*>(&widget) != nullptr && qobject_cast<const QMenuBar*>(widget.parent()) != nullptr)
        return true; // what a narrow menu bar has no room for
    const QByteArray type = widget.metaObject()->className();
    const bool container = widget.objectName().startsWith(QLatin1String("qt_")) || type == "QWidget" ||
                           type == "QStackedWidget" || type == "QFrame" || type == "QWidgetResizeHandler";
    return container || qobject_cast<const QScrollBar*>(&widget) != nullptr ||
           widget.inherits("QAbstractScrollAreaScrollBarContainer") || widget.inherits("QTableCornerButton") ||
           widget.inherits("QMainWindowLayoutSeparator") || widget.inherits("QRubberBand") ||
           qobject_cast<const QSizeGrip*>(&widget) != nullptr ||
           qobject_cast<const QDialogButtonBox*>(&widget) != nullptr;
}

/// The widgets of a window, itself included, that have no name for assistive tools. Labels count as named when they show
/// a text or are hidden without one.
inline QStringList Widgets_Without_A_Name(QWidget& window)
{
    QStringList nameless;
    QList<QWidget*> widgets = window.findChildren<QWidget*>();
    widgets.prepend(&window);
    for (QWidget* widget : widgets) {
        if (Is_Inner_Part(*widget)) continue;
        const auto* label = qobject_cast<const QLabel*>(widget);
        if (label != nullptr && (label->text().isEmpty() || label->buddy() != nullptr)) continue;
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
        if (spoken == nullptr || spoken->text(QAccessible::Name).isEmpty())
            nameless << QStringLiteral("%1 '%2'").arg(QLatin1String(widget->metaObject()->className()),
                                                      widget->objectName());
    }
    return nameless;
}
