#include "frame/files/Copy_File.h"

#include "frame/files/Regular_File.h"
#include "frame/files/Rename_File.h"
#include "frame/files/Replacement_File.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <vector>

namespace {

constexpr std::size_t Piece = 1 << 20;

Result<void> Stopped(const std::string& source)
{
    return Failure(source + ": was not copied, for it was stopped", ECANCELED);
}

Result<void> Copy_Bytes(const Regular_File& from, Replacement_File& to, const std::string& source,
                        const Copy_Options& options)
{
    std::vector<std::byte> buffer(Piece);
    for (std::int64_t at = 0;;) {
        if (options.stop_requested && options.stop_requested()) return Stopped(source);
        const auto got = from.Read_At(at, buffer);
        if (!got) return tl::make_unexpected(got.error());
        if (*got == 0) return {};
        if (auto written = to.Write(std::span(buffer).first(*got)); !written) return written;
        at += std::int64_t(*got);
    }
}

/// Both files hold the same bytes. The copy is read from the disk where the system can be made to.
Result<void> Compare(const Regular_File& from, const std::string& copy, const std::string& target)
{
    const auto other = Regular_File::Open(copy);
    if (!other) return tl::make_unexpected(other.error());
    (void)posix_fadvise(other->Descriptor(), 0, 0, POSIX_FADV_DONTNEED);
    std::vector<std::byte> left(Piece);
    std::vector<std::byte> right(Piece);
    for (std::int64_t at = 0;;) {
        const auto got = from.Read_At(at, left);
        if (!got) return tl::make_unexpected(got.error());
        const auto got_other = other->Read_At(at, right);
        if (!got_other) return tl::make_unexpected(got_other.error());
        if (*got != *got_other || !std::equal(left.begin(), left.begin() + std::ptrdiff_t(*got), right.begin()))
            return Failure(target + ": the copy is not the same as its source", EIO);
        if (*got == 0) return {};
        at += std::int64_t(*got);
    }
}

Result<void> Still_The_Same(const Regular_File& from, const std::string& source)
{
    const auto now = Identity_Of(source);
    if (!now) return tl::make_unexpected(now.error());
    if (*now != from.Identity()) return Failure(source + ": was changed while it was copied", EBUSY);
    return {};
}

} // namespace

Result<void> Copy_Whole_File(const std::string& source, const std::string& target, const Copy_Options& options)
{
    auto from = Regular_File::Open(source);
    if (!from) return tl::make_unexpected(from.error());
    const auto times = Times_Of(source);
    if (!times) return tl::make_unexpected(times.error());
    if (const auto there = Identity_Of(target);
        there && there->device == from->Identity().device && there->inode == from->Identity().inode)
        return Failure(target + ": is the file itself", EINVAL);
    const auto verify = [&](const std::string& hidden) -> Result<void> {
        if (options.verify)
            if (auto same = Compare(*from, hidden, target); !same) return same;
        return Still_The_Same(*from, source);
    };
    auto to = Replacement_File::Open(target, {.take_attributes_from = source,
                                              .times = *times,
                                              .verify = verify,
                                              .only_new = options.when_taken == When_Taken::Refuse});
    if (!to) return tl::make_unexpected(to.error());
    if (auto copied = Copy_Bytes(*from, *to, source, options); !copied) return copied;
    return to->Commit();
}
