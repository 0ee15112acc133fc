#include "documents/Brennick_XML_Utilities.h"

#include "frame/text/Text_Utilities.h"

#include <algorithm>
#include <array>

namespace {

constexpr int Shortest_Closing_Tag = 3; // "</>"
const QString Line_End = QStringLiteral("\r\n");

struct Entity {
    QLatin1String text;
    char16_t character;
};
constexpr std::array Entities{Entity{QLatin1String("&amp;"), u'&'}, Entity{QLatin1String("&lt;"), u'<'},
                              Entity{QLatin1String("&gt;"), u'>'}, Entity{QLatin1String("&apos;"), u'\''},
                              Entity{QLatin1String("&quot;"), u'"'}};

bool Is_Letter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool Is_Digit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool Begins_Name(QChar c)
{
    return Is_Letter(c) || c == u'_';
}

bool Continues_Name(QChar c)
{
    return Begins_Name(c) || Is_Digit(c) || c == u'.' || c == u'-';
}

/// The part of `source` before `last`. Positions in it are those of the source less one.
QStringView Readable(const QString& source, int last)
{
    return QStringView(source).left(std::clamp<qsizetype>(last - 1, 0, source.size()));
}

/// name := ( letter | "_" ) { letter | digit | "_" | "." | "-" }. Its length at `start`; 0 when there is none.
qsizetype Name_Length(QStringView text, qsizetype start)
{
    qsizetype end = start;
    if (end < text.size() && Begins_Name(text[end])) ++end;
    while (end > start && end < text.size() && Continues_Name(text[end])) ++end;
    return end - start;
}

/// prolog := "<?xml" blanks "version=" quote { digit | "." } quote "?>". The place behind it; -1 when it is none.
qsizetype Behind_Prolog(QStringView text, qsizetype start)
{
    const QLatin1String version("version=");
    qsizetype at = start + 5;
    while (at < text.size() && text[at] <= u' ') ++at;
    if (!text.mid(at).startsWith(version, Qt::CaseInsensitive)) return -1;
    at += version.size();
    if (at >= text.size() || (text[at] != u'"' && text[at] != u'\'')) return -1;
    const QChar quote = text[at++];
    while (at < text.size() && (Is_Digit(text[at]) || text[at] == u'.')) ++at;
    if (at >= text.size() || text[at] != quote) return -1;
    return text.mid(at + 1).startsWith(QLatin1String("?>")) ? at + 3 : -1;
}

XML_Tag Opening_Tag(QStringView inside)
{
    const qsizetype length = Name_Length(inside, 0);
    XML_Tag tag;
    if (length == 0) return tag;
    tag.Name = inside.left(length).toString();
    tag.Self_Closing = inside.endsWith(u'/');
    tag.Attributes = inside.chopped(tag.Self_Closing ? 1 : 0).mid(length).trimmed().toString();
    return tag;
}

/// inside begins with "/".
XML_Tag Closing_Tag(QStringView inside, QStringView text_before)
{
    const qsizetype length = Name_Length(inside, 1);
    XML_Tag tag;
    if (length == 0) return tag;
    tag.Name = inside.left(length + 1).toString();
    tag.Text = XML_Decode(text_before.toString());
    return tag;
}

} // namespace

QString XML_Prolog()
{
    return QStringLiteral("<?xml version=\"1.0\"?>");
}

QString XML_Read_Prolog(const QString& Source, int& Position, int Last)
{
    const QStringView text = Readable(Source, Last);
    const qsizetype start = text.indexOf(QLatin1String("<?xml"), std::max(Position, 1) - 1, Qt::CaseInsensitive);
    if (start < 0) return {};
    const qsizetype behind = Behind_Prolog(text, start);
    Position = int(behind < 0 ? start : behind) + 1;
    return behind < 0 ? QString() : text.mid(start, behind - start).toString();
}

XML_Tag XML_Next_Tag(const QString& Source, int& Position, int Last)
{
    const QStringView text = Readable(Source, Last);
    const qsizetype from = std::max(Position, 1) - 1;
    if (from >= text.size()) return {};
    const qsizetype open = text.indexOf(u'<', from);
    if (open < 0 || open + Shortest_Closing_Tag > text.size()) return {};
    const qsizetype close = text.indexOf(u'>', open);
    if (close < 0) return {};
    const QStringView inside = text.mid(open + 1, close - open - 1);
    XML_Tag tag = inside.startsWith(u'/') ? Closing_Tag(inside, text.mid(from, open - from)) : Opening_Tag(inside);
    if (!tag.Name.isEmpty()) Position = int(close) + 2;
    return tag;
}

QString XML_Tag_Text(const XML_Tag& Tag, bool Wrap_Content)
{
    if (Tag.Name.isEmpty()) return {};
    QString text = u'<' + Tag.Name;
    if (!Tag.Attributes.isEmpty()) text += u' ' + Tag.Attributes;
    if (Tag.Text.isEmpty()) return text + QStringLiteral("/>");
    text += u'>' + (Wrap_Content ? Line_End + Tag.Text + Line_End : XML_Encode(Tag.Text));
    return text + QStringLiteral("</") + Tag.Name + u'>';
}

QString XML_Attribute(const QString& Attributes, const QString& Attribute_Name)
{
    if (Attribute_Name.isEmpty()) return {};
    qsizetype at = Attributes.indexOf(Attribute_Name, 0, Qt::CaseInsensitive);
    if (at < 0) return {};
    int position = int(at + Attribute_Name.size()) + 1;
    Skip_Blanks(Attributes, position);
    if (position > Attributes.size() || Attributes[position - 1] != u'=') return {};
    Skip_Blanks(Attributes, ++position);
    if (position > Attributes.size()) return {};
    const QChar quote = Attributes[position - 1];
    if (quote != u'"' && quote != u'\'') return {};
    const qsizetype end = Attributes.indexOf(quote, position);
    return end < 0 ? QString() : XML_Decode(Attributes.mid(position, end - position));
}

QString XML_Encode(const QString& Text)
{
    QString encoded;
    encoded.reserve(Text.size());
    for (const QChar c : Text) {
        const auto entity =
            std::find_if(Entities.begin(), Entities.end(), [c](const Entity& row) { return c == row.character; });
        if (entity == Entities.end())
            encoded += c;
        else
            encoded += entity->text;
    }
    return encoded;
}

QString XML_Decode(const QString& Text)
{
    QString decoded;
    decoded.reserve(Text.size());
    for (qsizetype at = 0; at < Text.size();) {
        const QStringView rest = QStringView(Text).mid(at);
        const auto entity = std::find_if(Entities.begin(), Entities.end(), [rest](const Entity& row) {
            return rest.front() == u'&' && rest.startsWith(row.text);
        });
        const bool is_entity = entity != Entities.end();
        decoded += is_entity ? QChar(entity->character) : rest.front();
        at += is_entity ? entity->text.size() : 1;
    }
    return decoded;
}

QString XML_Base_Name(const QString& Tag_Name)
{
    const QString name = Tag_Name.trimmed();
    return name.startsWith(u'/') ? name.mid(1) : name;
}

QString XML_Attribute_Text(const QString& Attribute_Name, const QString& Value)
{
    return u' ' + Attribute_Name + QStringLiteral("='") + XML_Encode(Value) + u'\'';
}
