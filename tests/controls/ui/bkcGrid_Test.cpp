#include "tests/controls/ui/Grid_Window.h"

namespace {

TEST_F(Grid_Window, Control_And_Shift_Clicks_Select_Rows)
{
    const QSignalSpy changes(&grid, &bkcGrid::SelChange);
    Press(1, 2);
    EXPECT_EQ((std::vector<int>{2}), Selected());
    Press(2, 4, Qt::ControlModifier);
    EXPECT_EQ((std::vector<int>{2, 4}), Selected());
    Press(1, 2, Qt::ShiftModifier);
    EXPECT_EQ((std::vector<int>{2, 3, 4}), Selected());
    EXPECT_EQ(3, grid.selectionModel()->selectedRows().size()) << "what assistive tools see";
    EXPECT_EQ(3, changes.size());
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, {20, grid.viewport()->height() - 5});
    EXPECT_TRUE(Selected().empty());
}

TEST_F(Grid_Window, Arrow_Keys_Move_And_Shift_Extends)
{
    Press(1, 2);
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ((std::vector<int>{3}), Selected());
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ((std::vector<int>{3, 4}), Selected());
    QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(5U, Selected().size());
    EXPECT_EQ(4, grid.Content().ActiveRow());
}

TEST_F(Grid_Window, A_Header_Click_Sorts_Only_When_Allowed)
{
    const QSignalSpy clicks(&grid, &bkcGrid::ColumnClick);
    Press_Header(1);
    EXPECT_EQ(QVariant(3), grid.Content().CellValue(1, 1));
    grid.Content().Set(Grid_Property::AllowColumnSort, true);
    Press_Header(1);
    EXPECT_EQ(QVariant(1), grid.Content().CellValue(1, 1));
    EXPECT_EQ(Qt::AscendingOrder, grid.horizontalHeader()->sortIndicatorOrder());
    Press_Header(1);
    EXPECT_EQ(QVariant(5), grid.Content().CellValue(1, 1));
    EXPECT_EQ(Qt::DescendingOrder, grid.horizontalHeader()->sortIndicatorOrder());
    EXPECT_EQ("5", grid.model()->index(0, 0).data().toString().toStdString());
    EXPECT_EQ(3, clicks.size());
}

TEST_F(Grid_Window, Tab_Moves_Between_Cells_Where_The_Behaviour_Says_So)
{
    grid.Content().Set(Grid_Property::TabBehavior, 1);
    Press(1, 1);
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_Tab);
    EXPECT_EQ(2, grid.Content().ActiveColumn());
    QTest::keyClick(&grid, Qt::Key_Tab);
    EXPECT_EQ(2, grid.Content().ActiveRow());
    QTest::keyClick(&grid, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(1, grid.Content().ActiveRow());
}

TEST_F(Grid_Window, Down_On_The_Last_Row_Adds_One_When_Allowed)
{
    Press(1, 5);
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ(5, grid.Content().Rows());
    grid.Content().Set(Grid_Property::AllowAddNew, true);
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ(6, grid.Content().Rows());
    EXPECT_EQ(6, grid.Content().ActiveRow());
}

TEST_F(Grid_Window, Copy_Puts_The_Selected_Rows_On_The_Clipboard)
{
    grid.Content().Set(Grid_Property::AllowCopy, true);
    Press(1, 2);
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ("1\ta\n", QGuiApplication::clipboard()->text().toStdString());
}

TEST_F(Grid_Window, Geometry_Agrees_With_The_Cells)
{
    EXPECT_EQ(1, grid.GridTopRow());
    EXPECT_EQ(5, grid.GridBottomRow());
    EXPECT_EQ(2, grid.ReturnColumnHit(Middle(2, 3).x()));
    EXPECT_EQ(3, grid.ReturnRowHit(Middle(2, 3).y()));
    EXPECT_EQ(0, grid.ReturnRowHit(grid.viewport()->height() - 5));
    EXPECT_EQ(grid.ColumnLeft(2), grid.CellGeometry(2, 1, bkcGrid::Geometry::Left));
    EXPECT_EQ(75, grid.CellGeometry(1, 1, bkcGrid::Geometry::Width));
    EXPECT_TRUE(grid.CellVisible(2, 5));
    EXPECT_FALSE(grid.RowVisible(6));
}

