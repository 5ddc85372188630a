// The help window, sponsors, icons, boxes and the blocking of a window.

#include "app/SettingsKeys.h"
#include "support/TestProgram.h"
#include "ui/adaptors/ProgressWidgets.h"
#include "ui/adaptors/QtDialogs.h"
#include "ui/help/HelpWindow.h"
#include "ui/panels/fraAd.h"
#include "ui/TestProgram.h"

#include <limits>

/// The parts around the program's own work: help, sponsors, icons, boxes.
class tst_Help : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyLinkLeadsSomewhere()
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

    void searchLeavesWhatHasAllWords()
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

    void answersBoxes()
    {
        struct Row
        {
            Buttons buttons;
            Answer defaultButton;
            Answer onReturn;
            Answer onEscape;
        };
        static constexpr Row rows[] = {
            {Buttons::Ok, Answer::Ok, Answer::Ok, Answer::Ok},
            {Buttons::OkCancel, Answer::Cancel, Answer::Cancel, Answer::Cancel},
            {Buttons::YesNo, Answer::Ok, Answer::Yes, Answer::No},
            {Buttons::YesNo, Answer::No, Answer::No, Answer::No},
            {Buttons::YesNoCancel, Answer::Ok, Answer::Yes, Answer::Cancel},
            {Buttons::RetryCancel, Answer::Ok, Answer::Retry, Answer::Cancel},
        };
        const auto answerTo = [](const Row& row, Qt::Key key) {
            QTimer::singleShot(0, qApp, [key] {
                auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                QCOMPARE(box->text(), u"<b>Datei?"_s);
                QWidget* target = key == Qt::Key_Return ? box->defaultButton() : nullptr;
                QTest::keyClick(target ? target : box, key);
            });
            return ui::QtDialogs().Show(
                {.text = u"<b>Datei?"_s, .buttons = row.buttons, .defaultButton = row.defaultButton});
        };
        for (const Row& row : rows) {
            QCOMPARE(answerTo(row, Qt::Key_Return), row.onReturn);
            QCOMPARE(answerTo(row, Qt::Key_Escape), row.onEscape);
        }
    }

    /// Of several endings that a file may be saved with the caller appends the right one.
    void appendsTheOnlyEnding()
    {
        const auto appended = [](const QStringList& patterns) {
            QString suffix;
            QTimer::singleShot(0, qApp, [&suffix] {
                auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                suffix = dialog->defaultSuffix();
                dialog->reject();
            });
            ui::QtDialogs().SaveFile({.types = {{u"Datei"_s, patterns}}});
            return suffix;
        };
        QCOMPARE(appended({u"*.csv"_s}), u"csv"_s);
        QCOMPARE(appended({u"*.htm"_s, u"*.html"_s}), QString());
    }

    void blocksNested()
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
        busy.SetBusy(false);
        busy.SetBusy(false); // one too many
        QVERIFY(first->isEnabled() && second->isEnabled() && !disabled->isEnabled() &&
                !QGuiApplication::overrideCursor());
        QCOMPARE(window.focusWidget(), second);
    }

    void turnsTheSponsors()
    {
        TestContext test;
        RecordedDesktop desktop;
        QStringList seen;
        for (const char* key : {"SPONSOR", "SPONSOR_NORVA", "SPONSOR_TARIN", "SPONSOR", "SPONSOR", "end"}) {
            if (key == "end"_ba)
                app::put(test.settings, app::keys::LastShownSponsor, std::numeric_limits<int>::max());
            ui::fraAd panel(test.settings, desktop); // a new one each time: the turn is kept in the settings
            panel.showNode(QString::fromLatin1(key));
            for (auto* picture : panel.findChildren<QAbstractButton*>()) {
                if (picture->isVisibleTo(&panel))
                    picture->click();
            }
        }
        QCOMPARE(desktop.opened.join(u' ').simplified().remove(u"https://"_s).remove(u".example.org/"_s),
                 u"orvane norva norva delma orvane orvane"_s);
    }
};

KALMO_TEST(tst_Help)
#include "tst_Help.moc"
