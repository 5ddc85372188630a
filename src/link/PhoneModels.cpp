#include "link/PhoneModels.h"

#include "app/mdlKonverter.h"

#include <algorithm>
#include <array>

namespace kalmo::link {

using namespace Qt::StringLiterals;

namespace {

struct CgmmRow
{
    QStringView answer;
    FirstStage result;
};

constexpr FirstStage second{0, true};

constexpr std::array<CgmmRow, 13> cgmmTable = {{
    {u"WOODSTOCK", {1, false}},
    {u"WOODY", {2, false}},
    {u"WOODY_C", {2, false}},
    {u"GALICIA", {3, false}},
    {u"CAMARGUE", {3, false}},
    {u"PICASSO", {4, false}},
    {u"BRUSSELS", second},
    {u"GAM2", second},
    {u"GAM", second},
    {u"BORNEO", second},
    {u"Kilby", second},
    {u"Shark", second},
    {u"Raptor", second},
}};

struct WppnRow
{
    int phoneType;
    QStringView answer;
};

// The control character in one name and the semicolon in another are in the table on purpose. A phone that
// answers otherwise needs an alias.
constexpr WppnRow wppnTable[] = {
    {6, u"^WPPN: 4,SL37"},
    {6, u"^WPPN: 16,SL3 professional"},
    {5, u"^WPPN: 4,SL55"},
    {5, u"^WPPN: 4,SL56"},
    {5, u"^WPPN: 8,M2 prof."},
    {5, u"^WPPN: 11,M2 Ex prof."},
    {5, u"^WPPN: 16,SL2 professional"},
    {5, u"^WPPN: 8,To\a S600"},
    {5, u"^WPPN: 10,Aton CL303"},
    {5, u"^WPPN: 4,S68H"},
    {5, u"^WPPN: 15,S3 professional"},
    {7, u"^WPPN: 9,Sinus 501"},
    {8, u"^WPPN: 5,SL78H"},
    {9, u"^WPPN: 4,S79H"},
    {9, u"^WPPN: 5,S810H"},
    {9, u"^WPPN: 15,S4 professional"},
    {10, u"^WPPN: 16,SL4 professional"},
    {10, u"^WPPN: 6,SL400H"},
    {10, u"^WPPN: 6,SL350H"},
    {11, u"^WPPN: 13,M3 Plus prof."},
    {11, u"^WPPN: 8,M3 prof."},
    {11, u"^WPPN; 16,M3 Ex Plus prof."},
    {11, u"^WPPN: 11,M3 Ex prof."},
    {11, u"^WPPN: 8,S5 prof."},
    {11, u"^WPPN: 5,S850H"},
    {11, u"^WPPN: 6,S850HX"},
    {11, u"^WPPN: 9,S650H PRO"},
    {11, u"^WPPN: 13,PREMIUM 100HX"},
    {12, u"^WPPN: 4,S820"},
    {12, u"^WPPN: 7,SL450HX"},
    {12, u"^WPPN: 6,SL450H"},
    {12, u"^WPPN: 5,SL450"},
    {13, u"^WPPN: 8,SL5 prof"},
    {13, u"^WPPN: 9,SL5 prof."},
    {13, u"^WPPN: 10,SL5 prof.."},
    {13, u"^WPPN: 10,SL750H PRO"},
    {13, u"^WPPN: 7,CL660HX"},
    {13, u"^WPPN: 6,CL660H"},
    {13, u"^WPPN: 6,CL660A"},
    {13, u"^WPPN: 15,COMfortel M-520"},
    {13, u"^WPPN: 9,SL6 prof."},
    {13, u"^WPPN: 8,S6 prof."},
    {13, u"^WPPN: 8,R6 prof."},
    {13, u"^WPPN: 9,S700H PRO"},
    {13, u"^WPPN: 9,R700H PRO"},
    {13, u"^WPPN: 13,R700H protect"},
    {13, u"^WPPN: 9,SL7 prof."},
};

} // namespace

std::optional<FirstStage> lookUpCgmm(const QString& answer)
{
    for (const CgmmRow& row : cgmmTable) {
        if (row.answer == answer)
            return row.result;
    }
    return std::nullopt;
}

int lookUpWppn(const QString& answer)
{
    for (const WppnRow& row : wppnTable) {
        if (row.answer == answer)
            return row.phoneType;
    }
    return 0;
}

bool showsWppn(const QString& cgmmAnswer)
{
    constexpr std::array<QStringView, 4> models = {u"BRUSSELS", u"GAM2", u"GAM", u"BORNEO"};
    return std::find(models.begin(), models.end(), cgmmAnswer) != models.end();
}

bool ParseWppn(const QString& raw, QString& modelName)
{
    if (raw.size() < 3 || !raw.contains(u"^WPPN:"_s))
        return false;
    QString text = raw;
    text = text.remove(u"^WPPN:"_s).trimmed();
    const qsizetype comma = text.indexOf(u',');
    if (comma < 0 || text.size() < 5)
        return false;
    const QString name = text.sliced(comma + 1);
    if (!app::IsNumeric(QStringView(text).first(comma)) ||
        app::Val(QStringView(text).first(comma)) != name.size())
        return false;
    modelName = name;
    return true;
}

QString modelName(const QString& rawId)
{
    QString name;
    return (ParseWppn(rawId, name) ? name : rawId).simplified();
}

} // namespace kalmo::link
