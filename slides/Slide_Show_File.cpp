#include "slides/Slide_Show_File.h"

#include "documents/Brennick_XML_Utilities.h"
#include "documents/Document_File.h"
#include "frame/text/Text_Utilities.h"

#include <algorithm>
#include <optional>

namespace {

const QString Root = QStringLiteral("hvSlideShow");
const QString Element = QStringLiteral("Slide");
const QString Folder_Name = QStringLiteral("folder");
const QString File_Name = QStringLiteral("file");
const QString Rotate_Name = QStringLiteral("rotate");
const QString Time_Name = QStringLiteral("time");
const QString Version_Name = QStringLiteral("version");
const QString Line_End = QStringLiteral("\r\n");

std::optional<float> Seconds_From(const QString& text)
{
    return Is_Signed_Decimal(text) ? Single_From_Text(text) : std::nullopt;
}

/// Whole degrees, brought into a full turn; 0 when it is no number.
int Degrees_From(const QString& text)
{
    return Is_Whole_Number(text) ? Long_From_Text(text).value_or(0) % 360 : 0;
}

/// A value is searched by the plain text of its name, which a path may hold as well ("my time.jpg"): the path is taken
/// out before the others are looked for.
QString Without_Value(QString attributes, const QString& name)
{
    const auto sign = attributes.indexOf(u'=', attributes.indexOf(name, 0, Qt::CaseInsensitive));
    if (sign < 0) return attributes;
    int position = int(sign) + 2;
    Skip_Blanks(attributes, position);
    if (position > attributes.size()) return attributes;
    const auto end = attributes.indexOf(attributes[position - 1], position);
    return end < 0 ? attributes : attributes.remove(sign, end - sign + 1);
}

// ---- mark-up form ----

/// The prolog is looked for in the whole text; one behind other tags must not hide them.
bool Begins_With_Prolog(const QString& text)
{
    return text.mid(text.indexOf(u'<')).startsWith(QLatin1String("<?xml"), Qt::CaseInsensitive);
}

Show_End Read_Markup(const QString& text, Slide_Show_Sink& sink)
{
    const int last = Behind_Text(text);
    int position = 1;
    if (Begins_With_Prolog(text)) XML_Read_Prolog(text, position, last);
    const XML_Tag root = XML_Next_Tag(text, position, last);
    if (!Equal_Without_Case(root.Name, Root)) return Show_End::Fault;
    if (const QString folder = XML_Attribute(root.Attributes, Folder_Name); !folder.isEmpty()) sink.Take_Folder(folder);
    const QString others = Without_Value(root.Attributes, Folder_Name);
    if (const auto seconds = Seconds_From(XML_Attribute(others, Time_Name))) sink.Take_Seconds(*seconds);
    for (;;) {
        const XML_Tag tag = XML_Next_Tag(text, position, last);
        if (Equal_Without_Case(tag.Name, u'/' + Root)) return Show_End::Complete;
        if (!Equal_Without_Case(tag.Name, Element) || tag.Attributes.isEmpty()) return Show_End::Fault;
        const QString file = XML_Attribute(tag.Attributes, File_Name);
        const QString options = Without_Value(tag.Attributes, File_Name);
        const Slide slide{.file = file,
                          .rotate = Degrees_From(XML_Attribute(options, Rotate_Name)),
                          .seconds = Seconds_From(XML_Attribute(options, Time_Name)).value_or(0)};
        if (!file.isEmpty() && !sink.Take_Slide(slide)) return Show_End::Stopped;
    }
}

// ---- keyword form ----

QString Quoted_Value(const QString& line, int& position)
{
    QString value;
    Read_Quoted_String(line, position, value, /*skip_colon_first=*/true);
    return value;
}

/// The run of characters of `set` at the position, which moves behind it.
QString Run_Of(const QString& line, int& position, const char* set)
{
    const int end = Scan_Set_Span(line, QLatin1String(set), position);
    const QString run = line.mid(position - 1, end == 0 ? -1 : end - position);
    position += int(run.size());
    return run;
}

/// options := { "," keyword ":" value }, up to the ";" that ends the record
void Read_Options(const QString& line, int position, Slide& slide)
{
    const auto end = line.indexOf(u';', position - 1);
    const QString record = end < 0 ? line : line.left(end);
    for (;;) {
        const auto comma = record.indexOf(u',', position - 1);
        const auto colon = comma < 0 ? -1 : record.indexOf(u':', comma);
        if (colon < 0) return;
        const QString keyword = record.mid(comma + 1, colon - comma - 1).trimmed();
        position = int(colon) + 2;
        if (Equal_Without_Case(keyword, QStringLiteral("ROT"))) {
            const QString run = Run_Of(record, position, "0123456789");
            if (Is_Whole_Number(run)) slide.rotate = Degrees_From(run);
        } else if (Equal_Without_Case(keyword, QStringLiteral("TIM"))) {
            slide.seconds = Seconds_From(Run_Of(record, position, "0123456789.")).value_or(slide.seconds);
        }
    }
}

/// record := keyword "," value { option } ";". False when the sink stops.
bool Read_Record(const QString& line, Slide_Show_Sink& sink)
{
    const auto comma = line.indexOf(u',');
    if (comma < 0) return true;
    const QString keyword = line.left(comma).trimmed().toUpper();
    int position = int(comma) + 2;
    if (keyword == u"DIR") {
        sink.Take_Folder(Quoted_Value(line, position));
    } else if (keyword == u"PIC") {
        Slide slide{.file = Quoted_Value(line, position)};
        Read_Options(line, position, slide);
        return slide.file.isEmpty() || sink.Take_Slide(slide);
    } else if (keyword == u"SND") {
        const QString file = Quoted_Value(line, position);
        return file.isEmpty() || sink.Take_Sound(file);
    } else if (keyword == u"TIM") {
        Skip_Blanks(line, position);
        if (const auto seconds = Seconds_From(Run_Of(line, position, "0123456789."))) sink.Take_Seconds(*seconds);
    }
    return true;
}

/// The line at `start` and where the next begins. Lines end with CR LF, LF or CR.
QString Line_At(const QString& text, qsizetype& start)
{
    qsizetype end = start;
    while (end < text.size() && text[end] != u'\r' && text[end] != u'\n') ++end;
    const QString line = text.mid(start, end - start).trimmed();
    start = end + (end + 1 < text.size() && text[end] == u'\r' && text[end + 1] == u'\n' ? 2 : 1);
    return line;
}

Show_End Read_Keywords(const QString& text, Slide_Show_Sink& sink)
{
    for (qsizetype start = 0; start < text.size();)
        if (!Read_Record(Line_At(text, start), sink)) return Show_End::Stopped;
    return Show_End::Complete;
}

bool Is_Markup(const QString& text)
{
    qsizetype start = 0;
    const QString line = Line_At(text, start);
    int position = 1;
    if (!XML_Read_Prolog(line, position, Behind_Text(line)).isEmpty()) return true;
    return !XML_Next_Tag(line, position, Behind_Text(line)).Name.isEmpty();
}

} // namespace

