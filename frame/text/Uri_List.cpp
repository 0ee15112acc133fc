#include "frame/text/Uri_List.h"

#include "frame/text/Path_Utilities.h"

namespace {

const QByteArray Scheme = QByteArrayLiteral("file:");

/// The path behind "//host" of a URL, still encoded; empty when the host is another machine.
QByteArray Encoded_Path(QByteArray url)
{
    url.remove(0, Scheme.size());
    if (!url.startsWith("//")) return url;
    const auto slash = url.indexOf('/', 2);
    const auto host = url.mid(2, slash < 0 ? -1 : slash - 2);
    const bool here = host.isEmpty() || host.compare("localhost", Qt::CaseInsensitive) == 0;
    return here && slash >= 0 ? url.mid(slash) : QByteArray();
}

} // namespace

QByteArray Uri_List_Of(const QStringList& paths)
{
    QByteArray list;
    for (const auto& path : paths)
        list += Scheme + "//" + QByteArray::fromStdString(File_System_Bytes(path)).toPercentEncoding("/") + "\r\n";
    return list;
}

QStringList Paths_Of_Uri_List(const QByteArray& list)
{
    QStringList paths;
    for (const auto& line : list.split('\n')) {
        const auto url = line.trimmed();
        if (url.left(Scheme.size()).compare(Scheme, Qt::CaseInsensitive) != 0) continue;
        const auto bytes = QByteArray::fromPercentEncoding(Encoded_Path(url));
        if (bytes.startsWith('/') && !bytes.contains('\0')) paths += Path_From_Bytes(bytes);
    }
    return paths;
}
