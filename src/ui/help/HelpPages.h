#pragma once

#include <QList>
#include <QString>

namespace kalmo::ui {

inline constexpr int helpTopicStart = 0;
inline constexpr int helpTopicBluetooth = 1001;
inline constexpr int helpTopicPort = 1002;
inline constexpr int helpTopicImport = 1013;
inline constexpr int helpTopicExport = 1014;

/// A heading within a page, and the text below it.
struct HelpSection
{
    QString title;
    QString anchor;
    QString words; ///< all of its text with the heading, to search in
};

/// One page of the help, as the index needs it.
struct HelpPage
{
    int topic = 0;
    QString file;  ///< below helpRoot()
    QString title; ///< its first heading
    QList<HelpSection> sections;
    QString words; ///< all of its text, to search in
};

/// Folder of the pages within the program.
QString helpRoot();

/// The pages in the order in which they are best read.
QList<HelpPage> readHelpPages();

} // namespace kalmo::ui
