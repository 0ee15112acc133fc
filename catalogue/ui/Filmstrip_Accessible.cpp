#include "catalogue/ui/Filmstrip_Accessible.h"

#include "catalogue/Picture_Texts.h"
#include "catalogue/ui/Filmstrip_Widget.h"

namespace {

/// One picture of the strip. A picture that went away is invalid from then on.
class Picture_Accessible final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    Picture_Accessible(Filmstrip_Widget& strip, int key) : strip_(strip), key_(key) {}

    int Key() const { return key_; }
    bool isValid() const override { return Index() > 0; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return strip_.window()->windowHandle(); }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&strip_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override { return {pressAction(), toggleAction()}; }
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    int Index() const { return strip_.Form().State().pictures.Index_From_Key(key_); }
    Filmstrip_Widget& strip_;
    int key_;
};

QString Picture_Accessible::text(QAccessible::Text kind) const
{
    if (!isValid()) return {};
    const Catalogue_State& state = strip_.Form().State();
    if (kind == QAccessible::Name) return state.pictures.Item(Index()).File_Name;
    return kind == QAccessible::Description ? Spoken_Picture_Text(state, Index()) : QString();
}

QRect Picture_Accessible::rect() const
{
    if (!isValid()) return {};
    const QRect cell = strip_.Cell_On_View(Index());
    return {strip_.viewport()->mapToGlobal(cell.topLeft()), cell.size()};
}

QAccessible::State Picture_Accessible::state() const
{
    QAccessible::State state;
    state.invalid = !isValid();
    if (state.invalid) return state;
    state.selectable = state.multiSelectable = state.focusable = true;
    state.selected = strip_.Form().Test_Picture_Selected(Index());
    state.focused = strip_.hasFocus() && strip_.Cursor_Index() == Index();
    state.offscreen = !strip_.Cell_On_View(Index()).intersects(strip_.viewport()->rect());
    state.invisible = !strip_.isVisible();
    return state;
}

void Picture_Accessible::doAction(const QString& name)
{
    if (isValid()) strip_.Press(Index(), /*toggles=*/name == toggleAction());
}

} // namespace

Filmstrip_Accessible::Filmstrip_Accessible(Filmstrip_Widget& strip)
    : QAccessibleWidget(&strip, QAccessible::List), strip_(strip)
{}

Filmstrip_Accessible::~Filmstrip_Accessible()
{
    for (const QAccessible::Id id : std::as_const(items_)) QAccessible::deleteAccessibleInterface(id);
}

void Filmstrip_Accessible::Install()
{
    static const bool installed = [] {
        QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
            auto* strip = qobject_cast<Filmstrip_Widget*>(object);
            return strip != nullptr ? new Filmstrip_Accessible(*strip) : nullptr;
        });
        return true;
    }();
    static_cast<void>(installed);
}

int Filmstrip_Accessible::childCount() const
{
    return strip_.Form().State().pictures.Count();
}

QAccessibleInterface* Filmstrip_Accessible::child(int index) const
{
    const Picture_List& pictures = strip_.Form().State().pictures;
    if (!pictures.Is_Index(index + 1)) return nullptr;
    const int key = pictures.Item(index + 1).Picture_Key;
    if (const auto known = items_.constFind(key); known != items_.constEnd())
        return QAccessible::accessibleInterface(*known);
    auto* item = new Picture_Accessible(strip_, key);
    items_.insert(key, QAccessible::registerAccessibleInterface(item));
    return item;
}

int Filmstrip_Accessible::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* item = dynamic_cast<const Picture_Accessible*>(child);
    return item != nullptr ? strip_.Form().State().pictures.Index_From_Key(item->Key()) - 1 : -1;
}

QAccessibleInterface* Filmstrip_Accessible::childAt(int x, int y) const
{
    return child(strip_.Index_At(strip_.viewport()->mapFromGlobal(QPoint(x, y))) - 1);
}

QAccessibleInterface* Filmstrip_Accessible::focusChild() const
{
    return strip_.hasFocus() ? child(strip_.Cursor_Index() - 1) : nullptr;
}

QAccessible::State Filmstrip_Accessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.multiSelectable = true;
    return state;
}
