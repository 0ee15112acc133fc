#include "rename/ui/New_Name_Delegate.h"

#include "rename/Rename_Job.h"

#include <QtGui/QPainter>
#include <QtGui/QTextLayout>
#include <QtWidgets/QApplication>

void New_Name_Delegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QString name = index.data(Qt::DisplayRole).toString();
    if (!index.siblingAtColumn(index.column() + 1).data(Qt::DisplayRole).toString().isEmpty())
        return Paint_Unused(painter, option, index);
    const QString present = index.siblingAtColumn(index.column() - 1).data(Qt::DisplayRole).toString();
    const Changed_Part part = Changed_Part_Of(present, name);
    if (name.isEmpty() || part.length == 0) return Grid_Cell_Delegate::paint(painter, option, index);

    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.text.clear();
    const QStyle& style = option.widget != nullptr ? *option.widget->style() : *QApplication::style();
    style.drawControl(QStyle::CE_ItemViewItem, &cell, painter, option.widget);

    const bool selected = (option.state & QStyle::State_Selected) != 0;
    const auto group = (option.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
    QTextLayout text(name, option.font);
    QTextCharFormat changed;
    changed.setFontWeight(QFont::Bold);
    const bool has_own_color = index.data(Qt::ForegroundRole).isValid();
    if (!selected && !has_own_color) changed.setForeground(option.palette.brush(QPalette::Link));
    text.setFormats({{part.start, part.length, changed}});
    text.beginLayout();
    QTextLine line = text.createLine();
    line.setLineWidth(1'000'000); // one line, cut at the cell's edge
    text.endLayout();

    painter->save();
    painter->setClipRect(option.rect);
    painter->setPen(cell.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, option.widget) + 1;
    text.draw(painter, QPointF(option.rect.left() + margin, option.rect.center().y() - line.height() / 2 + 0.5));
    painter->restore();
    Draw_Lines(*painter, option);
}

void New_Name_Delegate::Paint_Unused(QPainter* painter, QStyleOptionViewItem cell, const QModelIndex& index) const
{
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        cell.palette.setColor(group, QPalette::Text, cell.palette.color(QPalette::Disabled, QPalette::Text));
    Grid_Cell_Delegate::paint(painter, cell, index);
}
