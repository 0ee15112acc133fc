#include "controls/ui/bkcGrid.h"

// The floating editor. It stays open when an update is refused, and a flag keeps events that fire during an update from
// leaving it a second time.

void bkcGrid::Set_Up_Editor()
{
    bkcCell_Text_->setObjectName(QStringLiteral("bkcCell_Text"));
    bkcCell_Text_->setAccessibleName(tr("Cell text"));
    bkcCell_Text_->hide();
    bkcCell_Text_->installEventFilter(this);
    choices_ = bkcCell_Text_->addAction(style()->standardIcon(QStyle::SP_ArrowDown), QLineEdit::TrailingPosition);
    choices_->setToolTip(tr("Show the choices (Down)"));
    for (auto* button : bkcCell_Text_->findChildren<QToolButton*>()) button->setAccessibleName(tr("Show the choices"));
    connect(choices_, &QAction::triggered, this, &bkcGrid::Show_Choices);
}

void bkcGrid::Prepare_Choices(const Grid_Column_Record& column)
{
    const bool has_choices = column.control == Grid_Column_Control::List;
    choices_->setVisible(has_choices);
    if (!has_choices) return;
    // The grid's and not the editor's child: an editor deletes its own at once, and its list may be in a call.
    auto* completer = new QCompleter(column.data.toStringList(), this);
    completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    bkcCell_Text_->setCompleter(completer);
}

void bkcGrid::Show_Choices()
{
    if (auto* completer = bkcCell_Text_->completer()) completer->complete();
}

bool bkcGrid::EditCellActive() const
{
    return edit_stored_row_ != 0;
}

bool bkcGrid::EditCellStart(int Grid_Column, int Grid_Row)
{
    if (!EditCellExit() || !content_.Cell_Editable(Grid_Column, Grid_Row)) return false;
    const auto& column = content_.Column(Grid_Column);
    if (column.control == Grid_Column_Control::Check) return false; // a click turns it over
    content_.Set_Active(Grid_Column, Grid_Row);
    CellForceVisible(Grid_Column, Grid_Row);
    edit_column_ = Grid_Column;
    edit_stored_row_ = content_.Stored_Row(Grid_Row);
    edit_text_before_ = content_.CellText(Grid_Column, Grid_Row);
    bkcCell_Text_->setMaxLength(column.field_size > 0 ? column.field_size : 32767);
    bkcCell_Text_->setText(edit_text_before_);
    bkcCell_Text_->setModified(false);
    Prepare_Choices(column);
    if (content_.ActiveSelLength() > 0)
        bkcCell_Text_->setSelection(content_.ActiveSelStart(), content_.ActiveSelLength());
    else
        bkcCell_Text_->selectAll();
    Place_Editor();
    bkcCell_Text_->setFocus();
    return true;
}

void bkcGrid::Place_Editor()
{
    if (!EditCellActive()) return;
    const int row = Edit_Row();
    if (row == 0 || edit_column_ > content_.Columns()) return Close_Editor(); // the cell is gone
    bkcCell_Text_->setGeometry(visualRect(model()->index(row - 1, edit_column_ - 1)));
    bkcCell_Text_->show();
}

void bkcGrid::Close_Editor()
{
    if (!EditCellActive()) return;
    content_.Set_ActiveSelection(EditCellSelStart(), EditCellSelLength());
    edit_stored_row_ = 0;
    const bool had_focus = bkcCell_Text_->hasFocus();
    if (auto* completer = bkcCell_Text_->completer()) {
        bkcCell_Text_->setCompleter(nullptr);
        completer->deleteLater();
    }
    if (had_focus) setFocus(); // before it hides, for hiding hands the focus on as Tab would, and moves the active cell
    bkcCell_Text_->hide();
    viewport()->update();
}

bool bkcGrid::Store_Edit()
{
    if (exit_running_) return false;
    const QScopedValueRollback running(exit_running_, true);
    const auto text = EditCellText();
    const int stored_row = edit_stored_row_;
    bool Cancel = false;
    emit BeforeCellChange(edit_column_, Edit_Row(), text, Cancel);
    if (Cancel || !EditCellActive() || edit_stored_row_ != stored_row) return false;
    const int row = Edit_Row();
    if (!content_.Edit_Cell(edit_column_, row, text)) return false;
    edit_text_before_ = text;
    bkcCell_Text_->setModified(false);
    viewport()->update();
    emit CellChange(edit_column_, row);
    return true;
}

