#include "controls/ui/bkcButtonPanel.h"

#include "controls/ui/bkcGrid.h"

bkcButtonPanel::bkcButtonPanel(QWidget* parent)
    : QAbstractScrollArea(parent), caption_(new QLabel(this)), drop_mark_(new QWidget(viewport()))
{
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Buttons"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    caption_->hide();
    drop_mark_->hide();
    drop_mark_->setAutoFillBackground(true);
    drop_mark_->setAttribute(Qt::WA_TransparentForMouseEvents);
    viewport()->setAcceptDrops(true);
    viewport()->setBackgroundRole(QPalette::Window);
}

bool bkcButtonPanel::Add_Button(int Button_ID, const QString& Tooltip, const QIcon& Picture,
                                const QIcon& Disabled_Picture, const QIcon& Down_Picture,
                                const QIcon& Disabled_Down_Picture, bool Initial_State, bool Enabled, int Add_As_Index)
{
    if (!model_.Add_Button(Button_ID, Tooltip, Initial_State, Enabled, Add_As_Index)) return false;
    pictures_[Button_ID] = {Picture, Disabled_Picture, Down_Picture, Disabled_Down_Picture};
    Changed();
    return true;
}

void bkcButtonPanel::Add_Spacer()
{
    model_.Add_Spacer();
    Changed();
}

bool bkcButtonPanel::Remove_Button(int Button_ID)
{
    if (!model_.Remove_Button(Button_ID)) return false;
    pictures_.remove(Button_ID);
    // A handler of the button's own click may be running.
    if (auto* widget = widgets_.take(Button_ID)) widget->hide(), widget->deleteLater();
    Changed();
    return true;
}

void bkcButtonPanel::Clear_Buttons()
{
    model_.Clear_Buttons();
    pictures_.clear();
    for (auto* widget : std::exchange(widgets_, {})) widget->hide(), widget->deleteLater();
    Changed();
}

void bkcButtonPanel::Refresh()
{
    Show_Buttons();
}

void bkcButtonPanel::Changed()
{
    if (auto_paint_) Show_Buttons();
}

void bkcButtonPanel::Set_AutoPaint(bool New_AutoPaint)
{
    auto_paint_ = New_AutoPaint;
    Changed();
}

QToolButton* bkcButtonPanel::Widget_Of(int Button_ID)
{
    auto*& widget = widgets_[Button_ID];
    if (widget) return widget;
    widget = new QToolButton(viewport());
    widget->setFocusPolicy(Qt::NoFocus);
    widget->installEventFilter(this);
    widget->setProperty("Button_ID", Button_ID);
    connect(widget, &QToolButton::clicked, this, [this, widget = widget] {
        Click_Button(1, std::exchange(shift_, 0), widget->property("Button_ID").toInt());
    });
    return widget;
}

void bkcButtonPanel::Show_Buttons()
{
    for (const auto& button : model_.Buttons())
        if (!button.spacer) Show_Button(button);
    Show_Colors();
    Place_Caption();
    Show_Scroll_Bars();
    Place_Buttons();
    if (!model_.Has(focus_button_)) focus_button_ = 0;
    const auto ids = model_.Get_ID_List();
    if (focus_button_ == 0 && !ids.empty()) focus_button_ = ids.front();
    for (auto i = widgets_.cbegin(); i != widgets_.cend(); ++i)
        i.value()->setFocusPolicy(i.key() == focus_button_ ? Qt::TabFocus : Qt::NoFocus);
    updateGeometry();
}

void bkcButtonPanel::Show_Button(const Panel_Button& button)
{
    auto* widget = Widget_Of(button.id);
    widget->setCheckable(model_.ButtonMode() != Panel_Mode::Stateless);
    widget->setChecked(button.down);
    widget->setEnabled(button.enabled);
    widget->setToolTip(button.tooltip);
    widget->setAccessibleName(button.tooltip);
    widget->setAutoRaise(model_.DisplayStyle() == Flat_Display_Style);
    widget->setIconSize({model_.Properties.ButtonPictureWidth, model_.Properties.ButtonPictureHeight});
    widget->setIcon(Icon_Of(button));
    widget->setVisible(button.visible);
}

QIcon bkcButtonPanel::Icon_Of(const Panel_Button& button) const
{
    const auto pictures = pictures_.value(button.id);
    auto icon = button.down && !pictures.down.isNull() ? pictures.down : pictures.normal;
    const auto& disabled = button.down && !pictures.disabled_down.isNull() ? pictures.disabled_down : pictures.disabled;
    const bool fitted = model_.Properties.StretchPictures || model_.Properties.CropPictures;
    if (fitted && !icon.isNull()) icon = QIcon(Fitted(icon));
    if (!button.enabled && !disabled.isNull()) icon.addPixmap(Fitted(disabled), QIcon::Disabled);
    return icon;
}

