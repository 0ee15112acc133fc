#include "catalogue/ui/Filmstrip_Widget.h"

#include "catalogue/ui/Bitmap_Image.h"
#include "catalogue/ui/Filmstrip_Accessible.h"

#include <QtGui/QAccessible>
#include <QtWidgets/QtWidgets>

namespace {

constexpr QColor Strip_Color(0xC0, 0xC0, 0xC0);
constexpr QColor Cell_Color(0xB3, 0xB3, 0xB3);
constexpr QColor Frame_Color(0x40, 0x40, 0x40);
constexpr QColor Neutral_Color(0xBD, 0xBD, 0xBD);

QRect To_Pixels(const Twips_Rectangle& twips)
{
    constexpr int pixel = Filmstrip_Layout::Pixel;
    return {twips.left / pixel, twips.top / pixel, twips.width / pixel, twips.height / pixel};
}

constexpr int Most_Made_At_Once = 4; // scripts take some milliseconds each
constexpr int Reading_Look_Milliseconds = 5;
constexpr int Row_Pixels = Filmstrip_Layout::Pitch / Filmstrip_Layout::Pixel;

} // namespace

Filmstrip_Widget::Filmstrip_Widget(Halvine_Form& form, QWidget* parent)
    : QAbstractScrollArea(parent),
      form_(form),
      budget_(form.State(), form.Pictures()),
      reader_(form.State(), form.Pictures())
{
    Filmstrip_Accessible::Install();
    setObjectName(QStringLiteral("Thumbnail_Picture"));
    setAccessibleName(tr("Filmstrip"));
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // the columns stay where they are when it comes to matter
    setFrameShape(QFrame::NoFrame);
    verticalScrollBar()->setObjectName(QStringLiteral("Thumbnail_VScroll"));
    viewport()->setAutoFillBackground(false);
    setMinimumSize(Row_Pixels + 24, Row_Pixels);
    scrolling_.setDuration(style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this));
    connect(&scrolling_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        offset_ = value.toInt();
        viewport()->update();
    });
    current_later_.setSingleShot(true);
    current_later_.setInterval(150);
    connect(&current_later_, &QTimer::timeout, this, [this] { emit Current_Wanted(wanted_index_); });
    making_.setSingleShot(true);
    connect(&making_, &QTimer::timeout, this, &Filmstrip_Widget::Make_Next);
}

void Filmstrip_Widget::Set_Ready()
{
    ready_ = true;
    Draw_All_Thumbnails();
}

int Filmstrip_Widget::Cursor_Index() const
{
    return std::max(form_.State().pictures.Index_From_Key(cursor_key_), 0);
}

void Filmstrip_Widget::Set_Cursor(int index)
{
    const Picture_List& pictures = form_.State().pictures;
    if (!pictures.Is_Index(index)) return;
    Set_Thumbnail_Frame(Cursor_Index());
    cursor_key_ = pictures.Item(index).Picture_Key;
    Scroll_To_Index(index);
    Set_Thumbnail_Frame(index);
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(index - 1);
    QAccessible::updateAccessibility(&event);
}

// Frames change one by one; the tools hear once of all of them.
void Filmstrip_Widget::Tell_Selection()
{
    if (!QAccessible::isActive() || !std::exchange(selection_told_, false)) return;
    QTimer::singleShot(0, this, [this] {
        selection_told_ = true;
        QAccessibleEvent event(this, QAccessible::SelectionWithin);
        QAccessible::updateAccessibility(&event);
    });
}

QRect Filmstrip_Widget::Cell_On_View(int index) const
{
    return To_Pixels(layout_.Cell(index)).translated(0, -offset_);
}

int Filmstrip_Widget::Index_At(QPoint viewport_point) const
{
    constexpr int pixel = Filmstrip_Layout::Pixel;
    return layout_.Index_At(viewport_point.x() * pixel, (viewport_point.y() + offset_) * pixel);
}

void Filmstrip_Widget::Set_Top_Row(int row)
{
    layout_.Set_Top_Row(row);
    Update_Scroll_Range();
}

