#include "handset/model/Models.h"

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

struct ModelRow
{
    int family;
    QStringView cgmm;
    QStringView wppn = {};
};

// Those handsets really send the bell in one name and the semicolon in another.
constexpr ModelRow modelTable[] = {
    {1, u"WOODSTOCK"},
    {2, u"WOODY"},
    {2, u"WOODY_C"},
    {3, u"GALICIA"},
    {3, u"CAMARGUE"},
    {4, u"PICASSO"},
    {5, u"BRUSSELS", u"^WPPN: 4,S68H"},
    {5, u"BRUSSELS", u"^WPPN: 4,SL55"},
    {5, u"BRUSSELS", u"^WPPN: 4,SL56"},
    {5, u"BRUSSELS", u"^WPPN: 8,M2 prof."},
    {5, u"BRUSSELS", u"^WPPN: 11,M2 Ex prof."},
    {5, u"BRUSSELS", u"^WPPN: 16,SL2 professional"},
    {5, u"BRUSSELS", u"^WPPN: 8,To\a S600"},
    {5, u"BRUSSELS", u"^WPPN: 10,Aton CL303"},
    {5, u"BRUSSELS", u"^WPPN: 15,S3 professional"},
    {6, u"GAM", u"^WPPN: 4,SL37"},
    {6, u"GAM", u"^WPPN: 16,SL3 professional"},
    {7, u"BRUSSELS", u"^WPPN: 9,Sinus 501"},
    {8, u"GAM2", u"^WPPN: 5,SL78H"},
    {9, u"GAM2", u"^WPPN: 4,S79H"},
    {9, u"GAM2", u"^WPPN: 5,S810H"},
    {9, u"GAM2", u"^WPPN: 15,S4 professional"},
    {10, u"BORNEO", u"^WPPN: 16,SL4 professional"},
    {10, u"BORNEO", u"^WPPN: 6,SL400H"},
    {10, u"BORNEO", u"^WPPN: 6,SL350H"},
    {11, u"Kilby", u"^WPPN: 13,M3 Plus prof."},
    {11, u"Kilby", u"^WPPN: 8,M3 prof."},
    {11, u"Kilby", u"^WPPN; 16,M3 Ex Plus prof."},
    {11, u"Kilby", u"^WPPN: 11,M3 Ex prof."},
    {11, u"Kilby", u"^WPPN: 8,S5 prof."},
    {11, u"Kilby", u"^WPPN: 5,S850H"},
    {11, u"Kilby", u"^WPPN: 6,S850HX"},
    {11, u"Kilby", u"^WPPN: 9,S650H PRO"},
    {11, u"Kilby", u"^WPPN: 13,PREMIUM 100HX"},
    {12, u"Shark", u"^WPPN: 4,S820"},
    {12, u"Shark", u"^WPPN: 7,SL450HX"},
    {12, u"Shark", u"^WPPN: 6,SL450H"},
    {12, u"Shark", u"^WPPN: 5,SL450"},
    {13, u"Raptor", u"^WPPN: 8,SL5 prof"},
    {13, u"Raptor", u"^WPPN: 9,SL5 prof."},
    {13, u"Raptor", u"^WPPN: 10,SL5 prof.."},
    {13, u"Raptor", u"^WPPN: 10,SL750H PRO"},
    {13, u"Raptor", u"^WPPN: 7,CL660HX"},
    {13, u"Raptor", u"^WPPN: 6,CL660H"},
    {13, u"Raptor", u"^WPPN: 6,CL660A"},
    {13, u"Raptor", u"^WPPN: 15,COMfortel M-520"},
    {13, u"Raptor", u"^WPPN: 9,SL6 prof."},
    {13, u"Raptor", u"^WPPN: 8,S6 prof."},
    {13, u"Raptor", u"^WPPN: 8,R6 prof."},
    {13, u"Raptor", u"^WPPN: 9,S700H PRO"},
    {13, u"Raptor", u"^WPPN: 9,R700H PRO"},
    {13, u"Raptor", u"^WPPN: 13,R700H protect"},
    {13, u"Raptor", u"^WPPN: 9,SL7 prof."},
};

/// Without control characters, so that it can be typed, and in one case.
QString typeable(const QString& name)
{
    QString out;
    for (const QChar character : name) {
        if (character.unicode() >= u' ')
            out += character.toUpper();
    }
    return out;
}

const Model& modem()
{
    static const Model model{0, u"Standard Modem 56K"_s};
    return model;
}

} // namespace

QString Model::name() const
{
    return wppn.isEmpty() ? cgmm : wppn.sliced(wppn.indexOf(u',') + 1);
}

const std::vector<Model>& allModels()
{
    static const std::vector<Model> models = [] {
        std::vector<Model> all;
        for (const ModelRow& row : modelTable)
            all.push_back({row.family, row.cgmm.toString(), row.wppn.toString()});
        return all;
    }();
    return models;
}

std::optional<Model> findModel(const QString& name)
{
    const QString wanted = typeable(name);
    if (wanted == u"MODEM")
        return modem();
    for (const Model& model : allModels()) {
        if (typeable(model.cgmm) == wanted || typeable(model.name()) == wanted ||
            typeable(model.wppn) == wanted)
            return model;
    }
    return std::nullopt;
}

} // namespace kalmo::handset