QPixmap bkcButtonPanel::Fitted(const QIcon& icon) const
{
    const auto& p = model_.Properties;
    const QSize size = QSize(p.ButtonPictureWidth, p.ButtonPictureHeight) * devicePixelRatioF();
    const auto ratio = p.StretchPictures ? Qt::IgnoreAspectRatio
                       : p.CropPictures  ? Qt::KeepAspectRatioByExpanding
                                         : Qt::KeepAspectRatio;
    const auto sizes = icon.availableSizes();
    auto picture = icon.pixmap(sizes.isEmpty() ? size : sizes.last()).scaled(size, ratio, Qt::SmoothTransformation);
    if (p.CropPictures && !p.StretchPictures) {
        auto part = QRect(QPoint(), size);
        part.moveCenter(picture.rect().center());
        picture = picture.copy(part);
    }
    picture.setDevicePixelRatio(devicePixelRatioF());
    return picture;
}

void bkcButtonPanel::Show_Colors()
{
    auto colors = palette();
    const auto set = [&](const std::optional<QColor>& color, QPalette::ColorRole role) {
        if (color) colors.setColor(role, *color);
    };
    set(colors_.PanelColor, QPalette::Window);
    set(colors_.ButtonFaceColor, QPalette::Button);
    set(colors_.ButtonHighlightColor, QPalette::Light);
    set(colors_.ButtonShadowColor, QPalette::Mid);
    set(colors_.ButtonDarkShadowColor, QPalette::Shadow);
    if (colors != palette()) setPalette(colors);
    auto mark = drop_mark_->palette();
    mark.setColor(QPalette::Window, Color_Of(model_.Properties.ButtonDropColor, palette()));
    drop_mark_->setPalette(mark);
}

void bkcButtonPanel::Place_Caption()
{
    const auto& text = model_.Properties.FrameCaption;
    caption_->setText(text);
    caption_->setVisible(!text.isEmpty());
    if (!text.isEmpty()) setAccessibleName(text);
    const int height = text.isEmpty() ? 0 : caption_->sizeHint().height();
    setViewportMargins(margins_ + QMargins(0, height, 0, 0));
    caption_->setGeometry(frameWidth(), frameWidth(), width(), height);
}

