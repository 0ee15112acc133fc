#pragma once

#include <QtWidgets/QLabel>

/// A line of plain text that takes the room there is and leaves out the middle of what does not fit; the tooltip has the
/// whole of it. A long text never pushes its neighbours.
class Elided_Label : public QLabel {
    Q_OBJECT

public:
    explicit Elided_Label(QWidget* parent = nullptr);
    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool Fits() const { return fontMetrics().horizontalAdvance(text()) <= contentsRect().width(); }
};
