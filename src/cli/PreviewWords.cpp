// A preview as JSON and as a table.

#include "cli/ImportWork.h"
#include "cli/Tables.h"

#include <QJsonArray>
#include <QJsonObject>

#include <array>

namespace kalmo::cli {

using transfer::Preview;
using transfer::PreviewRow;
using transfer::Shape;

namespace {

QJsonValue separatorWord(const Preview& preview)
{
    constexpr std::array<QStringView, 3> words = {u"comma", u"semicolon", u"tab"};
    if (!preview.text)
        return QJsonValue::Null;
    return words[static_cast<size_t>(preview.text->options.layout.separator)].toString();
}

QJsonValue encodingWord(const Preview& preview)
{
    constexpr std::array<QStringView, 3> words = {u"ansi", u"utf-8", u"utf-16"};
    if (!preview.text)
        return QJsonValue::Null;
    return words[static_cast<size_t>(preview.text->options.encoding)].toString();
}

QJsonValue readingWord(const Preview& preview)
{
    if (!preview.text)
        return QJsonValue::Null;
    return preview.text->options.layout.reading == transfer::Reading::Csv ? u"csv"_s : u"simple"_s;
}

QJsonValue quoteText(const Preview& preview)
{
    if (!preview.text)
        return QJsonValue::Null;
    const transfer::TextLayout& layout = preview.text->options.layout;
    return layout.reading == transfer::Reading::Csv ? QString(transfer::csvQuoteOf(layout)) : layout.filter;
}

QJsonObject fieldsJson(const Preview& preview)
{
    QJsonObject object;
    const auto fields = transfer::fieldsOf(preview.shape);
    for (size_t field = 0; field < fields.size(); ++field) {
        const int column = preview.text ? preview.text->options.columns[field] : transfer::noColumn;
        const QJsonValue heading = column >= 0 && column < preview.text->headings.size()
                                       ? QJsonValue(preview.text->headings[column])
                                       : QJsonValue(QJsonValue::Null);
        object.insert(fields[field].key, heading);
    }
    return object;
}

QJsonObject rowJson(const PreviewRow& row, Shape shape)
{
    QJsonObject object;
    QJsonArray red;
    const auto fields = transfer::fieldsOf(shape);
    for (size_t field = 0; field < fields.size(); ++field) {
        object.insert(fields[field].key, row.cells[field]);
        if (row.colours[field] == transfer::Colour::Red)
            red.append(fields[field].key.toString());
    }
    object.insert(u"checked"_s, row.checked);
    object.insert(u"red"_s, red);
    object.insert(u"exists"_s, row.exists);
    return object;
}

/// A remark after a row of the table.
QString remark(const PreviewRow& row, Shape shape)
{
    if (row.exists)
        return u"exists already"_s;
    if (!row.isComplete(shape))
        return shape == Shape::Classic ? u"name or number missing"_s : u"no number"_s;
    QStringList tooLong;
    const auto fields = transfer::fieldsOf(shape);
    for (size_t field = 0; field < fields.size(); ++field) {
        if (row.colours[field] == transfer::Colour::Red)
            tooLong.append(fields[field].key.toString());
    }
    return tooLong.isEmpty() ? QString() : u"too long: "_s + tooLong.join(u", "_s);
}

} // namespace

QJsonObject previewJson(const Preview& preview)
{
    QJsonArray hints;
    for (const transfer::ImportHint& hint : preview.hints) {
        const QString option = transfer::optionOf(hint);
        hints.append(
            QJsonObject{{u"kind"_s, transfer::textOf(hint.kind).key.toString()},
                        {u"count"_s, hint.count},
                        {u"example"_s, hint.example},
                        {u"option"_s, option.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(option)}});
    }
    QJsonArray rows;
    for (const PreviewRow& row : preview.rows)
        rows.append(rowJson(row, preview.shape));
    return {{u"separator"_s, separatorWord(preview)},
            {u"quote"_s, quoteText(preview)},
            {u"encoding"_s, encodingWord(preview)},
            {u"reading"_s, readingWord(preview)},
            {u"columns"_s, QJsonArray::fromStringList(preview.text ? preview.text->headings : QStringList())},
            {u"fields"_s, fieldsJson(preview)},
            {u"checked"_s, preview.checkedCount()},
            {u"existing"_s, preview.existingCount()},
            {u"hints"_s, hints},
            {u"rows"_s, rows}};
}

QString previewTable(const Preview& preview)
{
    const bool isClassic = preview.shape == Shape::Classic;
    const QStringList headings =
        isClassic ? QStringList{u" "_s, u"Name"_s, u"Number"_s, u"Birthday"_s, u"Remark"_s}
                  : QStringList{u" "_s,    u"Last name"_s, u"First name"_s, u"Home"_s,  u"Mobile"_s,
                                u"Work"_s, u"E-mail"_s,    u"Birthday"_s,   u"Remark"_s};
    std::vector<QStringList> lines;
    for (const PreviewRow& row : preview.rows) {
        QStringList line{row.checked ? u"x"_s : u"-"_s};
        for (size_t field = 0; field < transfer::fieldsOf(preview.shape).size(); ++field)
            line.append(row.cells[field]);
        lines.push_back(line << remark(row, preview.shape));
    }
    return alignedTable(headings, lines) +
           u"%1 of %2 to be imported, %3 exist already.\n"_s.arg(preview.checkedCount())
               .arg(preview.rows.size())
               .arg(preview.existingCount());
}

QString hintLines(const Preview& preview)
{
    QString lines;
    for (const transfer::ImportHint& hint : preview.hints) {
        const QString option = transfer::optionOf(hint);
        lines += u"warning: "_s + printable(transfer::englishOf(hint)) +
                 (option.isEmpty() ? u".\n"_s : u"; see %1.\n"_s.arg(option));
    }
    return lines;
}

} // namespace kalmo::cli
