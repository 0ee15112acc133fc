#pragma once

#include "controls/Grid_Model.h"
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableView>

class Grid_Table_Model;
class QMimeData;

/// The grid: a table view over a Grid_Model, with a floating cell editor. Columns and rows count from 1; pixels are
/// those of the view, from the left and top edge of the cells. Content() holds the properties, columns, rows, cells and
/// selection; with AutoPaint off its changes show after Update.
class bkcGrid : public QTableView {
    Q_OBJECT

public:
    explicit bkcGrid(QWidget* parent = nullptr);
    ~bkcGrid() override;

    Grid_Model& Content() { return content_; }
    const Grid_Model& Content() const { return content_; }
    void Update(); ///< shows deferred changes, and carries out a deferred sort
    void Paint() { Update(); }

    // Geometry.
    enum class Geometry { Left = 0, Top = 1, Width = 2, Height = 3 };
    int GridLeftColumn() const; ///< the visible range; 0 when the grid is empty
    int GridTopRow() const;
    int GridRightColumn() const;
    int GridBottomRow() const;
    void Set_GridLeftColumn(int Grid_Column); ///< scrolls
    void Set_GridTopRow(int Grid_Row);
    int GridWidth() const; ///< of the visible cell area
    int GridHeight() const;
    int ColumnLeft(int Grid_Column) const;
    bool ColumnVisible(int Test_Column) const;
    bool RowVisible(int Test_Row) const;
    bool CellVisible(int Grid_Column, int Grid_Row) const;
    int CellGeometry(int Grid_Column, int Grid_Row, Geometry Geometry_Selector) const;
    void CellForceVisible(int Grid_Column, int Grid_Row);
    int ReturnColumnHit(int X) const; ///< 0 outside
    int ReturnRowHit(int Y) const;
    int ReturnColumnMouseDown() const { return mouse_down_column_; }
    int ReturnRowMouseDown() const { return mouse_down_row_; }
    bool CellHit(int X, int Y) const { return ReturnColumnHit(X) > 0 && ReturnRowHit(Y) > 0; }
    bool CellMouseDown() const { return mouse_down_column_ > 0 && mouse_down_row_ > 0; }
    int ColumnHeaderHeight() const;
    int RowHeaderWidth() const;

    // Appearance.
    bool ActiveRowIndicator() const
    {
        return active_row_indicator_;
    } ///< default on: the active row's header stands out
    void Set_ActiveRowIndicator(bool New_Indicator);
    bool ColumnSortIndicator() const { return column_sort_indicator_; } ///< default on
    void Set_ColumnSortIndicator(bool New_Indicator);
    int ColumnInitialSort() const { return column_initial_sort_; } ///< the column that a first Update sorts by; 0 none
    void Set_ColumnInitialSort(int Grid_Column) { column_initial_sort_ = Grid_Column; }

    Qt::CursorShape MousePointer() const { return viewport()->cursor().shape(); } ///< over the cells
    void Set_MousePointer(Qt::CursorShape New_Pointer) { viewport()->setCursor(New_Pointer); }
    QPixmap MouseIcon() const { return viewport()->cursor().pixmap(); } ///< null unless one was given
    void Set_MouseIcon(const QPixmap& New_Icon) { viewport()->setCursor(QCursor(New_Icon)); }
    bool Visible() const { return !isHidden(); }
    void Set_Visible(bool New_Visible) { setVisible(New_Visible); }
    /// Gives the pictures for the names in a column's ColumnDataImages. Without one no images show.
    void Set_Image_Source(std::function<QIcon(const QString& name)> New_Source);
    double ScaleX() const { return 15; } ///< twips to the logical pixel
    double ScaleY() const { return 15; }

