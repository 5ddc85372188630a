#pragma once

#include "support/HandsetPort.h"
#include "support/RecordedProgress.h"
#include "support/TestContext.h"
#include "ui/Program.h"

#include <QtTest>
#include <QtWidgets>

namespace kalmo::tests {

struct NoDevices : link::DeviceList
{
    QList<link::SerialDevice> devices() override { return {}; }
};

/// A PC with one serial cable.
struct OneDevice : link::DeviceList
{
    QString path = QStringLiteral("/dev/ttyUSB7");

    QList<link::SerialDevice> devices() override
    {
        return {{path, {}, QStringLiteral("Datenkabel"), {}, {}}};
    }
};

/// A desktop that opens nothing and remembers what it was asked to.
struct RecordedDesktop : app::Desktop
{
    QStringList opened;
    bool knowsAll = true; ///< has a program for each file

    bool hasAssociation(const QString&) const override { return knowsAll; }
    bool open(const QString& path) override { return openWith({}, path); }
    bool openUrl(const QUrl& url) override { return open(url.toString()); }
    bool openWith(const QString& program, const QString& path) override
    {
        opened.append(program + QLatin1Char(' ') + path);
        return true;
    }
};

/// A question that a user who presses Enter answers with No.
inline toolkit::Message question(const QString& text, const QString& title = QStringLiteral("Kalmo"))
{
    return {.text = text,
            .title = title,
            .buttons = Buttons::YesNo,
            .icon = Icon::Question,
            .defaultButton = Answer::No};
}

/// The services of the forms, made of fakes, and an emulated handset on the line. The script of
/// `test.dialogs` answers the boxes, unless there is another user.
struct TestProgram
{
    explicit TestProgram(const QString& model, handset::Options options = {},
                         toolkit::Dialogs* user = nullptr)
        : context{test.sy,       test.clock, user ? *user : test.dialogs, test.ending, test.platform,
                  test.settings, test.log},
          port(test.clock, test.verdict, (options.model = model, options))
    {
        test.sy.PhoneType = port.handset().phone().family.number;
        test.sy.blnTxLfTerminator = test.sy.PhoneType >= 11;
    }

    /// The phone was switched off and on, and found by a new search.
    void findAgain()
    {
        port.handset().powerCycle();
        port.Close();
        port.Open(QStringLiteral("COM1"));
        line.ConfigurePort();
    }
    /// A question with a text that begins like this.
    void expectQuestion(const QString& start, Answer answer)
    {
        test.dialogs.expectStart(start, Buttons::YesNo, answer);
    }

    TestContext test;
    app::Context context;
    HandsetPort port;
    link::Line line{context, port};
    RecordedDesktop desktop;
    NoDevices devices;
    link::PortTable ports{test.settings, devices};
    phonedata::PhoneMemory memory;
    RecordedProgress progress;
    ui::Program program{context, line, desktop, ports, memory};
};

/// The window of that kind that is on screen, null if there is none.
template <typename Form>
Form* shown()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* form = qobject_cast<Form*>(widget); form && form->isVisible())
            return form;
    }
    return nullptr;
}

/// A user who does this with the dialog in front, in each turn of the event loop as long as there is one.
class DialogUser
{
public:
    explicit DialogUser(const std::function<void(QDialog& dialog)>& act)
    {
        m_timer.callOnTimeout([act] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                act(*dialog);
        });
        m_timer.start(0);
    }
    void stop() { m_timer.stop(); }

private:
    QTimer m_timer;
};

/// A form's widget by its object name, which it must have.
template <typename Widget>
Widget& child(const QObject& form, const char* name)
{
    auto* found = form.findChild<Widget*>(QString::fromUtf8(name));
    if (!found)
        qFatal("no %s", name);
    return *found;
}

/// The text of a form's label.
inline QString textOf(const QObject& form, const char* label)
{
    return child<QLabel>(form, label).text();
}

/// Clicks a button of a form.
inline void click(const QObject& form, const char* button)
{
    QTest::mouseClick(&child<QAbstractButton>(form, button), Qt::LeftButton);
}

} // namespace kalmo::tests
