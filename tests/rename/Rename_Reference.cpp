#include "tests/rename/Rename_Reference.h"

#include "evaluate/variant/Like.h"

#include <QtCore/QRegularExpression>
#include <cstdlib>

using namespace Formula;

namespace {

QString Root(const QString& name)
{
    const qsizetype point = name.lastIndexOf('.');
    return point < 0 ? name : name.left(point);
}

QString Extension(const QString& name)
{
    const qsizetype point = name.lastIndexOf('.');
    return point < 0 ? QString() : name.mid(point + 1);
}

QString Behind_Folders(const QString& text)
{
    return text.split('/').back();
}

bool Digit_At(const QString& text, int position) // 1-based
{
    return position >= 1 && position <= text.size() && text[position - 1].isDigit();
}

/// First and last position of the last run of digits behind position `stop`; 0, 0 without one.
std::pair<int, int> Last_Run(const QString& text, int stop)
{
    int last = int(text.size());
    while (last > stop && !Digit_At(text, last)) --last;
    if (last == stop) return {0, 0};
    int first = last;
    while (first - 1 > stop && Digit_At(text, first - 1)) --first;
    return {first, last};
}

bool Is_Whole(const QString& text)
{
    static const QRegularExpression whole(QStringLiteral("^[+-]?[0-9]+$"));
    return whole.match(text.trimmed()).hasMatch();
}

std::optional<long long> Typed_Number(const QString& text)
{
    if (!Is_Whole(text)) return {};
    const long long number = std::strtoll(text.trimmed().toLatin1().constData(), nullptr, 10);
    if (number > 2147483647LL || number < -2147483648LL) return {};
    return number;
}

long long Digits_Value(const QString& digits) // -1: no serial
{
    if (digits.isEmpty() || digits.size() > 300) return -1;
    const double value = digits.toDouble();
    return value < 2147483647.0 ? static_cast<long long>(value) : -1;
}

bool Fits(const QString& text, const QString& pattern)
{
    return Is_Like(text, pattern, Compare_Mode::Text).value_or(false);
}

/// The position that From reaches to; 0 no match, -1 a match that does not begin the root.
int Reach(const QString& root, const Rename_Inputs& inputs)
{
    const QString& from = inputs.change_from;
    if (from.isEmpty()) return 0;
    if (!inputs.pattern_mode) return root.startsWith(from, Qt::CaseInsensitive) ? int(from.size()) : 0;
    for (int end = 1; end <= root.size(); ++end)
        for (int begin = end; begin >= 1; --begin)
            if (Fits(root.mid(begin - 1, end - begin + 1), from)) return Fits(root.left(end), from) ? end : -1;
    // A pattern that fits the empty text alone counts as one character.
    return !root.isEmpty() && Fits(QString(), from) ? 1 : 0;
}

struct Range {
    int smallest = -1, largest = -1;
    QString start;
};

Range Range_Of(const std::vector<Rename_Row>& rows, const Rename_Inputs& inputs)
{
    Range range;
    for (const Rename_Row& row : rows) {
        const QString root = Root(row.file_name);
        int stop = 0;
        if (inputs.pattern_mode) {
            stop = Reach(root, inputs);
            if (stop <= 0) continue;
        }
        const auto [first, last] = Last_Run(root, stop);
        if (first == 0) continue;
        if (!inputs.pattern_mode && first == 1) continue;
        const QString digits = root.mid(first - 1, last - first + 1);
        const long long serial = Digits_Value(digits);
        if (serial < 0) continue;
        if (serial > range.largest) range.largest = int(serial);
        if (!inputs.pattern_mode || range.smallest < 0 || serial < range.smallest) {
            range.smallest = int(serial);
            range.start = digits;
        }
    }
    return range;
}

QString Zeros(long long number, int width)
{
    QString text = QString::number(number);
    while (text.size() < width) text = '0' + text;
    return text;
}

} // namespace

Reference_Result Reference_Names(const std::vector<Rename_Row>& rows, const Rename_Inputs& inputs,
                                 const std::optional<QString>& typed_start, const Reference_Formula& with_formula)
{
    const Range range = Range_Of(rows, inputs);
    const QString start_text = typed_start ? *typed_start : range.start;
    const auto start = Typed_Number(start_text);

    long long offset = 0;
    const bool renumber = range.smallest >= 0 && start;
    if (renumber) offset = *start - range.smallest;
    int width = int(std::max(QString::number(range.largest).size(), QString::number(range.largest + offset).size()));
    const bool reserialize = inputs.reserialize && start;
    long long next = start.value_or(0);
    const long long interval = Typed_Number(inputs.reserialize_interval).value_or(1);
    if (reserialize && next >= 0)
        width = int(QString::number(next + (static_cast<long long>(rows.size()) - 1) * interval).size());
    if (start_text.trimmed().size() > width) width = int(start_text.trimmed().size());

    Reference_Result result{
        .names = {}, .start_numbering = range.start, .smallest = range.smallest, .largest = range.largest};
    for (const Rename_Row& row : rows) {
        const QString root = Root(row.file_name);
        const int reach = inputs.change_to.isEmpty() ? 0 : Reach(root, inputs);
        if (reach < 0) {
            result.names << row.new_name;
            continue;
        }
        if (reach == 0) {
            result.names << QString();
            continue;
        }
        const auto [first, last] = Last_Run(root, reach);
        const QString rest = root.mid(reach);
        const QString middle = first > 0 ? root.mid(reach, first - 1 - reach) : rest;
        const QString suffix = first > 0 ? root.mid(last) : QString();
        long long serial = inputs.pattern_mode ? 0 : -1;
        if (renumber && first > 0) {
            const long long value = Digits_Value(root.mid(first - 1, last - first + 1));
            if (value >= 0) serial = value + offset;
        }
        if (reserialize) {
            serial = next;
            next += interval;
        }
        QString new_root;
        if (serial < 0)
            new_root = inputs.change_to + rest;
        else if (with_formula)
            new_root = with_formula(row, Zeros(serial, width));
        else if (renumber || reserialize)
            new_root = inputs.change_to + middle + Zeros(serial, width) + suffix;
        else
            new_root = inputs.change_to + rest;
        const QString type = Behind_Folders(inputs.file_type.trimmed());
        QString extension = type.isEmpty() ? Extension(row.file_name) : type;
        if (!extension.isEmpty() && !extension.startsWith('.')) extension = '.' + extension;
        new_root = Behind_Folders(new_root);
        result.names << (new_root.isEmpty() ? QString() : new_root + extension);
    }
    return result;
}
