#pragma once

#include "handset/Faults.h"
#include "handset/irmc/ContactCard.h"
#include "handset/model/Families.h"

#include <QList>
#include <QString>

#include <optional>

namespace kalmo::handset {

/// Answer at a rate that the handset doesn't support.
enum class WrongRate { Silence, Garbage };

/// Spelling of a folder listing. Handsets differ, and a client has to understand all of them.
enum class ListingForm {
    Plain = 0,      ///< one element a line, a blank before "/>"
    Spaced = 1,     ///< size = "10"
    HalfSpaced = 2, ///< size ="10"
    OneLine = 4,    ///< no line breaks between the elements
    Tight = 8,      ///< no blank before "/>"
};
Q_DECLARE_FLAGS(ListingForms, ListingForm)
Q_DECLARE_OPERATORS_FOR_FLAGS(ListingForms)

/// First frames of a GET that hold the object's size.
enum class SizeForm {
    InParts, ///< where the object takes several frames
    Never,
    Always,
};

/// Kind of client that the handset supports. The general profiles follow the manners of clients for any
/// phone, and note no violations.
enum class Profile {
    Own,          ///< as its kind
    GeneralSqwe,  ///< into data mode by AT^SQWE=3, echo off from the start
    GeneralCprot, ///< into data mode by AT+CPROT=0, and out of it when OBEX disconnects
};

/// Model, content and behaviour of a handset.
struct Options
{
    QString model = QStringLiteral("PICASSO"); ///< as findModel() takes it

    // A device that is in no table. It replaces `model` if `cgmm` is not empty.
    QString cgmm = {};
    QString wppn = {};
    int family = 0;

    QList<int> rates = {};               ///< baud; empty for those of the family
    std::optional<LineEnd> lineEnd = {}; ///< nothing for that of the family
    WrongRate wrongRate = WrongRate::Silence;

    QString stateFolder = {}; ///< folder of the handset's memory; empty for a handset that forgets
    /// File with the content of a handset without a memory: "sample" for the one in the program, "none" for
    /// an empty handset.
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
    std::optional<bool> answersEscape = {}; ///< answers "+++"; nothing for the default of the family
    bool counterLine = false;               ///< a line end after the number in "cc.log"
    bool ownCardLuid = false;               ///< the handset's own card has a LUID line like a contact's
    bool areaCodePrefix = false;            ///< "^SACO: " before the area codes
    bool atOnce = false; ///< answers without a delay of its own, so that only the line's is left

    Faults faults = {};
};

} // namespace kalmo::handset
