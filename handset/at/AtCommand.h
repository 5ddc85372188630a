#pragma once

#include "handset/Phone.h"
#include "handset/Seams.h"

#include <QFlags>

#include <span>

namespace kalmo::handset {

/// The four ways in which a command can be given.
enum class Form {
    Run = 1,  ///< AT+CSQ
    Read = 2, ///< AT+CCLK?
    Test = 4, ///< AT+CPROT=?
    Set = 8,  ///< AT+CCLK=...
};
Q_DECLARE_FLAGS(Forms, Form)
Q_DECLARE_OPERATORS_FOR_FLAGS(Forms)

struct AtRequest
{
    QByteArray name = {}; ///< the text after "AT", in capitals: "Z", "+CGMM", "^WSRE"
    Form form = Form::Run;
    QByteArray argument = {}; ///< the text after "=", or the digits of a basic command such as "E0"

    /// As it came, for messages.
    QByteArray text() const;
};

/// Parses a command line. `line` begins with "AT" and has no line end.
AtRequest parseAtLine(const QByteArray& line);

/// Numbers of "+CME ERROR:", from 3GPP TS 27.007, 9.2.
enum CmeError {
    NotAllowed = 3,
    NotSupported = 4,
    MemoryFull = 20,
    TextTooLong = 24,
    BadCharacters = 25,
    BadIndex = 21
};

struct AtAnswer
{
    enum Result { Ok, Error, Connect, Silence } result = Ok;
    QByteArray payload = {}; ///< without its last line end; its inner line ends are CR LF
    CmeError why = NotSupported;
    double seconds = 0; ///< that the command needs in addition to its usual time
    enum Then { StayInCommandMode, EnterDataMode } then = StayInCommandMode;

    static AtAnswer ok(const QByteArray& payload = {}, double seconds = 0)
    {
        return {.payload = payload, .seconds = seconds};
    }
    static AtAnswer error(CmeError why) { return {.result = Error, .why = why}; }
};

/// The state that AT commands work on.
struct AtContext
{
    Phone& phone;
    const TimeSource& time;
    bool& echo;
    int& cmeLevel; ///< 0: "ERROR"; 1 and 2: "+CME ERROR:" with its number
};

/// Line end of a command in families that want CR.
enum class Ending {
    Cr,
    CrLf,
    Either,  ///< sent before the client knows the model
    ByStore, ///< CR LF for entries of the phonebook, else CR
};

/// One row of the command table.
struct AtCommand
{
    const char* name;
    Forms forms;
    FamilySet families;
    double seconds; ///< from the end of the line to the answer
    AtAnswer (*run)(AtContext&, const AtRequest&);
    bool whileStoreIsOpen = false;
    Ending ending = Ending::Cr;
};

/// Runs a command that needs an OK and nothing else.
AtAnswer onlyOk(AtContext& context, const AtRequest& request);

std::span<const AtCommand> basicCommands();
std::span<const AtCommand> statusCommands();
std::span<const AtCommand> storeCommands();
std::span<const AtCommand> soundCommands();
std::span<const AtCommand> modeCommands();
/// Reads or sets the clock; general clients expect that of every handset.
AtAnswer clockCommand(AtContext& context, const AtRequest& request);
/// Further commands of general clients, for the profile; none in the handset's own.
std::span<const AtCommand> generalCommands(Profile profile);

/// The row for a request, null if the handset has no such command.
const AtCommand* findCommand(const AtRequest& request, const Phone& phone);

} // namespace kalmo::handset
