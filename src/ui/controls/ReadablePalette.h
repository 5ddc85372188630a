#pragma once

#include <QObject>

namespace kalmo::ui {

/// Keeps selected texts and links readable. Where the desktop's colours have too little contrast, the program
/// takes the nearest that have enough, also after the desktop has changed its colours.
class ReadablePalette : public QObject
{
    Q_OBJECT

public:
    explicit ReadablePalette(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace kalmo::ui
