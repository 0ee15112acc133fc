#include "frame/text/Number_Text.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace {

/// Decimal digits of a number without sign: `digits` with the point after `whole` of them.
struct Decimal {
    QByteArray digits;
    int whole = 0;
};

template <class Number>
Decimal Shortest_Decimal(Number magnitude)
{
    char text[400];
    const auto end = std::to_chars(text, text + sizeof text, magnitude, std::chars_format::fixed).ptr;
    QByteArray digits(text, end - text);
    const auto point = digits.indexOf('.');
    if (point < 0) return {digits, int(digits.size())};
    return {digits.remove(point, 1), int(point)};
}

/// Keeps `places` digits behind the point, half away from zero.
void Round_Decimal(Decimal& number, int places)
{
    const auto keep = number.whole + places;
    while (number.digits.size() <= keep) number.digits += '0';
    const bool up = number.digits[keep] >= '5';
    number.digits.truncate(keep);
    if (!up) return;
    auto i = keep;
    while (i > 0 && number.digits[i - 1] == '9') number.digits[--i] = '0';
    if (i > 0) {
        number.digits[i - 1] = char(number.digits[i - 1] + 1);
    } else {
        number.digits.prepend('1');
        ++number.whole;
    }
}

template <class Number>
std::optional<Number> Whole_Text_As(const QString& text)
{
    QByteArray bytes = text.toLatin1();
    if (bytes.size() > 400) return {};
    for (const char c : bytes)
        if ((c < '0' || c > '9') && c != '.' && c != '-' && c != '+') return {};
    if (bytes.startsWith('+')) {
        bytes.remove(0, 1);
        if (bytes.startsWith('-')) return {};
    }
    Number number{};
    const char* const last = bytes.constData() + bytes.size();
    const auto [end, error] = std::from_chars(bytes.constData(), last, number);
    if (error != std::errc() || end != last) return {};
    return number;
}

template <class Number>
QString Formatted(Number value, const QString& format)
{
    if (!std::isfinite(value)) value = 0;
    const auto point = format.indexOf(u'.');
    const QString whole_format = point < 0 ? format : format.left(point);
    const QString places_format = point < 0 ? QString() : format.mid(point + 1);

    Decimal number = Shortest_Decimal(std::abs(value));
    Round_Decimal(number, int(places_format.size()));
    const bool is_zero = number.digits.count('0') == number.digits.size();

    QByteArray whole = number.digits.left(number.whole);
    while (whole.startsWith('0')) whole.remove(0, 1);
    while (whole.size() < whole_format.count(u'0')) whole.prepend('0');
    QByteArray places = number.digits.mid(number.whole);
    while (places.endsWith('0') && places_format[places.size() - 1] == u'#') places.chop(1);

    QString text = value < 0 && !is_zero ? QStringLiteral("-") : QString();
    text += QString::fromLatin1(whole);
    if (point >= 0) text += u'.' + QString::fromLatin1(places);
    return text;
}

} // namespace

QString Format_Number(double value, const QString& format)
{
    return Formatted(value, format);
}

QString Format_Number(float value, const QString& format)
{
    return Formatted(value, format);
}

QString Text_Of_Single(float value)
{
    if (!std::isfinite(value) || value == 0) return QStringLiteral("0");
    // Seven significant digits in scientific form give the exponent that decides how many stand behind the point.
    const QByteArray scientific = QByteArray::number(double(value), 'e', 6);
    const int exponent = scientific.mid(scientific.indexOf('e') + 1).toInt();
    const double rounded = scientific.toDouble();
    QString text = QString::number(rounded, 'f', std::max(0, 6 - exponent));
    if (!text.contains(u'.')) return text;
    while (text.endsWith(u'0')) text.chop(1);
    if (text.endsWith(u'.')) text.chop(1);
    return text;
}

std::optional<float> Single_From_Text(const QString& text)
{
    return Whole_Text_As<float>(text);
}

std::optional<int> Long_From_Text(const QString& text)
{
    return Whole_Text_As<int>(text);
}

std::optional<double> Double_From_Text(const QString& text)
{
    return Whole_Text_As<double>(text);
}

int Round_Half_Even(double value)
{
    if (std::isnan(value)) return 0;
    const double rounded = std::nearbyint(value);
    if (rounded <= double(std::numeric_limits<int>::min())) return std::numeric_limits<int>::min();
    if (rounded >= double(std::numeric_limits<int>::max())) return std::numeric_limits<int>::max();
    return int(rounded);
}
