#include "ui/FormWalk.h"

#include "ui/FormParts.h"

#include <QtTest>
#include <QtWidgets>

#include <algorithm>

namespace kalmo::tests {

namespace {

bool takesTab(const QWidget& widget)
{
    return widget.isEnabled() && widget.focusPolicy() & Qt::TabFocus && !widget.focusProxy();
}

/// Radio buttons share one stop, and inner parts of a control belong to it.
bool isOwnStop(const QWidget& widget)
{
    return takesTab(widget) && !widget.inherits("QRadioButton") && !widget.objectName().startsWith(u"qt_"_s);
}

/// The room without which a text or a field is cut. Zero for widgets without, and for those that may be cut.
QSize neededFor(const QWidget& widget)
{
    if (widget.inherits("QComboBox") ||
        (widget.inherits("QLineEdit") && !widget.parent()->inherits("QComboBox")))
        return {0, widget.minimumSizeHint().height()};
    if (textOf(widget).isEmpty() || widget.inherits("QGroupBox") ||
        widget.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored)
        return {0, 0};
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return label && label->wordWrap() ? QSize(0, label->heightForWidth(label->width()))
                                      : widget.minimumSizeHint();
}

/// A label with a name of its own is read by that name alone.
bool hidesItsText(const QWidget& widget)
{
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return label && !label->accessibleName().isEmpty() && !label->text().isEmpty() &&
           label->textFormat() == Qt::PlainText && label->accessibleName() != label->text();
}

QString faultOf(QAccessibleInterface& part)
{
    static const QSet<QAccessible::Role> named = {
        QAccessible::Button,       QAccessible::CheckBox, QAccessible::ComboBox,
        QAccessible::RadioButton,  QAccessible::MenuItem, QAccessible::ListItem,
        QAccessible::ColumnHeader, QAccessible::PageTab,  QAccessible::ProgressBar};
    const QAccessible::State state = part.state();
    const auto* widget = qobject_cast<QWidget*>(part.object());
    const bool takesKeys = widget && isOwnStop(*widget);
    if (takesKeys && part.role() == QAccessible::NoRole)
        return u"no role"_s;
    if ((takesKeys || named.contains(part.role())) && part.text(QAccessible::Name).trimmed().isEmpty())
        return u"no name"_s;
    if (part.role() == QAccessible::EditableText && !part.textInterface())
        return u"no text"_s;
    if (part.role() == QAccessible::ProgressBar && !part.valueInterface())
        return u"no value"_s;
    const bool isSwitch = part.role() == QAccessible::CheckBox || part.role() == QAccessible::RadioButton;
    if (isSwitch && !state.checkable)
        return u"not checkable"_s;
    if (widget && widget->isEnabled() == static_cast<bool>(state.disabled))
        return u"wrong state"_s;
    return widget && hidesItsText(*widget) ? u"hidden text"_s : QString();
}

void collectUnspoken(QAccessibleInterface* part, QStringList& faults)
{
    const auto* widget = part ? qobject_cast<QWidget*>(part->object()) : nullptr;
    if (!part || part->state().invisible || (widget && widget->objectName().startsWith(u"qt_"_s)))
        return;
    if (const QString fault = faultOf(*part); !fault.isEmpty())
        faults.append(u"%1: role %2 \"%3\" %4"_s.arg(fault)
                          .arg(part->role())
                          .arg(part->text(QAccessible::Name), widget ? described(*widget) : QString()));
    for (int index = 0; index < part->childCount(); ++index)
        collectUnspoken(part->child(index), faults);
}

/// Goes once around by Tab or Shift+Tab and returns what had the focus.
QSet<QWidget*> stops(QWidget& form, Qt::KeyboardModifiers modifiers)
{
    QSet<QWidget*> reached;
    for (int step = 0; step < 500; ++step) {
        QWidget* focus = QApplication::focusWidget();
        if (!focus || reached.contains(focus))
            return reached;
        reached.insert(focus);
        QTest::keyClick(&form, modifiers ? Qt::Key_Backtab : Qt::Key_Tab, modifiers);
    }
    return reached;
}

/// The mnemonics of a form or of one menu, and those that are claimed twice.
struct Mnemonics
{
    void claim(const QString& text, const QString& who)
    {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (key.isEmpty())
            return;
        if (m_claimed.contains(key))
            faults.append(u"%1: %2 and %3"_s.arg(key, m_claimed[key], who));
        m_claimed[key] = who;
    }
    void claimAll(const QWidget& menu)
    {
        for (const QAction* action : menu.actions()) {
            if (action->isVisible())
                claim(action->text(), action->text());
        }
    }

