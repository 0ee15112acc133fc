// The reader of the journal of unsaved work. What it reads can be written and reads back the same; a good line behind the
// input is read only when nothing before it is damaged. A changed byte spoils the check sum of its line, and nothing behind
// that would be looked at: most changed inputs get right sums again.

#include "catalogue/Journal_Text.h"

#include <QtCore/QCryptographicHash>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

void Require(bool holds)
{
    if (!holds) std::abort();
}

constexpr qsizetype Sum_Digits = 8;

QByteArray With_Right_Sums(const QByteArray& text)
{
    QList<QByteArray> lines = text.split('\n');
    for (qsizetype i = 1; i < lines.size(); ++i) {
        if (lines[i].size() <= Sum_Digits) continue;
        const QByteArray bytes = lines[i].mid(Sum_Digits + 1);
        lines[i] = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex().left(Sum_Digits) + ' ' + bytes;
    }
    return lines.join('\n');
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed)
{
    size = LLVMFuzzerMutate(data, size, most);
    if (seed % 8 == 0) return size;
    const QByteArray mended = With_Right_Sums({reinterpret_cast<const char*>(data), qsizetype(size)});
    const std::size_t kept = std::min(std::size_t(mended.size()), most);
    std::memcpy(data, mended.constData(), kept);
    return kept;
}

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
