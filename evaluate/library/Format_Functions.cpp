#include "evaluate/library/Arguments.h"
#include "evaluate/library/Built_In_Routines.h"
#include "evaluate/library/Format_Pattern.h"

#include <algorithm>

// Format and its relatives, Partition and StrConv.
namespace Formula {

namespace {

/// Settings of FormatNumber and its relatives: -1 is yes, 0 no, -2 as the function has it.
struct Number_Style {
    std::int32_t digits = 2;
    bool leading_zero = true, parentheses = false, groups = true;
};

Evaluated<bool> Choice_At(Arguments arguments, std::size_t index, bool standard)
{
    const auto choice = Long_At(arguments, index, -2);
    if (!choice) return Fails(choice.error());
    if (*choice < -2 || *choice > 0) return Fails(Error_Number::Invalid_Call);
    return *choice == -2 ? standard : *choice == -1;
}

Evaluated<Number_Style> Style_At(Arguments arguments, bool parentheses)
{
    const auto digits = Long_At(arguments, 1, -1);
    if (!digits) return Fails(digits.error());
    if (*digits < -1 || *digits > 255) return Fails(Error_Number::Invalid_Call);
    const auto leading = Choice_At(arguments, 2, true), parens = Choice_At(arguments, 3, parentheses),
               groups = Choice_At(arguments, 4, true);
    for (const auto* choice : {&leading, &parens, &groups})
        if (!*choice) return Fails(choice->error());
    return Number_Style{*digits == -1 ? 2 : *digits, *leading, *parens, *groups};
}

// Writes the style down as a pattern, so that there is one way to format a number.
QString Pattern_Of(const Number_Style& style, const QString& before, const QString& behind)
{
    QString body = style.groups ? QStringLiteral("#,##") : QStringLiteral("#");
    body += style.leading_zero ? u'0' : u'#';
    if (style.digits > 0) body += u'.' + QString(style.digits, u'0');
    body = before + body + behind;
    return style.parentheses ? body + QStringLiteral(";(") + body + u')' : body;
}

Error_Number Number_With_Style(Arguments arguments, Variant& result, const char* before, const char* behind,
                               bool parentheses)
{
    const auto number = To_Double(arguments[0]);
    FORMULA_CHECK(number);
    const auto style = Style_At(arguments, parentheses);
    FORMULA_CHECK(style);
    const auto pattern = Pattern_Of(*style, QString::fromLatin1(before), QString::fromLatin1(behind));
    return Yield(result, Formatted_Number(*number, Sections_Of(pattern)));
}

bool Parts_Words(QChar c)
{
    return c == u' ' || c == u'\0' || (c >= u'\t' && c <= u'\r');
}

QString Proper_Case(QString text)
{
    bool at_start = true;
    for (auto& c : text) {
        c = at_start ? c.toUpper() : c.toLower();
        at_start = Parts_Words(c);
    }
    return text;
}

// Full-width forms stand 0xFEE0 above the plain ones; the ideographic blank is apart.
QChar Wide(QChar c)
{
    if (c == u' ') return QChar(0x3000);
    return c > u' ' && c < u'\x7F' ? QChar(char16_t(c.unicode() + 0xFEE0)) : c;
}

QChar Narrow(QChar c)
{
    if (c == QChar(0x3000)) return u' ';
    return c.unicode() > 0xFF00 && c.unicode() < 0xFF5F ? QChar(char16_t(c.unicode() - 0xFEE0)) : c;
}

QChar Katakana(QChar c)
{
    return c.unicode() >= 0x3041 && c.unicode() <= 0x3096 ? QChar(char16_t(c.unicode() + 0x60)) : c;
}

QChar Hiragana(QChar c)
{
    return c.unicode() >= 0x30A1 && c.unicode() <= 0x30F6 ? QChar(char16_t(c.unicode() - 0x60)) : c;
}

QString Changed(QString text, QChar (*change)(QChar))
{
    for (auto& c : text) c = change(c);
    return text;
}

QString Code_Page_Bytes(const QString& text)
{
    QByteArray bytes;
    for (const auto c : text) bytes += char(Code_Of_Character(c));
    return Text_Of_Bytes(bytes);
}

QString From_Code_Page_Bytes(const QString& text)
{
    QString wide;
    for (const auto byte : Bytes_Of(text)) wide += Character_Of_Code(std::uint8_t(byte));
    return wide;
}

bool Has_Both(int conversion, int first, int second)
{
    return (conversion & first) && (conversion & second);
}

QString Converted(QString text, int conversion)
{
    const int letter_case = conversion & 3;
    if (letter_case == 1) text = Changed(text, [](QChar c) { return c.toUpper(); });
    if (letter_case == 2) text = Changed(text, [](QChar c) { return c.toLower(); });
    if (letter_case == 3) text = Proper_Case(text);
    if (conversion & 4) text = Changed(text, Wide);
    if (conversion & 8) text = Changed(text, Narrow);
    if (conversion & 16) text = Changed(text, Katakana);
    if (conversion & 32) text = Changed(text, Hiragana);
    if (conversion & 64) text = From_Code_Page_Bytes(text);
    if (conversion & 128) text = Code_Page_Bytes(text);
    return text;
}

} // namespace

Error_Number Run_Format(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto pattern = Has(arguments, 1) && !arguments[1].Is_Null() ? To_Text(arguments[1]) : QString();
    FORMULA_CHECK(pattern);
    const auto rule = Week_Rule_At(arguments, 2);
    FORMULA_CHECK(rule);
    const auto length = arguments[0].Is_String() ? arguments[0].Text().size() : 0;
    const auto room = context.memory.Room_For_Text(length + Bytes_A_Pattern_Letter / 2 * pattern->size());
    if (room != Error_Number::None) return room;
    auto text = Formatted(arguments[0], *pattern, *rule);
    FORMULA_CHECK(text);
    return Yield_Text(result, std::move(*text));
}

Error_Number Run_FormatNumber(Library_Context&, Arguments arguments, Variant& result)
{
    return Number_With_Style(arguments, result, "", "", false);
}

Error_Number Run_FormatCurrency(Library_Context&, Arguments arguments, Variant& result)
{
    return Number_With_Style(arguments, result, "$", "", true);
}

Error_Number Run_FormatPercent(Library_Context&, Arguments arguments, Variant& result)
{
    return Number_With_Style(arguments, result, "", "%", false);
}

Error_Number Run_FormatDateTime(Library_Context&, Arguments arguments, Variant& result)
{
    constexpr const char* patterns[] = {"General Date", "Long Date", "Short Date", "Long Time", "Short Time"};
    const auto kind = Long_At(arguments, 1);
    FORMULA_CHECK(kind);
    if (*kind < 0 || *kind > 4) return Error_Number::Invalid_Call;
    const auto date = To_Date(arguments[0]);
    FORMULA_CHECK(date);
    const auto text = Formatted(Variant(Date_Value{*date}), QString::fromLatin1(patterns[*kind]), {});
    FORMULA_CHECK(text);
    return Yield(result, *text);
}

// "first:last" of the range that holds the number, both as wide as the widest bound. Outside, one side is blank.
Error_Number Run_Partition(Library_Context&, Arguments arguments, Variant& result)
{
    for (const auto& value : arguments)
        if (value.Is_Null()) return Yield_Null(result);
    const auto number = To_Long(arguments[0]), start = To_Long(arguments[1]), stop = To_Long(arguments[2]),
               interval = To_Long(arguments[3]);
    for (const auto* value : {&number, &start, &stop, &interval})
        if (!*value) return value->error();
    if (*start < 0 || *stop <= *start || *interval < 1) return Error_Number::Invalid_Call;
    QString low, high;
    if (*interval == 1) { // each number is a range, also outside of the bounds
        low = high = QString::number(*number);
    } else if (*number < *start) {
        high = QString::number(std::int64_t(*start) - 1);
    } else if (*number > *stop) {
        low = QString::number(std::int64_t(*stop) + 1);
    } else {
        const auto begin = *start + (std::int64_t(*number) - *start) / *interval * *interval;
        low = QString::number(begin);
        high = QString::number(std::min<std::int64_t>(begin + *interval - 1, *stop));
    }
    const auto width =
        std::max(QString::number(std::int64_t(*start) - 1).size(), QString::number(std::int64_t(*stop) + 1).size());
    return Yield(result, low.rightJustified(width) + u':' + high.rightJustified(width));
}

Error_Number Run_StrConv(Library_Context& context, Arguments arguments, Variant& result)
{
    if (arguments[0].Is_Null()) return Yield_Null(result);
    const auto text = To_Text(arguments[0]);
    FORMULA_CHECK(text);
    const auto conversion = To_Long(arguments[1]);
    FORMULA_CHECK(conversion);
    const bool is_sound = *conversion >= 0 && *conversion < 256 && !Has_Both(*conversion, 4, 8) &&
                          !Has_Both(*conversion, 16, 32) && !Has_Both(*conversion, 64, 128);
    if (!is_sound) return Error_Number::Invalid_Call;
    constexpr int from_bytes = 64; // makes two characters of each
    const auto problem = Check_Room(context, text->size() * (*conversion & from_bytes ? 2 : 1));
    if (problem != Error_Number::None) return problem;
    return Yield(result, Converted(*text, *conversion));
}

} // namespace Formula
