#include "frame/files/Copy_File.h"

#include "frame/files/Regular_File.h"
#include "frame/files/Replacement_File.h"

#include <vector>

Result<void> Copy_Whole_File(const std::string& source, const std::string& target)
{
    auto from = Regular_File::Open(source);
    if (!from) return tl::make_unexpected(from.error());
    const auto times = Times_Of(source);
    if (!times) return tl::make_unexpected(times.error());
    auto to = Replacement_File::Open(target, {.take_attributes_from = source, .times = *times, .verify = {}});
    if (!to) return tl::make_unexpected(to.error());
    std::vector<std::byte> buffer(1 << 20);
    for (std::int64_t at = 0;;) {
        const auto got = from->Read_At(at, buffer);
        if (!got) return tl::make_unexpected(got.error());
        if (*got == 0) break;
        if (auto written = to->Write(std::span(buffer).first(*got)); !written) return written;
        at += std::int64_t(*got);
    }
    return to->Commit();
}
