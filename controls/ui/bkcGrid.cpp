#include "controls/ui/bkcGrid.h"

#include "controls/ui/Grid_Table_Model.h"

int Shift_Of(Qt::KeyboardModifiers modifiers)
{
    return (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) | (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0) |
           (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
}

int Button_Of(Qt::MouseButton button)
{
    return button == Qt::LeftButton ? 1 : button == Qt::RightButton ? 2 : button == Qt::MiddleButton ? 4 : 0;
}

QColor Color_Of(Stored_Color color, const QPalette& palette)
{
    if ((color & 0x80000000U) == 0) return QColor(int(color & 255), int(color >> 8 & 255), int(color >> 16 & 255));
    switch (color & 0xFF) {
    case 5: return palette.color(QPalette::Base);
    case 8: return palette.color(QPalette::Text);
    case 13: return palette.color(QPalette::Highlight);
    case 14: return palette.color(QPalette::HighlightedText);
    case 15: return palette.color(QPalette::Button);
    case 16: return palette.color(QPalette::Mid);
    case 17: return palette.color(QPalette::PlaceholderText);
    case 18: return palette.color(QPalette::ButtonText);
    case 20: return palette.color(QPalette::Light);
    case 21: return palette.color(QPalette::Shadow);
    default: return palette.color(QPalette::WindowText);
    }
}

bkcGrid::bkcGrid(QWidget* parent)
    : QTableView(parent),
      table_model_(new Grid_Table_Model(content_, *this, this)),
      bkcCell_Text_(new QLineEdit(viewport()))
{
    setModel(table_model_);
    setItemDelegate(new Grid_Cell_Delegate(content_, this));
    setShowGrid(false); // the delegate draws the lines
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setWordWrap(false);
    setIconSize({16, 16});
    Set_Up_Editor();
    Set_Up_Headers();
    content_.On_Change = [this](Grid_Model::Change change) { Content_Changed(change); };
    Show_Properties();
    Show_Columns();
}

bkcGrid::~bkcGrid()
{
    content_.On_Change = nullptr; // children go after this object: nobody may hear of the content then
    bkcCell_Text_->removeEventFilter(this);
}

void bkcGrid::Set_Up_Headers()
{
    horizontalHeader()->setAccessibleName(tr("Column headings"));
    verticalHeader()->setAccessibleName(tr("Row headings"));
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(8);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    // A press on a heading sorts or selects as the content says; the view's own reaction would move the active cell.
    disconnect(horizontalHeader(), &QHeaderView::sectionPressed, this, nullptr);
    disconnect(verticalHeader(), &QHeaderView::sectionPressed, this, nullptr);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &bkcGrid::Header_Clicked);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, &bkcGrid::Column_Resized);
    connect(verticalHeader(), &QHeaderView::sectionPressed, this, [this](int section) {
        if (!EditCellExit()) return;
        content_.Set_Active(std::max(1, content_.ActiveColumn()), section + 1);
        content_.SelectRowClick(1, Shift_Of(QGuiApplication::keyboardModifiers()), section + 1);
    });
}

void bkcGrid::Update()
{
    if (column_initial_sort_ > 0 && content_.Sort_Keys().empty() && content_.Rows() > 0) {
        const int column = std::exchange(column_initial_sort_, 0);
        content_.SortColumn(column, content_.Column(column).sort_order);
    }
    content_.Update();
}

void bkcGrid::Content_Changed(Grid_Model::Change change)
{
    if (showing_) return;
    switch (change) {
    case Grid_Model::Change::Layout:
        table_model_->Synchronize();
        Show_Properties();
        Show_Columns();
        break;
    case Grid_Model::Change::Content: table_model_->Synchronize(); break;
    case Grid_Model::Change::Selection:
        Show_Selection();
        emit SelChange();
        return;
    case Grid_Model::Change::Active:
        Show_Active();
        emit ActiveChange(content_.ActiveColumn(), content_.ActiveRow());
        return;
    }
    Show_Selection();
    Show_Active();
    Show_Sort_Indicator();
    Place_Editor();
}

void bkcGrid::Show_Properties()
{
    horizontalHeader()->setVisible(content_.Is_On(Grid_Property::ColumnHeadings));
    verticalHeader()->setVisible(content_.Is_On(Grid_Property::RowHeadings));
    const bool track = content_.Is_On(Grid_Property::ScrollTrack);
    horizontalScrollBar()->setTracking(track);
    verticalScrollBar()->setTracking(track);
    Show_Colors();
    Show_Rows();
}

