#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/codecs/EXIF_Block.h"

#include <cstdlib>

// Mending of a camera block: the length stays, a second time changes nothing, and what was set is read back.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const auto view = std::as_bytes(std::span(bytes, size));
    std::vector<std::byte> block(view.begin(), view.end());
    const int before = Orientation_Of_EXIF_Block(block);
    Mend_EXIF_Block(block, 1, true);
    if (block.size() != size || before < 1 || before > 8) std::abort();
    if (Orientation_Of_EXIF_Block(block) != 1) std::abort();
    std::vector<std::byte> again = block;
    Mend_EXIF_Block(again, 1, true);
    if (again != block) std::abort();
    return 0;
}
