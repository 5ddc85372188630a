#pragma once

#include "app/Context.h"

#include <QPointer>
#include <QWidget>

class QAbstractButton;
class QDialog;

namespace kalmo::ui {

/// Asks before Escape or the window's close button discards the user's changes in a dialog. The values at the
/// time when the dialog is shown count as unchanged. Belongs to the dialog.
class ChangeGuard : public QObject
{
    Q_OBJECT

public:
    /// While `save` is disabled the dialog is busy, and there is no question.
    ChangeGuard(QDialog& dialog, const QAbstractButton& save, app::Context& context);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool mayGo();

    QDialog& m_dialog;
    const QAbstractButton& m_save;
    app::Context& m_context;
    QStringList m_before;
};

} // namespace kalmo::ui
