#include "transfer/export/DocxTarget.h"

#include "app/Version.h"
#include "transfer/export/ZipFile.h"

#include <QDateTime>
#include <QXmlStreamWriter>

#include <algorithm>
#include <utility>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

namespace {

// Lengths are in twentieths of a point.
constexpr int pageWidth = 16838; // A4, landscape
constexpr int pageHeight = 11906;
constexpr int pageMargin = 1134; // 2 cm
constexpr int cellMargin = 100;
constexpr int characterWidth = 115; // of the bold face, on average
constexpr int narrowestColumn = 700;
constexpr int widestColumn = 8000;

const QString mainSpace = u"http://schemas.openxmlformats.org/wordprocessingml/2006/main"_s;
const QString typesSpace = u"http://schemas.openxmlformats.org/package/2006/content-types"_s;
const QString relationsSpace = u"http://schemas.openxmlformats.org/package/2006/relationships"_s;
const QString officeRelation = u"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"_s;
const QString packageRelation = u"http://schemas.openxmlformats.org/package/2006/relationships/metadata/"_s;
const QString typeHead = u"application/vnd.openxmlformats-"_s;

using Attribute = std::pair<QStringView, QString>;

/// One XML part, written into memory.
class Part
{
public:
    Part() : m_xml(&m_bytes) { m_xml.writeStartDocument(u"1.0"_s, true); }

    void start(const QString& name, const std::vector<Attribute>& attributes = {})
    {
        m_xml.writeStartElement(name);
        add(attributes);
    }
    void empty(const QString& name, const std::vector<Attribute>& attributes = {})
    {
        m_xml.writeEmptyElement(name);
        add(attributes);
    }
    void text(const QString& text) { m_xml.writeCharacters(xmlText(text)); }
    void end(int count = 1)
    {
        for (; count > 0; --count)
            m_xml.writeEndElement();
    }
    QByteArray bytes()
    {
        m_xml.writeEndDocument();
        return m_bytes;
    }

private:
    void add(const std::vector<Attribute>& attributes)
    {
        for (const auto& [name, value] : attributes)
            m_xml.writeAttribute(name.toString(), value);
    }

