#pragma once

#include "transfer/import/Preview.h"

#include <QAbstractTableModel>

namespace kalmo::ui {

/// Shows the preview of an import to a view: texts, colours and check marks. The preview itself is the
/// working document; names can be edited in place.
class PreviewModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit PreviewModel(transfer::Shape shape, QObject* parent = nullptr);

    const transfer::Preview& preview() const { return m_preview; }
    /// The entries are those that a row is compared with when its name is edited.
    void setPreview(transfer::Preview preview, transfer::ExistingEntries existing = {},
                    bool comparesNumbers = false);
    /// Unchecks the first so many of the checked rows, which were imported, and compares all rows with the
    /// entries that there are now.
    void noteTaken(int count, transfer::ExistingEntries existing, bool comparesNumbers);
    /// Changes the preview in any way but its number of rows.
    void change(const std::function<void(transfer::Preview&)>& change);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    /// Orders the rows, as German readers expect it; rows that are equal keep their order.
    void sort(int column, Qt::SortOrder order) override;

Q_SIGNALS:
    void checksChanged();
    /// The user checked a contact without a number; the model has unchecked it.
    void checkRefused();

private:
    QVariant colourOf(const transfer::PreviewRow& row, size_t field) const;
    bool setChecked(int row, bool checked);

    transfer::Preview m_preview;
    transfer::ExistingEntries m_existing;
    bool m_comparesNumbers = false;
};

} // namespace kalmo::ui
