#pragma once

#include "obex/clsMmc.h"
#include "toolkit/BatchMeter.h"
#include "toolkit/Progress.h"

#include <QStringList>

namespace kalmo::ui {

/// Shows work on several files in a status bar as one: "2 von 3: " ahead of each text of the operations, the
/// bytes, the rate and the time left after it, and one bar for the whole. A single file keeps its own text,
/// with rate and time left after it.
class BatchDisplay
{
public:
    /// `target` and `clock` have to outlive the display.
    BatchDisplay(const toolkit::Progress& target, const toolkit::Clock& clock);
    ~BatchDisplay();
    Q_DISABLE_COPY_MOVE(BatchDisplay)

    /// For the operations on the single files.
    toolkit::Progress progress() { return {&m_panel, &m_bar, m_target.cancel}; }

    /// Begins a stage with so many files and so many bytes, 0 if the bytes do not matter. A stage that is
    /// not the work itself has a name, which goes ahead of the texts. `share` is the part of the rest of the
    /// bar that the stage fills; after a full bar a stage begins with an empty one.
    void expect(qsizetype count, qint64 total, const QString& stage = {}, double share = 1);
    /// Ends a stage before the next one begins. Texts in between go without numbers, and the bar stays.
    void pause();
    /// Shows a closing sentence.
    void conclude(const QString& sentence) { m_target.status(sentence); }
    /// The next file's turn has come.
    void next(qint64 size = 0);

    /// So many bytes of that file have come, by no text of the operation.
    void setBytes(qint64 bytes);

    /// Seconds since the beginning of the stage.
    double seconds() const { return m_meter.reading().seconds; }

private:
    struct Panel final : toolkit::StatusPanel
    {
        explicit Panel(BatchDisplay& owner) : display(owner) {}
        QString Text() const override { return display.m_text; }
        void SetText(const QString& text) override;
        BatchDisplay& display;
    };

    struct Bar final : toolkit::ProgressBar
    {
        explicit Bar(BatchDisplay& owner) : display(owner) {}
        int Value() const override { return value; }
        int Maximum() const override { return maximum; }
        void SetValue(int newValue) override;
        void SetMaximum(int newMaximum) override;
        void SetVisible(bool visible) override;
        BatchDisplay& display;
        int value = 0;
        int maximum = 0;
    };

    bool isBegun() const { return m_meter.reading().index > 0; }
    bool isPassing() const { return !isBegun() && !m_isPaused; }
    int barValue() const;
    void draw();
    void drawBar();
    void drawText(const toolkit::BatchReading& reading);

    toolkit::Progress m_target;
    toolkit::BatchMeter m_meter;
    Panel m_panel{*this};
    Bar m_bar{*this};
    double m_done = 0; // part of the bar of the stages before, 0 to 1
    double m_span = 0; // of this stage
    bool m_isPaused = false;
    QString m_stage;
    QString m_text; // of the operation
    QString m_tail; // after the text, as it is shown now
};

/// Counts what the client receives as bytes of the file whose turn it is, for as long as it lives: a phone
/// need not say ahead of a file how many will come.
class ReceivedBytes
{
public:
    ReceivedBytes(const obex::clsMmc& client, BatchDisplay& display);

private:
    QObject m_connection;
};

/// Result of work on several files, for a sentence in the status bar.
struct BatchResult
{
    QString verb;             ///< "gesendet"
    QStringList files = {};   ///< names of those that were done
    QStringList folders = {}; ///< the same
    qsizetype leftOut = 0;    ///< those that nobody tried: the user keeps what is there, or they do not fit
    qsizetype notDone = 0;    ///< those that failed or waited after a failure
    qsizetype unknown = 0;    ///< those that perhaps were
    qint64 bytes = 0;         ///< 0 if they do not matter
    double seconds = 0;       ///< with the bytes
    QString place = {};       ///< after the verb: " im Ordner ..."
    bool isStopped = false;   ///< by the user
};

/// "3 Dateien gesendet, 120,0kB in 14 s. 1 vielleicht gesendet. 2 nicht gesendet. 1 ausgelassen.", with
/// " (abgebrochen)" at the end after a wish of the user; "Nichts gesendet." only if nothing was done and
/// nothing is unknown.
QString sentenceOf(const BatchResult& result);

} // namespace kalmo::ui