    QByteArray m_bytes;
    QXmlStreamWriter m_xml;
};

QByteArray contentTypes()
{
    const std::pair<QString, QString> parts[] = {
        {u"/word/document.xml"_s, u"officedocument.wordprocessingml.document.main+xml"_s},
        {u"/word/styles.xml"_s, u"officedocument.wordprocessingml.styles+xml"_s},
        {u"/docProps/core.xml"_s, u"package.core-properties+xml"_s},
    };
    Part part;
    part.start(u"Types"_s, {{u"xmlns", typesSpace}});
    part.empty(u"Default"_s,
               {{u"Extension", u"rels"_s}, {u"ContentType", typeHead + u"package.relationships+xml"_s}});
    part.empty(u"Default"_s, {{u"Extension", u"xml"_s}, {u"ContentType", u"application/xml"_s}});
    for (const auto& [name, type] : parts)
        part.empty(u"Override"_s, {{u"PartName", name}, {u"ContentType", typeHead + type}});
    return part.bytes();
}

/// The parts that another one refers to: type and target of each.
QByteArray relations(const std::vector<std::pair<QString, QString>>& targets)
{
    Part part;
    part.start(u"Relationships"_s, {{u"xmlns", relationsSpace}});
    int number = 0;
    for (const auto& [type, target] : targets)
        part.empty(u"Relationship"_s,
                   {{u"Id", u"rId%1"_s.arg(++number)}, {u"Type", type}, {u"Target", target}});
    return part.bytes();
}

QByteArray properties(const QString& title)
{
    const QString now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    Part part;
    part.start(u"cp:coreProperties"_s,
               {{u"xmlns:cp", u"http://schemas.openxmlformats.org/package/2006/metadata/core-properties"_s},
                {u"xmlns:dc", u"http://purl.org/dc/elements/1.1/"_s},
                {u"xmlns:dcterms", u"http://purl.org/dc/terms/"_s},
                {u"xmlns:xsi", u"http://www.w3.org/2001/XMLSchema-instance"_s}});
    part.start(u"dc:title"_s);
    part.text(title);
    part.end();
    part.start(u"dc:creator"_s);
    part.text(app::productName());
    part.end();
    part.start(u"dcterms:created"_s, {{u"xsi:type", u"dcterms:W3CDTF"_s}});
    part.text(now);
    part.end();
    return part.bytes();
}

/// The one style of the text: the font, and no distance between paragraphs.
QByteArray styles()
{
    Part part;
    part.start(u"w:styles"_s, {{u"xmlns:w", mainSpace}});
    part.start(u"w:docDefaults"_s);
    part.start(u"w:rPrDefault"_s);
    part.start(u"w:rPr"_s);
    part.empty(u"w:rFonts"_s,
               {{u"w:ascii", u"Calibri"_s}, {u"w:hAnsi", u"Calibri"_s}, {u"w:cs", u"Calibri"_s}});
    part.empty(u"w:sz"_s, {{u"w:val", u"20"_s}}); // half points
    part.empty(u"w:lang"_s, {{u"w:val", u"de-DE"_s}});
    part.end(2);
    part.start(u"w:pPrDefault"_s);
    part.start(u"w:pPr"_s);
    part.empty(u"w:spacing"_s, {{u"w:before", u"20"_s}, {u"w:after", u"20"_s}});
    part.end(3);
    part.start(u"w:style"_s,
               {{u"w:type", u"paragraph"_s}, {u"w:default", u"1"_s}, {u"w:styleId", u"Normal"_s}});
    part.empty(u"w:name"_s, {{u"w:val", u"Normal"_s}});
    part.end();
    return part.bytes();
}

QList<int> columnWidths(const ExportTable& table, bool fitsWidths)
{
    constexpr int textWidth = pageWidth - 2 * pageMargin;
    QList<int> widths;
    for (int column = 0; column < table.columnCount; ++column) {
        const qsizetype fitted = table.widestText(column) * characterWidth + 2 * cellMargin;
        widths.append(fitsWidths
                          ? static_cast<int>(std::clamp<qsizetype>(fitted, narrowestColumn, widestColumn))
                          : textWidth / table.columnCount);
    }
    return widths;
}

/// Writes the main part.
class Document
{
public:
    Document(const ExportTable& table, const OfficeLook& look)
        : m_table(table), m_look(look), m_widths(columnWidths(table, look.fitsWidths))
    {
    }

    QByteArray bytes()
    {
        m_part.start(u"w:document"_s, {{u"xmlns:w", mainSpace}});
        m_part.start(u"w:body"_s);
        addTable();
        m_part.empty(u"w:p"_s); // a body must not end with a table
        m_part.start(u"w:sectPr"_s);
        m_part.empty(u"w:pgSz"_s, {{u"w:w", QString::number(pageWidth)},
                                   {u"w:h", QString::number(pageHeight)},
                                   {u"w:orient", u"landscape"_s}});
        const QString margin = QString::number(pageMargin);
        m_part.empty(u"w:pgMar"_s, {{u"w:top", margin},
                                    {u"w:right", margin},
                                    {u"w:bottom", margin},
                                    {u"w:left", margin},
                                    {u"w:header", u"567"_s},
                                    {u"w:footer", u"567"_s},
                                    {u"w:gutter", u"0"_s}});
        return m_part.bytes();
    }

private:
    void addTable()
    {
        m_part.start(u"w:tbl"_s);
        addTableProperties();
        m_part.start(u"w:tblGrid"_s);
        for (const int width : m_widths)
            m_part.empty(u"w:gridCol"_s, {{u"w:w", QString::number(width)}});
        m_part.end();
        if (m_table.hasHeader())
            addRow(m_table.headings, RowKind::Header);
        if (m_table.hasEmptyLine)
            addRow(QStringList(m_table.columnCount), RowKind::Data);
        for (const QStringList& row : m_table.rows)
            addRow(row, RowKind::Data);
        m_part.end();
    }

