#include "cli/ImportWork.h"

#include "cli/ImportArguments.h"
#include "transfer/import/clsWab.h"
#include "transfer/import/ImportSteps.h"

#include <QFileInfo>

namespace kalmo::cli {

using transfer::AddressBookFault;
using transfer::Shape;
using transfer::SourceKind;
using transfer::TextFault;

namespace {

QString inWords(AddressBookFault fault)
{
    switch (fault) {
    case AddressBookFault::None:
        break;
    case AddressBookFault::NotThere:
        return u"there is no such file or folder"_s;
    case AddressBookFault::NotReadable:
        return u"it could not be read"_s;
    case AddressBookFault::TooLarge:
        return u"it is larger than %1 MB"_s.arg(transfer::largestAddressBook / app::megabyte);
    case AddressBookFault::NotAnAddressBook:
        return u"there is no Windows Address Book and no card in it"_s;
    case AddressBookFault::OldLayout:
        return u"it is an address book of Windows 95, which can't be read"_s;
    case AddressBookFault::Damaged:
        return u"it is damaged, and no contact in it can be read"_s;
    case AddressBookFault::TooManyContacts:
        return u"it holds more than 100,000 contacts"_s;
    case AddressBookFault::Stopped:
        return u"its reading was stopped"_s;
    }
    return {};
}

QString inWords(TextFault fault)
{
    switch (fault) {
    case TextFault::None:
        break;
    case TextFault::NotReadable:
        return u"it could not be read"_s;
    case TextFault::NoFirstLine:
        return u"its first line is empty, so it has no columns"_s;
    case TextFault::Binary:
        return u"it is no text file; if it is UTF-16, say --encoding utf-16"_s;
    case TextFault::UnmarkedUtf16:
        return u"it looks like UTF-16 without a mark; if it is, say --encoding utf-16"_s;
    case TextFault::TooManyColumns:
        return u"it has more than 16,384 columns"_s;
    case TextFault::TooLarge:
        return u"it is larger than %1 MB or 250,000 lines"_s.arg(transfer::largestText / app::megabyte);
    }
    return {};
}

/// Reads a source, and leaves what is wrong in `fault`.
class SourceReader
{
public:
    SourceReader(const Job& job, const QString& path, Shape shape)
        : m_invocation(job.invocation), m_path(path), m_today(job.context.clock.Now().date())
    {
        work.shape = shape;
        work.source.path = path;
    }

    bool read();

    ImportWork work;
    QString fault; ///< follows "could not import FILE: " unless it is one of the options

    bool isOptionFault = false;

private:
    bool readBook();
    bool readText();
    bool refuse(const QString& text)
    {
        fault = text;
        return fault.isEmpty();
    }
    bool check(const QString& optionFault)
    {
        isOptionFault = !optionFault.isEmpty();
        return refuse(optionFault);
    }

    const Invocation& m_invocation;
    QString m_path;
    QDate m_today;
};

bool SourceReader::read()
{
    if (!check(takeCommonOptions(m_invocation, work.options)))
        return false;
    if (!QFileInfo::exists(m_path))
        return refuse(u"there is no such file"_s);
    return transfer::sourceKindOf(m_path) == SourceKind::AddressBook ? readBook() : readText();
}

bool SourceReader::readBook()
{
    transfer::clsWab book;
    if (!book.OpenWab(m_path) || !book.ReadAllContacts(m_today)) {
        const bool isOneFile =
            book.fault() == AddressBookFault::NotReadable || book.fault() == AddressBookFault::TooLarge;
        const QString file = QFileInfo(book.faultyFile()).fileName();
        return refuse((QFileInfo(m_path).isDir() && isOneFile ? file + u": "_s : QString()) +
                      inWords(book.fault()));
    }
    book.CloseWap();
    work.source.contacts = book.contacts();
    work.source.losses = book.losses();
    return check(faultOfOptions(m_invocation, work.shape, SourceKind::AddressBook)) &&
           check(takeAddressOptions(m_invocation, work.shape, work.options.addresses));
}

bool SourceReader::readText()
{
    const transfer::TextFile file = transfer::readTextFile(m_path);
    if (file.fault != TextFault::None)
        return refuse(inWords(file.fault));
    const QString time = work.options.text.defaultTime;
    const transfer::OpenedText opened =
        transfer::openText(m_path, file.bytes, work.shape, textRequest(m_invocation, file.bytes));
    if (opened.fault != TextFault::None)
        return refuse(inWords(opened.fault));
    work.source.text = file.bytes;
    work.options.text = opened.options;
    work.options.text.defaultTime = time;
    return check(faultOfOptions(m_invocation, work.shape, SourceKind::Text)) &&
           check(takeTextOptions(m_invocation, work.shape, opened.headings, work.options.text));
}

void skipTooLong(transfer::Preview& preview)
{
    for (transfer::PreviewRow& row : preview.rows) {
        if (std::find(row.colours.begin(), row.colours.end(), transfer::Colour::Red) != row.colours.end())
            row.checked = false;
    }
}

/// Checks complete rows that exist, too. Their lengths are tested like those of the others: nobody has looked
/// at them, as a user has who ticks a green row.
void takeExisting(transfer::Preview& preview)
{
    for (transfer::PreviewRow& row : preview.rows) {
        if (!row.exists || !row.isComplete(preview.shape))
            continue;
        row.checked = true;
        transfer::judgeRow(row, preview.shape);
    }
}

} // namespace

std::optional<ImportWork> importWork(Job& job, const QString& path, Shape shape)
{
    SourceReader reader(job, path, shape);
    if (!reader.read()) {
        job.out.error((reader.isOptionFault ? QString() : u"could not import %1: "_s.arg(path)) +
                      reader.fault + u'.');
        return std::nullopt;
    }
    ImportWork work = std::move(reader.work);
    work.takesExisting = job.invocation.has(u"--all"_s);
    work.shortensNames = job.invocation.has(u"--shorten"_s);
    work.skipsTooLong = job.invocation.has(u"--skip-too-long"_s);
    return work;
}

transfer::Preview makePreview(const ImportWork& work, const transfer::ExistingEntries& existing, QDate today,
                              const transfer::Advance& advance)
{
    transfer::Preview preview =
        transfer::RebuildPreview(work.source, work.shape, work.options, existing, today, advance);
    if (work.takesExisting)
        takeExisting(preview);
    if (work.skipsTooLong)
        skipTooLong(preview);
    if (work.shortensNames)
        transfer::shortenNames(preview);
    return preview;
}

transfer::ExistingEntries existingEntries(const std::vector<phonedata::ClassicEntry>& entries)
{
    std::vector<QStringList> cells;
    for (const phonedata::ClassicEntry& entry : entries)
        cells.push_back({entry.name, entry.number});
    return {Shape::Classic, cells};
}

transfer::ExistingEntries existingEntries(const std::vector<phonedata::tVcfEntry>& contacts)
{
    std::vector<QStringList> cells;
    for (const phonedata::tVcfEntry& contact : contacts)
        cells.push_back({contact.lastName, contact.firstName, contact.home, contact.mobile, contact.work});
    return {Shape::Vcard, cells};
}

} // namespace kalmo::cli
