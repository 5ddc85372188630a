#pragma once

#include "app/Context.h"

#include <QWidget>

class QCheckBox;
class QComboBox;

namespace kalmo::ui {

/// Takes the length to which a sound is cut: a box that switches the cut on, and the seconds.
class TrimChoice : public QWidget
{
    Q_OBJECT

public:
    explicit TrimChoice(app::Context& context, QWidget* parent = nullptr);

    bool isUsed() const;
    /// Seconds, 0 for the whole sound. A text that is no number counts as `media::defaultTrim`.
    int seconds() const;
    /// Returns true, after a message, if the cut is used and its text is no whole number above 0.
    bool rejects();
    /// Does the same, but takes a text that is no number: `seconds` has a value for it.
    bool rejectsNumber();

Q_SIGNALS:
    void changed();
    /// Comes before the message.
    void rejected();

private:
    app::Context& m_context;
    QCheckBox* m_chkTrimWav;
    QComboBox* m_cmbTrimWav;
};

} // namespace kalmo::ui