    QStringList faults;

private:
    QHash<QString, QString> m_claimed;
};

} // namespace

QStringList unspokenParts(QWidget& form)
{
    QStringList faults;
    collectUnspoken(QAccessible::queryAccessibleInterface(&form), faults);
    return faults;
}

QStringList unspokenMenus(const QWidget& form)
{
    QStringList faults;
    for (auto* menu : form.findChildren<QMenu*>()) {
        const QString name = menu->objectName();
        if (!name.isEmpty() && menu->accessibleName().isEmpty())
            faults.append(u"no name: "_s + name);
        menu->popup({});
        collectUnspoken(QAccessible::queryAccessibleInterface(menu), faults);
        menu->close();
    }
    return faults;
}

QStringList sharedMnemonics(const QWidget& form)
{
    Mnemonics ofForm;
    for (const QWidget* widget : shownWidgets(form)) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        if (widget->isEnabled() && (!label || label->buddy()))
            ofForm.claim(textOf(*widget), described(*widget));
        if (const auto* bar = qobject_cast<const QMenuBar*>(widget))
            ofForm.claimAll(*bar);
    }
    QStringList faults = ofForm.faults;
    for (const QWidget* widget : form.findChildren<QWidget*>()) {
        if (!qobject_cast<const QMenu*>(widget) && widget->contextMenuPolicy() != Qt::ActionsContextMenu)
            continue;
        Mnemonics ofMenu;
        ofMenu.claimAll(*widget);
        faults += ofMenu.faults;
    }
    return faults;
}

QStringList unreachableControls(QWidget& form)
{
    QStringList faults;
    for (const auto modifiers : {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ShiftModifier)}) {
        const QSet<QWidget*> reached = stops(form, modifiers);
        for (QWidget* widget : shownWidgets(form)) {
            if (isOwnStop(*widget) && !reached.contains(widget))
                faults.append(
                    u"%1 does not reach %2"_s.arg(modifiers ? u"Shift+Tab"_s : u"Tab"_s, described(*widget)));
        }
    }
    return faults;
}

QStringList wrongTabOrder(const QWidget& form)
{
    QList<const QWidget*> order;
    for (const QWidget* stop = form.nextInFocusChain(); stop != &form; stop = stop->nextInFocusChain()) {
        if (isOwnStop(*stop) && stop->isVisibleTo(&form))
            order.append(stop);
    }
    QStringList faults;
    for (const auto* row : form.findChildren<QBoxLayout*>()) {
        const QWidget* last = nullptr;
        for (int index = 0; index < row->count(); ++index) {
            const QWidget* part = row->itemAt(index)->widget();
            const auto isIn = [part](const QWidget* stop) {
                return stop == part || part->isAncestorOf(stop);
            };
            const auto first = part ? std::ranges::find_if(order, isIn) : order.end();
            if (first == order.end())
                continue;
            if (last && order.indexOf(last) > first - order.begin())
                faults.append(u"Tab goes to %1 after %2"_s.arg(described(*last), described(**first)));
            last = *first;
        }
    }
    return faults;
}

QStringList cutTexts(const QWidget& form)
{
    QStringList faults;
    for (const QWidget* widget : shownWidgets(form)) {
        const QSize needed = neededFor(*widget);
        if (widget->width() < needed.width() || widget->height() < needed.height())
            faults.append(u"cut: %1 \"%2\" has %3 x %4 of %5 x %6"_s.arg(described(*widget), textOf(*widget))
                              .arg(widget->width())
                              .arg(widget->height())
                              .arg(needed.width())
                              .arg(needed.height()));
    }
    for (const auto* header : form.findChildren<QHeaderView*>()) {
        for (int section = 0; header->isVisibleTo(&form) && section < header->count(); ++section) {
            const QString title =
                header->model()->headerData(section, header->orientation(), Qt::DisplayRole).toString();
            if (!header->isSectionHidden(section) &&
                header->sectionSize(section) < header->fontMetrics().horizontalAdvance(title))
                faults.append(u"cut: head %1 of %2"_s.arg(title, described(*header->parentWidget())));
        }
    }
    return faults;
}

QStringList overlaps(const QWidget& form)
{
    QStringList faults;
    QList<const QWidget*> seen;
    for (const QWidget* widget : shownWidgets(form)) {
        if (textOf(*widget).isEmpty() && !qobject_cast<const QLineEdit*>(widget) &&
            !qobject_cast<const QComboBox*>(widget))
            continue;
        for (const QWidget* other : std::as_const(seen)) {
            if (other->parentWidget() == widget->parentWidget() &&
                other->geometry().intersects(widget->geometry()))
                faults.append(u"%1 lies over %2"_s.arg(described(*widget), described(*other)));
        }
        seen.append(widget);
    }
    return faults;
}

QStringList beyondScreen(const QWidget& form)
{
    for (const auto* area : form.findChildren<QScrollArea*>()) {
        if (area->isVisibleTo(&form) && area->horizontalScrollBar()->maximum() > 0)
            return {u"%1 scrolls sideways to %2"_s.arg(described(form)).arg(area->widget()->width())};
    }
    const QSize room = form.screen()->availableSize();
    const QSize needed = form.frameGeometry().size();
    if (needed.boundedTo(room) == needed)
        return {};
    return {u"%1 takes %2 x %3 of %4 x %5"_s.arg(described(form))
                .arg(needed.width())
                .arg(needed.height())
                .arg(room.width())
                .arg(room.height())};
}

} // namespace kalmo::tests
