#pragma once

#include "transfer/import/ImportHints.h"

#include <QFrame>

class QVBoxLayout;

namespace kalmo::ui {

/// The hints at faults of a source, a line for each, with a button for the remedy. Hidden while there are
/// none.
class HintList : public QFrame
{
    Q_OBJECT

public:
    explicit HintList(QWidget* parent = nullptr);

    void show(const std::vector<transfer::ImportHint>& hints);

Q_SIGNALS:
    void mendingWanted(const kalmo::transfer::ImportHint& hint);

private:
    void orderButtons();
    QWidget* makeLine(const transfer::ImportHint& hint);

    QWidget* m_lines;
    QVBoxLayout* m_layout;
    std::vector<transfer::ImportHint> m_shown;
};

} // namespace kalmo::ui
