#include "operations/FileStates.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using obex::PhonePath;
using obex::tObxDirEntry;

namespace {

const QString statesPart = u"states.json"_s;

struct KindRow
{
    FileState::Kind kind;
    QStringView word;
};

constexpr KindRow kinds[] = {
    {FileState::Kind::Nothing, u"nothing"}, {FileState::Kind::File, u"file"},
    {FileState::Kind::Folder, u"folder"},   {FileState::Kind::Moved, u"moved"},
    {FileState::Kind::Rights, u"rights"},
};

/// Paths as lists of names: a name may hold any character.
QJsonArray jsonOf(const PhonePath& path)
{
    return QJsonArray::fromStringList(path.parts());
}

PhonePath pathOf(const QJsonValue& value)
{
    PhonePath path;
    for (const QJsonValue& part : value.toArray())
        path = path.below(part.toString());
    return path;
}

QString partName(const FileState& state)
{
    return state.path.parts().join(u'/');
}

/// A file's bytes. The first part describes the states: a file of the phone may have the same name.
const RecordedPart* fileIn(const Record& record, const QString& name)
{
    const auto part = std::find_if(record.before.begin() + 1, record.before.end(),
                                   [&](const RecordedPart& candidate) { return candidate.name == name; });
    return part == record.before.end() ? nullptr : &*part;
}

QJsonObject jsonOf(const FileState& state)
{
    const auto row = std::find_if(std::begin(kinds), std::end(kinds),
                                  [&](const KindRow& candidate) { return candidate.kind == state.kind; });
    QJsonObject json{{u"path"_s, jsonOf(state.path)}, {u"held"_s, row->word.toString()}};
    if (state.kind == FileState::Kind::Moved)
        json[u"movedTo"_s] = jsonOf(state.movedTo);
    if (state.kind == FileState::Kind::File || state.kind == FileState::Kind::Rights) {
        json[u"user"_s] = state.userPerm;
        json[u"group"_s] = state.groupPerm;
    }
    if (state.modified.isValid())
        json[u"modified"_s] = state.modified.toString(Qt::ISODate);
    return json;
}

std::optional<FileState> stateFrom(const QJsonObject& json, const Record& record)
{
    const QString word = json[u"held"_s].toString();
    const auto row = std::find_if(std::begin(kinds), std::end(kinds),
                                  [&](const KindRow& candidate) { return candidate.word == word; });
    FileState state{.path = pathOf(json[u"path"_s])};
    if (row == std::end(kinds) || state.path.isRoot())
        return std::nullopt;
    state.kind = row->kind;
    state.userPerm = json[u"user"_s].toInt();
    state.groupPerm = json[u"group"_s].toInt();
    state.modified = QDateTime::fromString(json[u"modified"_s].toString(), Qt::ISODate);
    state.movedTo = pathOf(json[u"movedTo"_s]);
    if (state.kind == FileState::Kind::File) {
        const RecordedPart* part = fileIn(record, partName(state));
        if (!part)
            return std::nullopt;
        state.bytes = part->bytes;
    }
    return state;
}

Records recordsOf(FileAccess& access)
{
    const app::Context& context = access.client().line().context();
    return Records(context, knownIdentity(context.sy));
}

} // namespace

QString rightsText(int permissions)
{
    QString text;
    if (permissions & obex::MayRead)
        text += u'R';
    if (permissions & obex::MayWrite)
        text += u'W';
    if (permissions & obex::MayDelete)
        text += u'D';
    return text;
}

bool restoreRights(FileAccess& access, const FileState& wanted, const tObxDirEntry& entry)
{
    if (entry.userPerm == wanted.userPerm && entry.groupPerm == wanted.groupPerm)
        return true;
    return access.client().SetAttrib(entry.name, rightsText(wanted.groupPerm), rightsText(wanted.userPerm),
                                     false);
}

std::optional<FileState> readState(FileAccess& access, const PhonePath& path, const tObxDirEntry* entry,
                                   FileOutcome& outcome)
{
    if (!entry)
        return FileState{.path = path};
    FileState state{.path = path.folder().below(entry->name)};
    state.kind = entry->isFile() ? FileState::Kind::File : FileState::Kind::Folder;
    state.modified = entry->modified;
    state.userPerm = entry->userPerm;
    state.groupPerm = entry->groupPerm;
    if (!entry->isFile())
        return state;
    const bool isRead =
        access.enter(path.folder()) && access.client().GetFile(entry->name, state.bytes, access.progress());
    if (isRead && obex::isWhole(state.bytes.size(), entry->size))
        return state;
    if (isRead)
        outcome.cause = Cause::Mismatch;
    else
        access.blame(outcome);
    return std::nullopt;
}

std::vector<RecordedPart> partsOf(const std::vector<FileState>& states)
{
    QJsonArray array;
    std::vector<RecordedPart> parts;
    for (const FileState& state : states)
        array.append(jsonOf(state));
    parts.push_back({statesPart, QJsonDocument(array).toJson(QJsonDocument::Compact)});
    for (const FileState& state : states) {
        if (state.kind == FileState::Kind::File)
            parts.push_back({partName(state), state.bytes});
    }
    return parts;
}

std::optional<std::vector<FileState>> statesIn(const Record& record)
{
    if (record.before.empty() || record.before.front().name != statesPart)
        return std::nullopt;
    std::vector<FileState> states;
    for (const QJsonValue& value : QJsonDocument::fromJson(record.before.front().bytes).array()) {
        const auto state = stateFrom(value.toObject(), record);
        if (!state)
            return std::nullopt;
        states.push_back(*state);
    }
    return states;
}

std::optional<QString> beginFilesRecord(FileAccess& access, RecordCause cause,
                                        const std::vector<FileState>& states, SaveFault* fault)
{
    return recordsOf(access).begin(RecordedList::Files, cause, static_cast<int>(states.size()),
                                   partsOf(states), fault);
}

void finishFilesRecord(FileAccess& access, const Outcome& outcome, const QJsonArray& items)
{
    if (!outcome.recordId.isEmpty() &&
        !recordsOf(access).finish(outcome.recordId, outcome.state, {{u"files"_s, items}}))
        access.leaveRecordOpen();
}

} // namespace kalmo::operations
