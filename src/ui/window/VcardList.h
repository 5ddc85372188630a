#pragma once

#include "phonedata/VcardStore.h"
#include "ui/forms/ContactCommands.h"
#include "ui/lists/ListState.h"
#include "ui/window/CommandTarget.h"

namespace kalmo::ui {

/// The commands on the phonebook of a handset with vCards. Every change goes to the phone at once.
class VcardList : public QObject, public CommandTarget
{
    Q_OBJECT

public:
    VcardList(const WindowParts& parts, std::shared_ptr<obex::clsMmc> client, QObject* parent = nullptr);
    ~VcardList() override;

    toolkit::ListRows& rows() const { return *m_rows; }
    std::shared_ptr<phonedata::VcardStore> store() const { return m_store; }
    /// Returns true after the list was read in this run, even if the reading failed: `TbRead`.
    bool isRead() const { return m_isRead; }
    /// Returns true if the rows are the phone's, as a reading of this run has found them.
    bool isKnown() const { return m_store->isListKnown(); }
    /// "Telefonbuch - 250 Speicherplätze, 12 belegt"
    QString caption() const;

    QString obstacleTo(Command command) const override;
    void run(Command command) override;

    /// Discards the phone's contacts, so that no LUID of one phone is ever used on another.
    void forget();

    /// Reads the phonebook after another part of the program has changed it in the phone. A reading that is
    /// stopped leaves an empty list, since the rows before are out of date.
    void readAgain();

    /// Says how an import has ended.
    void noteImport(const kalmo::ui::ContactImport& imported);

    /// Asks the phone for its area codes and shows their dialog in place of the window.
    void editAreaCodes();

Q_SIGNALS:
    void captionChanged();
    void stateChanged(kalmo::ui::ListState state);
    void ended(const QString& sentence); ///< a command, and the sentence says how
    void menuWanted(kalmo::ui::Command command);

private:
    void refresh();
    void showForm(int row);
    void noteList();
    void add();
    void edit();
    void deleteSelected();
    void save();
    void exportList();
    void showAreaCodeDialog(const QString& answer);

    WindowParts m_parts;
    std::unique_ptr<toolkit::ListRows> m_rows; // before the store, which shows it
    std::shared_ptr<phonedata::VcardStore> m_store;
    bool m_isRead = false;
};

} // namespace kalmo::ui
