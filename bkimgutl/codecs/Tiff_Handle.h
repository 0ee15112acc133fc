#pragma once

#include "frame/files/Regular_File.h"
#include "frame/files/Result.h"

#include <cstdint>
#include <memory>
#include <string>

struct tiff;

/// An open handle of the TIFF library on a descriptor that belongs to somebody else. Bytes come and go through pread and
/// pwrite, never through a mapping: a file that another program cuts meanwhile is a read error and no signal. What the
/// library has to say is kept here and never printed.
class Tiff_Handle {
public:
    static Result<Tiff_Handle> Open_To_Read(const Regular_File& file);
    /// `mode` as the library knows it; appends to what the file holds but for its header, which is written anew.
    static Result<Tiff_Handle> Open_To_Write(int descriptor, const char* mode);

    Tiff_Handle(Tiff_Handle&&) noexcept;
    Tiff_Handle& operator=(Tiff_Handle&&) noexcept;
    ~Tiff_Handle();

    tiff* Get() const { return tiff_; }
    /// The first error since the opening, without line breaks; empty when there was none.
    const std::string& Error_Text() const;
    /// Errors, and warnings that tell of damaged picture data, since the opening.
    int Complaints() const;
    /// errno of the first system call that failed, 0 without one.
    int System_Error() const;

    /// For the callbacks only.
    struct State {
        int descriptor = -1;
        std::int64_t position = 0;
        int system_error = 0;
        int complaints = 0;
        std::string error;
    };

private:
    Tiff_Handle() = default;
    static Result<Tiff_Handle> Open(int descriptor, const char* mode);
    std::unique_ptr<State> state_;
    tiff* tiff_ = nullptr;
};
