#pragma once

#include <QFrame>
#include <QList>

class QStackedLayout;

namespace kalmo::ui {

/// The small frames at the foot of the window. They share one place: of those that are shown, the one that
/// was shown last is in front.
class Reminders : public QFrame
{
    Q_OBJECT

public:
    enum Kind {
        Save,     ///< fraSaveReminder: changes are to be written
        CloseFfs, ///< fraFFScloseReminder: the data channel is open
        NoMenu,   ///< fraHinweisTelNichtInMenu: the handset has to be out of its menus
    };

    explicit Reminders(QWidget* parent = nullptr);

    void showKind(Kind kind);
    void hideKind(Kind kind);
    bool isShown(Kind kind) const { return m_shown.contains(kind); }
    void setShown(Kind kind, bool shown) { shown ? showKind(kind) : hideKind(kind); }

private:
    void addFrame(const QString& name, const QString& picture, const QString& caption, const QString& text);
    void showFront();

    QStackedLayout* m_place;
    QList<Kind> m_shown; // the last one is in front
};

} // namespace kalmo::ui
