#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

class QWidget;

namespace kalmo::ui {

/// Watches the keys typed in a window, wherever its focus is. One word shows frmFun in the window's place.
/// Another shows moving thanks in the window's caption until the next key empties it.
class SecretWords : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the window and watches from now on, except while the window is busy.
    SecretWords(QWidget* window, std::function<bool()> isBusy);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void typed(const QString& text);
    void showFun();
    void startCredits();
    void moveCaption();

    QWidget* m_window;
    std::function<bool()> m_isBusy;
    QString m_typed;
    QTimer tmrCredits;
};

} // namespace kalmo::ui
