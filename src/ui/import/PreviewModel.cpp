#include "ui/import/PreviewModel.h"

#include "ui/controls/ReadableColour.h"

#include <QCollator>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using transfer::Colour;
using transfer::PreviewRow;
using transfer::Shape;

PreviewModel::PreviewModel(Shape shape, QObject* parent) : QAbstractTableModel(parent)
{
    m_preview.shape = shape;
}

void PreviewModel::setPreview(transfer::Preview preview, transfer::ExistingEntries existing,
                              bool comparesNumbers)
{
    beginResetModel();
    m_preview = std::move(preview);
    m_existing = std::move(existing);
    m_comparesNumbers = comparesNumbers;
    endResetModel();
    Q_EMIT checksChanged();
}

void PreviewModel::noteTaken(int count, transfer::ExistingEntries existing, bool comparesNumbers)
{
    m_existing = std::move(existing);
    m_comparesNumbers = comparesNumbers;
    change([&](transfer::Preview& preview) {
        for (PreviewRow& row : preview.rows) {
            if (row.checked && count-- > 0)
                row.checked = false;
            transfer::judgeRow(row, preview.shape, m_existing, m_comparesNumbers);
        }
    });
}

void PreviewModel::change(const std::function<void(transfer::Preview&)>& change)
{
    change(m_preview);
    if (!m_preview.rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    Q_EMIT checksChanged();
}

int PreviewModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_preview.rows.size());
}

int PreviewModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(transfer::fieldsOf(m_preview.shape).size());
}

QVariant PreviewModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const PreviewRow& row = m_preview.rows[static_cast<size_t>(index.row())];
    const auto field = static_cast<size_t>(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return row.cells[field];
    case Qt::CheckStateRole:
        return field == 0 ? QVariant(row.checked ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::ForegroundRole:
        return colourOf(row, field);
    case Qt::ToolTipRole:
        if (row.exists)
            return u"Dieser Eintrag ist im Telefonbuch schon vorhanden."_s;
        return row.colours[field] == Colour::Red ? u"Zu lang oder unvollständig."_s : QVariant();
    default:
        return {};
    }
}

/// Green and red as described, made readable on the ground of the list.
QVariant PreviewModel::colourOf(const PreviewRow& row, size_t field) const
{
    const Colour colour = row.colours[field];
    if (colour == Colour::Default)
        return {};
    const QColor wanted = colour == Colour::Red ? QColor(255, 0, 0) : QColor(0, 128, 0);
    return readableOn(wanted, QGuiApplication::palette().color(QPalette::Base));
}

QVariant PreviewModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return transfer::fieldsOf(m_preview.shape)[static_cast<size_t>(section)].title.toString();
}

Qt::ItemFlags PreviewModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags usual = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return index.column() == 0 ? usual | Qt::ItemIsUserCheckable | Qt::ItemIsEditable : usual;
}

bool PreviewModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || index.column() != 0)
        return false;
    if (role == Qt::CheckStateRole)
        return setChecked(index.row(), value.toInt() == Qt::Checked);
    if (role != Qt::EditRole)
        return false;
    PreviewRow& row = m_preview.rows[static_cast<size_t>(index.row())];
    row.cells[0] = transfer::FilterName(value.toString());
    transfer::judgeRow(row, m_preview.shape, m_existing, m_comparesNumbers);
    Q_EMIT dataChanged(index, index.siblingAtColumn(columnCount() - 1));
    Q_EMIT checksChanged(); // the number of rows that exist may have changed
    return true;
}

bool PreviewModel::setChecked(int row, bool checked)
{
    PreviewRow& changed = m_preview.rows[static_cast<size_t>(row)];
    const bool isRefused = checked && m_preview.shape == Shape::Vcard && !changed.isComplete(Shape::Vcard);
    changed.checked = checked && !isRefused;
    Q_EMIT dataChanged(index(row, 0), index(row, 0));
    Q_EMIT checksChanged();
    if (isRefused)
        Q_EMIT checkRefused();
    return true;
}

void PreviewModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0)
        return;
    QCollator collator(QLocale(QLocale::German));
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    const auto field = static_cast<size_t>(column);
    beginResetModel();
    std::vector<std::pair<QCollatorSortKey, size_t>> keys;
    keys.reserve(m_preview.rows.size());
    for (size_t row = 0; row < m_preview.rows.size(); ++row)
        keys.emplace_back(collator.sortKey(m_preview.rows[row].cells[field]), row);
    std::stable_sort(keys.begin(), keys.end(), [order](const auto& left, const auto& right) {
        return order == Qt::AscendingOrder ? left.first < right.first : right.first < left.first;
    });
    std::vector<PreviewRow> sorted;
    sorted.reserve(keys.size());
    for (const auto& key : keys)
        sorted.push_back(std::move(m_preview.rows[key.second]));
    m_preview.rows = std::move(sorted);
    endResetModel();
}

} // namespace kalmo::ui
