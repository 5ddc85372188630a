#include "ui/panels/FileBoxes.h"

#include "ui/forms/FormerStateWords.h"
#include "ui/forms/SomeOf.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

QStringList titled(const QString& title, const QStringList& names)
{
    constexpr int longestNameShown = 60; // characters
    QStringList lines;
    for (const QString& name : names)
        lines.append(name.size() > longestNameShown ? name.first(longestNameShown) + u'…' : name);
    return names.isEmpty() ? QStringList() : QStringList(title + u'\n' + someOf(lines, 10, u"\n"_s));
}

QString inParagraph(const operations::SaveFault& fault)
{
    return fault.isNone() ? QString() : u"\n\n"_s + reasonInWords(fault);
}

void tellReport(const obex::clsMmc& mmc, BatchReport report)
{
    toolkit::Message message{.icon = Icon::Exclamation};
    if (report.failure != 0) {
        message = obex::failureMessage(report.failure);
        report.paragraphs.prepend(message.text);
    }
    if (report.paragraphs.isEmpty())
        return;
    message.text = report.paragraphs.join(u"\n\n"_s);
    mmc.line().context().dialogs.Show(message);
}

void tell(const obex::clsMmc& mmc, const QString& text, Icon icon)
{
    mmc.line().context().dialogs.Show({.text = text, .icon = icon});
}

void tellOpenRecord(const obex::clsMmc& mmc, const operations::FileAccess& access)
{
    if (access.isRecordOpen())
        tell(mmc, openRecordInWords(), Icon::Exclamation);
}

Answer askToReplace(const obex::clsMmc& mmc, const QString& text)
{
    return mmc.line().context().dialogs.Show(
        {.text = text, .buttons = Buttons::YesNoCancel, .icon = Icon::Question, .defaultButton = Answer::No});
}

bool ask(const obex::clsMmc& mmc, const QString& text)
{
    return mmc.line().context().dialogs.Show({.text = text,
                                              .buttons = Buttons::YesNo,
                                              .icon = Icon::Question,
                                              .defaultButton = Answer::No}) == Answer::Yes;
}

bool askToTakePart(const obex::clsMmc& mmc, const PartOfFile& part, const QString& verb)
{
    return ask(mmc, u"Die Datei \"%1\" ist nicht vollständig angekommen: Das Telefon gibt %2 Bytes an und "
                    u"hat %3 gesendet.\n\nSoll sie trotzdem %4 werden?"_s.arg(
                        part.name, QString::number(part.listed), QString::number(part.came), verb));
}

} // namespace kalmo::ui
