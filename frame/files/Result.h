#pragma once

#include <string>
#include <tl/expected.hpp>
#include <utility>

/// What went wrong, in words for the person who uses the program. The text names the file and the reason where there is
/// a file, has no full stop at its end and no line breaks.
struct Error {
    std::string text;
    int number = 0; ///< errno where a system call failed, otherwise 0
};

/// A value, or the reason why there is none. Must be looked at.
template <class Value>
using Result = tl::expected<Value, Error>;

inline tl::unexpected<Error> Failure(std::string text, int number = 0)
{
    return tl::make_unexpected(Error{std::move(text), number});
}
