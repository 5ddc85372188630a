#include "ui/forms/frmStart.h"

#include "ui/forms/SplashPicture.h"
#include "ui/icons/Icons.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

// In heights of a line of text.
constexpr int splashWidth = 33;
constexpr int linesBelowHead = 11;

QLabel* makeLabel(const QString& name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

frmStart::frmStart(QWidget* parent) : QWidget(parent, Qt::Window | Qt::MSWindowsFixedSizeDialogHint)
{
    setObjectName(u"frmStart"_s);
    setWindowTitle(u"Kalmo"_s);
    setWindowIcon(programIcon());
    auto* picPreload = new SplashPicture(this);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    outer->addWidget(picPreload);

    lblStatusPre = makeLabel(u"lblStatusPre"_s, picPreload);
    lblStatusPre->setText(u"Kalmo wird gestartet ..."_s);
    lblStatus = makeLabel(u"lblStatus"_s, picPreload);
    progbarStart = new QProgressBar(picPreload);
    progbarStart->setObjectName(u"progbarStart"_s);
    progbarStart->setAccessibleName(u"Fortschritt der Suche"_s);
    progbarStart->setTextVisible(false);
    progbarStart->setRange(0, 1);
    QPalette groove = progbarStart->palette();
    groove.setColor(QPalette::Base, QColor(0xd7, 0xec, 0xfa));
    progbarStart->setPalette(groove);
    lblEsc = new QPushButton(u"Suche &abbrechen"_s, picPreload);
    lblEsc->setObjectName(u"lblEsc"_s);
    lblEsc->setToolTip(u"Die Suche nach dem Telefon beenden (Esc)"_s);
    lblEsc->setEnabled(false);
    connect(lblEsc, &QPushButton::clicked, this, &frmStart::abortSearch);
    auto* escape = new QShortcut(Qt::Key_Escape, this);
    connect(escape, &QShortcut::activated, lblEsc, &QPushButton::click);

    const int line = fontMetrics().height();
    progbarStart->setFixedHeight(line / 2);
    auto* rows = new QVBoxLayout(picPreload);
    rows->setContentsMargins(line * 3 / 2, picPreload->headHeight() + line, line * 3 / 2, line * 3 / 2);
    rows->setSpacing(line / 2);
    rows->addStretch(1);
    rows->addWidget(lblStatus);
    rows->addWidget(lblStatusPre);
    rows->addSpacing(line / 2);
    rows->addWidget(progbarStart);
    rows->addSpacing(line / 2);
    rows->addWidget(lblEsc, 0, Qt::AlignRight);
    setFixedSize(line * splashWidth, picPreload->headHeight() + line * linesBelowHead);
}

void frmStart::present()
{
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size(), area));
    show();
}

void frmStart::layOutSplash(const QString& caption)
{
    setWindowTitle(caption);
    present();
}

void frmStart::showPort(const QString& text)
{
    lblStatusPre->setText(text);
}

void frmStart::setStatus(const QString& text)
{
    lblStatus->setText(text);
    lblStatus->setAccessibleName(text);
}

void frmStart::setProgress(int value, int maximum)
{
    progbarStart->setRange(0, maximum);
    progbarStart->setValue(value);
}

void frmStart::clearAborted()
{
    m_aborted = false;
    lblEsc->setEnabled(true);
}

void frmStart::abortSearch()
{
    m_aborted = true;
    lblEsc->setEnabled(false);
    setStatus(u"Die Suche wird beendet ..."_s);
}

void frmStart::closeEvent(QCloseEvent* event)
{
    event->ignore(); // the listener ends the program, or asks first
    Q_EMIT closedByUser();
}

} // namespace kalmo::ui
