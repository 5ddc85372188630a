#pragma once

#include "handset/Faults.h"
#include "handset/irmc/ContactCard.h"
#include "handset/model/Families.h"

#include <QList>
#include <QString>

#include <optional>

namespace kalmo::handset {

/// What comes back at a rate that the handset doesn't speak.
enum class WrongRate { Silence, Garbage };

/// How a folder listing is spelled. Handsets differ, and all of it has to be understood.
enum class ListingForm {
    Plain = 0,      ///< one element a line, a blank before "/>"
    Spaced = 1,     ///< size = "10"
    HalfSpaced = 2, ///< size ="10"
    OneLine = 4,    ///< no line breaks between the elements
    Tight = 8,      ///< no blank before "/>"
};
Q_DECLARE_FLAGS(ListingForms, ListingForm)
Q_DECLARE_OPERATORS_FOR_FLAGS(ListingForms)

/// Whether the first frame of a GET says the object's size.
enum class SizeForm {
    InParts, ///< where the object takes several frames
    Never,
    Always,
};

/// With whom the handset gets on. The general profiles bear the manners of clients for any phone, and note no
/// violations.
enum class Profile {
    Own,          ///< as its kind
    GeneralSqwe,  ///< into data mode by AT^SQWE=3, echo off from the start
    GeneralCprot, ///< into data mode by AT+CPROT=0, and out of it when OBEX disconnects
};

/// Which handset, with what in it, and how it behaves.
struct Options
{
    QString model = QStringLiteral("PICASSO"); ///< as findModel() takes it

    // A device that is in no table: takes the place of `model` where `cgmm` is not empty.
    QString cgmm = {};
    QString wppn = {};
    int family = 0;

    QList<int> rates = {};               ///< baud; empty for those of the family
    std::optional<LineEnd> lineEnd = {}; ///< nothing for that of the family
    WrongRate wrongRate = WrongRate::Silence;

    QString stateFolder = {}; ///< where the handset's memory lies; empty for a handset that forgets
    /// File that a handset without a memory starts with; "sample" for the one that comes with the program,
    /// "none" for an empty handset.
    QString seed = QStringLiteral("sample");
    int entries = 0;  ///< the phonebook is filled up to so many entries
    int capacity = 0; ///< entries that the phonebook takes; 0 for that of the family

    Profile profile = Profile::Own;
    int maxPacket = 0;      ///< bytes of a frame, as the handset announces it; 0 for that of the family
    qint64 fileMemory = -1; ///< bytes for files; -1 for those of the family
    qint64 memoryCard = 0;  ///< bytes of the memory card; 0 for none
    ListingForms listing = ListingForm::Plain;
    SizeForm size = SizeForm::InParts;
    std::optional<CardText> cards = {};     ///< nothing for the way of the family
    std::optional<bool> answersEscape = {}; ///< whether "+++" is answered; nothing for the way of the family
    bool counterLine = false;               ///< a line end behind the number in "cc.log"
    bool areaCodePrefix = false;            ///< "^SACO: " before the area codes
    bool atOnce = false; ///< answers without taking its time, so that only the line's is left

    Faults faults = {};
};

} // namespace kalmo::handset
