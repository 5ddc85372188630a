// The end of the main window by a signal or with the desktop's session: nobody answers a question.

#include "support/TestProgram.h"
#include "ui/OpenWindow.h"

class tst_EndUnasked : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unwrittenListIsKept();
    void listIsKeptWhileItIsRead();
    void endsTheUsersOwnClosing();
};

void tst_EndUnasked::unwrittenListIsKept()
{
    using Act = std::function<void(OpenWindow&)>;
    const Rows<Act> rows{
        {"idle", [](OpenWindow&) {}},
        {"beside an entry's dialog",
         [](OpenWindow& open) { QTest::keyClick(&open.window, Qt::Key_N, Qt::ControlModifier); }},
        {"during a reading",
         [](OpenWindow& open) {
             open.expectUnsavedChanges(Answer::Yes);
             open.press("read");
         }},
    };
    rows.each([](const Act& act) {
        OpenWindow open(u"PICASSO"_s);
        open.window.goTo(u"TB"_s);
        const auto entries = open.list("lvwTB").rows()->count();
        open.deleteFirst("lvwTB");
        QSignalSpy closed(&open.window, &ui::frmPB::closedByUser);
        QTimer::singleShot(0, &open.window, &ui::frmPB::endUnasked);
        act(open);
        QTRY_COMPARE(closed.size(), 1);
        QVERIFY(!open.window.isVisible() && !open.port.IsOpen());
        const QDir folder(open.test.storage + u"/Backup"_s);
        const QStringList kept = folder.entryList({u"Nicht geschriebene Liste vom *.tel"_s});
        QCOMPARE(kept.size(), 1);
        const QString path = folder.filePath(kept.first());
        QCOMPARE(TestContext::contentOf(path).count("\r\n"), entries - 1);
        open.memory.TbDirty = false;
        open.port.Open(u"COM1"_s);
        open.test.dialogs.expect({.text = u"Kalmo wurde beendet, bevor Änderungen ins Telefon geschrieben "
                                          u"waren. Sie sind gesichert in:\n"_s +
                                          path,
                                  .icon = Icon::Information});
        for (int start = 0; start < 2; ++start) { // the second one is silent
            ui::frmPB next(open.program, open.mmc);
            next.show();
            QCoreApplication::processEvents();
        }
    });
}

/// The desktop may end the program without waiting for the reading.
void tst_EndUnasked::listIsKeptWhileItIsRead()
{
    OpenWindow open(u"PICASSO"_s);
    open.window.goTo(u"TB"_s);
    const auto entries = open.list("lvwTB").rows()->count();
    open.deleteFirst("lvwTB");
    open.expectUnsavedChanges(Answer::Yes);
    open.test.clock.after(0.5, [&] { open.window.keepUnwritten(); });
    open.press("read");
    const QDir folder(open.test.storage + u"/Backup"_s);
    const QStringList kept = folder.entryList({u"Nicht geschriebene Liste vom *.tel"_s});
    QCOMPARE(kept.size(), 1);
    QCOMPARE(TestContext::contentOf(folder.filePath(kept.first())).count("\r\n"), entries - 1);
}

/// A box about the channel waits for a user who has gone.
void tst_EndUnasked::endsTheUsersOwnClosing()
{
    OpenWindow open(u"SL450HX"_s, u"FFS"_s);
    open.port.handset().setFaults({.silentFrom = 1});
    open.test.dialogs.expectStart(u"Beim Zugriff auf das Telefon"_s);
    bool isDismissed = false;
    open.test.dialogs.whileShown([&] {
        QMessageBox box(&open.window);
        QTimer::singleShot(0, &open.window, &ui::frmPB::endUnasked);
        isDismissed = box.exec() == QDialog::Rejected;
    });
    open.window.close();
    QVERIFY(isDismissed && !open.window.isVisible());
}

KALMO_TEST(tst_EndUnasked)
#include "tst_EndUnasked.moc"
