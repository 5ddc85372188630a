// The commands that read and write lists.

#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "cli/OutputFile.h"
#include "cli/ReadContacts.h"
#include "cli/ReadList.h"
#include "cli/SavedListWords.h"
#include "cli/WriteContacts.h"
#include "cli/WriteList.h"
#include "link/PhoneModels.h"
#include "operations/SavedText.h"

#include <algorithm>

namespace kalmo::cli {

using operations::endingsFor;
using operations::findFormat;
using operations::SavedKind;
using phonedata::Store;

namespace {

/// Tells that a file can't be saved under that name, if it can't; nothing is read from a phone for it then.
bool isRefusedName(Job& job, const QList<SavedKind>& kinds)
{
    const QString path = job.invocation.value(u"--output"_s);
    const bool isFine = std::any_of(kinds.begin(), kinds.end(),
                                    [&path](SavedKind kind) { return findFormat(path, kind) != nullptr; });
    if (path.isEmpty() || isFine)
        return false;
    QStringList endings;
    for (const SavedKind kind : kinds)
        endings += endingsFor(kind);
    endings.removeDuplicates();
    job.out.error(u"could not save in %1: its name ends neither in %2."_s.arg(path, endingsInWords(endings)));
    return true;
}

ExitStatus refuse(Job& job, const operations::SavedListFault& fault, SavedKind kind)
{
    job.out.error(inWords(fault, job.invocation.arguments.first(), kind) + u'.');
    return ExitWrongUse;
}

/// Finds the phone for a file that fits every phone.
ExitStatus findForAnyPhone(Job& job)
{
    if (job.invocation.has(u"--dry-run"_s) || job.questions.canBeAnswered())
        return findPhone(job);
    job.questions.tellUnanswered(u"Replace the phonebook in the phone?"_s);
    return ExitRefused;
}

} // namespace

ExitStatus runPhonebookRead(Job& job)
{
    if (isRefusedName(job, {SavedKind::Phonebook, SavedKind::Contacts}))
        return ExitWrongUse;
    if (!canSaveOutput(job))
        return ExitFailed;
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    const bool isClassic = link::isClassic(job.phoneType());
    if (isRefusedName(job, {isClassic ? SavedKind::Phonebook : SavedKind::Contacts}))
        return ExitWrongUse;
    return isClassic ? showList(job, Store::Phonebook) : showContacts(job);
}

/// Both kinds of phonebooks are saved in .json files: the one that the file was read further as counts. An
/// empty array is both, so the phone says which.
ExitStatus runPhonebookWrite(Job& job)
{
    const QString path = job.invocation.arguments.first();
    if (!findFormat(path, SavedKind::Contacts))
        return runWrite(job, Store::Phonebook);
    QByteArray bytes;
    operations::SavedListFault asContacts;
    operations::SavedListFault asEntries;
    const bool mayHoldEntries = findFormat(path, SavedKind::Phonebook) != nullptr;
    if (!operations::readInputFile(path, bytes, asEntries))
        return refuse(job, asEntries, mayHoldEntries ? SavedKind::Phonebook : SavedKind::Contacts);
    auto contacts = operations::parseSavedList(path, bytes, SavedKind::Contacts, {}, asContacts);
    auto entries = operations::parseSavedList(path, bytes, SavedKind::Phonebook, {}, asEntries);
    PhoneState phone = PhoneState::ToFind;
    if (entries && contacts) {
        if (const ExitStatus found = findForAnyPhone(job); found != ExitDone)
            return found;
        phone = PhoneState::Found;
    }
    if (entries && (!contacts || link::isClassic(job.phoneType())))
        return writeEntries(job, Store::Phonebook, std::move(entries->entries), phone);
    if (!contacts && mayHoldEntries && asContacts.number <= asEntries.number)
        return refuse(job, asEntries, SavedKind::Phonebook);
    const auto accepted = acceptContacts(job, path, std::move(contacts), asContacts);
    return accepted ? writeContacts(job, *accepted, phone) : ExitWrongUse;
}

ExitStatus runProvidersRead(Job& job)
{
    if (isRefusedName(job, {SavedKind::Providers}))
        return ExitWrongUse;
    if (!canSaveOutput(job))
        return ExitFailed;
    const ExitStatus found = findPhone(job);
    return found == ExitDone ? showList(job, Store::Providers) : found;
}

ExitStatus runProvidersWrite(Job& job)
{
    return runWrite(job, Store::Providers);
}

} // namespace kalmo::cli
