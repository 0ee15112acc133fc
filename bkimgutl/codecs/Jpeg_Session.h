#pragma once

#include "frame/files/Regular_File.h"
#include "frame/files/Replacement_File.h"
#include "frame/files/Result.h"

#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>

#include <jpeglib.h>

// libjpeg leaves a failed call with a longjmp. So every use of it is a step: a callable that owns nothing and holds only
// references, run by Guarded. What owns something stands outside of the steps, in the objects below and in the frames
// that call Guarded. The callbacks into this library own nothing either at the moment when they report an error.

/// Errors and warnings of one libjpeg object.
struct Jpeg_Errors {
    jpeg_error_mgr manager; ///< first: libjpeg hands back its address
    std::jmp_buf jump;
    std::array<char, JMSG_LENGTH_MAX> text;
    int warnings = 0;
    int damages = 0;  ///< warnings that mean wrong pixels
    int cut_offs = 0; ///< those of them that say that the file ended

    void Attach(jpeg_common_struct& object);
    Error As_Error() const { return {text.data()}; }
};

/// Runs a step; false when libjpeg gave up inside, and the reason stands in `errors`.
template <class Step>
[[gnu::noinline]] bool Guarded(Jpeg_Errors& errors, Step&& step)
{
    if (setjmp(errors.jump) != 0) return false;
    step();
    return true;
}

/// Ends the present step with a reason of our own.
[[noreturn]] void Give_Up(jpeg_common_struct* object, const char* reason);

/// A file being decoded. Scans and warnings are counted against the limits, memory against that for live bitmaps.
class Jpeg_Decoder {
public:
    explicit Jpeg_Decoder(const Regular_File& file);
    Jpeg_Decoder(const Jpeg_Decoder&) = delete;
    Jpeg_Decoder& operator=(const Jpeg_Decoder&) = delete;
    ~Jpeg_Decoder();

    /// Reads up to the first scan; must be the first step.
    Result<void> Read_Header();

    jpeg_decompress_struct& Object() { return object_; }
    Jpeg_Errors& Errors() { return errors_; }

private:
    struct Source {
        jpeg_source_mgr manager; ///< first: libjpeg hands back its address
        const Regular_File* file;
        std::int64_t at;
        std::array<JOCTET, 65536> buffer;
    };
    static boolean Fill(jpeg_decompress_struct* object);
    static void Skip(jpeg_decompress_struct* object, long bytes);

    jpeg_decompress_struct object_{};
    jpeg_progress_mgr progress_{};
    Jpeg_Errors errors_;
    Source source_;
};

/// A picture being encoded into a file that already holds the start marker and the segments in front of the tables.
class Jpeg_Encoder {
public:
    explicit Jpeg_Encoder(Replacement_File& file);
    Jpeg_Encoder(const Jpeg_Encoder&) = delete;
    Jpeg_Encoder& operator=(const Jpeg_Encoder&) = delete;
    ~Jpeg_Encoder();

    jpeg_compress_struct& Object() { return object_; }
    Jpeg_Errors& Errors() { return errors_; }

    /// Why a step failed: the file's own reason when it could not be written, otherwise libjpeg's.
    Error Reason() const { return write_error_ ? *write_error_ : errors_.As_Error(); }

private:
    struct Destination {
        jpeg_destination_mgr manager; ///< first: libjpeg hands back its address
        Jpeg_Encoder* encoder;
        std::size_t to_drop; ///< bytes of the start marker that the file already has
        std::array<JOCTET, 65536> buffer;
    };
    bool Write(std::size_t bytes);
    static boolean Empty(jpeg_compress_struct* object);
    static void Finish(jpeg_compress_struct* object);

    Replacement_File& file_;
    jpeg_compress_struct object_{};
    Jpeg_Errors errors_;
    std::optional<Error> write_error_;
    Destination destination_;
};

template <class Object>
jpeg_common_struct& Common(Object& object)
{
    return reinterpret_cast<jpeg_common_struct&>(object);
}
