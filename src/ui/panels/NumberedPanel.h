#pragma once

#include "toolkit/Progress.h"

namespace kalmo::ui {

/// A status panel that says ahead of each text which of several files it is: "2 von 3: ...". With one file it
/// passes the text on.
class NumberedPanel : public toolkit::StatusPanel
{
public:
    NumberedPanel(toolkit::StatusPanel* panel, qsizetype count) : m_panel(panel), m_count(count) {}

    /// The next file's turn has come.
    void next() { ++m_index; }

    QString Text() const override { return m_text; }
    void SetText(const QString& text) override
    {
        m_text = text;
        const bool isNumbered = m_count > 1 && m_index > 0 && !text.isEmpty();
        toolkit::setStatus(
            m_panel, isNumbered ? QStringLiteral("%1 von %2: %3").arg(m_index).arg(m_count).arg(text) : text);
    }

private:
    toolkit::StatusPanel* m_panel;
    qsizetype m_count;
    qsizetype m_index = 0;
    QString m_text;
};

} // namespace kalmo::ui
