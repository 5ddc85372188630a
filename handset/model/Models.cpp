#include "handset/model/Models.h"

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

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
    // The bell in one name and the semicolon in another are what those handsets really send.
    static const std::vector<Model> models = {
        {1, u"WOODSTOCK"_s},
        {2, u"WOODY"_s},
        {2, u"WOODY_C"_s},
        {3, u"GALICIA"_s},
        {3, u"CAMARGUE"_s},
        {4, u"PICASSO"_s},
        {5, u"BRUSSELS"_s, u"^WPPN: 4,S68H"_s},
        {5, u"BRUSSELS"_s, u"^WPPN: 4,SL55"_s},
        {5, u"BRUSSELS"_s, u"^WPPN: 4,SL56"_s},
        {5, u"BRUSSELS"_s, u"^WPPN: 8,M2 prof."_s},
        {5, u"BRUSSELS"_s, u"^WPPN: 11,M2 Ex prof."_s},
        {5, u"BRUSSELS"_s, u"^WPPN: 16,SL2 professional"_s},
        {5, u"BRUSSELS"_s, u"^WPPN: 8,To\a S600"_s},
        {5, u"BRUSSELS"_s, u"^WPPN: 10,Aton CL303"_s},
        {5, u"BRUSSELS"_s, u"^WPPN: 15,S3 professional"_s},
        {6, u"GAM"_s, u"^WPPN: 4,SL37"_s},
        {6, u"GAM"_s, u"^WPPN: 16,SL3 professional"_s},
        {7, u"BRUSSELS"_s, u"^WPPN: 9,Sinus 501"_s},
        {8, u"GAM2"_s, u"^WPPN: 5,SL78H"_s},
        {9, u"GAM2"_s, u"^WPPN: 4,S79H"_s},
        {9, u"GAM2"_s, u"^WPPN: 5,S810H"_s},
        {9, u"GAM2"_s, u"^WPPN: 15,S4 professional"_s},
        {10, u"BORNEO"_s, u"^WPPN: 16,SL4 professional"_s},
        {10, u"BORNEO"_s, u"^WPPN: 6,SL400H"_s},
        {10, u"BORNEO"_s, u"^WPPN: 6,SL350H"_s},
        {11, u"Kilby"_s, u"^WPPN: 13,M3 Plus prof."_s},
        {11, u"Kilby"_s, u"^WPPN: 8,M3 prof."_s},
        {11, u"Kilby"_s, u"^WPPN; 16,M3 Ex Plus prof."_s},
        {11, u"Kilby"_s, u"^WPPN: 11,M3 Ex prof."_s},
        {11, u"Kilby"_s, u"^WPPN: 8,S5 prof."_s},
        {11, u"Kilby"_s, u"^WPPN: 5,S850H"_s},
        {11, u"Kilby"_s, u"^WPPN: 6,S850HX"_s},
        {11, u"Kilby"_s, u"^WPPN: 9,S650H PRO"_s},
        {11, u"Kilby"_s, u"^WPPN: 13,PREMIUM 100HX"_s},
        {12, u"Shark"_s, u"^WPPN: 4,S820"_s},
        {12, u"Shark"_s, u"^WPPN: 7,SL450HX"_s},
        {12, u"Shark"_s, u"^WPPN: 6,SL450H"_s},
        {12, u"Shark"_s, u"^WPPN: 5,SL450"_s},
        {13, u"Raptor"_s, u"^WPPN: 8,SL5 prof"_s},
        {13, u"Raptor"_s, u"^WPPN: 9,SL5 prof."_s},
        {13, u"Raptor"_s, u"^WPPN: 10,SL5 prof.."_s},
        {13, u"Raptor"_s, u"^WPPN: 10,SL750H PRO"_s},
        {13, u"Raptor"_s, u"^WPPN: 7,CL660HX"_s},
        {13, u"Raptor"_s, u"^WPPN: 6,CL660H"_s},
        {13, u"Raptor"_s, u"^WPPN: 6,CL660A"_s},
        {13, u"Raptor"_s, u"^WPPN: 15,COMfortel M-520"_s},
        {13, u"Raptor"_s, u"^WPPN: 9,SL6 prof."_s},
        {13, u"Raptor"_s, u"^WPPN: 8,S6 prof."_s},
        {13, u"Raptor"_s, u"^WPPN: 8,R6 prof."_s},
        {13, u"Raptor"_s, u"^WPPN: 9,S700H PRO"_s},
        {13, u"Raptor"_s, u"^WPPN: 9,R700H PRO"_s},
        {13, u"Raptor"_s, u"^WPPN: 13,R700H protect"_s},
        {13, u"Raptor"_s, u"^WPPN: 9,SL7 prof."_s},
    };
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
