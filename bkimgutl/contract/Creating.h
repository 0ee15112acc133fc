#pragma once

#include "bkimgutl/contract/Guard.h"
#include "bkimgutl/core/Handle_Table.h"
#include "bkimgutl/core/Last_Error.h"

#include <type_traits>

/// What all creating functions of the contract have in common: find the source, make a bitmap of it, adopt that or store
/// the error. `make` takes a Bitmap_View, or the Bitmap where its origin matters, and returns a Result<Bitmap>.
template <class Make>
Bitmap_Handle Created_From(Bitmap_Handle source, Make&& make)
{
    const auto bitmap = Find_Bitmap(source);
    if (!bitmap) return Fail(bitmap.error());
    const auto create = [&] {
        if constexpr (std::is_invocable_v<Make, const Bitmap&>)
            return Adopt_Or_Fail(make(**bitmap));
        else
            return Adopt_Or_Fail(make((*bitmap)->View()));
    };
    return Guarded(create, [] { return Error{"not enough memory for the result"}; });
}
