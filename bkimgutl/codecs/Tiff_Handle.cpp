#include "bkimgutl/codecs/Tiff_Handle.h"

#include "frame/files/Limits.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>
#include <tiffio.h>
#include <unistd.h>
#include <utility>

namespace {

Tiff_Handle::State& State_Of(void* data)
{
    return *static_cast<Tiff_Handle::State*>(data);
}

tmsize_t Read_Bytes(thandle_t data, void* target, tmsize_t size)
{
    auto& state = State_Of(data);
    tmsize_t done = 0;
    while (done < size) {
        const ssize_t got =
            pread(state.descriptor, static_cast<char*>(target) + done, std::size_t(size - done), state.position);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 && state.system_error == 0) state.system_error = errno;
        if (got <= 0) break;
        done += got;
        state.position += got;
    }
    return done;
}

tmsize_t Write_Bytes(thandle_t data, void* source, tmsize_t size)
{
    auto& state = State_Of(data);
    tmsize_t done = 0;
    while (done < size) {
        const ssize_t put =
            pwrite(state.descriptor, static_cast<const char*>(source) + done, std::size_t(size - done), state.position);
        if (put < 0 && errno == EINTR) continue;
        if (put < 0 && state.system_error == 0) state.system_error = errno;
        if (put <= 0) break;
        done += put;
        state.position += put;
    }
    return done;
}

toff_t Size_Now(thandle_t data)
{
    struct stat facts {};
    return fstat(State_Of(data).descriptor, &facts) == 0 ? toff_t(facts.st_size) : 0;
}

toff_t Seek(thandle_t data, toff_t offset, int whence)
{
    auto& state = State_Of(data);
    std::int64_t base = 0;
    if (whence == SEEK_CUR) base = state.position;
    if (whence == SEEK_END) base = std::int64_t(Size_Now(data));
    std::int64_t target = 0;
    if (__builtin_add_overflow(base, std::int64_t(offset), &target) || target < 0) return toff_t(-1);
    state.position = target;
    return toff_t(target);
}

int Leave_Open(thandle_t)
{
    return 0;
}

std::string Formatted(const char* format, va_list arguments)
{
    char text[300];
    va_list copy;
    va_copy(copy, arguments);
    std::vsnprintf(text, sizeof text, format, copy);
    va_end(copy);
    std::string result = text;
    std::replace_if(
        result.begin(), result.end(), [](unsigned char c) { return c < ' '; }, ' ');
    while (!result.empty() && (result.back() == '.' || result.back() == ' ')) result.pop_back();
    return result;
}

int Take_Error(TIFF*, void* data, const char*, const char* format, va_list arguments)
{
    auto& state = State_Of(data);
    ++state.complaints;
    if (state.error.empty()) state.error = Formatted(format, arguments);
    return 1; // the library's own printing stays out
}

int Take_Warning(TIFF*, void* data, const char*, const char* format, va_list)
{
    // Coders report broken data as warnings. The one on an old way of LZW coding tells of no damage.
    if (std::strstr(format, "Old-style LZW") == nullptr) ++State_Of(data).complaints;
    return 1;
}

} // namespace

Result<Tiff_Handle> Tiff_Handle::Open_To_Read(const Regular_File& file)
{
    return Open(file.Descriptor(), "rm");
}

Result<Tiff_Handle> Tiff_Handle::Open_To_Write(int descriptor, const char* mode)
{
    return Open(descriptor, mode);
}

Result<Tiff_Handle> Tiff_Handle::Open(int descriptor, const char* mode)
{
    Tiff_Handle handle;
    handle.state_ = std::make_unique<State>();
    handle.state_->descriptor = descriptor;
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(),
                                                                                   &TIFFOpenOptionsFree);
    if (!options) return Failure("there is not enough memory");
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), &Take_Error, handle.state_.get());
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), &Take_Warning, handle.state_.get());
    constexpr std::int64_t most_at_once = std::int64_t(2) << 30;
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), std::min(Live_Bitmap_Bytes_Limit(), most_at_once));
    handle.tiff_ = TIFFClientOpenExt("picture", mode, handle.state_.get(), &Read_Bytes, &Write_Bytes, &Seek,
                                     &Leave_Open, &Size_Now, nullptr, nullptr, options.get());
    if (handle.tiff_ == nullptr)
        return Failure(handle.Error_Text().empty() ? "the TIFF file cannot be read"
                                                   : "the TIFF file cannot be read: " + handle.Error_Text());
    handle.state_->complaints = 0; // oddities of the directory are no damage of the picture
    handle.state_->error.clear();
    return handle;
}

Tiff_Handle::Tiff_Handle(Tiff_Handle&& other) noexcept
    : state_(std::move(other.state_)), tiff_(std::exchange(other.tiff_, nullptr))
{}

Tiff_Handle& Tiff_Handle::operator=(Tiff_Handle&& other) noexcept
{
    std::swap(state_, other.state_);
    std::swap(tiff_, other.tiff_);
    return *this;
}

Tiff_Handle::~Tiff_Handle()
{
    if (tiff_ != nullptr) TIFFClose(tiff_);
}

const std::string& Tiff_Handle::Error_Text() const
{
    return state_->error;
}

int Tiff_Handle::Complaints() const
{
    return state_->complaints;
}

int Tiff_Handle::System_Error() const
{
    return state_->system_error;
}
