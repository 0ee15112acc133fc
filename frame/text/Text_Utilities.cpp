#include "frame/text/Text_Utilities.h"

#include <QtCore/QStringDecoder>

namespace {

bool At_End(const QString& text, int position)
{
    return position > text.size();
}

QChar Character_At(const QString& text, int position)
{
    return At_End(text, position) ? QChar() : text[position - 1];
}

bool Is_Digit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool Is_Ascii_Letter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

bool Is_Number_Character(QChar c)
{
    return Is_Digit(c) || c == u'-' || c == u'+' || c == u'.';
}

QChar Closing_Quote(QChar opening)
{
    if (opening == u'\'' || opening == u'"') return opening;
    return opening == u'<' ? QChar(u'>') : QChar();
}

QString Take_Number_Run(const QString& text, int& position)
{
    const int first = position;
    while (!At_End(text, position) && Is_Number_Character(text[position - 1])) ++position;
    return text.mid(first - 1, position - first);
}

bool Is_Digits_With_Point(QStringView text)
{
    const auto points = text.count(u'.');
    return points <= 1 && text.size() > points &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return Is_Digit(c) || c == u'.'; });
}

QStringView Without_Sign(const QString& text)
{
    const bool is_signed = text.startsWith(u'-') || text.startsWith(u'+');
    return QStringView(text).mid(is_signed ? 1 : 0);
}

} // namespace

void Skip_Blanks(const QString& text, int& position)
{
    position = std::max(position, 1);
    while (!At_End(text, position) && text[position - 1] <= u' ') ++position;
}

void Skip_Colon(const QString& text, int& position)
{
    Skip_Blanks(text, position);
    if (Character_At(text, position) == u':') ++position;
    Skip_Blanks(text, position);
}

void Read_Keyword(const QString& text, int& position, bool& comment, bool& enabled, QString& keyword)
{
    comment = false;
    enabled = true;
    position = std::max(position, 1);
    for (QChar mark = Character_At(text, position); mark == u'~' || mark == u'-' || mark == u'+';
         mark = Character_At(text, position)) {
        if (mark == u'~')
            comment = true;
        else
            enabled = mark == u'+';
        ++position;
        Skip_Blanks(text, position);
    }
    const int first = position;
    while (position - first < 3) {
        const QChar c = Character_At(text, position);
        if (c != u'&' && !Is_Ascii_Letter(c) && !Is_Digit(c)) break;
        ++position;
    }
    keyword = text.mid(first - 1, position - first);
}

void Read_Quoted_String(const QString& text, int& position, QString& value, bool skip_colon_first)
{
    value.clear();
    position = std::max(position, 1);
    if (skip_colon_first) Skip_Colon(text, position);
    const QChar closing = Closing_Quote(Character_At(text, position));
    if (closing.isNull()) return;
    for (++position; !At_End(text, position); ++position) {
        if (text[position - 1] == closing) {
            ++position;
            if (Character_At(text, position) != closing) return;
        }
        value += text[position - 1];
    }
}

void Read_Number(const QString& text, int& position, double& value, double minimum, double maximum,
                 bool skip_colon_first)
{
    position = std::max(position, 1);
    if (skip_colon_first) Skip_Colon(text, position);
    const auto number = Double_From_Text(Take_Number_Run(text, position));
    if (number && *number >= minimum && *number <= maximum) value = *number;
}

void Read_Number(const QString& text, int& position, int& value, int minimum, int maximum, bool skip_colon_first)
{
    double number = value;
    Read_Number(text, position, number, minimum, maximum, skip_colon_first);
    value = Round_Half_Even(number);
}

bool Skip_Value(const QString& text, int& position)
{
    position = std::max(position, 1);
    const int first = position;
    if (!Closing_Quote(Character_At(text, position)).isNull()) {
        QString ignored;
        Read_Quoted_String(text, position, ignored);
    } else {
        Take_Number_Run(text, position);
    }
    return position > first;
}

void Skip_To_Next_Record(const QString& text, int& position)
{
    Skip_Colon(text, position);
    while (!At_End(text, position)) {
        const QChar c = text[position - 1];
        if (c == u',' || c == u';') {
            ++position;
            return;
        }
        if (!Skip_Value(text, position)) ++position;
    }
}

int Scan_Set_Span(const QString& source, const QString& char_set, int start)
{
    if (char_set.isEmpty()) return 0;
    for (int position = std::max(start, 1); position <= source.size(); ++position)
        if (!char_set.contains(source[position - 1])) return position;
    return 0;
}

bool Is_Whole_Number(const QString& text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), Is_Digit);
}

bool Is_Signed_Whole_Number(const QString& text)
{
    const QStringView digits = Without_Sign(text);
    return !digits.isEmpty() && std::all_of(digits.begin(), digits.end(), Is_Digit);
}

bool Is_Signed_Decimal(const QString& text)
{
    return Is_Digits_With_Point(Without_Sign(text));
}

bool Is_Percentage(const QString& text)
{
    return Is_Digits_With_Point(QStringView(text).chopped(text.endsWith(u'%') ? 1 : 0));
}

QString Quote_Single(const QString& text)
{
    return Quote_With(text, u'\'');
}

QString Quote_Double(const QString& text)
{
    return Quote_With(text, u'"');
}

QString Quote_With(const QString& text, QChar quote)
{
    QString quoted = text;
    return quoted.replace(quote, QString(2, quote));
}

QChar Character_Of_Windows_1252(unsigned char byte)
{
    static constexpr char16_t upper[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                           0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                           0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                           0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    return byte >= 0x80 && byte < 0xA0 ? QChar(upper[byte - 0x80]) : QChar(char16_t(byte));
}

QString Decode_Text(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError()) return text;
    text.clear();
    text.reserve(bytes.size());
    for (const char byte : bytes) text += Character_Of_Windows_1252(static_cast<unsigned char>(byte));
    return text;
}

QString Case_Folded(const QString& text)
{
    QString folded = text;
    for (QChar& c : folded) c = c.toCaseFolded();
    return folded;
}

bool Equal_Without_Case(const QString& left, const QString& right)
{
    return left.size() == right.size() && Compare_Without_Case(left, right) == 0;
}

int Compare_Without_Case(const QString& left, const QString& right)
{
    const auto shared = std::min(left.size(), right.size());
    for (qsizetype i = 0; i < shared; ++i) {
        const int difference = int(left[i].toCaseFolded().unicode()) - int(right[i].toCaseFolded().unicode());
        if (difference != 0) return difference;
    }
    return left.size() < right.size() ? -1 : int(left.size() > right.size());
}
