// The contrast of the texts in a form, measured on its picture.

#include "ui/FormParts.h"
#include "ui/FormWalk.h"

#include <QtWidgets>

#include <algorithm>
#include <cmath>
#include <vector>

namespace kalmo::tests {

namespace {

constexpr double leastContrast = 4.5;

double luminance(QRgb colour)
{
    const auto part = [](int value) {
        const double share = value / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(qRed(colour)) + 0.7152 * part(qGreen(colour)) + 0.0722 * part(qBlue(colour));
}

double contrast(QRgb one, QRgb other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// By its colours: the picture of an empty field holds its button, too.
double contrastOfHint(const QLineEdit& field)
{
    const QColor ground = field.palette().color(QPalette::Base);
    const QColor hint = field.palette().color(QPalette::PlaceholderText);
    const auto seen = [&](int over, int below) {
        return (over * hint.alpha() + below * (255 - hint.alpha())) / 255;
    };
    return contrast(qRgb(seen(hint.red(), ground.red()), seen(hint.green(), ground.green()),
                         seen(hint.blue(), ground.blue())),
                    ground.rgb());
}

/// The strongest contrast with the commonest colour of a picture: that of a letter's core with its ground.
double strongestContrast(const QImage& picture)
{
    std::vector<QRgb> pixels;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        pixels.insert(pixels.end(), line, line + picture.width());
    }
    std::sort(pixels.begin(), pixels.end());
    std::vector<std::pair<std::ptrdiff_t, QRgb>> colours; // how often, and which
    for (auto first = pixels.begin(); first != pixels.end();) {
        const auto last = std::upper_bound(first, pixels.end(), *first);
        colours.emplace_back(last - first, *first);
        first = last;
    }
    if (colours.empty())
        return 1;
    const QRgb ground = std::max_element(colours.begin(), colours.end())->second;
    double strongest = 1;
    for (const auto& [count, colour] : colours)
        strongest = std::max(strongest, contrast(colour, ground));
    return strongest;
}

/// A text in a form, and where it is painted.
struct PaintedText
{
    const QWidget* widget;
    QRect place; ///< in the widget
    QString text;
};

/// Without the picture beside a text, which may have more contrast.
QRect textPlace(const QAbstractItemView& view, const QModelIndex& index)
{
    const bool hasPicture = index.data(Qt::DecorationRole).isValid();
    const int picture = view.iconSize().isValid() ? view.iconSize().width()
                                                  : view.style()->pixelMetric(QStyle::PM_SmallIconSize);
    return view.visualRect(index).adjusted(hasPicture ? picture + 6 : 2, 2, -2, -2);
}

void collectCells(const QAbstractItemView& view, const QModelIndex& parent, QList<PaintedText>& texts)
{
    const QAbstractItemModel& model = *view.model();
    for (int row = 0; row < model.rowCount(parent); ++row) {
        for (int column = 0; column < model.columnCount(parent); ++column) {
            const QModelIndex index = model.index(row, column, parent);
            const QRect place = textPlace(view, index).intersected(view.viewport()->rect());
            const bool isEnabled = index.flags().testFlag(Qt::ItemIsEnabled);
            const QString text = index.data().toString().trimmed();
            if (isEnabled && place.width() > 8 && place.height() > 8 && !text.isEmpty())
                texts.append({view.viewport(), place, text});
        }
        collectCells(view, model.index(row, 0, parent), texts);
    }
}

void collectHeads(const QHeaderView& head, QList<PaintedText>& texts)
{
    for (int section = 0; section < head.count(); ++section) {
        const QString title = head.model()->headerData(section, head.orientation()).toString().trimmed();
        const QRect place(head.sectionViewportPosition(section) + 2, 2, head.sectionSize(section) - 4,
                          head.height() - 4);
        if (!title.isEmpty() && !head.isSectionHidden(section) && place.intersects(head.viewport()->rect()))
            texts.append({head.viewport(), place.intersected(head.viewport()->rect()), title});
    }
}

/// Collects the texts that a widget paints and that are no property of it.
QList<PaintedText> innerTexts(const QWidget& widget)
{
    QList<PaintedText> texts;
    if (const auto* head = qobject_cast<const QHeaderView*>(&widget)) {
        if (head->orientation() == Qt::Horizontal)
            collectHeads(*head, texts);
    } else if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget); view && view->model()) {
        collectCells(*view, view->rootIndex(), texts);
        const QString hint = view->accessibleDescription();
        if (texts.isEmpty() && !hint.isEmpty())
            texts.append({view->viewport(), view->viewport()->rect(), hint});
    } else if (const auto* box = qobject_cast<const QComboBox*>(&widget); box && !box->isEditable()) {
        const QRect field = box->rect().adjusted(4, 4, -box->height(), -4); // without the arrow
        if (!box->currentText().isEmpty())
            texts.append({box, field, box->currentText()});
    } else if (const auto* page = qobject_cast<const QTextEdit*>(&widget)) {
        texts.append({page->viewport(), page->viewport()->rect(), u"page"_s});
    }
    return texts;
}

/// Selected text in fields and pages, the filled part of bars, and links, by their colours.
QStringList paleColours(const QWidget& widget)
{
    using Pair = std::pair<QPalette::ColorRole, QPalette::ColorRole>;
    QList<Pair> pairs;
    const auto* bar = qobject_cast<const QProgressBar*>(&widget);
    if (widget.inherits("QLineEdit") || widget.inherits("QTextEdit") || (bar && bar->isTextVisible()))
        pairs.append({QPalette::HighlightedText, QPalette::Highlight});
    if (widget.inherits("QTextBrowser"))
        pairs.append({QPalette::Link, QPalette::Base});
    QStringList faults;
    for (const auto& [text, ground] : std::as_const(pairs)) {
        const double measured =
            contrast(widget.palette().color(text).rgb(), widget.palette().color(ground).rgb());
        if (measured < leastContrast)
            faults.append(u"%1: colours %2 on %3 of %4"_s.arg(QString::number(measured, 'f', 1))
                              .arg(text)
                              .arg(ground)
                              .arg(described(widget)));
    }
    return faults;
}

} // namespace

