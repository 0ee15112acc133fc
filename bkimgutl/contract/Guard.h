#pragma once

#include "bkimgutl/core/Last_Error.h"

#include <new>

/// Runs the body of a function of the contract. Nothing is thrown across the border: what memory does not suffice for
/// stores the Error that `reason` returns, and gives 0.
template <class Body, class Reason>
auto Guarded(Body&& body, Reason&& reason) -> decltype(body())
{
    try {
        return body();
    } catch (const std::bad_alloc&) {
        Fail(reason());
        return 0;
    }
}
