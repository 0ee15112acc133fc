#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A function that writes samples of one kind into a folder. Each kind registers itself with a static object, so that a
/// new one is one new file.
struct Sample_Set {
    using Maker = void (*)(const std::string& folder);
    explicit Sample_Set(Maker maker);
    static const std::vector<Maker>& All();
};

/// Writes a file, or ends the program with a message.
void Write_Sample(const std::string& path, const std::vector<std::uint8_t>& bytes);
