#pragma once

#include "link/PortOpening.h"

#include <QList>

namespace kalmo::link {

/// The displays and the abort flag of the search.
class SearchView
{
public:
    virtual ~SearchView() = default;
    virtual void setStatus(const QString& text) = 0;
    virtual void setProgress(int value, int maximum) = 0;
    virtual bool aborted() const = 0; ///< the user wants to stop
    virtual void clearAborted() = 0;
};

enum class SearchOutcome {
    PhoneFound, ///< the session's fields are set; show the main window
    Settings,   ///< the user wants other settings; the settings form can't be cancelled then
};

enum class SearchStart {
    FirstRate,
    AfterAbort, ///< the user has aborted what came before the search: begins with its question
};

enum class PassResult { Answered, PortNotOpened, NobodyAnswered };

/// Rates to try, in order. The absolute value is the baud rate. A negative value means commands that end in
/// CR LF.
QList<int> rateList(int preferred);

/// The rates without their signs, each once, beginning with the one that a phone answered at last.
QList<int> unsignedRates(const app::Context& context);

/// Finds the rate at which a phone answers, and its family.
class PhoneSearch
{
public:
    PhoneSearch(Line& line, SearchView& view, app::Desktop& desktop);

    /// Runs the whole search with its questions. Ends the program if the user wants that.
    SearchOutcome SearchPhone(SearchStart start = SearchStart::FirstRate);

    /// Tries the rates from the first or, after an earlier pass, from where that one ended, without a
    /// question. A pass after a port that did not open tries each rate twice. The port stays open at the rate
    /// that a phone answered at.
    PassResult runPass();

    /// Returns true if the port went away during a pass.
    bool lostLine() const { return m_lostLine; }

    /// Returns true if the phone answers at the rate in force.
    bool ProbeATZ();

    /// Sets the family and the raw answer that it came from. Returns true if the family is known. Informs the
    /// user if the phone does not answer.
    bool IdentifyPhone(int& phoneType, QString& rawId);
    /// The same without a box. Returns the command that the phone did not answer, empty if it answered all.
    QByteArray askIdentity(int& phoneType, QString& rawId);

    /// Completes a successful identification: line mode, preferred rate, error codes, software version.
    void takeOver();

private:
    enum class Next { NewPass, Settings };

    bool tryRate(int rate, bool& opened);
    void announceRate(int rate);
    Next afterPortFailure();
    Next afterSilence();
    Next afterUnknownPhone(const QString& rawId);
    Next offerSettings();
    [[noreturn]] void endWithUnsupported(const QString& modelName, const QString& rawId);
    int aliasOf(const QString& key) const;
    bool ask(const QByteArray& command, QString& rawId);
    void remark(const QString& text);

    Line& m_line;
    SearchView& m_view;
    app::Desktop& m_desktop;
    app::Context& m_context;
    QList<int> m_rates; // each pass appends the same list again
    qsizetype m_next = 0;
    bool m_lostLine = false;
};

} // namespace kalmo::link