void bkcGrid::Show_Rows()
{
    // Tall fonts need taller rows than the content asks for.
    const int least = fontMetrics().height() + 2;
    const int height = std::max(least, content_.Value(Grid_Property::RowInitialHeight));
    if (verticalHeader()->defaultSectionSize() != height) verticalHeader()->setDefaultSectionSize(height);
    for (int row = 1; row <= table_model_->rowCount(); ++row) {
        const int wanted = content_.RowHeight(row);
        if (isRowHidden(row - 1) != (wanted == 0)) setRowHidden(row - 1, wanted == 0);
        if (wanted == 0) continue;
        const int own = std::max(least, wanted);
        if (verticalHeader()->sectionSize(row - 1) != own) verticalHeader()->resizeSection(row - 1, own);
    }
}

// Colours of the system are those of the palette, which then keeps following the theme.
void bkcGrid::Show_Colors()
{
    constexpr std::pair<Grid_Property, QPalette::ColorRole> roles[] = {{Grid_Property::BackColor, QPalette::Base},
                                                                       {Grid_Property::ForeColor, QPalette::Text},
                                                                       {Grid_Property::PanelColor, QPalette::Button}};
    QPalette own; // nothing of its own yet: every role follows the theme
    auto wanted = shown_colors_;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto [property, role] = roles[i];
        wanted[i] = Stored_Color(content_.Properties().Value(property));
        if (std::int64_t(wanted[i]) != Facts_Of(property).initial)
            own.setColor(role, Color_Of(wanted[i], QGuiApplication::palette()));
    }
    if (std::exchange(shown_colors_, wanted) != wanted) setPalette(own);
}

void bkcGrid::Set_Image_Source(std::function<QIcon(const QString& name)> New_Source)
{
    table_model_->Image_Source = std::move(New_Source);
    viewport()->update();
}

void bkcGrid::Show_Columns()
{
    const QScopedValueRollback showing(showing_, true);
    const auto widths = content_.Column_Widths(viewport()->width());
    const bool sizing = content_.Is_On(Grid_Property::AllowColumnSizing);
    for (int column = 1; column <= table_model_->columnCount(); ++column) {
        const bool own = sizing && content_.Column(column).allow_sizing;
        horizontalHeader()->setSectionResizeMode(column - 1, own ? QHeaderView::Interactive : QHeaderView::Fixed);
        const int width = widths[std::size_t(column - 1)];
        if (isColumnHidden(column - 1) != (width == 0)) setColumnHidden(column - 1, width == 0);
        if (width > 0) horizontalHeader()->resizeSection(column - 1, width);
    }
}

// Runs of selected rows go over as one range each.
void bkcGrid::Show_Selection()
{
    QItemSelection selection;
    const int last_column = table_model_->columnCount() - 1;
    const auto rows = content_.SelectedRowsReturn();
    for (std::size_t i = 0; i < rows.size() && last_column >= 0;) {
        auto end = i + 1;
        while (end < rows.size() && rows[end] == rows[end - 1] + 1) ++end;
        if (rows[end - 1] <= table_model_->rowCount())
            selection.append(
                {table_model_->index(rows[i] - 1, 0), table_model_->index(rows[end - 1] - 1, last_column)});
        i = end;
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void bkcGrid::Show_Active()
{
    const QScopedValueRollback showing(showing_, true);
    const auto index = table_model_->index(content_.ActiveRow() - 1, content_.ActiveColumn() - 1);
    if (index != currentIndex()) selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    if (active_row_indicator_) verticalHeader()->viewport()->update();
}

void bkcGrid::Show_Sort_Indicator()
{
    const auto& keys = content_.Sort_Keys();
    const bool shown = column_sort_indicator_ && !keys.empty();
    horizontalHeader()->setSortIndicatorShown(shown);
    if (!shown) return;
    const bool rising = content_.Sort_Direction(keys.front()) > 0;
    horizontalHeader()->setSortIndicator(keys.front() - 1, rising ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void bkcGrid::Set_ActiveRowIndicator(bool New_Indicator)
{
    active_row_indicator_ = table_model_->Active_Row_Indicator = New_Indicator;
    verticalHeader()->viewport()->update();
}

void bkcGrid::Set_ColumnSortIndicator(bool New_Indicator)
{
    column_sort_indicator_ = New_Indicator;
    Show_Sort_Indicator();
}

void bkcGrid::Header_Clicked(int section)
{
    if (EditCellExit()) {
        emit ColumnClick(section + 1);
        const bool append = QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
        if (content_.Header_Click(section + 1, append)) content_.Update(); // the user is not made to wait for a host
    }
    Show_Sort_Indicator(); // the header turned its mark by itself
}

void bkcGrid::Column_Resized(int section, int, int new_size)
{
    if (showing_) return;
    {
        const QScopedValueRollback showing(showing_, true);
        content_.Change_Column(section + 1, [&](auto& column) {
            column.width = new_size;
            column.width_proportional = 0; // the user's width stays
        });
    }
    Show_Columns();
    Place_Editor();
}

void bkcGrid::Copy_As_Text()
{
    const auto text = content_.Copied_Text();
    if (!text.isEmpty()) QGuiApplication::clipboard()->setText(text);
}