    void addTableProperties()
    {
        m_part.start(u"w:tblPr"_s);
        if (m_look.fitsWidths)
            m_part.empty(u"w:tblW"_s, {{u"w:w", u"0"_s}, {u"w:type", u"auto"_s}});
        else
            m_part.empty(u"w:tblW"_s, {{u"w:w", u"5000"_s}, {u"w:type", u"pct"_s}}); // fiftieths of a percent
        m_part.start(u"w:tblBorders"_s);
        for (const QStringView edge : {u"top", u"left", u"bottom", u"right", u"insideH", u"insideV"})
            m_part.empty(u"w:%1"_s.arg(edge), {{u"w:val", u"single"_s},
                                               {u"w:sz", u"4"_s}, // eighths of a point
                                               {u"w:space", u"0"_s},
                                               {u"w:color", u"B4B8BE"_s}});
        m_part.end();
        m_part.empty(u"w:tblLayout"_s, {{u"w:type", m_look.fitsWidths ? u"autofit"_s : u"fixed"_s}});
        m_part.start(u"w:tblCellMar"_s);
        for (const QStringView edge : {u"left", u"right"})
            m_part.empty(u"w:%1"_s.arg(edge), {{u"w:w", QString::number(cellMargin)}, {u"w:type", u"dxa"_s}});
        m_part.end(2);
    }

    enum class RowKind { Header, Data };

    void addRow(const QStringList& cells, RowKind kind)
    {
        m_part.start(u"w:tr"_s);
        m_part.start(u"w:trPr"_s);
        m_part.empty(u"w:cantSplit"_s);
        if (kind == RowKind::Header)
            m_part.empty(u"w:tblHeader"_s);
        m_part.end();
        for (qsizetype column = 0; column < m_table.columnCount; ++column)
            addCell(cells[column], m_widths[column], kind);
        m_part.end();
    }

    void addCell(const QString& text, int width, RowKind kind)
    {
        m_part.start(u"w:tc"_s);
        m_part.start(u"w:tcPr"_s);
        m_part.empty(u"w:tcW"_s, {{u"w:w", QString::number(width)}, {u"w:type", u"dxa"_s}});
        if (kind == RowKind::Header)
            m_part.empty(u"w:shd"_s,
                         {{u"w:val", u"clear"_s}, {u"w:color", u"auto"_s}, {u"w:fill", u"E4ECF4"_s}});
        m_part.end();
        m_part.start(u"w:p"_s);
        if (!text.isEmpty()) {
            m_part.start(u"w:r"_s);
            if (kind == RowKind::Header) {
                m_part.start(u"w:rPr"_s);
                m_part.empty(u"w:b"_s);
                m_part.end();
            }
            m_part.start(u"w:t"_s, {{u"xml:space", u"preserve"_s}});
            m_part.text(text);
            m_part.end(2);
        }
        m_part.end(2);
    }

    const ExportTable& m_table;
    const OfficeLook& m_look;
    QList<int> m_widths;
    Part m_part;
};

} // namespace

std::optional<QByteArray> docxBytes(const ExportTable& table, const OfficeLook& look)
{
    // File managers tell the kind of a file by its first parts.
    return zipBytes({
        {"[Content_Types].xml", contentTypes()},
        {"_rels/.rels", relations({{officeRelation + u"officeDocument"_s, u"word/document.xml"_s},
                                   {packageRelation + u"core-properties"_s, u"docProps/core.xml"_s}})},
        {"word/document.xml", Document(table, look).bytes()},
        {"word/_rels/document.xml.rels", relations({{officeRelation + u"styles"_s, u"styles.xml"_s}})},
        {"word/styles.xml", styles()},
        {"docProps/core.xml", properties(app::productName() + u" - "_s + look.title)},
    });
}

} // namespace kalmo::transfer
