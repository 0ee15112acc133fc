#include "bkimgutl/contract/Load_Ahead.h"

#include "bkimgutl/bkimgutl.h"
#include "bkimgutl/contract/Opened_Picture.h"
#include "bkimgutl/core/Cancellation.h"
#include "bkimgutl/core/Handle_Table.h"
#include "bkimgutl/core/Pixel_Memory.h"
#include "dev/samples/Camera_Block.h"
#include "dev/samples/Jpeg_File.h"
#include "dev/samples/Tiff_File.h"
#include "tests/bkimgutl/Reference_Pictures.h"
#include "tests/support/Test_Folder.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr int Cell = 128;

/// What is compared: everything that a taker gets, the pixels as bytes.
struct Seen {
    std::string path;
    int type = 0;
    int divisor = 0;
    std::array<int, 5> facts{};
    std::string comment{}, script{}, error{}, script_error{}, last_error{};
    std::vector<std::byte> exif{};
    std::vector<std::uint8_t> pixels{};
    bool operator==(const Seen&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Seen& seen)
{
    return out << seen.path << " type " << seen.type << " divisor " << seen.divisor << ' ' << seen.facts[0] << 'x'
               << seen.facts[1] << " comment '" << seen.comment << "' script '" << seen.script << "' error '"
               << seen.error << "' last '" << seen.last_error << "' exif " << seen.exif.size() << " pixels "
               << seen.pixels.size();
}

std::vector<std::uint8_t> Bytes_Of(Bitmap_Handle bitmap)
{
    Bitmap_Facts facts;
    if (!Get_Bitmap_Facts_CPP(bitmap, &facts)) return {};
    std::vector<std::uint8_t> bytes(std::size_t(facts.stride) * std::size_t(facts.height));
    Get_Bitmap_Bytes_CPP(bitmap, bytes.data(), bytes.size());
    return bytes;
}

std::string Last_Text()
{
    char buffer[1024] = {};
    std::int32_t length = 0;
    Get_Last_Image_Error_String(buffer, sizeof buffer, &length);
    return std::string(buffer, std::size_t(std::abs(length)));
}

template <class Byte, class Reader>
std::vector<Byte> Block_Of(Reader reader, const std::string& path, bool& read)
{
    std::vector<Byte> buffer(1 << 17);
    std::int32_t length = 0;
    read = reader(path, 0, buffer.data(), std::int32_t(buffer.size()), &length) != 0;
    buffer.resize(std::size_t(std::abs(length)));
    return buffer;
}

/// The same by the single functions of the contract, one after another.
Seen Seen_One_By_One(const Picture_Request& request)
{
    Seen seen{.path = request.path, .divisor = 8, .facts = {0, 0, 0, -1, -1}};
    seen.type = Get_Image_File_Type_From_Signature(request.path);
    auto& [width, height, depth, across, down] = seen.facts;
    if (!Get_File_Dimensions(request.path, 0, &width, &height, &depth, &across, &down)) {
        seen.error = seen.last_error = Last_Text();
        return seen;
    }
    bool read = false;
    const auto comment = Block_Of<char>(Get_File_Comment, request.path, read);
    seen.comment.assign(comment.begin(), comment.end());
    const auto script = Block_Of<char>(Get_File_Image_Script, request.path, read);
    if (!read) seen.script_error = Last_Text();
    seen.script.assign(script.begin(), script.end());
    for (const unsigned char byte : Block_Of<unsigned char>(Get_File_EXIF_Data, request.path, read))
        seen.exif.push_back(std::byte(byte));
    Bitmap_Handle bitmap = Load_Bitmap_From_File(request.path, 0, 8, request.rotation);
    if (bitmap != 0) {
        Bitmap_Facts facts;
        Get_Bitmap_Facts_CPP(bitmap, &facts);
        for (int side = std::max(facts.width, facts.height); side < Cell && seen.divisor >= 2; side *= 2)
            seen.divisor /= 2;
        Release(bitmap);
        bitmap = Load_Bitmap_From_File(request.path, 0, seen.divisor, request.rotation);
    }
    if (bitmap == 0) seen.error = seen.last_error = Last_Text();
    seen.pixels = Bytes_Of(bitmap);
    Release(bitmap);
    return seen;
}

Seen Seen_Ahead(Load_Ahead& ahead, const std::string& path)
{
    Picture_Contents taken = ahead.Take();
    Seen seen{.path = path,
              .type = taken.type,
              .divisor = taken.scale_divisor,
              .facts = {taken.width, taken.height, taken.pixel_depth, taken.horizontal_dpi, taken.vertical_dpi},
              .comment = taken.comment,
              .script = taken.script,
              .error = taken.error,
              .script_error = taken.script_error,
              .last_error = taken.error.empty() ? std::string() : Last_Text(),
              .exif = taken.exif,
              .pixels = Bytes_Of(taken.bitmap)};
    if (taken.bitmap != 0) Release(taken.bitmap);
    return seen;
}

class Ahead : public testing::Test {
protected:
    std::string Put(const std::string& name, const std::vector<std::uint8_t>& bytes)
    {
        Put_File(folder.File(name), std::string(bytes.begin(), bytes.end()));
        return folder.File(name);
    }
    std::string Jpeg(const std::string& name, int width, int height, unsigned seed, bool progressive = false)
    {
        return Put(name, Jpeg_File(Meadow(width, height, seed), {.progressive = progressive}));
    }
    /// Good ones of many sizes and kinds, and one of each kind that cannot be read.
    std::vector<Picture_Request> Mixed_List()
    {
        const std::vector<std::uint8_t> full = Jpeg_File(Meadow(1200, 800, 1));
        Held_Texts("texts.jpg");
        std::vector<std::string> paths{Put("large.jpg", full), folder.File("texts.jpg"), Jpeg("tiny.jpg", 100, 80, 2)};
        paths.push_back(Put("grey.jpg", Jpeg_File(To_Grey(Portrait(600, 500, 3)))));
        paths.push_back(Jpeg("progressive.jpg", 1100, 700, 4, true));
        paths.push_back(Put("camera.jpg", Jpeg_File(Meadow(400, 300, 9), {.segments = {{0xE1, Camera_Block({})}}})));
        Write_Tiff_File(folder.File("a.tif"), Night_Town(900, 700, 5), {.compression = 5, .description = "town"});
        Write_Tiff_File(folder.File("tiles.tif"), Meadow(300, 200, 6), {.tile_size = 64, .orientation = 6});
        paths.push_back(folder.File("a.tif"));
        paths.push_back(Put("empty.jpg", {}));
        paths.push_back(folder.File("missing.jpg"));
        paths.push_back(folder.Path());
        paths.push_back(folder.File("tiles.tif"));
        paths.push_back(Put("text.jpg", {'h', 'e', 'l', 'l', 'o'}));
        paths.push_back(Put("head_only.jpg", {full.begin(), full.begin() + 30}));
        paths.push_back(Put("half.jpg", {full.begin(), full.begin() + std::ptrdiff_t(full.size() / 2)}));
        mkfifo(folder.File("pipe.jpg").c_str(), 0600);
        paths.push_back(folder.File("pipe.jpg"));
        symlink(folder.File("loop_b.jpg").c_str(), folder.File("loop_a.jpg").c_str());
        symlink(folder.File("loop_a.jpg").c_str(), folder.File("loop_b.jpg").c_str());
        paths.push_back(folder.File("loop_a.jpg"));
        paths.push_back("/dev/zero");
        std::vector<Picture_Request> requests;
        for (const auto& path : paths)
            requests.push_back({.path = path, .rotation = int(requests.size() % 4) * 90, .least_side = Cell});
        requests.push_back({.path = paths[0], .rotation = 45, .least_side = Cell}); // a header without any pixels
        return requests;
    }
    std::vector<Picture_Request> Many(int count, int width = 800, int height = 600)
    {
        const std::string path = Jpeg("many.jpg", width, height, 7);
        return std::vector<Picture_Request>(std::size_t(count), {.path = path, .least_side = Cell});
    }
    void Held_Texts(const std::string& name)
    {
        Put("plain.jpg", Jpeg_File(Meadow(400, 300, 8), {.dpi = 240}));
        const Bitmap_Handle bitmap = Load_Bitmap_From_File(folder.File("plain.jpg"), 0, 1, 0);
        EXPECT_TRUE(Save_Bitmap_To_File(bitmap, folder.File(name), 1, "gr\xC3\xBC\xC3\x9F Gott", "Crop(1,2,3,4)", "",
                                        90, 300, 300, nullptr));
        Release(bitmap);
    }
    Test_Folder folder;
};

TEST_F(Ahead, Gives_In_Order_What_The_Single_Functions_Give_For_Any_Number_Of_Threads)
{
    const auto requests = Mixed_List();
    std::vector<Seen> expected;
    for (const auto& request : requests) expected.push_back(Seen_One_By_One(request));
    EXPECT_EQ("Crop(1,2,3,4)", expected[1].script);
    EXPECT_FALSE(expected[0].pixels.empty());
    for (const int threads : {0, 1, 2, 3, 8}) {
        SCOPED_TRACE(std::to_string(threads) + " threads");
        Load_Ahead ahead(requests, threads);
        for (const Seen& one : expected) EXPECT_EQ(one, Seen_Ahead(ahead, one.path));
        EXPECT_TRUE(ahead.Is_At_End());
        EXPECT_FALSE(ahead.Wait(0ms));
    }
}

TEST_F(Ahead, Order_And_Contents_Are_The_Same_Whatever_Comes_First)
{
    const auto list = Mixed_List();
    std::vector<Seen> expected;
    for (const auto& request : list) expected.push_back(Seen_One_By_One(request));
    for (unsigned seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::vector<std::size_t> order;
        std::vector<Picture_Request> requests;
        for (int i = 0; i < 40; ++i) {
            order.push_back(random() % list.size());
            requests.push_back(list[order.back()]);
        }
        // Every third time all pictures count as very large and wait for their turn.
        Load_Ahead ahead(requests, int(1 + random() % 4), seed % 3 == 0 ? 0 : Load_Ahead::Most_Pixels_Side_By_Side);
        for (const std::size_t which : order) {
            if (random() % 4 == 0) std::this_thread::sleep_for(std::chrono::microseconds(random() % 3000));
            ASSERT_EQ(expected[which], Seen_Ahead(ahead, list[which].path));
        }
    }
}

TEST_F(Ahead, Reads_No_Pixels_That_Nobody_Asked_For)
{
    auto requests = Many(3);
    for (auto& request : requests) request.least_side = 0;
    const auto before = Count_Of_Decoded_Pictures_CPP();
    Load_Ahead ahead(requests);
    while (!ahead.Is_At_End()) {
        const Picture_Contents taken = ahead.Take();
        EXPECT_EQ(0, taken.bitmap);
        EXPECT_EQ(800, taken.width);
        EXPECT_EQ("", taken.error);
    }
    EXPECT_EQ(before, Count_Of_Decoded_Pictures_CPP());
}

TEST_F(Ahead, An_Empty_List_Is_At_Its_End)
{
    Load_Ahead ahead({});
    EXPECT_TRUE(ahead.Is_At_End());
    EXPECT_FALSE(ahead.Wait(0ms));
}

TEST_F(Ahead, Never_Begins_More_Files_Than_It_Has_Places_For)
{
    constexpr int threads = 2;
    const auto requests = Many(40, 1100, 800);
    const auto before = Count_Of_Decoded_Pictures_CPP();
    Load_Ahead ahead(requests, threads);
    for (int taken = 1; !ahead.Is_At_End(); ++taken) {
        Release(ahead.Take().bitmap);
        std::this_thread::sleep_for(2ms); // time to run away
        EXPECT_LE(Count_Of_Decoded_Pictures_CPP() - before, taken + 2 * threads);
    }
}

TEST_F(Ahead, Very_Large_Pictures_Are_Decoded_One_After_Another)
{
    const auto requests = Many(12, 1100, 800);
    const auto before = Count_Of_Decoded_Pictures_CPP();
    Load_Ahead ahead(requests, 4, /*pixels_side_by_side=*/1000);
    for (int taken = 0; !ahead.Is_At_End(); ++taken) {
        std::this_thread::sleep_for(10ms); // time to begin another one
        EXPECT_LE(Count_Of_Decoded_Pictures_CPP() - before, taken + 1);
        Release(ahead.Take().bitmap);
    }
}

TEST_F(Ahead, Ended_In_The_Middle_Leaves_No_Bitmap_Behind)
{
    const auto requests = Many(30);
    const std::size_t before = Current_Pixel_Memory_Use().live_bytes;
    for (int taken = 0; taken < 12; ++taken) {
        Load_Ahead ahead(requests, 4);
        for (int i = 0; i < taken; ++i) Release(ahead.Take().bitmap);
    }
    EXPECT_EQ(before, Current_Pixel_Memory_Use().live_bytes);
}

TEST_F(Ahead, A_Program_That_Exits_While_Files_Are_Read_Ends_Cleanly)
{
    const auto requests = Many(50);
    EXPECT_EQ(7, In_A_Child([&] {
                  Load_Ahead ahead(requests, 4);
                  Release(ahead.Take().bitmap);
                  std::exit(7); // the list is never ended, its threads are in the middle of their files
                  return 0;
              }));
}

/// How far the threads of this process stand back, one entry for each.
std::vector<int> Nicenesses()
{
    std::vector<int> all;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task"))
        all.push_back(getpriority(PRIO_PROCESS, id_t(std::stoi(thread.path().filename()))));
    return all;
}

TEST_F(Ahead, Its_Threads_Let_The_One_That_Takes_Go_First)
{
    const auto requests = Many(30);
    Load_Ahead ahead(requests, 2);
    Release(ahead.Take().bitmap); // by now at least one has begun
    const auto all = Nicenesses();
    const int own = getpriority(PRIO_PROCESS, 0);
    constexpr int last = 19; // behind which the system lets nobody stand
    EXPECT_EQ(std::min(own + 5, last), *std::max_element(all.begin(), all.end()));
    EXPECT_EQ(own, *std::min_element(all.begin(), all.end()));
}

TEST_F(Ahead, Files_That_Vanish_Between_Take_And_Take_Fail_In_Their_Place)
{
    std::vector<Picture_Request> requests;
    for (int i = 0; i < 30; ++i)
        requests.push_back({.path = Jpeg(std::to_string(i) + ".jpg", 160, 120, unsigned(i)), .least_side = Cell});
    Load_Ahead ahead(requests, 2);
    for (int i = 0; i < 30; ++i) {
        if (i == 3) std::remove(requests[20].path.c_str()); // far behind what may have been begun
        const Picture_Contents taken = ahead.Take();
        EXPECT_EQ(i == 20, taken.bitmap == 0) << i;
        EXPECT_EQ(i == 20 ? requests[20].path + ": No such file or directory" : "", taken.error);
        if (taken.bitmap != 0) Release(taken.bitmap);
    }
}

struct Divisor_Case {
    int side_at_8, least_side, divisor;
};

TEST(Divisor, Is_The_Strongest_Reduction_That_Still_Fills_The_Place)
{
    for (const Divisor_Case& row : {Divisor_Case{750, 128, 8},
                                    {128, 128, 8},
                                    {127, 128, 4},
                                    {64, 128, 4},
                                    {63, 128, 2},
                                    {32, 128, 2},
                                    {31, 128, 1},
                                    {1, 128, 1},
                                    {10, 0, 8}})
        EXPECT_EQ(row.divisor, Divisor_That_Keeps(row.side_at_8, row.least_side)) << row.side_at_8;
}

class Giving_Up : public Ahead, public testing::WithParamInterface<const char*> {};

TEST_P(Giving_Up, Ends_A_Decode_Before_Its_End_And_Says_So)
{
    const std::string kind = GetParam();
    const std::string path = folder.File(kind);
    if (kind == "baseline.jpg") Jpeg(kind, 300, 200, 1);
    if (kind == "progressive.jpg") Jpeg(kind, 300, 200, 1, true);
    if (kind == "strips.tif") Write_Tiff_File(path, Meadow(300, 200, 1), {});
    if (kind == "tiles.tif") Write_Tiff_File(path, Meadow(300, 200, 1), {.tile_size = 64});
    if (kind == "lab.tif") Write_Tiff_File(path, Meadow(300, 200, 1), {.colors = Tiff_File_Options::Colors::Lab});
    const auto opened = Open_Picture(path, 0);
    ASSERT_TRUE(opened);
    std::atomic<bool> requested = false;
    {
        const Cancellation_Scope scope(requested);
        EXPECT_TRUE(Load_Opened(*opened, 1, 0));
        requested = true;
        const auto bitmap = Load_Opened(*opened, 1, 0);
        ASSERT_FALSE(bitmap);
        EXPECT_EQ("was given up", bitmap.error().text);
    }
    EXPECT_TRUE(Load_Opened(*opened, 1, 0)) << "outside of the scope nobody obeys";
}

INSTANTIATE_TEST_SUITE_P(All, Giving_Up,
                         testing::Values("baseline.jpg", "progressive.jpg", "strips.tif", "tiles.tif", "lab.tif"),
                         [](const auto& row) {
                             return std::string(row.param).substr(0, std::string(row.param).find('.'));
                         });

} // namespace
