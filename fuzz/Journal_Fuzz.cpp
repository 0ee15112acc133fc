// The reader of the journal of unsaved work. What it reads can be written and reads back the same; a good line behind the
// input is read only when nothing before it is damaged.

#include "catalogue/Journal_Text.h"

#include <cstdint>
#include <cstdlib>

namespace {

void Require(bool holds)
{
    if (!holds) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), qsizetype(size));
    const Kept_Work work = Read_Journal_Text(text);
    QByteArray again = Journal_Head();
    for (const Kept_Picture& picture : work.pictures) {
        Require(picture.key > 0 && !picture.file.isEmpty() && picture.rotate >= 0 && picture.rotate < 360);
        again += Journal_Line(picture);
    }
    const Kept_Work second = Read_Journal_Text(again);
    Require(!second.is_damaged && second.pictures.size() == work.pictures.size());
    const Kept_Work longer = Read_Journal_Text(text + Journal_Line({.key = 0x7FFFFFFF, .file = "/z.jpg"}));
    const bool has_last = !longer.pictures.empty() && longer.pictures.back().key == 0x7FFFFFFF;
    const bool had_last = !work.pictures.empty() && work.pictures.back().key == 0x7FFFFFFF;
    Require(work.is_damaged || has_last || had_last);
    return 0;
}
