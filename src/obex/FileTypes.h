#pragma once

#include <QString>

namespace kalmo::obex {

/// Type of a file by its ending: the text of the list's second column, and the name of an icon.
struct FileTypeInfo
{
    QString text;
    QString icon;
};
FileTypeInfo fileTypeOf(const QString& name);

} // namespace kalmo::obex
