#include "controls/Grid_Sort.h"

#include "controls/Grid_Records.h"
#include "frame/text/Text_Utilities.h"
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

// Values are turned into comparable ones once, so that a sort of many rows folds no text twice, and those into ranks: equal
// values have one rank, and the passes over the map compare whole numbers alone.

namespace {

struct Comparable {
    enum class Kind { Null, Number, Text } kind = Kind::Null;
    double number = 0;
    QString text{};
    std::uint64_t head = 0; ///< of the text, see Set_Heads
};

Comparable Comparable_Of(const QVariant& value)
{
    switch (Data_Type_Of(value)) {
    case Grid_Data_Type::Any:
    case Grid_Data_Type::Null: return {};
    case Grid_Data_Type::Boolean: return {Comparable::Kind::Number, value.toBool() ? -1.0 : 0.0}; // True is -1
    case Grid_Data_Type::Date: {
        if (value.typeId() == QMetaType::QTime)
            return {Comparable::Kind::Number, value.toTime().msecsSinceStartOfDay() / 86'400'000.0};
        const auto date_time = value.toDateTime();
        if (!date_time.isValid()) return {};
        return {Comparable::Kind::Number, Date_From_Date_Time(date_time)};
    }
    case Grid_Data_Type::String: return {Comparable::Kind::Text, 0, Case_Folded(value.toString())};
    case Grid_Data_Type::Integer:
    case Grid_Data_Type::Long:
    case Grid_Data_Type::Single:
    case Grid_Data_Type::Double:
    case Grid_Data_Type::Currency:
    case Grid_Data_Type::Byte: break;
    }
    const double number = value.toDouble();
    return {Comparable::Kind::Number, std::isnan(number) ? -std::numeric_limits<double>::infinity() : number};
}

int Compare_Texts(const Comparable& left, const Comparable& right)
{
    if (left.head != right.head) return left.head > right.head ? 1 : -1;
    return left.text.constData() == right.text.constData() ? 0 : left.text.compare(right.text);
}

int Compare(const Comparable& left, const Comparable& right)
{
    using Kind = Comparable::Kind;
    if (left.kind == Kind::Null || right.kind == Kind::Null) return 0;
    if (left.kind != right.kind) return left.kind == Kind::Number ? -1 : 1;
    if (left.kind == Kind::Text) return Compare_Texts(left, right);
    return int(left.number > right.number) - int(left.number < right.number);
}

qsizetype Common_Length(const QString& left, const QString& right, qsizetype most)
{
    const auto end = left.cbegin() + std::min({left.size(), right.size(), most});
    return std::mismatch(left.cbegin(), end, right.cbegin()).first - left.cbegin();
}

/// The first four characters behind what all texts begin with, as one number that compares as they do.
void Set_Heads(std::vector<Comparable>& values)
{
    const Comparable* first = nullptr;
    qsizetype common = std::numeric_limits<qsizetype>::max();
    for (const Comparable& value : values) {
        if (value.kind != Comparable::Kind::Text) continue;
        if (first == nullptr) first = &value;
        common = Common_Length(first->text, value.text, common);
    }
    if (first == nullptr) return;
    for (Comparable& value : values)
        for (qsizetype i = common; i < common + 4 && value.kind == Comparable::Kind::Text; ++i)
            value.head = value.head << 16 | (i < value.text.size() ? value.text[i].unicode() : 0);
}

constexpr int Null_Rank = -1;

/// One for each row, from 0 for the least value.
std::vector<int> Ranks_Of(std::vector<Comparable> values)
{
    Set_Heads(values);
    std::vector<int> ranks(values.size(), Null_Rank);
    std::vector<int> rows;
    for (std::size_t row = 0; row < values.size(); ++row)
        if (values[row].kind != Comparable::Kind::Null) rows.push_back(int(row));
    const auto compare = [&](int left, int right) {
        return Compare(values[std::size_t(left)], values[std::size_t(right)]);
    };
    std::sort(rows.begin(), rows.end(), [&](int left, int right) { return compare(left, right) < 0; });
    int rank = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i > 0 && compare(rows[i - 1], rows[i]) != 0) ++rank;
        ranks[std::size_t(rows[i])] = rank;
    }
    return ranks;
}

class Sorter {
public:
    Sorter(int row_count, const std::vector<Grid_Sort_Key>& keys, bool null_smallest,
           const std::function<QVariant(int, int)>& value_of)
        : keys_(keys), null_sign_(null_smallest ? 1 : -1)
    {
        for (const auto& key : keys) {
            std::vector<Comparable> values;
            values.reserve(std::size_t(row_count));
            QVariant before;
            for (int row = 0; row < row_count; ++row) {
                QVariant value = value_of(row, key.column);
                const bool again = row > 0 && value.typeId() == QMetaType::QString && value == before;
                values.push_back(again ? values.back() : Comparable_Of(value)); // folders come in runs
                before = std::move(value);
            }
            ranks_.push_back(Ranks_Of(std::move(values)));
        }
    }

    /// Below 0 when the moving row stands before the other.
    int Order(int moving, int other) const
    {
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            const int left = ranks_[i][std::size_t(moving)];
            const int right = ranks_[i][std::size_t(other)];
            if (left == right) continue;
            const int direction = keys_[i].direction;
            if (left != Null_Rank && right != Null_Rank) return left > right ? direction : -direction;
            return direction * null_sign_ * (left == Null_Rank ? -1 : 1);
        }
        return 0;
    }

    void Pass(std::vector<int>& map, int gap) const
    {
        const int count = int(map.size());
        for (int i = gap; i < count; ++i) {
            const int moving = map[std::size_t(i)];
            int hole = i;
            for (; hole >= gap && Order(moving, map[std::size_t(hole - gap)]) < 0; hole -= gap)
                map[std::size_t(hole)] = map[std::size_t(hole - gap)];
            map[std::size_t(hole)] = moving;
        }
    }

private:
    const std::vector<Grid_Sort_Key>& keys_;
    int null_sign_;
    std::vector<std::vector<int>> ranks_; // for each key, by stored row
};

} // namespace

int Compare_Values(const QVariant& left, const QVariant& right)
{
    return Compare(Comparable_Of(left), Comparable_Of(right));
}

std::vector<int> Sorted_Row_Map(int row_count, const std::vector<Grid_Sort_Key>& keys, bool null_smallest,
                                const std::function<QVariant(int row, int column)>& value_of)
{
    std::vector<int> map(std::size_t(std::max(row_count, 0)));
    std::iota(map.begin(), map.end(), 0);
    if (row_count < 2 || keys.empty()) return map;

    const Sorter sorter(row_count, keys, null_smallest, value_of);
    const int third = (row_count + 1) / 3; // to nearest: no third of a whole number ends in a half
    int gap = 1;
    while (gap <= third) gap = 3 * gap + 1;
    for (; gap >= 1; gap /= 3) sorter.Pass(map, gap);
    return map;
}
