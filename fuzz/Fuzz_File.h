#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

/// The bytes of one try as a regular file in memory.
class Fuzz_File {
public:
    Fuzz_File() : descriptor_(memfd_create("fuzz", 0)) {}
    ~Fuzz_File() { close(descriptor_); }
    Fuzz_File(const Fuzz_File&) = delete;
    Fuzz_File& operator=(const Fuzz_File&) = delete;

    std::string Put(const std::uint8_t* bytes, std::size_t size) const
    {
        if (ftruncate(descriptor_, off_t(size)) != 0 || pwrite(descriptor_, bytes, size, 0) != ssize_t(size))
            std::abort();
        return "/proc/self/fd/" + std::to_string(descriptor_);
    }

private:
    int descriptor_;
};
