#include "ui/adaptors/ProgressWidgets.h"
#include "ui/adaptors/QtDialogs.h"
#include "ui/forms/frmFun.h"
#include "ui/help/HelpWindow.h"
#include "ui/icons/Icons.h"
#include "ui/panels/fraAd.h"
#include "ui/TestProgram.h"
#include "ui/window/SecretWords.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;

/// What stands around the program's own work: help, sponsors, icons, boxes.
class tst_Help : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyLinkLeadsSomewhere();
    void searchLeavesWhatHasAllWords();
    void answersBoxes_data();
    void answersBoxes();
    void blocksNested();
    void turnsTheSponsors();
    void hearsSecretWords();
    void iconsFollowThePalette();
};

void tst_Help::everyLinkLeadsSomewhere()
{
    const QList<ui::HelpPage> pages = ui::readHelpPages();
    QStringList targets;
    QStringList links;
    for (const ui::HelpPage& page : pages) {
        QVERIFY2(!page.title.isEmpty() && page.words.size() > 200, qPrintable(page.file));
        targets.append(page.file);
        for (const ui::HelpSection& section : page.sections)
            targets.append(page.file + u'#' + section.anchor);
        QFile file(ui::helpRoot() + page.file);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString html = QString::fromUtf8(file.readAll());
        static const QRegularExpression link(u"href=\"([^\"]*)\""_s);
        for (auto found = link.globalMatch(html); found.hasNext();)
            links.append(found.next().captured(1));
        // Headings that the index does not see.
        QCOMPARE(html.count(u"<h2>"_s), page.sections.size());
    }
    QVERIFY(links.size() > 20);
    for (const QString& link : std::as_const(links))
        QVERIFY2(targets.contains(link), qPrintable(link));
}

void tst_Help::searchLeavesWhatHasAllWords()
{
    ui::HelpWindow window;
    window.showTopic(1001);
    const auto& index = child<QTreeWidget>(window, "tvwIndex");
    QCOMPARE(index.currentItem()->text(0), u"Bluetooth Hinweis"_s);
    QVERIFY(child<QTextBrowser>(window, "txtSeite").toPlainText().contains(u"SPP"_s));
    const auto left = [&](const QString& words) {
        child<QLineEdit>(window, "txtSuche").setText(words);
        QStringList titles;
        for (int row = 0; row < index.topLevelItemCount(); ++row) {
            if (!index.topLevelItem(row)->isHidden())
                titles.append(index.topLevelItem(row)->text(0));
        }
        return titles.join(u'|');
    };
    QCOMPARE(left(u"prefdetectbaud"_s), u"Das Telefon wird nicht gefunden"_s);
    QCOMPARE(left(u"bielefeld  feld"_s), u"Vorwahlen"_s);
    QCOMPARE(left(u"bielefeld bluetooth"_s), QString());
    QCOMPARE(left({}).count(u'|') + 1, ui::readHelpPages().size());
}

void tst_Help::answersBoxes_data()
{
    QTest::addColumn<Buttons>("buttons");
    QTest::addColumn<Answer>("defaultButton");
    QTest::addColumn<Answer>("onReturn");
    QTest::addColumn<Answer>("onEscape");
    QTest::newRow("ok") << Buttons::Ok << Answer::Ok << Answer::Ok << Answer::Ok;
    QTest::newRow("ok, cancel") << Buttons::OkCancel << Answer::Cancel << Answer::Cancel << Answer::Cancel;
    QTest::newRow("yes, no") << Buttons::YesNo << Answer::Ok << Answer::Yes << Answer::No;
    QTest::newRow("no first") << Buttons::YesNo << Answer::No << Answer::No << Answer::No;
    QTest::newRow("three") << Buttons::YesNoCancel << Answer::Ok << Answer::Yes << Answer::Cancel;
    QTest::newRow("retry") << Buttons::RetryCancel << Answer::Ok << Answer::Retry << Answer::Cancel;
}

void tst_Help::answersBoxes()
{
    QFETCH(Buttons, buttons);
    QFETCH(Answer, defaultButton);
    const auto answerTo = [&](Qt::Key key) {
        QTimer::singleShot(0, qApp, [key] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box);
            QCOMPARE(box->text(), u"<b>Datei?"_s);
            QWidget* target = key == Qt::Key_Return ? box->defaultButton() : nullptr;
            QTest::keyClick(target ? target : box, key);
        });
        return ui::QtDialogs().Show(
            {.text = u"<b>Datei?"_s, .buttons = buttons, .defaultButton = defaultButton});
    };
    QTEST(answerTo(Qt::Key_Return), "onReturn");
    QTEST(answerTo(Qt::Key_Escape), "onEscape");
}

