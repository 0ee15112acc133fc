#include "bkimgutl/contract/Load_Ahead.h"

#include "bkimgutl/codecs/Stored_Text.h"
#include "bkimgutl/contract/Opened_Picture.h"
#include "bkimgutl/core/Cancellation.h"
#include "bkimgutl/core/Handle_Table.h"
#include "bkimgutl/core/Last_Error.h"
#include "bkimgutl/core/Step_Back.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <exception>
#include <oneapi/tbb/info.h>
#include <optional>
#include <semaphore.h>
#include <system_error>
#include <thread>

// Files begin in the order of the list, each on the next free thread, and wait in a ring of slots until they are taken:
//
//       taken                begun            taken + ring size
//         v                    v                     v
//   ------[ done | reading | done ][ free ... ]------
//
// Threads touch no handle and no last error: both belong to the thread that takes. That one shares no lock with them and
// notifies no condition variable, for either may wait until a thread that stands back has had a processor.

namespace {

constexpr std::int32_t First_Divisor = 8;

/// A count that whoever adds to it never waits for.
class Semaphore {
public:
    explicit Semaphore(unsigned count) { sem_init(&semaphore_, 0, count); }
    ~Semaphore() { sem_destroy(&semaphore_); }
    Semaphore(const Semaphore&) = delete;
    Semaphore& operator=(const Semaphore&) = delete;

    void Add() { sem_post(&semaphore_); }
    void Take()
    {
        while (sem_wait(&semaphore_) != 0) {
        } // a signal came in between
    }
    /// False when nothing came until then.
    bool Take_Until(std::chrono::steady_clock::time_point end)
    {
        const auto since = end.time_since_epoch();
        const auto seconds = std::chrono::floor<std::chrono::seconds>(since);
        const timespec time{.tv_sec = seconds.count(), .tv_nsec = std::chrono::nanoseconds(since - seconds).count()};
        int answer = 0;
        do answer = sem_clockwait(&semaphore_, CLOCK_MONOTONIC, &time);
        while (answer != 0 && errno == EINTR);
        return answer == 0;
    }

private:
    sem_t semaphore_;
};

struct Loaded {
    Picture_Contents contents{};
    std::optional<Bitmap> bitmap{};
};

Result<Bitmap> Reduced(const Opened_Picture& opened, const Picture_Request& request, std::int32_t longest_side,
                       std::int32_t& divisor)
{
    divisor = request.least_side >= longest_side ? 1 : First_Divisor; // all pixels need no look at fewer
    auto bitmap = Load_Opened(opened, divisor, request.rotation);
    if (!bitmap || divisor == 1) return bitmap;
    divisor = Divisor_That_Keeps(std::max(bitmap->Width(), bitmap->Height()), request.least_side);
    if (divisor == First_Divisor) return bitmap;
    return Load_Opened(opened, divisor, request.rotation);
}

void Read_Texts(const Opened_Picture& opened, Picture_Contents& contents)
{
    if (const auto comment = opened.codec->Read_Comment(opened.file)) contents.comment = UTF8_From_Stored(*comment);
    const auto script = opened.codec->Read_Script(opened.file);
    if (script)
        contents.script = UTF8_From_Stored(*script);
    else
        contents.script_error = Named(opened.path, script.error()).text;
    if (auto block = opened.codec->Read_EXIF(opened.file)) contents.exif = std::move(*block);
}

/// wait_if_large(pixels) comes before anything large is decoded.
template <class Wait_If_Large>
void Read_Into(Loaded& loaded, const Picture_Request& request, Wait_If_Large&& wait_if_large)
{
    Picture_Contents& contents = loaded.contents;
    const auto opened = Open_Picture(request.path, 0);
    if (!opened) {
        contents.error = opened.error().text;
        return;
    }
    contents.type = std::int32_t(opened->type);
    contents.identity = opened->file.Identity();
    const auto facts = opened->codec->Read_Facts(opened->file);
    if (!facts) {
        contents.error = Named(opened->path, facts.error()).text;
        return;
    }
    contents.width = facts->width;
    contents.height = facts->height;
    contents.pixel_depth = facts->pixel_depth;
    contents.horizontal_dpi = facts->horizontal_dpi;
    contents.vertical_dpi = facts->vertical_dpi;
    Read_Texts(*opened, contents);
    if (request.least_side < 1) return;
    wait_if_large(std::int64_t(facts->width) * facts->height);
    auto bitmap = Reduced(*opened, request, std::max(facts->width, facts->height), contents.scale_divisor);
    if (bitmap)
        loaded.bitmap.emplace(std::move(*bitmap));
    else
        contents.error = Named(opened->path, bitmap.error()).text;
}

/// No exception leaves a thread: what a file does not fit into is a failure of that file.
template <class Wait_If_Large>
Loaded Read(const Picture_Request& request, Wait_If_Large&& wait_if_large)
{
    Loaded loaded;
    try {
        Read_Into(loaded, request, wait_if_large);
    } catch (const std::exception& failure) {
        loaded.bitmap.reset();
        loaded.contents.error = request.path + ": " + failure.what();
    }
    return loaded;
}

int Threads_For(const std::vector<Picture_Request>& requests)
{
    const bool pixels =
        std::any_of(requests.begin(), requests.end(), [](const auto& request) { return request.least_side > 0; });
    if (!pixels) return 0;
    const int cores = std::clamp(oneapi::tbb::info::default_concurrency(), 1, Load_Ahead::Most_Threads);
    return int(std::min<std::size_t>(std::size_t(cores), requests.size()));
}

} // namespace

