#pragma once

#include "imaging/Brennick_Image_Utilities.h"

#include <QtGui/QIcon>
#include <QtGui/QImage>
#include <QtWidgets/QToolButton>

/// The current picture as large as the space allows, with a button in its corner that gives it the whole window.
class Magnify_Widget : public QWidget {
    Q_OBJECT

public:
    Magnify_Widget(const QIcon& zoom_in, const QIcon& zoom_out, QWidget* parent = nullptr);

    /// 0 shows nothing. The bitmap stays its owner's and must live until the next call, unless `take` gives it away.
    void Set_Bitmap(Bitmap_Handle bitmap, const QString& name, bool take = false);
    void Rotate_View(int degrees); ///< counterclockwise, the view alone; a new picture starts upright
    void Set_Full_Window(bool on); ///< the button's state; the window does the rest
    bool Is_Full_Window() const { return full_window_; }
    void Set_Back_Color(const QColor& color); ///< an invalid one is the palette's

    QSize sizeHint() const override { return {360, 360}; }

signals:
    void Full_Window_Wanted(bool on);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Make_Image();
    QToolButton* toggle_;
    QIcon zoom_in_;
    QIcon zoom_out_;
    Bitmap_Handle bitmap_ = 0;
    Owned_Bitmap taken_; // the same, where it is the widget's
    QImage image_;       // at the size of the view
    QColor back_color_;
    QString name_;
    int rotation_ = 0;
    bool full_window_ = false;
};
