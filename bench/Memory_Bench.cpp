#include "bench/Harness.h"

#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/core/Row_Writer.h"

#include <cstring>
#include <sys/mman.h>

namespace {

Bitmap Copy_To_New_Bitmap(const Bitmap_View& from)
{
    Bitmap bitmap = std::move(Bitmap::Create(from.width, from.height, from.bytes_per_pixel).value());
    const auto to = bitmap.Change();
    For_Rows(from.height, from.Row_Bytes(), [&](int first, int end) {
        Row_Writer writer(to);
        for (int y = first; y < end; ++y) writer.Copy_To_Row(y, 0, from.Row(y), from.Row_Bytes());
    });
    return bitmap;
}

void Copy_To_Fresh_Memory(const cv::Mat& from)
{
    const std::size_t size = from.total() * from.elemSize();
    void* fresh = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (fresh == MAP_FAILED) return;
    auto* to = static_cast<std::uint8_t*>(fresh);
    For_Rows(from.rows, from.step[0], [&](int first, int end) {
        std::memcpy(to + std::size_t(first) * from.step[0], from.ptr(first), std::size_t(end - first) * from.step[0]);
    });
    munmap(fresh, size);
}

void Add_Operations(Bench_Suite& suite)
{
    const Bench_Inputs& in = suite.Inputs();
    suite.Add({.name = "new bitmap, created and written",
               .ours = {"pool", [&] { (void)Copy_To_New_Bitmap(in.picture.View()); }},
               .peers = {{"memcpy to fresh memory", [&] { Copy_To_Fresh_Memory(in.mat); }}},
               .goal = 0.13,
               .allowed_error = 0,
               .check = [&] { return Compare(in.picture.View(), Copy_To_New_Bitmap(in.picture.View()).View()); }});
}

const Bench_Area memory_area("memory", Add_Operations);

} // namespace
