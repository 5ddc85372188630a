#pragma once

#include "app/Programs.h"
#include "app/WorkFolder.h"
#include "media/UploadFiles.h"
#include "ui/controls/PictureLoader.h"

#include <QHash>
#include <QStringList>
#include <QTimer>

namespace kalmo::ui {

/// Finds the sizes that files will have in the phone, one file after the other. The event loop goes on
/// meanwhile.
class UploadSizes : public QObject
{
    Q_OBJECT

public:
    /// The files that were measured so far.
    struct Sum
    {
        qint64 bytes = 0;
        qsizetype measured = 0;                     ///< number of files, with the unfit ones
        qsizetype unfit = 0;                        ///< number of files without a size
        std::optional<media::Failure> failure = {}; ///< of a converter, of the last file where it failed
    };

    explicit UploadSizes(app::Context& context, QObject* parent = nullptr);
    ~UploadSizes() override;

    /// Starts anew. Sounds and melodies that were measured before are not read again.
    void measure(const QStringList& paths, const media::UploadOptions& options);
    void stop();

    const Sum& sum() const { return m_sum; }
    bool isDone() const { return m_sum.measured == m_paths.size(); }
    /// Length of a sound that was measured, 0 where it is not known.
    double seconds(const QString& path) const { return m_seconds.value(path); }

Q_SIGNALS:
    /// One more file is measured.
    void changed();

private:
    void next();
    std::optional<qint64> knownSize(const QString& path) const;
    void begin(const QString& path);
    void run(const app::ProgramCall& call);
    void takeResult(const QString& program);
    void takeOutput(const QString& path, const QByteArray& output);
    void takePicture(const media::LoadedPicture& picture);
    void count(std::optional<qint64> bytes);

    app::Context& m_context;
    QStringList m_paths;
    media::UploadOptions m_options;
    Sum m_sum;
    QHash<QString, double> m_seconds;  // of sounds
    QHash<QString, qint64> m_melodies; // bytes, -1 for a bad one
    PictureLoader m_loader;
    std::unique_ptr<app::WorkFolder> m_folder;
    std::unique_ptr<app::ProgramRun> m_run;
    QTimer m_limit{this}; // of m_run
};

} // namespace kalmo::ui
