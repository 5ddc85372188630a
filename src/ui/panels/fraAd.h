#pragma once

#include "app/mdlRegIni.h"
#include "app/Platform.h"
#include "ui/panels/PanelFrame.h"

#include <QList>

namespace kalmo::ui {

class SponsorPicture;

/// Shows one sponsor's picture, which links to his pages.
class fraAd : public PanelFrame
{
    Q_OBJECT

public:
    fraAd(app::Settings& settings, app::Desktop& desktop, QWidget* parent = nullptr);

    /// Shows the picture of a node of the tree: a fixed one, or the next in turn. The settings keep the turn
    /// for the next runs.
    void showNode(const QString& nodeKey);

private:
    int nextInTurn();

    app::Settings& m_settings;
    QList<SponsorPicture*> imgAd;
};

} // namespace kalmo::ui
