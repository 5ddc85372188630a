#include "ui/controls/ShortDate.h"

#include "phonedata/EntryRules.h"

#include <QRegularExpression>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstYearOfTwoDigits = 1930;

int fullYear(int year)
{
    if (year >= 100)
        return year;
    return year < firstYearOfTwoDigits % 100 ? 2000 + year : 1900 + year;
}

/// The order of the letters d, M and y in a pattern.
QString orderOf(const QString& pattern)
{
    QString order;
    for (const QChar character : pattern) {
        if (QStringView(u"dMy").contains(character) && !order.contains(character))
            order.append(character);
    }
    return order;
}

QDate fromNumbers(const QList<int>& numbers, QString order, bool yearFirst, QDate today)
{
    if (numbers.size() == 2) {
        order.remove(u'y');
        return phonedata::dayWithoutYear(today.year(), numbers[order.indexOf(u'M')],
                                         numbers[order.indexOf(u'd')]);
    }
    if (yearFirst)
        order = u"yMd"_s;
    return {fullYear(numbers[order.indexOf(u'y')]), numbers[order.indexOf(u'M')],
            numbers[order.indexOf(u'd')]};
}

} // namespace

QString shortDatePattern(const QLocale& locale)
{
    QString pattern = locale.dateFormat(QLocale::ShortFormat);
    const bool numbers = orderOf(pattern).size() == 3 && !pattern.contains(u"MMM"_s) &&
                         !pattern.contains(u"ddd"_s) && !pattern.contains(u'\'');
    if (!numbers || locale.language() == QLocale::C)
        return u"dd.MM.yyyy"_s;
    if (!pattern.contains(u"yyyy"_s))
        pattern.replace(QRegularExpression(u"y+"_s), u"yyyy"_s);
    return pattern;
}

QString toShortDate(QDate date, const QLocale& locale)
{
    return locale.toString(date, shortDatePattern(locale));
}

QDate fromShortDate(const QString& text, const QLocale& locale, QDate today)
{
    static const QRegularExpression numeric(u"^\\s*(\\d{1,4})[./\\- ]+(\\d{1,2})(?:[./\\- ]+(\\d{1,4}))?"
                                            u"[./\\- ]*$"_s);
    const QRegularExpressionMatch match = numeric.match(text);
    if (!match.hasMatch()) {
        const QDate date = locale.toDate(text.trimmed(), QLocale::LongFormat);
        return date.isValid() ? date : locale.toDate(text.trimmed(), shortDatePattern(locale));
    }
    QList<int> numbers;
    for (int group = 1; group <= match.lastCapturedIndex(); ++group)
        numbers.append(match.captured(group).toInt());
    return fromNumbers(numbers, orderOf(shortDatePattern(locale)), match.capturedLength(1) == 4, today);
}

} // namespace kalmo::ui
