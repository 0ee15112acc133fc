#pragma once

#include "bkimgutl/contract/Types.h"
#include "bkimgutl/core/Bitmap.h"

/// The bitmaps behind the handles. A handle carries the number of its slot and a generation, so that a stale, foreign or
/// invented handle is refused and never reaches another bitmap. Threads may adopt, find and release side by side; a bitmap
/// that one of them changes or releases is nobody else's meanwhile.

/// The bitmap of a handle; fails with "invalid bitmap handle".
Result<const Bitmap*> Find_Bitmap(Bitmap_Handle handle);
Result<Bitmap*> Find_Bitmap_To_Change(Bitmap_Handle handle);

/// Takes a bitmap into the table; the caller of the contract owns the handle.
Bitmap_Handle Adopt(Bitmap bitmap);

/// Adopts the value or stores the error: the end of every creating function of the contract.
Bitmap_Handle Adopt_Or_Fail(Result<Bitmap> result);

/// Removes the bitmap; false on a handle that is not alive.
bool Release(Bitmap_Handle handle);
