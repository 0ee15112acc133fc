// Search over a tree of 2 000 JPEG files of mixed sizes, by name and by description.
//   search_bench [repeats]
// Each line: what, the best time of the repeats, files a second, bytes read. Cold: the files' pages were dropped before.

#include "catalogue/Search.h"
#include "dev/samples/Jpeg_File.h"
#include "frame/text/Path_Utilities.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int Files = 2000;
constexpr int Files_In_A_Folder = 100;

/// Of 100 pictures 60 are small, 30 of 3 megapixels and 10 of 24.
std::vector<std::uint8_t> Picture_Bytes(int number, const std::string& comment)
{
    static const Sample_Picture kinds[] = {Meadow(800, 600, 1), Meadow(2000, 1500, 2), Meadow(6000, 4000, 3)};
    const int place = number % 100;
    const int kind = place < 60 ? 0 : place < 90 ? 1 : 2;
    static std::vector<std::uint8_t> coded[3];
    if (coded[kind].empty())
        coded[kind] = Jpeg_File(kinds[kind], {.quality = 60, .segments = {{0xE1, std::vector<std::uint8_t>(8000, 7)}}});
    // The comment goes behind the two bytes of the start.
    std::vector<std::uint8_t> bytes = coded[kind];
    std::string segment = "\xFF\xFE";
    segment += '\0';
    segment += char(comment.size() + 2);
    segment += comment;
    bytes.insert(bytes.begin() + 2, segment.begin(), segment.end());
    return bytes;
}

std::int64_t Make_Tree(const fs::path& root)
{
    std::int64_t total = 0;
    for (int i = 0; i < Files; ++i) {
        const fs::path folder = root / ("day " + std::to_string(i / Files_In_A_Folder));
        fs::create_directories(folder);
        const auto bytes = Picture_Bytes(i, (i % 10 == 0 ? "sea, picture " : "hills, picture ") + std::to_string(i));
        std::ofstream(folder / ("IMG_" + std::to_string(i) + ".jpg"), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
        total += std::int64_t(bytes.size());
    }
    sync();
    return total;
}

void Drop_Pages(const fs::path& root)
{
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file()) continue;
        const int file = open(entry.path().c_str(), O_RDONLY);
        (void)posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
        close(file);
    }
}

std::int64_t Bytes_Read()
{
    std::ifstream facts("/proc/self/io");
    std::string name;
    std::int64_t value = 0;
    while (facts >> name >> value)
        if (name == "rchar:") return value;
    return 0;
}

void Run(const char* what, const fs::path& root, Search_Kind kind, bool cold, int repeats)
{
    const bool names = kind == Search_Kind::Names;
    const Search_Request request{.kind = kind,
                                 .folder = Path_From_Bytes(QByteArray::fromStdString(root.string())),
                                 .patterns = QStringLiteral("*.jpg;*.jif;*.tif"),
                                 .criteria = names ? QStringLiteral("*5?.jpg") : QStringLiteral("sea*")};
    double best = 1e9;
    std::int64_t bytes = 0;
    for (int i = 0; i < repeats; ++i) {
        if (cold) Drop_Pages(root);
        const std::int64_t before = Bytes_Read();
        const auto begin = std::chrono::steady_clock::now();
        const auto result = Search_Files(request);
        best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
        bytes = Bytes_Read() - before;
        if (!result || (!names && result->files.size() != Files / 10)) std::abort();
    }
    std::printf("%-28s %8.1f ms %9.0f files/s %8.1f MB read\n", what, best * 1e3, Files / best, double(bytes) / 1e6);
}

} // namespace

int main(int count, char** arguments)
{
    const int repeats = count > 1 ? std::max(std::atoi(arguments[1]), 1) : 5;
    std::string pattern = (fs::temp_directory_path() / "search-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) return 1;
    const fs::path root = pattern;
    const std::int64_t total = Make_Tree(root);
    std::printf("%d files in %d folders, %.0f MB\n", Files, Files / Files_In_A_Folder, double(total) / 1e6);
    Run("names", root, Search_Kind::Names, false, repeats);
    Run("descriptions", root, Search_Kind::Descriptions, false, repeats);
    Run("descriptions, cold", root, Search_Kind::Descriptions, true, repeats);
    fs::remove_all(root);
    return 0;
}
