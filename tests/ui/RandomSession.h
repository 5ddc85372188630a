#pragma once

#include "operations/Records.h"
#include "ui/adaptors/LossBoxes.h"
#include "ui/RandomUser.h"
#include "ui/StartFlow.h"
#include "ui/TestProgram.h"

#include <QPointer>

#include <memory>

namespace kalmo::ui {
class frmPB;
}

namespace kalmo::tests {

struct RandomBoxes
{
    explicit RandomBoxes(quint32 seed) : random(seed) {}

    QRandomGenerator random;
    RandomDialogs dialogs{random};
    ui::LossBoxes losses{dialogs};
};

/// One phone at a cable, with everything that happens to it in a session: the program is started, used by a
/// user of chance, closed and started again, while the phone falls silent and the line breaks now and then.
/// Between two acts it compares the phone with the records of changes and with the lists on screen.
class RandomSession : RandomBoxes, public TestProgram
{
public:
    RandomSession(const QString& model, quint32 seed);

    /// Lasts longer if nothing has been changed yet, and ends at the first fault.
    void run(int seconds);
    /// Puts back what the records say, the latest first, and finds out what the phone lacks then.
    void undoAll();

    /// Everything that must not happen, each as one line.
    const QStringList& faults() const { return m_faults; }
    /// Records of changes that the phone has confirmed.
    int changes() const { return m_changes; }
    QString summary() const;
    const RandomUser& user() const { return m_user; }

private:
    void start();
    void turn();
    void leave();
    void checkEnd();
    void findWindow();
    void beforeAct();
    void disturbPhone();
    void checkViolations();
    void checkPhone();
    void checkRecords();
    void checkLists();
    QStringList held();
    void compare(const char* list, const QList<int>& columns, const QStringList& expected);
    void note(const QString& fault);
    std::vector<operations::Record> newRecords() const;

    QString m_model;
    RandomUser m_user;
    app::Sy m_fresh;    // as at the start of a program
    QString m_settings; // of the port, for this phone
    OneDevice m_cable;
    link::PortTable m_cables{test.settings, m_cable};
    ui::Program m_services{context, line, desktop, m_cables, memory};
    std::unique_ptr<ui::StartFlow> m_flow;
    QPointer<ui::frmPB> m_window;
    bool m_hasClosed = false;
    bool m_isLeaving = false;
    bool m_isFaulty = false;     // the phone, now
    bool m_isDisturbed = false;  // the session with it, since the program was started
    bool m_beganInData = false;  // the phone, with that program
    bool m_isUncompared = false; // a change of the contacts, and not read since
    qsizetype m_violations = 0;  // that were looked at
    QStringList m_before;        // the phone before the session
    QStringList m_held;          // the phone at the last look
    double m_lookedAt = -1;
    qint64 m_lastRecord = 0;
    int m_changes = 0;
    int m_starts = 0;
    int m_disturbances = 0;
    QStringList m_faults;
};

} // namespace kalmo::tests
