#include "app/mdlDebugLog.h"

#include "app/CodePage.h"
#include "app/mdlKonverter.h"

#include <QDir>
#include <QFile>

namespace kalmo::app {

using namespace Qt::StringLiterals;

namespace {

constexpr int tagWidth = 20;

QString header(const Sy& sy)
{
    const auto numbered = [](QStringView label, qint64 value) {
        return label.toString() + u'\t' + QString::number(value) + u'\n';
    };
    const auto worded = [](QStringView label, const QString& value) {
        return label.toString() + u'\t' + value + u'\n';
    };
    return u"----------------- Kalmo! - Debug Log ---------------------\n"_s +
           worded(u"           Date:", sy.startDate) + worded(u"     PrgVersion:", sy.PrgVersion) +
           u"   Sy.Paths.Exe:"_s + sy.Paths.Exe + u'\n' + u"  Paths.Storage:"_s + sy.Paths.Storage + u'\n' +
           u".DefUserExpRoot:"_s + sy.DefUserExpRoot + u'\n' +
           u"\n----------------- OS Info -----------------------------------\n"_s +
           numbered(u"    OS Platform:", sy.osVersion.platform) +
           numbered(u"OS MajorVersion:", sy.osVersion.major) +
           numbered(u"OS MinorVersion:", sy.osVersion.minor) +
           numbered(u"       OS Build:", sy.osVersion.build) +
           u"\n----------------- Screen Info -------------------------------\n"_s +
           numbered(u"        ScreenX:", sy.ScreenX) + numbered(u"        ScreenY:", sy.ScreenY) +
           numbered(u"         PixelX:", sy.PixelX) + numbered(u"         PixelY:", sy.PixelY) +
           u"\n----------------- COM ---------------------------------------\n"_s +
           numbered(u"          ComNo:", sy.ComNo) + worded(u"    ComSettings:", sy.ComSettings) +
           u"\n------------------- Program Startup ------------------------\n"_s +
           worded(u"        PhoneID:", sy.PhoneID) +
           worded(u"     PhoneIDHex:", HexFromText(toCp1252(sy.PhoneID))) +
           numbered(u"      PhoneType:", sy.PhoneType) + worded(u"       PhoneSVN:", sy.PhoneSVN) +
           worded(u" blnTxLfTermina:", sy.blnTxLfTerminator ? u"True"_s : u"False"_s) +
           worded(u"       StrStCom:", sy.StrStCom) +
           u"\n------------------- Program --------------------------------\n"_s;
}

} // namespace

DebugLog::DebugLog(Sy& sy, toolkit::Clock& clock, QString desktop)
    : m_sy(sy), m_clock(clock), m_desktop(std::move(desktop))
{
}

void DebugLog::WriteLogHeader()
{
    if (!isOn())
        return;
    if (m_sy.logPath.isEmpty())
        chooseFile();
    m_clock.WaitSeconds(0.2);
    write(header(m_sy), m_sy.logKeepsAll ? QIODevice::Append : QIODevice::Truncate);
}

void DebugLog::chooseFile()
{
    const QString name =
        u"Kalmo_debugFile_"_s + m_clock.Now().toString(u"dd-MM-yyyy  hh-mm-ss"_s) + u".log"_s;
    m_sy.logPath = QDir(m_desktop).filePath(name);
    QFile file(m_sy.logPath);
    if (m_desktop.isEmpty() || !QDir().mkpath(m_desktop) || !file.open(QIODevice::WriteOnly))
        m_sy.logPath = QDir::temp().filePath(name);
}

void DebugLog::write(const QString& text, QIODevice::OpenMode how)
{
    const QByteArray bytes = text.toUtf8();
    QFile file(m_sy.logPath);
    const bool isWritten =
        file.open(QIODevice::WriteOnly | how) && file.write(bytes) == bytes.size() && file.flush();
    if (!isWritten && m_fault.isEmpty())
        m_fault = file.errorString();
}

void DebugLog::WriteDebugLog(const QString& tag, QString text, bool keepRaw)
{
    if (!isOn())
        return;
    if (!keepRaw) {
        text.replace(u"\r\n"_s, u" #vbCRLF# "_s);
        text.replace(u"\r"_s, u" #vbCR# "_s);
        text.replace(u"\n"_s, u" #vblf# "_s);
    }
    const QString time = QString::number(m_clock.Timer(), 'f', 2).rightJustified(10, u'0');
    const QString line =
        u'@' + time + u": "_s + tag.rightJustified(tagWidth).right(tagWidth) + u":\t"_s + text + u'\n';
    write(line, QIODevice::Append);
}

} // namespace kalmo::app
