#pragma once

#include "app/Context.h"

#include <QWidget>

#include <functional>

class QAbstractButton;
class QDialog;

namespace kalmo::ui {

/// Asks before Escape or the window's close button discards the user's changes in a dialog. The values at the
/// time when the dialog is shown last count as unchanged. Belongs to the dialog.
class ChangeGuard : public QObject
{
    Q_OBJECT

public:
    /// While `button` is disabled there is no question: the dialog is busy, or these keys discard nothing.
    ChangeGuard(QDialog& dialog, const QAbstractButton& button, app::Context& context);

    /// Watches a value that no field shows.
    void watch(std::function<QString()> value) { m_more = std::move(value); }
    /// Watches the fields in this part of the dialog alone.
    void watchOnly(const QWidget& part) { m_part = &part; }
    /// Asks in other words than those of a dialog that saves an entry.
    void setQuestion(const QString& question) { m_question = question; }
    /// The present values count as unchanged from now on.
    void keep() { m_before = values(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool mayGo();
    QStringList values() const;

    QDialog& m_dialog;
    const QAbstractButton& m_button;
    const QWidget* m_part;
    app::Context& m_context;
    std::function<QString()> m_more;
    QString m_question;
    QStringList m_before;
};

} // namespace kalmo::ui
