#pragma once

#include "operations/ClassicReading.h"
#include "phonedata/CommandResult.h"
#include "ui/lists/ListState.h"
#include "ui/window/CommandTarget.h"

#include <QObject>

namespace kalmo::ui {

/// The commands on a list of a classic handset, the phonebook or the provider list. Edits stay in the list
/// until it is written.
class ClassicList : public QObject, public CommandTarget
{
    Q_OBJECT

public:
    ClassicList(const WindowParts& parts, phonedata::Store store, QObject* parent = nullptr);
    ~ClassicList() override;

    toolkit::ListRows& rows() const { return *m_rows; }
    phonedata::Store store() const { return m_store; }
    bool isDirty() const;
    /// The entries on screen; while a reading replaces them those before it.
    std::vector<phonedata::ClassicEntry> entries() const;

    /// Returns true if the list was read from the phone in this run: `TbRead`, `NeRead`.
    bool isRead() const { return m_isRead; }
    /// Returns true while the phone's list is being replaced. A stop would lose the rows that are not written
    /// yet.
    bool isWriting() const { return m_isWriting; }

    QString obstacleTo(Command command) const override;
    void run(Command command) override;

    /// Another phone may be connected. A list that waits to be written stays.
    void forget();

    /// A line of the menu mnuOpen: 0 any folder, 1 the folder of automatic backups.
    void openBackup(int choice);
    /// Opens a file in place of the list, after the question about changes that would be lost.
    void openFile(const QString& path);

    /// An import has added entries.
    void noteImport(int entries);

Q_SIGNALS:
    void stateChanged(kalmo::ui::ListState state);
    void becameDirty();
    void becameClean(); ///< after a read or a write
    void ended(const QString& sentence);
    void menuWanted(kalmo::ui::Command command);

private:
    void read();
    void endReading(phonedata::CommandResult result, std::vector<toolkit::ListRow> before);
    void keepAfterFailure(std::vector<toolkit::ListRow> before);
    void write();
    void nameTheNameless();
    void edit(bool existing);
    void deleteSelected();
    bool mayReplaceList();
    void load(const QString& path);
    std::optional<std::vector<phonedata::ClassicEntry>> entriesIn(const QString& path);
    void save();
    void exportList();
    void setDirty();
    bool mayPassOverChanges(const QString& text);
    operations::ListJob job() const;
    template <typename Form>
    void showForm(int row);

    WindowParts m_parts;
    phonedata::Store m_store;
    std::unique_ptr<toolkit::ListRows> m_rows;
    phonedata::StoreContent m_origin; ///< content of the phone that the rows were made from
    std::optional<std::vector<toolkit::ListRow>> m_before; ///< while a reading replaces the rows
    bool m_isRead = false;
    bool m_isWriting = false;
};

} // namespace kalmo::ui
