#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace kalmo::toolkit {

using namespace Qt::StringLiterals;

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel };
enum class Icon { None, Information, Question, Exclamation, Critical };
enum class Answer { Ok, Cancel, Yes, No, Retry };

/// The subject of a box. It distinguishes the boxes of one command.
enum class About {
    Other,       ///< anything else: a question, the state of data
    Request,     ///< a request to the phone that failed
    LostSession, ///< a failure of the data mode that no later request of the same command gets over
    Result,      ///< only that a command has failed; boxes about its requests came before
};

/// One message box.
struct Message
{
    QString text = {}; ///< text of the window, in German
    QString title = u"Kalmo"_s;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    Answer defaultButton = Answer::Ok; ///< Ok stands for the first button where there is no button Ok
    bool forWindowOnly = false; ///< the command line leaves it out: nobody there could do anything with it
    bool asksToRetry = false;   ///< a yes repeats what has failed
    QString english = {}; ///< text of the command line, in English; empty if the command line never shows it
    About about = About::Other;
};

/// One entry of a file dialog's type list, for example {"CSV Datei (*.csv)", {"*.csv"}}.
struct FileType
{
    QString description;
    QStringList patterns;
};

/// One file dialog.
struct FileRequest
{
    QString title = {};
    QString folder = {}; ///< where it starts
    QString name = {};   ///< file name that it proposes
    std::vector<FileType> types = {};
    bool confirmOverwrite = false; ///< for saving: ask before an existing file is chosen
    QString acceptLabel = {};      ///< of the button that takes the file; empty for the usual one
};

/// Asks and informs the user.
class Dialogs
{
public:
    virtual ~Dialogs() = default;

    /// Shows a message and waits for the answer. Closing the box counts as Cancel, No or Ok, whichever is
    /// there.
    virtual Answer Show(const Message& message) = 0;

    /// Absolute path of the chosen file, empty when the user cancelled.
    virtual QString OpenFile(const FileRequest& request) = 0;
    virtual QString SaveFile(const FileRequest& request) = 0;
    /// Several files of one folder. An implementation without such a chooser gives one.
    virtual QStringList OpenFiles(const FileRequest& request)
    {
        const QString file = OpenFile(request);
        return file.isEmpty() ? QStringList() : QStringList(file);
    }

    /// Absolute path of the chosen folder, empty when the user cancelled.
    virtual QString PickFolder(const QString& title, const QString& start) = 0;
};

} // namespace kalmo::toolkit
