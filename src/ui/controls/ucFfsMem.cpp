#include "ui/controls/ucFfsMem.h"

#include "ui/controls/Named.h"
#include "ui/icons/Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QToolButton>

#include <chrono>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QColor lowColour(192, 0, 0);
const QColor goodColour(0, 128, 0);

} // namespace

ucFfsMem::ucFfsMem(app::Context& context, QWidget* parent)
    : QWidget(parent), m_context(context), m_prgMe(named(new QProgressBar, u"prgMe"_s, u"Speicher"_s)),
      m_imgPrgPre(named(new QToolButton, u"imgPrgPre"_s, u"Speicherwarnung"_s))
{
    auto* lblPrg = named(new QLabel(u"Speicher"_s), u"lblPrg"_s);
    m_prgMe->setRange(0, 1);
    m_prgMe->setValue(0);
    m_prgMe->setFormat({});
    m_prgMe->setAlignment(Qt::AlignCenter);
    m_imgPrgPre->setAutoRaise(true);
    m_tmrWarning.setInterval(2s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_imgPrgPre);
    layout->addWidget(lblPrg);
    layout->addWidget(m_prgMe, 1);
    connect(&m_tmrWarning, &QTimer::timeout, this, &ucFfsMem::tmrWarning_Timer);
    connect(m_imgPrgPre, &QToolButton::clicked, this, [this] {
        if (m_gauge.lowMemory())
            warn();
    });
    showPicture();
}

void ucFfsMem::setMeTotal(qint64 bytes)
{
    draw(m_gauge.setTotal(bytes));
}

void ucFfsMem::setMeFree(qint64 bytes)
{
    draw(m_gauge.setFree(bytes));
}

void ucFfsMem::forget()
{
    m_gauge.forget();
    m_tmrWarning.stop();
    m_prgMe->setRange(0, 1);
    m_prgMe->setValue(0);
    m_prgMe->setFormat({});
    m_prgMe->setAccessibleDescription({});
    showPicture();
}

void ucFfsMem::draw(MemoryGauge::Update update)
{
    if (update == MemoryGauge::Update::None)
        return;
    m_prgMe->setMaximum(m_gauge.barMaximum());
    m_prgMe->setValue(m_gauge.barValue());
    m_prgMe->setFormat(m_gauge.barText());
    m_prgMe->setAccessibleDescription(m_gauge.barText());
    QPalette palette = m_prgMe->palette();
    palette.setColor(QPalette::Highlight, m_gauge.lowMemory() ? lowColour : goodColour);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    m_prgMe->setPalette(palette);
    showPicture();
    if (m_gauge.lowMemory())
        m_tmrWarning.start();
    if (update == MemoryGauge::Update::FirstWarning)
        warn();
}

void ucFfsMem::showPicture()
{
    const bool clickable = m_gauge.lowMemory();
    m_imgPrgPre->setIcon(icon(m_gauge.picture()));
    m_imgPrgPre->setCursor(clickable ? Qt::PointingHandCursor : Qt::ArrowCursor);
    m_imgPrgPre->setFocusPolicy(clickable ? Qt::TabFocus : Qt::NoFocus);
    m_imgPrgPre->setAccessibleName(clickable ? u"Speicherwarnung"_s : u"Speicher reicht aus"_s);
    m_imgPrgPre->setToolTip(clickable ? u"Zu wenig freier Speicher: mehr dazu"_s : QString());
}

void ucFfsMem::tmrWarning_Timer()
{
    if (!m_gauge.blink())
        m_tmrWarning.stop();
    showPicture();
}

void ucFfsMem::warn()
{
    m_context.dialogs.Show({.text = MemoryGauge::warningText(), .icon = toolkit::Icon::Exclamation});
}

} // namespace kalmo::ui
