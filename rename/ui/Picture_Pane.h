#pragma once

#include "catalogue/Picture_Catalogue.h"

#include <QtGui/QImage>
#include <QtWidgets/QWidget>

/// Shows the picture of the row that the user is at. It is loaded when the events that came with the change of the row
/// are done, so that a held arrow key does not load every picture on its way.
class Picture_Pane : public QWidget {
    Q_OBJECT

public:
    explicit Picture_Pane(Picture_Catalogue& catalogue, QWidget* parent = nullptr);
    void Show_Picture(int Picture_Key); ///< 0: nothing
    bool Shows_A_Picture() const { return !image_.isNull(); }
    QSize sizeHint() const override { return {260, 260}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Load();
    Picture_Catalogue& catalogue_;
    int key_ = 0;
    QImage image_;
    QTimer* load_later_;
};
