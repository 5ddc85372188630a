#pragma once

#include "app/Context.h"
#include "ui/controls/MemoryGauge.h"

#include <QTimer>
#include <QWidget>

class QProgressBar;
class QToolButton;

namespace kalmo::ui {

/// The gauge of the phone's free memory: a bar with a text. If memory is low it is red, its picture blinks,
/// and it warns once.
class ucFfsMem : public QWidget
{
    Q_OBJECT

public:
    explicit ucFfsMem(app::Context& context, QWidget* parent = nullptr);

    /// Bytes. Setting one shows it. A box warns if memory is low for the first time.
    void setMeTotal(qint64 bytes);
    void setMeFree(qint64 bytes);
    /// Shows no figures: another phone may be connected.
    void forget();
    /// Part of the described interface.
    qint64 MeTotal() const { return m_gauge.total(); }
    qint64 MeFree() const { return m_gauge.free(); }

private:
    void draw(MemoryGauge::Update update);
    void showPicture();
    void tmrWarning_Timer();
    void warn();

    app::Context& m_context;
    MemoryGauge m_gauge;
    QProgressBar* m_prgMe;
    QToolButton* m_imgPrgPre;
    QTimer m_tmrWarning;
};

} // namespace kalmo::ui