std::int32_t Divisor_That_Keeps(std::int32_t side_at_8, std::int32_t least_side)
{
    std::int64_t side = side_at_8;
    std::int32_t divisor = First_Divisor;
    for (; side < least_side && divisor >= 2; divisor /= 2) side *= 2;
    return divisor;
}

struct Load_Ahead::Work {
    /// Written by the thread that reads its file; by the taker once it is ready.
    struct Slot {
        Loaded file{};
        std::atomic<bool> ready = false;
    };

    Work(std::vector<Picture_Request> list, std::int64_t most_pixels, int count)
        : requests(std::move(list)),
          pixels_side_by_side(most_pixels),
          ring(std::size_t(std::max(2 * count, 1))),
          places(unsigned(ring.size()))
    {
        Start(count);
    }
    ~Work();

    void Start(int count);
    void Run();
    std::optional<std::size_t> Begin_Next();
    void Await_Turn(std::size_t index);
    void Deliver(std::size_t index, Loaded loaded);
    void Read_Here();
    Slot& Slot_Of(std::size_t index) { return ring[index % ring.size()]; }

    const std::vector<Picture_Request> requests;
    const std::int64_t pixels_side_by_side;
    std::atomic<bool> stop = false;
    std::atomic<std::size_t> begun = 0;
    std::atomic<std::size_t> taken = 0; // only the taker writes it
    std::vector<Slot> ring;
    Semaphore places;                 // free ones of the ring
    Semaphore arrived{0};             // the file that is taken next may be there
    std::atomic<int> turns = 0;       // changes with `taken` and `stop`
    std::vector<std::thread> threads; // of the taker's thread alone
};

void Load_Ahead::Work::Start(int count)
{
    try {
        while (int(threads.size()) < count) threads.emplace_back([this] { Run(); });
    } catch (const std::system_error&) {
        // The system gives no more threads: fewer do, and without any each file is read when it is waited for.
    }
}

Load_Ahead::Work::~Work()
{
    stop = true;
    for (std::size_t i = 0; i < threads.size(); ++i) places.Add();
    ++turns;
    turns.notify_all();
    for (std::thread& thread : threads) thread.join();
}

void Load_Ahead::Work::Run()
{
    Step_Back();
    const Cancellation_Scope scope(stop);
    while (const auto index = Begin_Next())
        Deliver(*index, Read(requests[*index], [&](std::int64_t pixels) {
            if (pixels > pixels_side_by_side) Await_Turn(*index);
        }));
}

std::optional<std::size_t> Load_Ahead::Work::Begin_Next()
{
    places.Take();
    if (stop) return std::nullopt;
    const std::size_t index = begun++;
    if (index < requests.size()) return index;
    places.Add(); // for the next thread, which ends as well
    return std::nullopt;
}

void Load_Ahead::Work::Await_Turn(std::size_t index)
{
    for (int seen = turns; !stop && taken != index; seen = turns) turns.wait(seen);
}

void Load_Ahead::Work::Deliver(std::size_t index, Loaded loaded)
{
    Slot& slot = Slot_Of(index);
    slot.file = std::move(loaded);
    slot.ready = true;
    if (index == taken) arrived.Add(); // else the taker sees that it is ready before it waits
}

void Load_Ahead::Work::Read_Here()
{
    Deliver(taken, Read(requests[taken], [](std::int64_t) {}));
}

Load_Ahead::Load_Ahead(std::vector<Picture_Request> requests, int threads, std::int64_t pixels_side_by_side)
    : work_(std::make_unique<Work>(std::move(requests), pixels_side_by_side, std::clamp(threads, 0, Most_Threads)))
{}

Load_Ahead::Load_Ahead(std::vector<Picture_Request> requests)
{
    const int threads = Threads_For(requests);
    work_ = std::make_unique<Work>(std::move(requests), Most_Pixels_Side_By_Side, threads);
}

Load_Ahead::~Load_Ahead() = default;

bool Load_Ahead::Is_At_End() const
{
    return work_->taken == work_->requests.size();
}

bool Load_Ahead::Wait(std::chrono::milliseconds longest)
{
    if (Is_At_End()) return false;
    const Work::Slot& slot = work_->Slot_Of(work_->taken);
    if (work_->threads.empty() && !slot.ready) work_->Read_Here();
    const auto end = std::chrono::steady_clock::now() + longest;
    while (!slot.ready)
        if (!work_->arrived.Take_Until(end)) return slot.ready; // what came before it was for files that are taken
    return true;
}

Picture_Contents Load_Ahead::Take()
{
    while (!Wait(std::chrono::seconds(1))) {
    }
    Work::Slot& slot = work_->Slot_Of(work_->taken);
    Loaded loaded = std::exchange(slot.file, {});
    slot.ready = false;
    ++work_->taken;
    work_->places.Add();
    ++work_->turns;
    work_->turns.notify_all();
    if (loaded.bitmap) loaded.contents.bitmap = Adopt(std::move(*loaded.bitmap));
    if (loaded.bitmap && loaded.contents.bitmap == 0) loaded.contents.error = Last_Error_Text();
    if (!loaded.contents.error.empty()) Fail({loaded.contents.error});
    return std::move(loaded.contents);
}
