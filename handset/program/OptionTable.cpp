#include "handset/program/OptionTable.h"

#include "handset/model/Models.h"
#include "handset/program/PseudoTerminal.h"

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

using Problem = std::optional<QString>;

Setter text(QString Options::*field)
{
    return [field](CommandLine& line, const QString& value) -> Problem {
        line.options.*field = value;
        return std::nullopt;
    };
}

Problem toNumber(const QString& text, qint64 least, qint64 most, qint64& number)
{
    bool ok = false;
    number = text.toLongLong(&ok);
    if (ok && number >= least && number <= most)
        return std::nullopt;
    return u"\"%1\" is no number from %2 to %3."_s.arg(text, QString::number(least), QString::number(most));
}

template <typename Number>
Setter number(Number Options::*field, Number least, Number most)
{
    return [=](CommandLine& line, const QString& value) {
        qint64 number = 0;
        Problem problem = toNumber(value, least, most, number);
        line.options.*field = static_cast<Number>(number);
        return problem;
    };
}

/// One of several words.
template <typename Value, typename Field>
Setter choice(Field Options::*field, std::vector<std::pair<QString, Value>> values)
{
    return [=](CommandLine& line, const QString& value) -> Problem {
        QStringList words;
        for (const auto& [word, meaning] : values) {
            words.append(word);
            if (word != value)
                continue;
            line.options.*field = meaning;
            return std::nullopt;
        }
        return u"\"%1\" is none of %2."_s.arg(value, words.join(u", "_s));
    };
}

Setter print(std::function<QString()> text)
{
    return [text](CommandLine& line, const QString&) -> Problem {
        line.action = CommandLine::PrintText;
        line.text = text();
        return std::nullopt;
    };
}

Problem addRate(CommandLine& line, const QString& value)
{
    bool ok = false;
    const int rate = value.toInt(&ok);
    if (!ok || !PseudoTerminal::hasRate(rate))
        return u"A terminal can't have the rate \"%1\"."_s.arg(value);
    line.options.rates.append(rate);
    return std::nullopt;
}

Problem addListingForm(CommandLine& line, const QString& value)
{
    static const auto read =
        choice<ListingForm>(&Options::listing, {{u"plain"_s, ListingForm::Plain},
                                                {u"spaced"_s, ListingForm::Spaced},
                                                {u"half-spaced"_s, ListingForm::HalfSpaced},
                                                {u"one-line"_s, ListingForm::OneLine},
                                                {u"tight"_s, ListingForm::Tight}});
    CommandLine one;
    Problem problem = read(one, value);
    line.options.listing |= one.options.listing;
    return problem;
}

Problem addFault(CommandLine& line, const QString& value)
{
    return setFault(line.options.faults, value);
}

Problem setLink(CommandLine& line, const QString& value)
{
    line.link = value;
    return std::nullopt;
}

Problem endWithClient(CommandLine& line, const QString&)
{
    line.untilClosed = true;
    return std::nullopt;
}

QString modelList()
{
    QString out = u"family  AT+CGMM    name\n"_s;
    for (const Model& model : allModels()) {
        QString name = model.name();
        name.replace(u'\a', u"\\a"_s);
        out += u"%1  %2 %3\n"_s.arg(model.family, 6).arg(model.cgmm, -10).arg(name);
    }
    return out;
}

QString helpText()
{
    QString out =
        u"usage: kalmo-handset [OPTION]...\n\n"
        u"An emulated handset on a pseudo terminal. Prints the terminal's path when it is ready, and\n"
        u"runs until SIGTERM or SIGINT. SIGUSR1 switches the handset off and on again.\n\n"_s;
    for (const OptionRow& row : optionTable()) {
        const QString usage = row.argument.isEmpty() ? row.name : row.name + u' ' + row.argument;
        out += u"  --%1 %2\n"_s.arg(usage, -20).arg(row.help);
    }
    return out + u"\nExit status: 0 ended as asked, 1 no terminal or the memory can't be used, 2 wrong use,\n"
                 u"3 the client broke the protocol (what it did stands on stderr).\n"_s;
}

