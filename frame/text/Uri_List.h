#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

/// The text/uri-list with which programs hand files to each other, made from the bytes that the names have on disk: a URL
/// type that holds text would lose names that are no valid UTF-8.

/// One "file:///..." a line; lines end with CR LF.
QByteArray Uri_List_Of(const QStringList& paths);

/// The local files of a list, in its order. Comments, other schemes, other hosts and lines that are damaged are passed
/// over.
QStringList Paths_Of_Uri_List(const QByteArray& list);
