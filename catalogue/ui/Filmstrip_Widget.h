#pragma once

#include "catalogue/Filmstrip_Mouse.h"
#include "catalogue/Thumbnail_Budget.h"
#include "catalogue/Thumbnail_Reader.h"

#include <QtCore/QTimer>
#include <QtCore/QVariantAnimation>
#include <QtWidgets/QAbstractScrollArea>
#include <vector>

/// The grid of thumbnails. Paints the cells on view, each picture as its record says: turned, flipped, with its script. Where
/// cells stand and what clicks and keys do is the business of Filmstrip_Layout and Filmstrip_Mouse, what is kept in memory
/// that of Thumbnail_Budget.
class Filmstrip_Widget : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit Filmstrip_Widget(Halvine_Form& form, QWidget* parent = nullptr);

    const Halvine_Form& Form() const { return form_; }
    const Filmstrip_Layout& Layout() const { return layout_; }
    bool Is_Ready() const { return ready_; }
    void Set_Ready(); ///< drawing before this is dropped

    // As in Catalogue_View.
    void Set_Top_Row(int row);
    void Draw_Thumbnail(int index);
    void Draw_All_Thumbnails();
    void Set_Thumbnail_Frame(int index);
    void Update_Scroll_Range();

    bool Scroll_To_Index(int index);
    int Cursor_Index() const;            ///< where the keyboard is; 0 nowhere
    QRect Cell_On_View(int index) const; ///< in pixels of the viewport
    int Index_At(QPoint viewport_point) const;
    void Press(int index, bool toggles); ///< as a click on the cell, with Ctrl where it toggles
    QSize sizeHint() const override { return {3 * 136 + 24, 3 * 136}; }

signals:
    void Current_Wanted(int index);
    void Popup_Wanted(const QPoint& global_point);
    void Blow_Up_Wanted();
    void Files_Dropped(const QStringList& paths); ///< the pictures of dropped folders among them; none: they have none

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void Paint_Cell(QPainter& painter, int index);
    void Paint_Hint(QPainter& painter) const;
    void Paint_Neutral(QPainter& painter, int index) const;
    void Make_Next();
    bool Make_One_In_Memory();
    bool Take_One_Read();
    void Made(int index);
    void Carry_Out(const Strip_Action& action, bool later);
    void Set_Cursor(int index);
    void Begin_Drag();
    void Tell_Selection();
    bool Show_Tooltip(const QHelpEvent& event);

    Halvine_Form& form_;
    Thumbnail_Budget budget_;
    Thumbnail_Reader reader_;
    Filmstrip_Layout layout_;
    QVariantAnimation scrolling_;
    QTimer current_later_; // a held key must not load every picture that it passes
    QTimer making_;        // thumbnails that were given up or whose script changed, one at each turn of the event loop
    std::vector<int> to_make_; // indices of cells on view
    int made_since_paint_ = 0;
    int offset_ = 0; // pixels of the strip above the view
    int cursor_key_ = 0;
    int wanted_index_ = 0;
    int pressed_index_ = 0; // a press on a selected cell: it may begin a drag
    QPoint press_point_;
    int wheel_rest_ = 0;
    bool ready_ = false;
    bool selection_told_ = true; // to assistive tools
};
