#pragma once

#include <oneapi/tbb/blocked_range.h>
#include <oneapi/tbb/parallel_for.h>

/// Calls body(first_row, end_row) over 0..height on as many cores as there are; returns when all is done. `row_cost` is a
/// rough count of bytes touched per row: small pictures stay on the calling thread. The result never depends on how
/// the rows were divided.
template <class Body>
void For_Rows(int height, std::size_t row_cost, Body&& body)
{
    constexpr std::size_t least_bytes_per_task = 256 * 1024;
    const int grain = int(least_bytes_per_task / (row_cost + 1)) + 1;
    if (height <= grain) {
        if (height > 0) body(0, height);
        return;
    }
    using Range = oneapi::tbb::blocked_range<int>;
    oneapi::tbb::parallel_for(Range(0, height, std::size_t(grain)),
                              [&](const Range& rows) { body(rows.begin(), rows.end()); });
}
