#include "documents/Document_File.h"

#include "frame/files/Limits.h"
#include "frame/files/Regular_File.h"
#include "frame/files/Replacement_File.h"
#include "frame/text/Text_Utilities.h"

Result<QString> Read_Document(const QString& path)
{
    const auto file = Regular_File::Open(File_System_Bytes(path));
    if (!file) return tl::make_unexpected(file.error());
    const auto bytes = file->Read_All(Current_Limits().document_bytes);
    if (!bytes) return tl::make_unexpected(bytes.error());
    return Decode_Text(QByteArray::fromRawData(reinterpret_cast<const char*>(bytes->data()), qsizetype(bytes->size())));
}

Result<void> Write_Document(const QString& path, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    return Write_Whole_File(File_System_Bytes(path),
                            std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size()))));
}

QString Document_Version()
{
    return QStringLiteral("%1.%2")
        .arg(HALVINE_VERSION_MAJOR, 2, 10, QLatin1Char('0'))
        .arg(HALVINE_VERSION_MINOR, 2, 10, QLatin1Char('0'));
}
