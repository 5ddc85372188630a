#include "cli/CliDialogs.h"

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

Answer CliDialogs::Show(const toolkit::Message& message)
{
    if (message.forWindowOnly)
        return Answer::Ok;
    const QString text = message.english.isEmpty() ? message.text : message.english;
    const auto isConfirmed = [&] {
        return message.asksToRetry ? m_questions.confirmRetry(text) : m_questions.confirm(text);
    };
    switch (message.buttons) {
    case Buttons::Ok:
        if (message.icon == Icon::Information)
            m_out.note(text + u'\n');
        else
            m_out.error(text);
        return Answer::Ok;
    case Buttons::OkCancel:
        return isConfirmed() ? Answer::Ok : Answer::Cancel;
    case Buttons::RetryCancel:
        return m_questions.confirmRetry(text) ? Answer::Retry : Answer::Cancel;
    case Buttons::YesNo:
    case Buttons::YesNoCancel:
        break;
    }
    return isConfirmed() ? Answer::Yes : Answer::No;
}

QString CliDialogs::OpenFile(const toolkit::FileRequest& request)
{
    return nothingChosen(request.title);
}

QString CliDialogs::SaveFile(const toolkit::FileRequest& request)
{
    return nothingChosen(request.title);
}

QString CliDialogs::PickFolder(const QString& title, const QString&)
{
    return nothingChosen(title);
}

QString CliDialogs::nothingChosen(const QString& title)
{
    m_out.error(u"could not choose a file without the window: "_s + title);
    return {};
}

} // namespace kalmo::cli
