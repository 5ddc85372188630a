#pragma once

#include "link/mdlComm.h"

#include <optional>

namespace kalmo::obex {

/// Switches the line between AT commands and OBEX frames; nothing else changes the line's mode. While the
/// phone takes frames, the keys of section `Reminder` say so. After a session that did not end, the next
/// start reads them.

enum class ChannelOpening {
    Opened,
    GivenUp, ///< the line takes AT commands
    Stuck,   ///< the phone may be in its data mode, as after a closeDataChannel that failed, or with a port
             ///< that is gone
};

/// Takes the phone into its data mode, as often as the user wants to try. An "ERROR" of the phone counts as
/// an answer like any other. Fails if the user gave up, or if the cancel box is checked when the phone does
/// not answer. A phone that does not answer may have switched, so it is taken back before the next try and
/// before the end. If it does not answer that either, or the port goes away, the reminder stays.
ChannelOpening openDataChannel(link::Line& line, const toolkit::Progress& progress);

/// Takes the phone back to AT commands, in at most three rounds. Returns false if it did not answer or the
/// port is gone. The mode of the line is not known then, it takes no AT command, and the reminder stays.
bool closeDataChannel(link::Line& line, const toolkit::Progress& progress);

/// Takes a line that somebody else left in data mode back to AT commands, without a question. Returns true if
/// the phone answers "AT" with OK. Starts with silence and "+++", since "AT" itself would be the head of a
/// long packet for a phone in data mode. After three rounds it ends an OBEX connection that may be open and
/// tries once more. Takes up to half a minute; the cancel box ends it between two rounds. The port has to be
/// open.
bool recoverLine(link::Line& line, const toolkit::Progress& progress);

/// Opens the port in use, unless it is open, and does the same at a baud rate. The port stays open.
bool recoverPort(link::Line& line, int rate, const toolkit::Progress& progress);

/// A session that did not end, as the settings remember it.
struct UnclosedSession
{
    QString device; ///< the phone's own name
    int port = 0;   ///< its number
};

/// The reminder of a session without an end, nothing without one.
std::optional<UnclosedSession> unclosedSession(const app::Context& context);

/// Writes a reminder that was deleted once more, so that it outlives a run that did not take the phone back.
void rememberUnclosed(app::Context& context, const UnclosedSession& session);

/// Returns true if the reminder says that the last run left the phone at the port in use in its data mode.
bool isSessionUnclosed(const app::Context& context);

/// After such a run, before the search: recoverPort() at the rate that a phone answered at last. If that does
/// not help, the search gives advice.
bool takeBackUnclosed(link::Line& line, const toolkit::Progress& progress);

/// Deletes the reminder of a session at the port in use: the phone was found, so nothing of it is left.
void forgetUnclosed(app::Context& context);

} // namespace kalmo::obex