Show_End Read_Slide_Show(const QString& text, Slide_Show_Sink& sink)
{
    return Is_Markup(text) ? Read_Markup(text, sink) : Read_Keywords(text, sink);
}

QString Common_Folder(std::span<const Slide> slides)
{
    if (slides.empty()) return {};
    QString common = Folder_Part(slides.front().file);
    for (const Slide& slide : slides.subspan(1)) common = Common_Path(common, Folder_Part(slide.file));
    common = Folder_Part(common);
    return common == u"/" ? QString() : common; // the root is no folder that a show could be moved with
}

QString Written_Path(const QString& native_path)
{
    return native_path.contains(u'\\') ? native_path : Document_Path(native_path);
}

QString Seconds_Text(float seconds)
{
    return Format_Number(double(seconds), QStringLiteral("#0.00"));
}

QString Slide_Show_Text(std::span<const Slide> slides, float seconds)
{
    const QString folder = Common_Folder(slides);
    QString lines;
    for (const Slide& slide : slides) {
        const bool below = !folder.isEmpty() && slide.file.startsWith(folder);
        QString attributes = XML_Attribute_Text(File_Name, Written_Path(slide.file.mid(below ? folder.size() : 0)));
        if (slide.rotate != 0) attributes += XML_Attribute_Text(Rotate_Name, QString::number(slide.rotate));
        if (slide.seconds > 0) attributes += XML_Attribute_Text(Time_Name, Seconds_Text(slide.seconds));
        lines += XML_Tag_Text({.Name = Element, .Attributes = attributes.trimmed()}, false) + Line_End;
    }
    const QString attributes = XML_Attribute_Text(Version_Name, Document_Version()) +
                               XML_Attribute_Text(Folder_Name, Written_Path(folder)) +
                               XML_Attribute_Text(Time_Name, Seconds_Text(seconds));
    return XML_Prolog() + Line_End + u'<' + Root + attributes + u'>' + Line_End + lines + QStringLiteral("</") + Root +
           u'>' + Line_End;
}
