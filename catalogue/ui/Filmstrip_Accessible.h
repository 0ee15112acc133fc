#pragma once

#include <QtCore/QHash>
#include <QtWidgets/QAccessibleWidget>

class Filmstrip_Widget;

/// The filmstrip as assistive tools see it: a list with one item for each picture, also for those off the view. Items are
/// made when they are asked for and belong to the picture, so that they move with it.
class Filmstrip_Accessible final : public QAccessibleWidget {
public:
    explicit Filmstrip_Accessible(Filmstrip_Widget& strip);
    ~Filmstrip_Accessible() override;

    /// Makes the tools find it. Called once, before there is a filmstrip.
    static void Install();

    int childCount() const override;
    QAccessibleInterface* child(int index) const override; ///< 0-based; null outside
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QAccessible::State state() const override;

private:
    Filmstrip_Widget& strip_;
    mutable QHash<int, QAccessible::Id> items_; // by picture key; the toolkit owns them
};
