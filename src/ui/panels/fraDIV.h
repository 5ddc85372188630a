#pragma once

#include "ui/panels/PanelFrame.h"
#include "ui/window/CommandTarget.h"

#include <QDateTime>

class QFormLayout;
class QGroupBox;
class QLineEdit;
class QPushButton;

namespace kalmo::ui {

/// Shows the phone's data: maker, model, version, serial number, signal, battery, clock.
class fraDIV : public PanelFrame, public CommandTarget
{
    Q_OBJECT

public:
    explicit fraDIV(const WindowParts& parts, QWidget* parent = nullptr);

    void run(Command command) override;

    /// Asks the phone for everything and shows it. If a query fails the refresh ends, with the step still in
    /// the status bar and the user informed.
    void DisplayRefresh();

    /// Shows no values any more: another phone may be connected.
    void forget();

private:
    struct Gauge
    {
        QLabel* caption;
        QLabel* picture;
        QLabel* value;
        QWidget* line; ///< picture and value
    };

    QWidget* makeDevicePart();
    QWidget* makeClockPart();
    Gauge makeGauge(const QString& captionName, const QString& caption, const QString& pictureName,
                    const QString& valueName);
    void setPicture(const Gauge& gauge, const QString& name);
    void showValue(const Gauge& gauge, bool isKnown, const QString& value);
    bool askIdentity();
    void showSignal();
    void showBattery();
    void askClock();
    void showClocks(bool isKnown, const QDateTime& phone);
    void showClockUnsupported();
    void cmdUhrSync_Click();

    WindowParts m_parts;
    QLabel* m_lblHersteller;
    QLabel* m_lblTyp;
    QLabel* m_lblVersion;
    QLabel* m_lblSerNr;
    Gauge m_signal;
    Gauge m_battery;
    QFormLayout* m_device;
    QGroupBox* m_fraUhr;
    QList<QLabel*> m_clockHints;
    QLineEdit* m_txtTimePC;
    QLineEdit* m_txtTimePhone;
    QPushButton* m_cmdUhrSync;
};

} // namespace kalmo::ui
