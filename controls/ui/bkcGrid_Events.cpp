#include "controls/ui/bkcGrid.h"

// Mouse and keyboard. The view moves the current cell and scrolls; which rows are selected is the content's business.

QItemSelectionModel::SelectionFlags bkcGrid::selectionCommand(const QModelIndex&, const QEvent*) const
{
    return QItemSelectionModel::NoUpdate;
}

void bkcGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    if (showing_) return;
    const auto index = current; // telling the content comes back here
    content_.Set_Active(index.column() + 1, index.row() + 1);
}

void bkcGrid::mousePressEvent(QMouseEvent* event)
{
    const auto point = event->position().toPoint();
    mouse_down_column_ = ReturnColumnHit(point.x());
    mouse_down_row_ = ReturnRowHit(point.y());
    if (!EditCellExit()) return; // a refused edit keeps its place
    setDragEnabled(bool(Drag_Data));
    const int shift = Shift_Of(event->modifiers());
    click_at_release_ =
        Drag_Data && event->button() == Qt::LeftButton && shift == 0 && content_.SelectedRowTest(mouse_down_row_);
    QTableView::mousePressEvent(event);
    const int row = CellMouseDown() ? mouse_down_row_ : 0;
    if (content_.Is_On(Grid_Property::AllowCellRowSelect) && !click_at_release_)
        content_.SelectRowClick(Button_Of(event->button()), shift, row);
}

void bkcGrid::mouseReleaseEvent(QMouseEvent* event)
{
    QTableView::mouseReleaseEvent(event);
    const auto point = event->position().toPoint();
    const bool inside = CellHit(point.x(), point.y());
    const int column = inside ? ReturnColumnHit(point.x()) : 0;
    const int row = inside ? ReturnRowHit(point.y()) : 0;
    if (std::exchange(click_at_release_, false) && content_.Is_On(Grid_Property::AllowCellRowSelect))
        content_.SelectRowClick(Button_Of(event->button()), Shift_Of(event->modifiers()), row);
    const bool same_cell = inside && column == mouse_down_column_ && row == mouse_down_row_;
    if (same_cell && event->button() == Qt::LeftButton &&
        content_.Column(column).control == Grid_Column_Control::Check && content_.Cell_Editable(column, row))
        Toggle_Check(column, row);
    emit Click(Button_Of(event->button()), Shift_Of(event->modifiers()), column, row);
}

void bkcGrid::mouseDoubleClickEvent(QMouseEvent* event)
{
    const auto point = event->position().toPoint();
    if (event->button() != Qt::LeftButton || !CellHit(point.x(), point.y())) return;
    const int column = ReturnColumnHit(point.x());
    const int row = ReturnRowHit(point.y());
    if (!EditCellStart(column, row)) emit DblClick(column, row);
}

void bkcGrid::startDrag(Qt::DropActions)
{
    if (!Drag_Data) return;
    click_at_release_ = false;
    auto* payload = Drag_Data();
    if (!payload) return;
    auto* drag = new QDrag(this); // owned by Qt once it runs
    drag->setMimeData(payload);
    drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
}

bool bkcGrid::Move_Active(int step)
{
    const int columns = content_.Columns();
    if (columns == 0 || content_.Rows() == 0) return false;
    const int present = (content_.ActiveRow() - 1) * columns + content_.ActiveColumn() - 1;
    const int next = content_.ActiveRow() == 0 ? 0 : present + step;
    if (next < 0) return false;
    if (next >= content_.Rows() * columns && !Add_Row()) return false;
    content_.Set_Active(next % columns + 1, next / columns + 1);
    CellForceVisible(content_.ActiveColumn(), content_.ActiveRow());
    return true;
}

bool bkcGrid::Add_Row()
{
    if (!content_.Is_On(Grid_Property::AllowAddNew)) return false;
    content_.InsertRows(content_.Rows() + 1, 1);
    Update();
    emit RowAdded(content_.Rows());
    return true;
}

bool bkcGrid::focusNextPrevChild(bool next)
{
    if (content_.Value(Grid_Property::TabBehavior) == 1 && Move_Active(next ? 1 : -1)) return true;
    return QTableView::focusNextPrevChild(next);
}

void bkcGrid::keyPressEvent(QKeyEvent* event)
{
    if (Command_Key(event)) return event->accept();
    const int row_before = content_.ActiveRow();
    if (event->key() == Qt::Key_Down && row_before > 0 && row_before == content_.Rows() && Add_Row())
        content_.Set_Active(content_.ActiveColumn(), content_.Rows());
    else
        QTableView::keyPressEvent(event);
    Select_By_Key(event, row_before);
}

bool bkcGrid::Command_Key(QKeyEvent* event)
{
    const int column = content_.ActiveColumn();
    const int row = content_.ActiveRow();
    if (event->matches(QKeySequence::SelectAll)) return content_.Select_All(), true;
    if (event->matches(QKeySequence::Copy)) return Copy_As_Text(), true;
    const bool editable = content_.Cell_Editable(column, row);
    const bool check = content_.Column(column).control == Grid_Column_Control::Check;
    switch (event->key()) {
    case Qt::Key_F2: return EditCellStart(column, row);
    case Qt::Key_Delete:
        if (!editable || check) return false;
        if (!content_.CellText(column, row).isEmpty()) Edit_At_Once(column, row, {});
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (row > 0 && !EditCellStart(column, row)) emit DblClick(column, row);
        return row > 0;
    case Qt::Key_Space:
        if (check && editable) return Toggle_Check(column, row), true;
        if (editable && event->modifiers() == Qt::NoModifier) break;
        if (row > 0) content_.SelectRowClick(1, Shift_Of(event->modifiers()) | 2, row);
        return true;
    default: break;
    }
    const auto modifiers = event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    if (event->text().isEmpty() || !event->text()[0].isPrint() || modifiers != Qt::NoModifier) return false;
    if (!EditCellStart(column, row)) return false;
    Set_EditCellText(event->text()); // typing replaces what is there
    return true;
}

bool bkcGrid::Select_By_Key(QKeyEvent* event, int row_before)
{
    const int row = content_.ActiveRow();
    const int shift = Shift_Of(event->modifiers());
    const bool only_moves = (shift & 2) != 0 && (shift & 1) == 0; // Ctrl walks without selecting
    if (row == row_before || row == 0 || only_moves || content_.SelectionMode() == 3) return false;
    content_.SelectRowClick(1, shift & 1, row);
    return true;
}

void bkcGrid::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    Show_Columns();
    Place_Editor();
}

void bkcGrid::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Show_Properties();
}

void bkcGrid::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    Place_Editor();
}