bool Filmstrip_Widget::Scroll_To_Index(int index)
{
    if (!layout_.Scroll_To_Index(index)) return false;
    Update_Scroll_Range();
    return true;
}

void Filmstrip_Widget::Update_Scroll_Range()
{
    layout_.Set_Count(form_.State().pictures.Count());
    const Scroll_Range range = layout_.Range();
    QScrollBar& bar = *verticalScrollBar();
    {
        const QSignalBlocker held_off(bar);
        bar.setRange(range.minimum, range.maximum);
        bar.setSingleStep(range.small_change);
        bar.setPageStep(range.large_change);
        bar.setValue(range.value);
    }
    bar.setEnabled(range.maximum > 0);
    scrollContentsBy(0, 0);
}

void Filmstrip_Widget::scrollContentsBy(int, int)
{
    layout_.Set_Top_Row(verticalScrollBar()->value());
    const int target = layout_.Top_Row() * Row_Pixels;
    if (target == offset_ && scrolling_.state() != QAbstractAnimation::Running) return;
    const bool near_by = std::abs(target - offset_) <= 2 * viewport()->height();
    scrolling_.stop();
    if (near_by && ready_ && isVisible() && scrolling_.duration() > 0) {
        scrolling_.setStartValue(offset_);
        scrolling_.setEndValue(target);
        scrolling_.start();
    } else {
        offset_ = target;
        viewport()->update();
    }
}

void Filmstrip_Widget::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    const int first = layout_.Count() > 0 ? layout_.Top_Row() * layout_.Thumbnails_Per_Row() + 1 : 0;
    const int cursor = Cursor_Index();
    const bool follows_cursor = cursor > 0 && layout_.On_View(cursor);
    layout_.Set_View_Size(viewport()->width() * Filmstrip_Layout::Pixel,
                          viewport()->height() * Filmstrip_Layout::Pixel);
    // The picture that stood first stays on view when the columns change.
    if (first > 0) layout_.Set_Top_Row(layout_.Row_Of(first));
    if (follows_cursor) layout_.Scroll_To_Index(cursor); // and goes before that one
    Update_Scroll_Range();
    viewport()->update();
}

void Filmstrip_Widget::Draw_Thumbnail(int index)
{
    const Picture_List& pictures = form_.State().pictures;
    if (!ready_ || !pictures.Is_Index(index)) return;
    layout_.Set_Count(pictures.Count());
    // A few are made at once, so that nothing flickers; the rest of many follow one by one as they are painted.
    const Picture_Item& item = pictures.Item(index);
    if (layout_.On_View(index) && item.Thumbnail_Bitmap && made_since_paint_ < Most_Made_At_Once) {
        ++made_since_paint_;
        budget_.Use(item.Picture_Key);
    } else {
        budget_.Note(item.Picture_Key);
    }
    Set_Thumbnail_Frame(index);
}

void Filmstrip_Widget::Set_Thumbnail_Frame(int index)
{
    if (index < 1) return;
    Tell_Selection();
    const QRect place = Cell_On_View(index).adjusted(-4, -4, 4, 4);
    if (place.intersects(viewport()->rect())) viewport()->update(place);
}

void Filmstrip_Widget::Draw_All_Thumbnails()
{
    budget_.Forget_Removed();
    if (!ready_) return;
    Update_Scroll_Range();
    viewport()->update();
}

void Filmstrip_Widget::paintEvent(QPaintEvent* event)
{
    made_since_paint_ = 0;
    QPainter painter(viewport());
    painter.fillRect(event->rect(), Strip_Color);
    if (!ready_) return;
    if (form_.State().pictures.Is_Empty()) {
        Paint_Hint(painter);
        return;
    }
    constexpr int pixel = Filmstrip_Layout::Pixel;
    const QRect exposed = event->rect().translated(0, offset_);
    const auto [first, last] = layout_.Indices_Between(exposed.top() * pixel, exposed.height() * pixel);
    for (int index = first; index <= std::min(last, form_.State().pictures.Count()); ++index)
        Paint_Cell(painter, index);
}