QStringList paleTexts(QWidget& form)
{
    QStringList faults;
    for (const QLineEdit* field : form.findChildren<QLineEdit*>()) {
        if (field->isEnabled() && !field->placeholderText().isEmpty() &&
            contrastOfHint(*field) < leastContrast)
            faults.append(u"hint: "_s + described(*field));
    }
    QList<PaintedText> texts;
    for (const QWidget* widget : shownWidgets(form)) {
        if (!widget->isEnabled())
            continue;
        const bool isField = qobject_cast<const QLineEdit*>(widget) &&
                             !widget->property("text").toString().trimmed().isEmpty();
        if (isField || !textOf(*widget).trimmed().isEmpty())
            texts.append({widget, widget->rect(), textOf(*widget)});
        texts += innerTexts(*widget);
        faults += paleColours(*widget);
    }
    const QImage picture = form.grab().toImage().convertToFormat(QImage::Format_RGB32);
    for (const auto& [widget, inner, text] : std::as_const(texts)) {
        if (!widget->visibleRegion().boundingRect().contains(inner))
            continue; // the form can scroll to it
        const QRect place(widget->mapTo(&form, inner.topLeft()) * picture.devicePixelRatio(),
                          inner.size() * picture.devicePixelRatio());
        const double measured = strongestContrast(picture.copy(place.intersected(picture.rect())));
        if (measured < leastContrast)
            faults.append(
                u"%1: %2 \"%3\""_s.arg(QString::number(measured, 'f', 1), described(*widget), text));
    }
    return faults;
}

} // namespace kalmo::tests