    // Editing.
    bool EditCellActive() const;
    bool EditCellStart(int Grid_Column, int Grid_Row); ///< false when the cell is not editable
    bool EditCellExit();   ///< leaves with update; false when the update was refused: the editor stays
    void EditCellCancel(); ///< leaves without update
    bool EditCellUpdate(); ///< stores without leaving; false when refused
    bool EditCellChanged() const;
    QString EditCellText() const;
    void Set_EditCellText(const QString& New_Text);
    int EditCellSelStart() const; ///< 0-based
    int EditCellSelLength() const;
    QString EditCellSelText() const;
    void Set_EditCellSelection(int New_Start, int New_Length);
    // The cell with the focus, with what is selected in its text: in the editor while that is open.
    int ActiveSelStart() const;
    int ActiveSelLength() const;
    QString ActiveSelText() const;
    void Set_ActiveSelection(int New_Start, int New_Length);
    bool Set_ActiveSelText(const QString& New_Text); ///< false when the text is no value of the column

    void Copy_As_Text(); ///< the selected rows, to the clipboard; only with AllowCopy

    /// What a drag of the selected rows carries. None by default: rows are not dragged.
    std::function<QMimeData*()> Drag_Data;

signals:
    /// Before the user's edit is stored: a host sets Cancel to refuse it.
    void BeforeCellChange(int Grid_Column, int Grid_Row, const QString& New_Text, bool& Cancel);
    void CellChange(int Grid_Column, int Grid_Row); ///< after the user's edit
    void SelChange();                               ///< the selected rows changed
    void ActiveChange(int Grid_Column, int Grid_Row);
    void Click(int Button, int Shift, int Grid_Column, int Grid_Row); ///< 0 outside the cells
    void DblClick(int Grid_Column, int Grid_Row);                     ///< also Enter on a cell that is not editable
    void ColumnClick(int Grid_Column);                                ///< a column header
    void RowAdded(int Grid_Row);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void scrollContentsBy(int dx, int dy) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void startDrag(Qt::DropActions actions) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex&, const QEvent*) const override;

private:
    void Content_Changed(Grid_Model::Change change);
    void Set_Up_Headers();
    void Show_Properties();
    void Show_Rows();
    void Show_Columns();
    void Show_Colors();
    void Show_Selection();
    void Show_Active();
    void Show_Sort_Indicator();
    void Header_Clicked(int section);
    void Column_Resized(int section, int old_size, int new_size);
    void Set_Up_Editor();
    void Prepare_Choices(const Grid_Column_Record& column);
    void Show_Choices();
    void Place_Editor();
    void Close_Editor();
    bool Store_Edit();
    bool Editor_Left(const QFocusEvent& event);
    int Edit_Row() const { return content_.Display_Row(edit_stored_row_); }
    bool Editor_Key(QKeyEvent* event);
    bool Select_By_Key(QKeyEvent* event, int row_before);
    bool Command_Key(QKeyEvent* event);
    bool Move_Active(int step); ///< by cells, row after row; false at the ends
    bool Add_Row();
    void Toggle_Check(int Grid_Column, int Grid_Row);
    void Edit_At_Once(int Grid_Column, int Grid_Row, const QString& text);

    Grid_Model content_;
    Grid_Table_Model* table_model_;
    QLineEdit* bkcCell_Text_; // the floating editor
    QAction* choices_;        // its button for the choices of a List column
    std::array<Stored_Color, 3> shown_colors_{};
    QString edit_text_before_;
    int edit_column_ = 0;
    int edit_stored_row_ = 0; // a sort may move the row while it is being edited
    int mouse_down_column_ = 0;
    int mouse_down_row_ = 0;
    int column_initial_sort_ = 0;
    bool active_row_indicator_ = true;
    bool column_sort_indicator_ = true;
    bool exit_running_ = false;
    bool showing_ = false;          // the view is being filled: its signals are echoes
    bool click_at_release_ = false; // a press on a selected row may begin a drag
};

/// The Shift bit set of the program (1 shift, 2 control, 4 alt) and the Button bit set (1 left, 2 right, 4 middle).
int Shift_Of(Qt::KeyboardModifiers modifiers);
int Button_Of(Qt::MouseButton button);
/// A stored colour with the palette's colours for those of the system.
QColor Color_Of(Stored_Color color, const QPalette& palette);