void Filmstrip_Widget::Paint_Cell(QPainter& painter, int index)
{
    const Picture_Item& item = form_.State().pictures.Item(index);
    const QPoint shift(0, -offset_);
    painter.fillRect(To_Pixels(layout_.Cell(index)).translated(shift), Cell_Color);
    if (const Bitmap_Handle bitmap = budget_.Drawn(item)) {
        const Pixel_Size size = Size_Of_Bitmap(bitmap);
        const Twips_Rectangle place = Filmstrip_Layout::Picture_Place(layout_.Cell(index), size.width, size.height);
        Draw_Bitmap(painter, To_Pixels(place).translated(shift), bitmap);
    } else {
        Paint_Neutral(painter, index);
    }
    if (!budget_.Is_Ready(item) && std::find(to_make_.begin(), to_make_.end(), index) == to_make_.end()) {
        to_make_.push_back(index);
        making_.start(0);
    }
    const QRect frame = To_Pixels(layout_.Frame(index)).translated(shift);
    if (form_.Test_Picture_Selected(index)) {
        painter.setPen(QPen(Frame_Color, 2));
        painter.drawRect(frame.adjusted(1, 1, 0, 0));
    }
    if (hasFocus() && item.Picture_Key == cursor_key_) {
        painter.setPen(QPen(Qt::black, 1, Qt::DotLine));
        painter.drawRect(Cell_On_View(index).adjusted(0, 0, -1, -1));
    }
}

void Filmstrip_Widget::Paint_Hint(QPainter& painter) const
{
    painter.setPen(Frame_Color);
    painter.drawText(viewport()->rect().adjusted(16, 16, -16, -16), int(Qt::AlignCenter) | int(Qt::TextWordWrap),
                     tr("Choose files at the left and press Pick, or drop pictures here."));
}

/// The shape of a picture whose thumbnail is still to come.
void Filmstrip_Widget::Paint_Neutral(QPainter& painter, int index) const
{
    const Picture_Item& item = form_.State().pictures.Item(index);
    const bool on_its_side = item.Rotate % 180 == 90;
    const Twips_Rectangle place =
        Filmstrip_Layout::Picture_Place(layout_.Cell(index), on_its_side ? item.Vert_Pixels : item.Horz_Pixels,
                                        on_its_side ? item.Horz_Pixels : item.Vert_Pixels);
    painter.fillRect(To_Pixels(place).translated(0, -offset_), Neutral_Color);
}

/// What is in memory goes first, one at a turn; what has to be read comes when it is there.
void Filmstrip_Widget::Make_Next()
{
    const int height = viewport()->height() + Row_Pixels;
    std::erase_if(to_make_, [&](int index) {
        const QRect place = Cell_On_View(index);
        return !form_.State().pictures.Is_Index(index) || place.bottom() < 0 || place.top() > height;
    });
    const bool made = Make_One_In_Memory() || Take_One_Read();
    std::vector<int> to_read;
    for (const int index : to_make_) {
        const Picture_Item& item = form_.State().pictures.Item(index);
        if (!item.Thumbnail_Bitmap) to_read.push_back(item.Picture_Key);
    }
    reader_.Want(to_read);
    if (!to_make_.empty()) making_.start(made ? 0 : Reading_Look_Milliseconds);
}

bool Filmstrip_Widget::Make_One_In_Memory()
{
    const auto in_memory = std::find_if(to_make_.begin(), to_make_.end(), [this](int index) {
        return bool(form_.State().pictures.Item(index).Thumbnail_Bitmap);
    });
    if (in_memory == to_make_.end()) return false;
    Made(*in_memory);
    return true;
}

bool Filmstrip_Widget::Take_One_Read()
{
    const auto key = reader_.Take();
    if (!key) return false;
    Made(form_.State().pictures.Index_From_Key(*key));
    return true;
}

/// A file that cannot be read leaves its cell as it is.
void Filmstrip_Widget::Made(int index)
{
    std::erase(to_make_, index);
    const Picture_Item& item = form_.State().pictures.Item(index);
    if (item.Thumbnail_Bitmap && budget_.Use(item.Picture_Key)) Set_Thumbnail_Frame(index);
}
