#include "controls/Grid_Sort.h"

#include "controls/Grid_Records.h"
#include "frame/text/Text_Utilities.h"
#include <numeric>

// Values are turned into comparable ones once, so that a sort of many rows folds no text twice.

namespace {

struct Comparable {
    enum class Kind { Null, Number, Text } kind = Kind::Null;
    double number = 0;
    QString text{};
};

Comparable Comparable_Of(const QVariant& value)
{
    switch (Data_Type_Of(value)) {
    case Grid_Data_Type::Any:
    case Grid_Data_Type::Null: return {};
    case Grid_Data_Type::Boolean: return {Comparable::Kind::Number, value.toBool() ? -1.0 : 0.0, {}}; // True is -1
    case Grid_Data_Type::Date: {
        if (value.typeId() == QMetaType::QTime)
            return {Comparable::Kind::Number, value.toTime().msecsSinceStartOfDay() / 86'400'000.0, {}};
        const auto date_time = value.toDateTime();
        if (!date_time.isValid()) return {};
        return {Comparable::Kind::Number, Date_From_Date_Time(date_time), {}};
    }
    case Grid_Data_Type::String: return {Comparable::Kind::Text, 0, Case_Folded(value.toString())};
    case Grid_Data_Type::Integer:
    case Grid_Data_Type::Long:
    case Grid_Data_Type::Single:
    case Grid_Data_Type::Double:
    case Grid_Data_Type::Currency:
    case Grid_Data_Type::Byte: break;
    }
    return {Comparable::Kind::Number, value.toDouble(), {}};
}

int Compare(const Comparable& left, const Comparable& right)
{
    using Kind = Comparable::Kind;
    if (left.kind == Kind::Null || right.kind == Kind::Null) return 0;
    if (left.kind != right.kind) return left.kind == Kind::Number ? -1 : 1;
    if (left.kind == Kind::Text) return left.text.compare(right.text);
    return int(left.number > right.number) - int(left.number < right.number);
}

class Sorter {
public:
    Sorter(int row_count, const std::vector<Grid_Sort_Key>& keys, bool null_smallest,
           const std::function<QVariant(int, int)>& value_of)
        : keys_(keys), null_sign_(null_smallest ? 1 : -1)
    {
        values_.reserve(std::size_t(row_count) * keys.size());
        for (int row = 0; row < row_count; ++row)
            for (const auto& key : keys) values_.push_back(Comparable_Of(value_of(row, key.column)));
    }

    /// Below 0 when the moving row stands before the other.
    int Order(int moving, int other) const
    {
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            const auto& left = values_[std::size_t(moving) * keys_.size() + i];
            const auto& right = values_[std::size_t(other) * keys_.size() + i];
            const int compared = Compare(left, right);
            if (compared != 0) return compared > 0 ? keys_[i].direction : -keys_[i].direction;
            const bool moving_null = left.kind == Comparable::Kind::Null;
            if (moving_null == (right.kind == Comparable::Kind::Null)) continue;
            return keys_[i].direction * null_sign_ * (moving_null ? -1 : 1);
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
    std::vector<Comparable> values_; // row by row, one for each key
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
