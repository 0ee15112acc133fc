#pragma once

#include "controls/Grid_Model.h"
#include <QtCore/QAbstractTableModel>
#include <QtWidgets/QStyledItemDelegate>

/// A Grid_Model as the table view wants to see it. Knows the size of the last Synchronize, so that deferred changes of
/// the content never surprise the view.
class Grid_Table_Model : public QAbstractTableModel {
    Q_OBJECT

public:
    Grid_Table_Model(Grid_Model& content, const QWidget& view, QObject* parent);

    void Synchronize(); ///< takes over the present size and tells the view that everything may have changed
    bool Active_Row_Indicator = true;
    std::function<QIcon(const QString& name)> Image_Source;

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : columns_; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QVariant Background(int column, int row) const;
    QVariant Foreground(int column, int row) const;
    QVariant Text(int column, int row) const;
    QVariant Image(int column, int row) const;
    QVariant Font(int column, int row) const;
    QVariant Tool_Tip(int column, int row) const;
    QVariant Column_Header(int column, int role) const;
    QVariant Row_Header(int row, int role) const;

    Grid_Model& content_;
    const QWidget& view_; // for the palette and font
    int rows_ = 0;
    int columns_ = 0;
};

/// Cells with the grid's own lines.
class Grid_Cell_Delegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    Grid_Cell_Delegate(const Grid_Model& content, QObject* parent) : QStyledItemDelegate(parent), content_(content) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void Draw_Lines(QPainter& painter,
                    const QStyleOptionViewItem& option) const; ///< for those that draw a cell themselves

private:
    const Grid_Model& content_;
};
