#pragma once

#include "link/mdlComm.h"

#include <QWidget>

#include <optional>

class QLabel;
class QToolButton;

namespace kalmo::ui {

/// The right end of the status bar: which phone is at which port, and whether it answers. Offers a new search
/// where it does not.
class ConnectionLight : public QWidget
{
    Q_OBJECT

public:
    /// `line` outlives the widget.
    explicit ConnectionLight(const link::Line& line, QWidget* parent = nullptr);

    /// Shows the line's present state.
    void refresh();
    /// Shows the state after an operation, and tells it again.
    void noteEnd();
    /// Marks the phone as an emulated one.
    void showEmulated(bool isEmulated);
    /// Blocks the button while the phone is busy.
    void offerSearch(bool offered);

Q_SIGNALS:
    void searchWanted();
    void lost(const QString& advice); ///< the phone does not answer, or the port is gone; nothing runs.
                                      ///< Repeated each second as long as that is so
    void regained();                  ///< the phone answers again; nothing runs

protected:
    void showEvent(QShowEvent* event) override;

private:
    enum class State { Connected, Silent, Gone };
    State state() const;
    void watch();

    const link::Line& m_line;
    QLabel* m_picture;
    QLabel* m_text;
    QToolButton* m_search;
    bool m_isEmulated = false;
    std::optional<State> m_told = State::Connected; ///< by lost() or regained(); nothing after an operation
};

} // namespace kalmo::ui