const std::vector<OptionRow> optionRows = {
    {u"model"_s, u"NAME"_s, u"handset, by its name or its answer to AT+CGMM; MODEM for a modem (PICASSO)"_s,
     text(&Options::model)},
    {u"list-models"_s, {}, u"lists the handsets"_s, print(modelList)},
    {u"cgmm"_s, u"TEXT"_s, u"an unknown model: its answer to AT+CGMM"_s, text(&Options::cgmm)},
    {u"wppn"_s, u"TEXT"_s, u"and to AT^WPPN, \"^WPPN: 4,S68X\" for example"_s, text(&Options::wppn)},
    {u"family"_s, u"N"_s, u"and the family like which it behaves"_s, number(&Options::family, 0, lastFamily)},
    {u"profile"_s, u"NAME"_s, u"own, or for clients of any phone general-sqwe or general-cprot (own)"_s,
     choice<Profile>(&Options::profile, {{u"own"_s, Profile::Own},
                                         {u"general-sqwe"_s, Profile::GeneralSqwe},
                                         {u"general-cprot"_s, Profile::GeneralCprot}})},
    {u"baud"_s, u"RATE"_s, u"answers at this rate; can be given several times"_s, addRate},
    {u"wrong-rate"_s, u"WHAT"_s, u"what it sends at other rates: silence or garbage (silence)"_s,
     choice<WrongRate>(&Options::wrongRate,
                       {{u"silence"_s, WrongRate::Silence}, {u"garbage"_s, WrongRate::Garbage}})},
    {u"line-end"_s, u"END"_s, u"how commands have to end: cr or crlf (as the family wants it)"_s,
     choice<LineEnd>(&Options::lineEnd, {{u"cr"_s, LineEnd::Cr}, {u"crlf"_s, LineEnd::CrLf}})},
    {u"state"_s, u"DIR"_s, u"folder of its memory; without one it forgets"_s, text(&Options::stateFolder)},
    {u"seed"_s, u"FILE"_s, u"what an empty memory starts with: a file, sample or none (sample)"_s,
     text(&Options::seed)},
    {u"entries"_s, u"N"_s, u"fills the phonebook up to N entries"_s, number(&Options::entries, 0, 99999)},
    {u"capacity"_s, u"N"_s, u"entries that the phonebook takes (as the family has it)"_s,
     number(&Options::capacity, 1, 99999)},
    {u"max-packet"_s, u"BYTES"_s, u"largest OBEX frame that it announces (as the family has it)"_s,
     number(&Options::maxPacket, 255, 65535)},
    {u"file-memory"_s, u"BYTES"_s, u"room for files (as the family has it)"_s,
     number<qint64>(&Options::fileMemory, 0, 0xFFFFFFFF)},
    {u"memory-card"_s, u"BYTES"_s, u"puts a memory card in"_s,
     number<qint64>(&Options::memoryCard, 1, 0xFFFFFFFF)},
    {u"listing"_s, u"FORM"_s,
     u"folder listings: plain, spaced, half-spaced, one-line, tight; can be given several times"_s,
     addListingForm},
    {u"size"_s, u"WHEN"_s, u"says an object's size: in-parts, never or always (in-parts)"_s,
     choice<SizeForm>(&Options::size, {{u"in-parts"_s, SizeForm::InParts},
                                       {u"never"_s, SizeForm::Never},
                                       {u"always"_s, SizeForm::Always}})},
    {u"cards"_s, u"FORM"_s, u"letters in contacts: raw, qp, folded, utf8 (as the family has it)"_s,
     choice<CardText>(&Options::cards, {{u"raw"_s, CardText::Raw},
                                        {u"qp"_s, CardText::QuotedPrintable},
                                        {u"folded"_s, CardText::Folded},
                                        {u"utf8"_s, CardText::Utf8}})},
    {u"saco-prefix"_s, u"YES|NO"_s, u"area codes after \"^SACO: \": yes or no (no)"_s,
     choice<bool>(&Options::areaCodePrefix, {{u"yes"_s, true}, {u"no"_s, false}})},
    {u"escape-answer"_s, u"YES|NO"_s, u"says OK to +++: yes or no (as the family has it)"_s,
     choice<bool>(&Options::answersEscape, {{u"yes"_s, true}, {u"no"_s, false}})},
    {u"own-card-luid"_s, u"YES|NO"_s, u"a LUID line in the handset's own card: yes or no (no)"_s,
     choice<bool>(&Options::ownCardLuid, {{u"yes"_s, true}, {u"no"_s, false}})},
    {u"counter-line"_s, u"YES|NO"_s, u"a line end after the change counter: yes or no (no)"_s,
     choice<bool>(&Options::counterLine, {{u"yes"_s, true}, {u"no"_s, false}})},
    {u"at-once"_s,
     {},
     u"takes no time of its own to answer, only the line's"_s,
     [](CommandLine& line, const QString&) -> Problem {
         line.options.atOnce = true;
         return std::nullopt;
     }},
    {u"fault"_s, u"NAME[=VALUE]"_s, u"what goes wrong; can be given several times"_s, addFault},
    {u"list-faults"_s, {}, u"lists the faults"_s, print(faultList)},
    {u"link"_s, u"PATH"_s, u"makes a symbolic link to the terminal"_s, setLink},
    {u"until-closed"_s, {}, u"ends when the client closes its port"_s, endWithClient},
    {u"help"_s, {}, u"prints this"_s, print(helpText)},
    {u"version"_s, {}, u"prints the version"_s, print([] {
         return QStringLiteral("kalmo-handset " KALMO_VERSION "\n");
     })},
};

} // namespace

const std::vector<OptionRow>& optionTable()
{
    return optionRows;
}

} // namespace kalmo::handset
