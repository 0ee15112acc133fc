#pragma once

#include <cstdint>

/// Lock flags of a record. Bits 0 to 7 are no locks and survive every unlocking; bits 8 to 11 are hard locks, for windows
/// that must be alone with a picture; higher bits are soft locks. Each window takes a bit of its own.
constexpr std::uint32_t No_Lock_Mask = 0xFF;
constexpr std::uint32_t Hard_Lock_Mask = 0xF00;

constexpr bool Is_Locked(std::uint32_t flags)
{
    return flags > No_Lock_Mask;
}

constexpr bool Is_Hard_Locked(std::uint32_t flags)
{
    return (flags & Hard_Lock_Mask) != 0;
}

/// What a command wants from a picture. Hosts pass these numbers.
enum class Select_Access : int {
    Shared = 0,    ///< free unless a hard lock is set
    Exclusive = 1, ///< free only without any lock
};

constexpr bool Is_Free_For(std::uint32_t flags, Select_Access access)
{
    return access == Select_Access::Exclusive ? !Is_Locked(flags) : !Is_Hard_Locked(flags);
}

constexpr std::uint32_t With_Lock(std::uint32_t flags, std::uint32_t lock, bool locked)
{
    return locked ? flags | lock : flags & ~lock;
}

/// The working windows that are active now, a bit each.
class Active_Forms {
public:
    /// True when the last active bit was cleared by this call.
    bool Set(std::uint32_t form, bool active)
    {
        const std::uint32_t before = bits_;
        bits_ = active ? bits_ | form : bits_ & ~form;
        return before != 0 && bits_ == 0;
    }
    bool Is_Active(std::uint32_t form) const { return (bits_ & form) != 0; }
    std::uint32_t Bits() const { return bits_; }

private:
    std::uint32_t bits_ = 0;
};