void tst_Help::blocksNested()
{
    QWidget window;
    auto* first = new QLineEdit(&window);
    auto* second = new QLineEdit(&window);
    auto* disabled = new QLineEdit(&window);
    disabled->setEnabled(false);
    window.show();
    second->setFocus();
    ui::WindowBusy busy({first, second, disabled});
    busy.SetBusy(true);
    busy.SetBusy(true);
    busy.SetBusy(false);
    QVERIFY(!first->isEnabled() && QGuiApplication::overrideCursor());
    delete first;
    busy.SetBusy(false);
    busy.SetBusy(false); // one too many
    QVERIFY(second->isEnabled() && !disabled->isEnabled() && !QGuiApplication::overrideCursor());
    QCOMPARE(window.focusWidget(), second);
    busy.SetBusy(true);
    QVERIFY(!second->isEnabled());
}

void tst_Help::turnsTheSponsors()
{
    TestContext test;
    RecordedDesktop desktop;
    QStringList seen;
    for (const char* key : {"SPONSOR", "SPONSOR_NORVA", "SPONSOR_TARIN", "SPONSOR", "SPONSOR"}) {
        ui::fraAd panel(test.settings, desktop); // a new one each time: the turn is kept in the settings
        panel.showNode(QString::fromLatin1(key));
        for (auto* picture : panel.findChildren<QAbstractButton*>()) {
            if (picture->isVisibleTo(&panel))
                picture->click();
        }
    }
    QCOMPARE(desktop.opened.join(u' ').remove(u"https://"_s).remove(u".example.org/"_s),
             u"orvane norva norva delma orvane"_s);
}

void tst_Help::hearsSecretWords()
{
    QWidget window;
    window.setWindowTitle(u"Kalmo"_s);
    auto* field = new QLineEdit(&window);
    new ui::SecretWords(&window);
    window.show();
    const auto type = [&](const QString& text) {
        for (const QChar letter : text)
            QTest::keyClick(window.windowHandle(), letter.toLatin1());
    };
    type(u"xxdanke?"_s);
    QVERIFY(window.windowTitle().startsWith(u"Vielen Dank"_s));
    type(u"s"_s);
    QCOMPARE(window.windowTitle(), QString());
    type(u"pass?"_s);
    QVERIFY(!window.isVisible());
    QPointer<ui::frmFun> form;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<ui::frmFun*>(widget))
            form = found;
    }
    QVERIFY(form && form->isVisible());
    QTest::keyClick(form, Qt::Key_Escape);
    QTRY_VERIFY(!form && window.isVisible());
    QCOMPARE(field->isEnabled(), true);
}

void tst_Help::iconsFollowThePalette()
{
    const QPalette before = QApplication::palette();
    const auto darkest = [](const QString& name, QIcon::Mode mode) {
        const QImage image = ui::icon(name).pixmap(QSize(24, 24), 2.0, mode).toImage();
        int lightness = -1;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (const QColor color = image.pixelColor(x, y); color.alpha() > 250)
                    lightness = lightness < 0 ? color.lightness() : std::min(lightness, color.lightness());
            }
        }
        return image.width() == 48 ? lightness : -2;
    };
    // A row of the engine's icon keys, the names of the commands, and those that pictures are made of.
    for (const char* name : {"read", "write", "Vw", "Sounds", "BT", "tel", "cmd_root", "sms", "3gp",
                             "unknown", "ffs-open", "signal0", "battery4", "kalmo"})
        QVERIFY2(darkest(QString::fromLatin1(name), QIcon::Normal) >= 0, name);
    QVERIFY(ui::icon(u"no such icon"_s).isNull());
    QPalette dark = before;
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::HighlightedText, Qt::white);
    QVERIFY(darkest(u"file"_s, QIcon::Normal) < 80);
    QApplication::setPalette(dark);
    QCOMPARE(darkest(u"file"_s, QIcon::Normal), 255);
    QCOMPARE(darkest(u"search"_s, QIcon::Selected), 255); // its accent too
    QApplication::setPalette(before);
}

QTEST_MAIN(tst_Help)
#include "tst_Help.moc"
