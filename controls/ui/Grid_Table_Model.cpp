#include "controls/ui/Grid_Table_Model.h"

#include "controls/ui/bkcGrid.h"

namespace {

Qt::Alignment Alignment_Of(Grid_Text_Align align)
{
    const auto horizontal = align == Grid_Text_Align::Right    ? Qt::AlignRight
                            : align == Grid_Text_Align::Center ? Qt::AlignHCenter
                                                               : Qt::AlignLeft;
    return Qt::AlignVCenter | horizontal;
}

} // namespace

Grid_Table_Model::Grid_Table_Model(Grid_Model& content, const QWidget& view, QObject* parent)
    : QAbstractTableModel(parent), content_(content), view_(view), rows_(content.Rows()), columns_(content.Columns())
{}

// Rows come and go at the end: what moved inside is a change of data, and the view keeps its place.
void Grid_Table_Model::Synchronize()
{
    const int columns = content_.Columns();
    const int rows = content_.Rows();
    if (columns > columns_) beginInsertColumns({}, columns_, columns - 1), columns_ = columns, endInsertColumns();
    if (columns < columns_) beginRemoveColumns({}, columns, columns_ - 1), columns_ = columns, endRemoveColumns();
    if (rows > rows_) beginInsertRows({}, rows_, rows - 1), rows_ = rows, endInsertRows();
    if (rows < rows_) beginRemoveRows({}, rows, rows_ - 1), rows_ = rows, endRemoveRows();
    if (columns > 0) emit headerDataChanged(Qt::Horizontal, 0, columns - 1);
    if (rows > 0 && columns > 0) emit dataChanged(index(0, 0), index(rows - 1, columns - 1));
}

Qt::ItemFlags Grid_Table_Model::flags(const QModelIndex& index) const
{
    if (!index.isValid()) return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
}

QVariant Grid_Table_Model::data(const QModelIndex& index, int role) const
{
    const int column = index.column() + 1;
    const int row = index.row() + 1;
    const auto& record = content_.Column(column);
    const bool check = record.control == Grid_Column_Control::Check;
    if (content_.CellHidden(column, row) && role != Qt::BackgroundRole) return {};
    switch (role) {
    case Qt::DisplayRole: return check ? QVariant() : Text(column, row);
    case Qt::AccessibleTextRole: return content_.CellText(column, row);
    case Qt::TextAlignmentRole: return QVariant::fromValue(Alignment_Of(content_.CellAlign(column, row)));
    case Qt::DecorationRole: return Image(column, row);
    case Qt::FontRole: return Font(column, row);
    case Qt::BackgroundRole: return Background(column, row);
    case Qt::ForegroundRole: return Foreground(column, row);
    case Qt::ToolTipRole: return Tool_Tip(column, row);
    case Qt::CheckStateRole:
        if (!check) return {};
        return content_.CellValue(column, row).toBool() ? Qt::Checked : Qt::Unchecked;
    default: return {};
    }
}

QVariant Grid_Table_Model::Image(int column, int row) const
{
    const auto name = content_.Cell_Image(column, row);
    const auto image = name.isEmpty() || !Image_Source ? QIcon() : Image_Source(name);
    return image.isNull() ? QVariant() : QVariant(image);
}

QVariant Grid_Table_Model::Text(int column, int row) const
{
    const bool image_alone = Grid_Render_Mode(content_.Column(column).render_mode) == Grid_Render_Mode::Image;
    if (image_alone && Image(column, row).isValid()) return {};
    return content_.CellText(column, row);
}

QVariant Grid_Table_Model::Font(int column, int row) const
{
    const int attribute = content_.CellAttribute(column, row);
    if ((attribute & ~Cell_Locked) == 0) return {};
    auto font = view_.font();
    font.setBold((attribute & Cell_Bold) != 0);
    font.setItalic((attribute & Cell_Italic) != 0);
    font.setUnderline((attribute & Cell_Underlined) != 0);
    font.setStrikeOut((attribute & Cell_Struck_Out) != 0);
    return font;
}

QVariant Grid_Table_Model::Background(int column, int row) const
{
    auto color = content_.CellBackColor(column, row);
    if (!color) color = content_.RowBackColor(row);
    if (!color) color = content_.Column(column).back_color;
    const bool striped = content_.Value(Grid_Property::RowColorMode) == 1 && row % 2 == 0;
    if (!color && striped) color = Stored_Color(content_.Properties().Value(Grid_Property::RowColor));
    return color ? QVariant(QBrush(Color_Of(*color, view_.palette()))) : QVariant();
}

QVariant Grid_Table_Model::Foreground(int column, int row) const
{
    auto color = content_.CellForeColor(column, row);
    if (!color) color = content_.RowForeColor(row);
    if (!color) color = content_.Column(column).fore_color;
    return color ? QVariant(QBrush(Color_Of(*color, view_.palette()))) : QVariant();
}

QVariant Grid_Table_Model::Tool_Tip(int column, int row) const
{
    if (!content_.Is_On(Grid_Property::ToolTipEnabled)) return {};
    const auto text = content_.CellText(column, row);
    const auto& record = content_.Column(column);
    const auto choice = record.data.toStringList().indexOf(text);
    const auto tips = record.data_tool_tips.toStringList();
    return choice >= 0 && choice < tips.size() ? tips[choice] : text;
}

QVariant Grid_Table_Model::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal ? Column_Header(section + 1, role) : Row_Header(section + 1, role);
}

QVariant Grid_Table_Model::Column_Header(int column, int role) const
{
    const auto& record = content_.Column(column);
    if (role == Qt::DisplayRole) return record.header_text;
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Alignment_Of(record.header_text_align));
    if (role == Qt::ForegroundRole && record.header_fore_color)
        return QBrush(Color_Of(*record.header_fore_color, view_.palette()));
    return {};
}

QVariant Grid_Table_Model::Row_Header(int row, int role) const
{
    if (role == Qt::DisplayRole) return row;
    if (role != Qt::FontRole || !Active_Row_Indicator || row != content_.ActiveRow()) return {};
    auto font = view_.font();
    font.setBold(true);
    return font;
}

void Grid_Cell_Delegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    Draw_Lines(*painter, option);
}

void Grid_Cell_Delegate::Draw_Lines(QPainter& painter, const QStyleOptionViewItem& option) const
{
    const auto color = [&](Grid_Property property) {
        return Color_Of(Stored_Color(content_.Properties().Value(property)), option.palette);
    };
    const auto place = option.rect;
    if (content_.Is_On(Grid_Property::HorzLines)) {
        painter.setPen(color(Grid_Property::HorzLinesColor));
        painter.drawLine(place.bottomLeft(), place.bottomRight());
    }
    if (content_.Is_On(Grid_Property::VertLines)) {
        painter.setPen(color(Grid_Property::VertLinesColor));
        painter.drawLine(place.topRight(), place.bottomRight());
    }
}