bool bkcGrid::EditCellExit()
{
    if (!EditCellActive()) return true;
    if (exit_running_) return false;
    if (EditCellChanged() && !Store_Edit()) {
        QApplication::beep();
        return false;
    }
    Close_Editor();
    return true;
}

void bkcGrid::EditCellCancel()
{
    Close_Editor();
}

bool bkcGrid::EditCellUpdate()
{
    return EditCellActive() && (!EditCellChanged() || Store_Edit());
}

bool bkcGrid::EditCellChanged() const
{
    return EditCellActive() && bkcCell_Text_->text() != edit_text_before_;
}

QString bkcGrid::EditCellText() const
{
    return EditCellActive() ? bkcCell_Text_->text() : QString();
}

void bkcGrid::Set_EditCellText(const QString& New_Text)
{
    if (EditCellActive()) bkcCell_Text_->setText(New_Text);
}

int bkcGrid::EditCellSelStart() const
{
    return bkcCell_Text_->hasSelectedText() ? bkcCell_Text_->selectionStart() : bkcCell_Text_->cursorPosition();
}

int bkcGrid::EditCellSelLength() const
{
    return bkcCell_Text_->selectionLength();
}

QString bkcGrid::EditCellSelText() const
{
    return bkcCell_Text_->selectedText();
}

void bkcGrid::Set_EditCellSelection(int New_Start, int New_Length)
{
    bkcCell_Text_->setSelection(New_Start, New_Length);
}

int bkcGrid::ActiveSelStart() const
{
    return EditCellActive() ? EditCellSelStart() : content_.ActiveSelStart();
}

int bkcGrid::ActiveSelLength() const
{
    return EditCellActive() ? EditCellSelLength() : content_.ActiveSelLength();
}

QString bkcGrid::ActiveSelText() const
{
    return EditCellActive() ? EditCellSelText() : content_.ActiveSelText();
}

void bkcGrid::Set_ActiveSelection(int New_Start, int New_Length)
{
    if (EditCellActive())
        Set_EditCellSelection(New_Start, New_Length);
    else
        content_.Set_ActiveSelection(New_Start, New_Length);
}

bool bkcGrid::Set_ActiveSelText(const QString& New_Text)
{
    if (!EditCellActive()) return content_.Set_ActiveSelText(New_Text);
    bkcCell_Text_->insert(New_Text);
    return true;
}

void bkcGrid::Toggle_Check(int Grid_Column, int Grid_Row)
{
    const bool checked = content_.CellValue(Grid_Column, Grid_Row).toBool();
    Edit_At_Once(Grid_Column, Grid_Row, checked ? QStringLiteral("False") : QStringLiteral("True"));
}

// An edit without the editor.
void bkcGrid::Edit_At_Once(int Grid_Column, int Grid_Row, const QString& text)
{
    bool Cancel = false;
    emit BeforeCellChange(Grid_Column, Grid_Row, text, Cancel);
    if (Cancel || !content_.Edit_Cell(Grid_Column, Grid_Row, text)) return;
    viewport()->update();
    emit CellChange(Grid_Column, Grid_Row);
}

bool bkcGrid::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != bkcCell_Text_ || !EditCellActive()) return QTableView::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress && Editor_Key(static_cast<QKeyEvent*>(event))) return true;
    if (event->type() == QEvent::FocusOut && Editor_Left(*static_cast<QFocusEvent*>(event))) return true;
    return QTableView::eventFilter(watched, event);
}

// A popup of the editor or another window's turn do not leave the cell. A refused update takes the focus back.
bool bkcGrid::Editor_Left(const QFocusEvent& event)
{
    if (event.reason() == Qt::PopupFocusReason || event.reason() == Qt::ActiveWindowFocusReason) return false;
    if (!exit_running_ && !EditCellExit())
        QTimer::singleShot(0, bkcCell_Text_, [this] {
            if (EditCellActive()) bkcCell_Text_->setFocus();
        });
    return false;
}

bool bkcGrid::Editor_Key(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape: EditCellCancel(); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: EditCellExit(); return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (bkcCell_Text_->completer()) {
            Show_Choices();
            return true;
        }
        if (EditCellExit()) QCoreApplication::sendEvent(this, event);
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (!EditCellExit()) return true;
        if (focusNextPrevChild(event->key() == Qt::Key_Tab) && content_.Value(Grid_Property::TabBehavior) == 1)
            EditCellStart(content_.ActiveColumn(), content_.ActiveRow());
        return true;
    default: return false;
    }
}
