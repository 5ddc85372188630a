#include "ui/window/ConnectionLight.h"

#include "operations/PhoneIdentity.h"
#include "ui/icons/Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QTimer>
#include <QToolButton>

#include <utility>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds refreshEvery(1000);
constexpr int lightSize = 16;

struct StateWords
{
    QStringView picture;
    QStringView text;
    QStringView advice;
};

/// In the order of the states.
constexpr StateWords stateWords[] = {
    {u"handy", u"verbunden", u"Das Telefon antwortet."},
    {u"warning", u"antwortet nicht",
     u"Das Telefon hat die letzte Frage nicht beantwortet. Ist es eingeschaltet und in keinem Menü?"},
    {u"critical", u"getrennt",
     u"Kalmo ist nicht mehr mit dem Telefon verbunden. Prüfen Sie das Kabel und drücken Sie \"Erneut "
     u"verbinden\"."},
};

} // namespace

ConnectionLight::ConnectionLight(const link::Line& line, QWidget* parent)
    : QWidget(parent), m_line(line), m_picture(new QLabel(this)), m_text(new QLabel(this)),
      m_search(new QToolButton(this))
{
    setObjectName(u"connection"_s);
    m_text->setObjectName(u"lblConnection"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_search->setObjectName(u"cmdReconnect"_s);
    m_search->setText(u"&Erneut verbinden"_s);
    m_search->setToolTip(
        u"Das Telefon an diesem Anschluss neu suchen. Noch nicht geschriebene Listen bleiben erhalten."_s);
    m_search->setFocusPolicy(Qt::StrongFocus);
    connect(m_search, &QToolButton::clicked, this, &ConnectionLight::searchWanted);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (QWidget* part :
         {static_cast<QWidget*>(m_picture), static_cast<QWidget*>(m_text), static_cast<QWidget*>(m_search)})
        row->addWidget(part);
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &ConnectionLight::watch);
    timer->start(refreshEvery);
    refresh();
}

void ConnectionLight::showEmulated(bool isEmulated)
{
    m_isEmulated = isEmulated;
    refresh();
}

void ConnectionLight::offerSearch(bool offered)
{
    m_search->setEnabled(offered);
}

ConnectionLight::State ConnectionLight::state() const
{
    if (!m_line.port().IsOpen())
        return State::Gone;
    return m_line.isSilent() ? State::Silent : State::Connected;
}

/// For ports that go away while nothing runs, and for advice after an operation that the phone left
/// unanswered.
void ConnectionLight::watch()
{
    refresh();
    if (!m_search->isEnabled() || isHidden()) // in a dialog nobody can search
        return;
    const State now = state();
    const bool isNew = std::exchange(m_told, now) != now;
    if (now != State::Connected)
        Q_EMIT lost(toolTip()); // again and again: another sentence may have replaced the advice
    else if (isNew)
        Q_EMIT regained();
}

/// A search may have found the phone again while the window was hidden.
void ConnectionLight::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    watch();
}

void ConnectionLight::noteEnd()
{
    m_told.reset();
    refresh();
}

void ConnectionLight::refresh()
{
    const app::Sy& sy = m_line.context().sy;
    const StateWords& now = stateWords[static_cast<size_t>(state())];
    const QString model =
        operations::knownIdentity(sy).model + (m_isEmulated ? u" (nachgebildet)"_s : QString());
    const QString text = u"%1 · COM%2 · %3"_s.arg(model, QString::number(sy.ComNo), now.text);
    if (text == m_text->text())
        return;
    m_picture->setPixmap(icon(now.picture.toString()).pixmap(lightSize));
    m_text->setText(text);
    setToolTip(now.advice.toString());
    setAccessibleName(text);
    setAccessibleDescription(now.advice.toString());
    m_search->setVisible(state() != State::Connected);
}

} // namespace kalmo::ui
