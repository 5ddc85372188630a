#include "support/ScriptedDialogs.h"

#include <algorithm>

namespace kalmo::tests {

using namespace Qt::StringLiterals;
using toolkit::FileRequest;
using toolkit::Message;

namespace {

QString nameOf(Answer answer)
{
    constexpr const char* names[] = {"Ok", "Cancel", "Yes", "No", "Retry"};
    return QString::fromLatin1(names[static_cast<int>(answer)]);
}

QString nameOf(Icon icon)
{
    constexpr const char* names[] = {"None", "Information", "Question", "Exclamation", "Critical"};
    return QString::fromLatin1(names[static_cast<int>(icon)]);
}

QList<Answer> answersOf(Buttons buttons)
{
    switch (buttons) {
    case Buttons::Ok:
        return {Answer::Ok};
    case Buttons::OkCancel:
        return {Answer::Ok, Answer::Cancel};
    case Buttons::YesNo:
        return {Answer::Yes, Answer::No};
    case Buttons::YesNoCancel:
        return {Answer::Yes, Answer::No, Answer::Cancel};
    case Buttons::RetryCancel:
        return {Answer::Retry, Answer::Cancel};
    }
    return {};
}

Answer defaultOf(const Message& message)
{
    const QList<Answer> answers = answersOf(message.buttons);
    return answers.contains(message.defaultButton) ? message.defaultButton : answers.first();
}

QString inWords(const Message& message)
{
    QStringList buttons;
    for (const Answer answer : answersOf(message.buttons))
        buttons.append(nameOf(answer) + (answer == defaultOf(message) ? u"*"_s : QString()));
    return u"box [%1] icon %2, buttons %3\n%4"_s.arg(message.title, nameOf(message.icon), buttons.join(u' '),
                                                     message.text);
}

/// Returns true if the buttons and the start of the text of two boxes are equal.
bool startsLike(const QString& shown, const QString& start)
{
    const auto buttons = [](const QString& box) {
        return box.section(u'\n', 0, 0).section(u", buttons "_s, 1).remove(u'*');
    };
    return shown.section(u'\n', 1).startsWith(start.section(u'\n', 1)) && buttons(shown) == buttons(start);
}

QString inWords(QStringView kind, const FileRequest& request)
{
    QStringList types;
    for (const toolkit::FileType& type : request.types)
        types.append(type.description + u' ' + type.patterns.join(u';'));
    const QString accept = request.acceptLabel.isEmpty() ? QString() : u", button "_s + request.acceptLabel;
    return u"%1 [%2] folder \"%3\", name \"%4\", types %5%6%7"_s.arg(
        kind, request.title, request.folder, request.name, types.join(u" | "_s),
        request.confirmOverwrite ? u", asks before it overwrites"_s : QString(), accept);
}

QString folderInWords(const QString& title, const QString& start)
{
    return u"PickFolder [%1] from \"%2\""_s.arg(title, start);
}

} // namespace

ScriptedDialogs::~ScriptedDialogs()
{
    finish();
}

void ScriptedDialogs::expect(const Message& message, Answer answer)
{
    if (!answersOf(message.buttons).contains(answer))
        m_verdict.complain(u"the test answers %1 to a "_s.arg(nameOf(answer)) + inWords(message));
    m_script.push_back({inWords(message), false, message.english, answer});
}

void ScriptedDialogs::expectStart(const QString& start, Buttons buttons, Answer answer)
{
    m_script.push_back({inWords(Message{.text = start, .buttons = buttons}), true, {}, answer});
}

void ScriptedDialogs::expectOpenFile(const FileRequest& request, const QString& path)
{
    m_script.push_back({inWords(u"OpenFile", request), false, {}, Answer::Ok, path});
}

void ScriptedDialogs::expectSaveFile(const FileRequest& request, const QString& path)
{
    m_script.push_back({inWords(u"SaveFile", request), false, {}, Answer::Ok, path});
}

void ScriptedDialogs::expectPickFolder(const QString& title, const QString& start, const QString& path)
{
    m_script.push_back({folderInWords(title, start), false, {}, Answer::Ok, path});
}

void ScriptedDialogs::whileShown(std::function<void()> action)
{
    m_script.back().action = std::move(action);
}

void ScriptedDialogs::finish()
{
    for (const Step& step : m_script)
        m_verdict.complain(u"never shown: "_s + step.shown);
    m_script.clear();
}

std::optional<ScriptedDialogs::Step> ScriptedDialogs::next(const QString& shown, const QString& english)
{
    if (m_pathForAll)
        return Step{shown, false, {}, Answer::Yes, *m_pathForAll};
    if (m_script.empty()) {
        m_verdict.complain(u"not expected: "_s + shown);
        return {};
    }
    const Step step = std::move(m_script.front());
    m_script.pop_front();
    if (step.isStart ? !startsLike(shown, step.shown) : step.shown != shown)
        m_verdict.complain(u"expected: %1\nshown: %2"_s.arg(step.shown, shown));
    else if (!step.english.isEmpty() && step.english != english)
        m_verdict.complain(u"expected in English: %1\nsaid: %2"_s.arg(step.english, english));
    if (step.action)
        step.action();
    return step;
}

Answer ScriptedDialogs::Show(const Message& message)
{
    const QList<Answer> offered = answersOf(message.buttons);
    const auto step = next(inWords(message), message.english);
    if (step && offered.contains(step->answer))
        return step->answer;
    for (const Answer harmless : {Answer::Cancel, Answer::No}) {
        if (offered.contains(harmless))
            return harmless;
    }
    return Answer::Ok;
}

QString ScriptedDialogs::OpenFile(const FileRequest& request)
{
    const auto step = next(inWords(u"OpenFile", request));
    return step ? step->path : QString();
}

QString ScriptedDialogs::SaveFile(const FileRequest& request)
{
    const auto step = next(inWords(u"SaveFile", request));
    return step ? step->path : QString();
}

QString ScriptedDialogs::PickFolder(const QString& title, const QString& start)
{
    const auto step = next(folderInWords(title, start));
    return step ? step->path : QString();
}

} // namespace kalmo::tests