void bkcButtonPanel::Show_Scroll_Bars()
{
    const auto size = model_.Content_Size(viewport()->width(), viewport()->height());
    const bool columns = model_.ScrollState() == 2;
    setVerticalScrollBarPolicy(columns ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    setHorizontalScrollBarPolicy(columns ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    const auto show = [](QScrollBar* bar, int content, int page, int step) {
        bar->setRange(0, std::max(0, content - page));
        bar->setPageStep(page);
        bar->setSingleStep(step);
    };
    const auto& p = model_.Properties;
    if (columns)
        show(horizontalScrollBar(), size.right, viewport()->width(), p.ButtonWidth + p.HorizontalSpacing);
    else
        show(verticalScrollBar(), size.bottom, viewport()->height(), p.ButtonHeight + p.VerticalSpacing);
}

int bkcButtonPanel::Scroll_Offset_X() const
{
    return model_.ScrollState() == 2 ? horizontalScrollBar()->value() : 0;
}

int bkcButtonPanel::Scroll_Offset_Y() const
{
    return model_.ScrollState() == 2 ? 0 : verticalScrollBar()->value();
}

void bkcButtonPanel::Place_Buttons()
{
    const auto places = model_.Layout(viewport()->width(), viewport()->height());
    const auto& buttons = model_.Buttons();
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        auto* widget = buttons[i].spacer ? nullptr : widgets_.value(buttons[i].id);
        const auto& p = places[i];
        if (widget) widget->setGeometry(p.left - Scroll_Offset_X(), p.top - Scroll_Offset_Y(), p.Width(), p.Height());
    }
}

int bkcButtonPanel::Get_ID_List(std::vector<int>& ID_List) const
{
    ID_List = model_.Get_ID_List();
    return int(ID_List.size());
}

int bkcButtonPanel::Get_Selected_ID_List(std::vector<int>& Selected_ID_List) const
{
    Selected_ID_List = model_.Get_Selected_ID_List();
    return int(Selected_ID_List.size());
}

void bkcButtonPanel::Autosize(int Left_Margin, int Top_Margin, int Right_Margin, int Bottom_Margin)
{
    margins_ = {Left_Margin, Top_Margin, Right_Margin, Bottom_Margin};
    const auto size = model_.Auto_Size();
    setFixedSize(size.right + Left_Margin + Right_Margin, size.bottom + Top_Margin + Bottom_Margin);
    const bool flows_either_way = ScrollState() == 1 || ScrollState() == 2;
    if (flows_either_way) model_.Set_ScrollState(model_.Auto_Scroll_State(width(), height()));
    Changed();
}

void bkcButtonPanel::AutoSizeHorizontal(int Left_Margin, int Right_Margin)
{
    margins_.setLeft(Left_Margin);
    margins_.setRight(Right_Margin);
    setFixedWidth(model_.Auto_Size().right + Left_Margin + Right_Margin);
    Changed();
}

void bkcButtonPanel::AutoSizeVertical(int Top_Margin, int Bottom_Margin)
{
    margins_.setTop(Top_Margin);
    margins_.setBottom(Bottom_Margin);
    setFixedHeight(model_.Auto_Size().bottom + Top_Margin + Bottom_Margin);
    Changed();
}

bool bkcButtonPanel::Get_Button_Rectangle(int Button_ID, int& Button_Left, int& Button_Top, int& Button_Right,
                                          int& Button_Bottom) const
{
    Panel_Rectangle place;
    if (!model_.Get_Button_Rectangle(Button_ID, viewport()->width(), viewport()->height(), place)) return false;
    const auto corner = viewport()->pos() - QPoint(Scroll_Offset_X(), Scroll_Offset_Y());
    Button_Left = place.left + corner.x();
    Button_Top = place.top + corner.y();
    Button_Right = place.right + corner.x();
    Button_Bottom = place.bottom + corner.y();
    return true;
}

bool bkcButtonPanel::ButtonID(int Old_ID, int New_ID)
{
    if (!model_.ButtonID(Old_ID, New_ID) || Old_ID == New_ID) return Old_ID == New_ID && model_.Has(Old_ID);
    pictures_[New_ID] = pictures_.take(Old_ID);
    if (auto* widget = widgets_.take(Old_ID)) {
        widget->setProperty("Button_ID", New_ID);
        widgets_[New_ID] = widget;
    }
    if (focus_button_ == Old_ID) focus_button_ = New_ID;
    Changed();
    return true;
}

bool bkcButtonPanel::Exchange(int Button_ID, int Partner_ID)
{
    const bool done = model_.Exchange(Button_ID, Partner_ID);
    Changed();
    return done;
}

void bkcButtonPanel::Set_Visible(int Button_ID, bool New_Visible)
{
    model_.Set_Visible(Button_ID, New_Visible);
    Changed();
}

void bkcButtonPanel::Set_ButtonState(int Button_ID, bool New_State)
{
    model_.Set_ButtonState(Button_ID, New_State);
    Changed();
}

void bkcButtonPanel::Set_Enabled(int Button_ID, bool New_Enabled)
{
    if (model_.Enabled(Button_ID) == New_Enabled) return;
    model_.Set_Enabled(Button_ID, New_Enabled);
    Changed();
}

void bkcButtonPanel::Set_Tooltip(int Button_ID, const QString& New_Tooltip)
{
    model_.Set_Tooltip(Button_ID, New_Tooltip);
    Changed();
}

void bkcButtonPanel::Picture(int Button_ID, const QIcon& New_Picture)
{
    if (!model_.Has(Button_ID)) return;
    pictures_[Button_ID].normal = New_Picture;
    Changed();
}

void bkcButtonPanel::Down_Picture(int Button_ID, const QIcon& New_Down_Picture)
{
    if (!model_.Has(Button_ID)) return;
    pictures_[Button_ID].down = New_Down_Picture;
    Changed();
}

void bkcButtonPanel::Change_Properties(const std::function<void(Button_Panel_Properties&)>& change)
{
    change(model_.Properties);
    setFrameShape(model_.Properties.BorderStyle == 0 ? QFrame::NoFrame : QFrame::StyledPanel);
    Changed();
}

void bkcButtonPanel::Set_ButtonMode(int New_Mode)
{
    model_.Set_ButtonMode(New_Mode);
    Changed();
}

void bkcButtonPanel::Set_DisplayStyle(int New_Style)
{
    model_.Set_DisplayStyle(New_Style);
    Changed();
}

void bkcButtonPanel::Set_ScrollState(int New_State)
{
    model_.Set_ScrollState(New_State);
    Changed();
}

void bkcButtonPanel::Set_Colors(const Colors& New_Colors)
{
    colors_ = New_Colors;
    Changed();
}

QSize bkcButtonPanel::sizeHint() const
{
    const auto size = model_.Auto_Size();
    const int caption = caption_->isHidden() ? 0 : caption_->sizeHint().height();
    return {size.right + 2 * frameWidth(), size.bottom + caption + 2 * frameWidth()};
}

QSize bkcButtonPanel::minimumSizeHint() const
{
    const auto& p = model_.Properties;
    const QSize one(p.ButtonWidth + 2 * p.HorizontalOffset, p.ButtonHeight + 2 * p.VerticalOffset);
    return one + QSize(2 * frameWidth(), 2 * frameWidth());
}

int bkcButtonPanel::heightForWidth(int width) const
{
    const int caption = caption_->isHidden() ? 0 : caption_->sizeHint().height();
    return model_.Content_Size(width - 2 * frameWidth(), 0).bottom + caption + 2 * frameWidth();
}
