// The camera block of a picture: parser, report and summary line.

#include "catalogue/Camera_Information.h"

#include <cstddef>
#include <cstdint>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto record = Parse_Camera_Record(std::as_bytes(std::span(data, size)));
    if (record && Camera_Report(*record).size() > 8 * 65536 + Camera_Summary_Line(*record).size()) __builtin_trap();
    return 0;
}
