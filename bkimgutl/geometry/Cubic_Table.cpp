#include "bkimgutl/geometry/Cubic_Table.h"

#include <cmath>

namespace {

Cubic_Table Make_Table()
{
    constexpr int one = 1 << Cubic_Table::weight_bits;
    Cubic_Table table;
    for (std::size_t i = 0; i < table.weights.size(); ++i) {
        const auto exact = Cubic_Weights(double(i) / double(table.weights.size()));
        auto& row = table.weights[i];
        int sum = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            row[k] = std::int16_t(std::lround(exact[k] * one));
            sum += row[k];
        }
        row[i * 2 < table.weights.size() ? 1 : 2] += std::int16_t(one - sum); // the largest bears what rounding left
    }
    return table;
}

} // namespace

const Cubic_Table& The_Cubic_Table()
{
    static const Cubic_Table table = Make_Table();
    return table;
}