TEST_F(Grid_Window, Deferred_Changes_Show_At_Update)
{
    grid.Content().Set_AutoPaint(false);
    grid.Content().Set_Rows(50'000);
    EXPECT_EQ(5, grid.model()->rowCount());
    grid.Update();
    EXPECT_EQ(50'000, grid.model()->rowCount());
    grid.Content().Set_Rows(0);
    grid.Update();
    EXPECT_EQ(0, grid.GridTopRow());
}

QIcon Filled_Icon(const QColor& color)
{
    QPixmap picture(16, 16);
    picture.fill(color);
    return QIcon(picture);
}

TEST_F(Grid_Window, Choices_Show_Their_Images_And_In_Image_Mode_Nothing_Else)
{
    grid.Set_Image_Source([](const QString& name) { return name == "red" ? Filled_Icon(Qt::red) : QIcon(); });
    const auto show = [&](Grid_Render_Mode mode) {
        grid.Content().Change_Column(2, [mode](auto& column) {
            column.data = QStringList{"c", "a"};
            column.data_images = QStringList{"red", "unknown"};
            column.render_mode = int(mode);
        });
    };
    const auto at = [&](int row, int role) { return grid.model()->index(row - 1, 1).data(role); };
    show(Grid_Render_Mode::Image_And_Text);
    EXPECT_TRUE(at(1, Qt::DecorationRole).isValid());
    EXPECT_EQ("c", at(1, Qt::DisplayRole).toString());
    show(Grid_Render_Mode::Image);
    EXPECT_EQ("", at(1, Qt::DisplayRole).toString());
    EXPECT_EQ("c", at(1, Qt::AccessibleTextRole).toString());
    EXPECT_EQ("a", at(2, Qt::DisplayRole).toString()) << "without a picture the text stays";
    const QImage picture = grid.viewport()->grab(grid.visualRect(grid.model()->index(0, 1))).toImage();
    bool red = false;
    for (int x = 0; x < picture.width(); ++x) red |= picture.pixelColor(x, picture.height() / 2) == Qt::red;
    EXPECT_TRUE(red);
}

TEST_F(Grid_Window, Attributes_Of_A_Cell_Choose_Its_Font)
{
    grid.Content().Set_CellAttribute(1, 1, Cell_Bold | Cell_Struck_Out);
    const auto font = grid.model()->index(0, 0).data(Qt::FontRole).value<QFont>();
    EXPECT_TRUE(font.bold());
    EXPECT_TRUE(font.strikeOut());
    EXPECT_FALSE(font.italic());
    EXPECT_FALSE(grid.model()->index(1, 0).data(Qt::FontRole).isValid());
}

TEST_F(Grid_Window, Numbers_Stand_At_The_Right_With_Data_Align)
{
    grid.Content().Set(Grid_Property::DataAlign, true);
    const auto align = [&](int column) {
        return Qt::Alignment(grid.model()->index(0, column - 1).data(Qt::TextAlignmentRole).toInt());
    };
    EXPECT_TRUE(align(1).testFlag(Qt::AlignRight));
    EXPECT_TRUE(align(2).testFlag(Qt::AlignLeft));
}

TEST_F(Grid_Window, A_Height_Or_Width_Of_Nothing_Hides)
{
    grid.Content().Set_RowHeight(2, 0);
    grid.Content().Change_Column(1, [](auto& column) { column.width = 0; });
    EXPECT_TRUE(grid.isRowHidden(1));
    EXPECT_TRUE(grid.isColumnHidden(0));
    grid.Content().Set_RowHeight(2, 18);
    grid.Content().Change_Column(1, [](auto& column) { column.width = 75; });
    EXPECT_FALSE(grid.isRowHidden(1));
    EXPECT_EQ(75, grid.columnWidth(0));
}

TEST_F(Grid_Window, Colours_Are_Drawn_And_Those_Of_The_System_Come_Back_With_The_Theme)
{
    const auto color_at = [&](int column, int row) {
        const auto place = grid.visualRect(grid.model()->index(row - 1, column - 1));
        return grid.viewport()->grab(place).toImage().pixelColor(place.width() - 4, place.height() / 2);
    };
    auto& content = grid.Content();
    const QColor theme = color_at(1, 5); // the first row lies under the pointer
    content.Set(Grid_Property::BackColor, 0x00FF00);
    EXPECT_EQ(QColor(Qt::green), color_at(1, 5));
    content.Set(Grid_Property::BackColor, System_Color(5));
    EXPECT_EQ(theme, color_at(1, 5));
    content.Change_Column(1, [](auto& column) { column.back_color = 0x0000FF; });
    content.Set_RowBackColor(2, 0xFF0000);
    content.Set_CellBackColor(1, 3, 0x00FFFF);
    EXPECT_EQ(QColor(Qt::red), color_at(1, 5));
    EXPECT_EQ(QColor(Qt::blue), color_at(1, 2)) << "a row goes before its columns";
    EXPECT_EQ(QColor(Qt::yellow), color_at(1, 3)) << "a cell goes before its row";
    content.Set(Grid_Property::RowColorMode, 1);
    content.Set(Grid_Property::RowColor, 0xFF00FF);
    EXPECT_EQ(QColor(Qt::magenta), color_at(2, 4)) << "every second row";
    EXPECT_EQ(theme, color_at(2, 5));
}

TEST_F(Grid_Window, Headings_And_Lines_Show_As_The_Properties_Say)
{
    auto& content = grid.Content();
    const auto corner = [&] {
        const auto place = grid.visualRect(grid.model()->index(0, 0));
        return grid.viewport()->grab(place).toImage().pixelColor(place.width() / 2, place.height() - 1);
    };
    content.Set(Grid_Property::HorzLinesColor, 0x0000FF);
    EXPECT_EQ(QColor(Qt::red), corner());
    content.Set(Grid_Property::HorzLines, false);
    EXPECT_NE(QColor(Qt::red), corner());
    EXPECT_GT(grid.ColumnHeaderHeight(), 0);
    EXPECT_GT(grid.RowHeaderWidth(), 0);
    content.Set(Grid_Property::ColumnHeadings, false);
    content.Set(Grid_Property::RowHeadings, false);
    EXPECT_EQ(0, grid.ColumnHeaderHeight());
    EXPECT_EQ(0, grid.RowHeaderWidth());
}

TEST_F(Grid_Window, The_View_Follows_The_Thumb_Only_With_Scroll_Track)
{
    EXPECT_FALSE(grid.verticalScrollBar()->hasTracking());
    grid.Content().Set(Grid_Property::ScrollTrack, true);
    EXPECT_TRUE(grid.verticalScrollBar()->hasTracking());
}

TEST_F(Grid_Window, A_Header_Edge_Is_Dragged_Only_Where_Grid_And_Column_Allow_It)
{
    auto* header = grid.horizontalHeader();
    const auto drag = [&] {
        const QPoint edge(header->sectionViewportPosition(0) + header->sectionSize(0) - 1, header->height() / 2);
        QTest::mousePress(header->viewport(), Qt::LeftButton, {}, edge);
        QTest::mouseMove(header->viewport(), edge + QPoint(15, 0));
        QMouseEvent move(QEvent::MouseMove, edge + QPoint(30, 0), header->viewport()->mapToGlobal(edge + QPoint(30, 0)),
                         Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(header->viewport(), &move);
        QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, edge + QPoint(30, 0));
        return grid.Content().Column(1).width;
    };
    EXPECT_EQ(75, drag());
    grid.Content().Set(Grid_Property::AllowColumnSizing, true);
    EXPECT_EQ(105, drag());
    grid.Content().Change_Column(1, [](auto& column) { column.allow_sizing = false; });
    EXPECT_EQ(105, drag());
}

TEST_F(Grid_Window, Tool_Tips_Are_The_Choices_Own_Or_The_Text)
{
    auto& content = grid.Content();
    const auto tip = [&](int row) { return grid.model()->index(row - 1, 1).data(Qt::ToolTipRole).toString(); };
    content.Change_Column(2, [](auto& column) {
        column.data = QStringList{"c"};
        column.data_tool_tips = QStringList{"the third"};
    });
    EXPECT_EQ("", tip(1));
    content.Set(Grid_Property::ToolTipEnabled, true);
    EXPECT_EQ("the third", tip(1));
    EXPECT_EQ("a", tip(2));
}

TEST_F(Grid_Window, The_Pointer_Over_The_Cells_Is_The_Hosts)
{
    grid.Set_MousePointer(Qt::CrossCursor);
    EXPECT_EQ(Qt::CrossCursor, grid.MousePointer());
    EXPECT_TRUE(grid.MouseIcon().isNull());
    grid.Set_MouseIcon(Filled_Icon(Qt::blue).pixmap(16));
    EXPECT_FALSE(grid.MouseIcon().isNull());
    grid.Set_Visible(false);
    EXPECT_FALSE(grid.Visible());
}

TEST_F(Grid_Window, A_Press_Is_Remembered_With_Its_Cell)
{
    EXPECT_FALSE(grid.CellMouseDown());
    const QPoint place = Middle(2, 4);
    EXPECT_TRUE(grid.CellHit(place.x(), place.y()));
    EXPECT_FALSE(grid.CellHit(place.x(), grid.viewport()->height() - 5));
    Press(2, 4);
    EXPECT_TRUE(grid.CellMouseDown());
    EXPECT_EQ(2, grid.ReturnColumnMouseDown());
    EXPECT_EQ(4, grid.ReturnRowMouseDown());
}

TEST_F(Grid_Window, Scrolls_To_What_The_Host_Wants_To_See)
{
    grid.Content().Set_Rows(1000);
    grid.Content().Set_Columns(40);
    EXPECT_EQ(1, grid.GridLeftColumn());
    EXPECT_FALSE(grid.CellVisible(30, 500));
    grid.CellForceVisible(30, 500);
    EXPECT_TRUE(grid.CellVisible(30, 500));
    EXPECT_TRUE(grid.ColumnVisible(grid.GridRightColumn()));
    EXPECT_FALSE(grid.ColumnVisible(grid.GridRightColumn() + 1));
    EXPECT_LE(grid.ColumnLeft(grid.GridRightColumn()), grid.GridWidth());
    grid.Set_GridTopRow(200);
    EXPECT_EQ(200, grid.GridTopRow());
    EXPECT_GE(grid.GridBottomRow(), 200 + grid.GridHeight() / 30);
    grid.Set_GridLeftColumn(5);
    EXPECT_EQ(5, grid.GridLeftColumn());
    grid.Set_GridTopRow(2000); // there is no such row
    EXPECT_EQ(200, grid.GridTopRow());
}

TEST_F(Grid_Window, The_First_Update_Sorts_By_The_Initial_Column)
{
    grid.Set_ColumnInitialSort(1);
    grid.Update();
    EXPECT_EQ(QVariant(1), grid.Content().CellValue(1, 1));
    grid.Content().SortColumn(1, -1);
    grid.Update();
    EXPECT_EQ(QVariant(5), grid.Content().CellValue(1, 1)) << "only the first";
}

TEST_F(Grid_Window, Indicators_Can_Be_Switched_Off)
{
    grid.Content().SortColumn(1, 1);
    EXPECT_TRUE(grid.horizontalHeader()->isSortIndicatorShown());
    grid.Set_ColumnSortIndicator(false);
    EXPECT_FALSE(grid.horizontalHeader()->isSortIndicatorShown());
    grid.Content().Set_Active(1, 2);
    const auto bold = [&](int row) {
        return grid.model()->headerData(row - 1, Qt::Vertical, Qt::FontRole).value<QFont>().bold();
    };
    EXPECT_TRUE(bold(2));
    EXPECT_FALSE(bold(1));
    grid.Set_ActiveRowIndicator(false);
    EXPECT_FALSE(bold(2));
}

TEST_F(Grid_Window, Clicks_On_Cells_Select_No_Row_Where_They_May_Not)
{
    grid.Content().Set(Grid_Property::AllowCellRowSelect, false);
    const QSignalSpy clicks(&grid, &bkcGrid::Click);
    Press(1, 2);
    EXPECT_TRUE(Selected().empty());
    EXPECT_EQ(2, grid.Content().ActiveRow());
    EXPECT_EQ(1, clicks.size());
}

TEST_F(Grid_Window, Proportional_Columns_Share_What_Is_Left_When_The_Control_Resizes)
{
    grid.Content().Set_ColumnWidthProportional(2, 1);
    const int left_before = grid.viewport()->width() - 75;
    EXPECT_EQ(left_before, grid.columnWidth(1));
    grid.resize(600, 300);
    EXPECT_EQ(grid.viewport()->width() - 75, grid.columnWidth(1));
    EXPECT_GT(grid.columnWidth(1), left_before);
}

TEST_F(Grid_Window, A_Click_Tells_The_Active_Cell_Before_The_Selection)
{
    QStringList told;
    QObject::connect(&grid, &bkcGrid::ActiveChange, &grid,
                     [&](int column, int row) { told << QStringLiteral("active %1 %2").arg(column).arg(row); });
    QObject::connect(&grid, &bkcGrid::SelChange, &grid, [&] { told << "selection"; });
    QObject::connect(&grid, &bkcGrid::Click, &grid, [&] { told << "click"; });
    Press(2, 3);
    EXPECT_EQ("active 2 3, selection, click", told.join(", ").toStdString());
}

} // namespace
