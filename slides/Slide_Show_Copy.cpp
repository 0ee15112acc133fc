#include "slides/Slide_Show_Copy.h"

#include "documents/Document_File.h"
#include "frame/files/Copy_File.h"
#include "frame/files/Replacement_File.h"
#include "frame/text/Text_Utilities.h"

#include <QtCore/QSet>

namespace {

const QString Line_End = QStringLiteral("\r\n");

/// The form is one of lines, so a name has no line ends.
QString Name_Of_Copy(int number, const QString& file)
{
    QString name = QStringLiteral("ss%1-").arg(number, 3, 10, QLatin1Char('0')) + Name_Part(file);
    for (QChar& c : name)
        if (c < u' ') c = u'_';
    return name;
}

QString Picture_Record(const QString& name, int rotate)
{
    QString record = QStringLiteral("PIC,'.\\") + Quote_Single(name) + u'\'';
    if (rotate != 0) record += QStringLiteral(",ROT:%1").arg(rotate);
    return record + u';' + Line_End;
}

} // namespace

Result<QStringList> Copy_Slide_Show(std::span<const Slide> slides, float seconds, const QString& target)
{
    auto show = Replacement_File::Open(File_System_Bytes(target));
    if (!show) return tl::make_unexpected(show.error());
    const QString folder = Folder_Part(target);
    QString text = QStringLiteral("VER,%1;").arg(Document_Version()) + Line_End;
    text += QStringLiteral("DIR,'") + Quote_Single(Written_Path(folder)) + QStringLiteral("';") + Line_End;
    QSet<QString> sources;
    for (const Slide& slide : slides) sources.insert(slide.file);
    QStringList left_out;
    int number = 0;
    for (const Slide& slide : slides) {
        const QString name = Name_Of_Copy(++number, slide.file);
        const bool harms = sources.contains(folder + name);
        if (!harms && Copy_Whole_File(File_System_Bytes(slide.file), File_System_Bytes(folder + name)))
            text += Picture_Record(name, slide.rotate);
        else
            left_out << slide.file;
    }
    text += QStringLiteral("TIM,") + Seconds_Text(seconds) + u';' + Line_End;
    const QByteArray bytes = text.toUtf8();
    const auto written = show->Write(std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size()))));
    if (!written) return tl::make_unexpected(written.error());
    if (const auto done = show->Commit(); !done) return tl::make_unexpected(done.error());
    return left_out;
}
